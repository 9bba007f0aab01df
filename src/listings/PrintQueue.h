#pragma once

#include <QByteArray>
#include <QString>

/// The queues of the system's spooler, by the device names that the list of printers shows.
namespace oVELDRA::listings::queue {

/// Throws RuntimeError 482, with the reason, for a queue that is not there, is stopped or takes no documents.
void requireReady(const QString& deviceName);

/// What the spooler said to the last document of this process when it refused it; empty when it took it.
[[nodiscard]] QString lastRefusal();

/// Queues one document whose bytes reach the printer unchanged. Throws RuntimeError 482 when that fails.
void sendRaw(const QString& deviceName, const QString& title, const QByteArray& bytes);

/// A text in code page 850, which is what printers in text mode expect here; "?" for what it has no character for.
[[nodiscard]] QByteArray toCodePage850(const QString& text);

} // namespace oVELDRA::listings::queue
