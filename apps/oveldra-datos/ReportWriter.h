#pragma once

#include "Command.h"

#include <dialect/Value.h>

#include <QJsonObject>

#include <memory>
#include <vector>

namespace oVELDRA::data {

/// How a command writes its rows.
enum class ReportFormat : quint8 {
    Table, ///< for people: columns side by side, numbers as the user writes them
    Csv,   ///< RFC 4180: one header, fields by comma, CR LF, numbers with a point; Null is nothing, "" an empty text
    Json   ///< one object, numbers with 15 digits, Null is null
};

/// The option of commands that write reports.
[[nodiscard]] Option formatOption();

/// What the caller asked for, by `--formato` or `--json`. BadUsageError for a format that there is not.
[[nodiscard]] ReportFormat formatOf(const Arguments& arguments, const Console& console);

/// What a report's rows can have. Dates are written yyyy-mm-dd for programs and dd/mm/yyyy for people.
struct ReportColumn
{
    QString name;  ///< for programs
    QString title; ///< for people
    bool number = false;
};

/// Writes the rows of a report as they come: memory does not depend on how many there are.
class ReportWriter
{
public:
    struct Cell
    {
        size_t column;
        dialect::Value value;
    };
    using Row = std::vector<Cell>; ///< in the order of the columns; what a row does not have, is not there

    ReportWriter() = default;
    ReportWriter(const ReportWriter&) = delete;
    ReportWriter& operator=(const ReportWriter&) = delete;
    virtual ~ReportWriter() = default;

    /// Begins the part of the report whose rows have these columns. Only people are shown parts and their titles.
    virtual void begin(const QString& title, std::vector<size_t> columns) = 0;
    virtual void row(const Row& row) = 0;
    /// Ends the report: lines for people, members of the object for programs that read JSON.
    virtual void end(const QStringList& lines, const QJsonObject& members) = 0;
};

/// `list` is the name of the list of rows in JSON. The console must outlive the writer.
[[nodiscard]] std::unique_ptr<ReportWriter> makeReportWriter(ReportFormat format, Console& console, const QString& list,
                                                             std::vector<ReportColumn> columns);

} // namespace oVELDRA::data
