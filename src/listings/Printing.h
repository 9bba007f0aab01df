#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace oVELDRA::listings {

/// Fixed-pitch text on its way to a printer. A document that is not ended is given up.
class PrintDocument
{
public:
    PrintDocument() = default;
    PrintDocument(const PrintDocument&) = delete;
    PrintDocument& operator=(const PrintDocument&) = delete;
    virtual ~PrintDocument() = default;

    /// Prints a text and ends its line. Line ends inside are CR LF. What a sheet has no room for goes on on another
    /// one.
    virtual void print(const QString& text) = 0;
    virtual void newPage() = 0;
    /// Hands the document over. Throws RuntimeError 482 when the printer does not take it.
    virtual void end() = 0;
};

/// The printers of the system.
class Printers
{
public:
    Printers() = default;
    Printers(const Printers&) = delete;
    Printers& operator=(const Printers&) = delete;
    virtual ~Printers() = default;

    /// Their device names, in the system's order.
    [[nodiscard]] virtual QStringList deviceNames() const = 0;

    /// Begins a document in the fixed-pitch font: landscape on the printer of that device name; on the system's default
    /// printer, and as that is set up, when the name is empty. Throws RuntimeError 482 for a printer that is not there
    /// (any more) or takes no documents.
    [[nodiscard]] virtual std::unique_ptr<PrintDocument> begin(const QString& deviceName, const QString& title) = 0;
};

/// Takes text for a printer past all of the system's formatting.
class Spooler
{
public:
    Spooler() = default;
    Spooler(const Spooler&) = delete;
    Spooler& operator=(const Spooler&) = delete;
    virtual ~Spooler() = default;

    /// Queues a page of text, with line ends CR LF, as one raw document. Throws RuntimeError 482 when the queue is not
    /// there or takes no documents.
    virtual void send(const QString& deviceName, const QString& page) = 0;
};

} // namespace oVELDRA::listings
