#pragma once

#include "SeatLedger.h"

#include <QProcess>
#include <QTemporaryDir>

#include <memory>
#include <vector>

namespace oVELDRA::declarations {

/// Seats that are busy at the same time, each in a process of its own (see busySeat.cpp). They die with the object.
class BusySeats
{
public:
    BusySeats(QString stockUrl, QString hostUrl) : m_stockUrl(std::move(stockUrl)), m_hostUrl(std::move(hostUrl)) {}
    BusySeats(const BusySeats&) = delete;
    BusySeats& operator=(const BusySeats&) = delete;
    ~BusySeats()
    {
        for (const auto& seat : m_seats) {
            seat->kill();
            seat->waitForFinished();
        }
    }

    /// Starts a seat with what it is to do, as busySeat.cpp takes it.
    void start(const QStringList& task)
    {
        const QString name = QStringLiteral("s%1").arg(m_seats.size() + 1);
        auto seat = std::make_unique<QProcess>();
        seat->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        seat->setStandardOutputFile(m_folder.filePath(name));
        seat->start(QStringLiteral(OVELDRA_BUSY_SEAT),
                    QStringList{m_stockUrl, m_hostUrl, name, QString::number(m_seats.size() + 1)} + task);
        m_seats.push_back(std::move(seat));
    }

    /// Waits until all have ended; false when one did not end well.
    [[nodiscard]] bool ended()
    {
        bool well = true;
        for (const auto& seat : m_seats) {
            constexpr int noEnd = -1;
            seat->waitForFinished(noEnd);
            well = well && seat->exitStatus() == QProcess::NormalExit && seat->exitCode() == 0;
        }
        return well;
    }

    /// What they wrote down until now.
    [[nodiscard]] SeatLedger ledger() const
    {
        SeatLedger ledger;
        for (size_t seat = 1; seat <= m_seats.size(); ++seat) {
            ledger.read(m_folder.filePath(QStringLiteral("s%1").arg(seat)));
        }
        return ledger;
    }

private:
    QString m_stockUrl;
    QString m_hostUrl;
    QTemporaryDir m_folder;
    std::vector<std::unique_ptr<QProcess>> m_seats;
};

} // namespace oVELDRA::declarations
