#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <oveldra-datos/Console.h>

namespace oVELDRA::data {

/// A console that notes what it was told. Like the real one it keeps the report from a caller who wants JSON, and the
/// result from one who does not.
class RecordedConsole final : public Console
{
public:
    enum class Format { Text, Json };

    struct Progress
    {
        QString what;
        qint64 done = 0;
        qint64 total = 0;
    };

    explicit RecordedConsole(Format format = Format::Text) : m_format(format) {}

    [[nodiscard]] bool wantsJson() const override { return m_format == Format::Json; }
    void say(const QString& line) override
    {
        if (!wantsJson()) {
            m_lines.append(line);
        }
    }
    void result(const QJsonObject& object) override
    {
        if (wantsJson()) {
            m_results.append(object);
        }
    }
    void write(const QString& text) override { m_written += text; }
    void complain(const QString& line) override { m_complaints.append(line); }
    void progress(const QString& what, qint64 done, qint64 total) override { m_progress.append({what, done, total}); }

    /// The lines of the report, in order.
    [[nodiscard]] const QStringList& lines() const { return m_lines; }
    /// The report as one text, a line end behind each line.
    [[nodiscard]] QString report() const
    {
        return m_lines.isEmpty() ? QString() : QString(m_lines.join(u'\n') + u'\n');
    }
    /// All results; a command gives exactly one when JSON is wanted.
    [[nodiscard]] const QList<QJsonObject>& results() const { return m_results; }
    /// What was written as it is, put together.
    [[nodiscard]] const QString& written() const { return m_written; }
    /// The lines for standard error, in order.
    [[nodiscard]] const QStringList& complaints() const { return m_complaints; }
    /// Every report of progress, in order.
    [[nodiscard]] const QList<Progress>& progressReports() const { return m_progress; }

private:
    Format m_format;
    QStringList m_lines;
    QList<QJsonObject> m_results;
    QString m_written;
    QStringList m_complaints;
    QList<Progress> m_progress;
};

} // namespace oVELDRA::data
