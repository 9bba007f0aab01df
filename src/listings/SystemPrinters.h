#pragma once

#include <listings/Printing.h>

namespace oVELDRA::listings {

/// The printers that the system has, through Qt's printer support.
class SystemPrinters final : public Printers
{
public:
    [[nodiscard]] QStringList deviceNames() const override;
    [[nodiscard]] std::unique_ptr<PrintDocument> begin(const QString& deviceName, const QString& title) override;
};

/// The raw queues of the system's spooler.
class SystemSpooler final : public Spooler
{
public:
    void send(const QString& deviceName, const QString& page) override;
};

} // namespace oVELDRA::listings
