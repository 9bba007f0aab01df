#pragma once

#include "ReportWriter.h"

#include <QStringList>

namespace oVELDRA::data {

/// A report for people. Each part is a title and its rows in columns as wide as the part's first rows need; a later row
/// with a wider cell pushes its own cells to the right.
class TableReport final : public ReportWriter
{
public:
    TableReport(Console& console, std::vector<ReportColumn> columns) : m_console(console), m_columns(std::move(columns))
    {}

    void begin(const QString& title, std::vector<size_t> columns) override;
    void row(const Row& row) override;
    void end(const QStringList& lines, const QJsonObject& members) override;

    /// Rows that a part's widths are taken from, and that are held back until there are as many.
    static constexpr qsizetype rowsLookedAt = 200;

private:
    void flush();
    [[nodiscard]] QString line(const QStringList& cells) const;

    Console& m_console;
    std::vector<ReportColumn> m_columns;
    std::vector<size_t> m_shown; ///< the part's columns
    std::vector<qsizetype> m_widths;
    std::vector<QStringList> m_waiting;
    bool m_widthsKnown = false;
    bool m_inPart = false;
};

} // namespace oVELDRA::data
