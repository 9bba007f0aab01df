#pragma once

namespace oVELDRA::core {

/// Makes a QApplication when the process has none; the calling thread then is the user-interface thread. It stays: a
/// host that knows nothing of Qt has no moment to end it, unless it unloads the library (endOwnApplication()).
/// Throws RuntimeError 429 when the host runs Qt without windows (a QCoreApplication or QGuiApplication).
void ensureApplication();

/// Ends the application that ensureApplication() made, so that a host can unload the library. An object made later gets
/// a new one. False, and nothing done, on another thread than the application's. True when there is nothing to end.
[[nodiscard]] bool endOwnApplication();

/// Throws RuntimeError 5 when called from another thread than the user-interface thread. Without an application there
/// is nothing to tell them apart by, and every thread will do.
void requireUiThread();

/// requireUiThread(), and RuntimeError 5 also when there is no application (any more), because windows need one.
void requireWindows();

} // namespace oVELDRA::core
