#pragma once

namespace oVELDRA::core {

/// Makes a QApplication when the process has none; the calling thread then is the user-interface thread. It stays for
/// the life of the process: a host that knows nothing of Qt has no moment to end it.
/// Throws RuntimeError 429 when the host runs Qt without windows (a QCoreApplication or QGuiApplication).
void ensureApplication();

/// Throws RuntimeError 5 when called from another thread than the user-interface thread. Without an application there
/// is nothing to tell them apart by, and every thread will do.
void requireUiThread();

/// requireUiThread(), and RuntimeError 5 also when there is no application (any more), because windows need one.
void requireWindows();

} // namespace oVELDRA::core
