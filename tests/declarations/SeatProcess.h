#pragma once

#include <QProcess>
#include <QStringList>

namespace oVELDRA::declarations {

/// What a seat does at the statement that it is given.
enum class AtStatement { Die, Wait };

/// Another seat: a process of its own that does one thing to a stock (see seat.cpp). It dies with the object.
class SeatProcess
{
public:
    /// `statement` is the number of the one, of those that the task runs on the stock, before which the seat dies or
    /// waits; 0 is none.
    SeatProcess(const QString& stockUrl, const QStringList& task, AtStatement what = AtStatement::Die,
                int statement = 0)
    {
        const QString word = what == AtStatement::Die ? QStringLiteral("die") : QStringLiteral("wait");
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral(OVELDRA_SEAT), QStringList{word, QString::number(statement), stockUrl} + task);
    }
    SeatProcess(const SeatProcess&) = delete;
    SeatProcess& operator=(const SeatProcess&) = delete;
    ~SeatProcess()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    /// Whether the seat came to its statement and waits there for goOn().
    [[nodiscard]] bool waits()
    {
        while (!m_process.canReadLine() && m_process.waitForReadyRead()) {
        }
        return m_process.readLine() == "waiting\n";
    }
    void goOn()
    {
        m_process.write("\n");
        m_process.waitForBytesWritten();
    }
    /// Kills it, unless it comes to its end within this time.
    void killAfter(int milliseconds)
    {
        m_process.waitForFinished(milliseconds);
        m_process.kill();
        m_process.waitForFinished();
    }
    /// Whether the seat has died at its statement; waits for its end.
    [[nodiscard]] bool died()
    {
        m_process.waitForFinished();
        return m_process.exitStatus() == QProcess::CrashExit;
    }
    /// What came of the task; waits for its end. A seat that comes to none says nothing.
    [[nodiscard]] QString outcome()
    {
        m_process.waitForFinished();
        return QString::fromUtf8(m_process.readAllStandardOutput()).trimmed();
    }

private:
    QProcess m_process;
};

} // namespace oVELDRA::declarations
