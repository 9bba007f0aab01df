#include "TableReport.h"

#include <algorithm>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

namespace {

/// A cell's text on one line: what would break the line, or move the terminal's cursor, is a blank.
QString cellText(const dialect::Value& value)
{
    QString text = dialect::textOf(value, {});
    for (QChar& c : text) {
        if (c.category() == QChar::Other_Control) {
            c = u' ';
        }
    }
    return text;
}

} // namespace

void TableReport::begin(const QString& title, std::vector<size_t> columns)
{
    flush();
    if (m_inPart) {
        m_console.say({});
    }
    m_console.say(title);
    m_inPart = true;
    m_widthsKnown = false;
    m_shown = std::move(columns);
    QStringList titles;
    for (const size_t column : m_shown) {
        titles.append(m_columns[column].title);
    }
    m_waiting.push_back(titles);
}

void TableReport::row(const Row& row)
{
    QStringList cells;
    for (const size_t column : m_shown) {
        const auto cell = std::find_if(row.begin(), row.end(), [column](const Cell& c) { return c.column == column; });
        cells.append(cell == row.end() ? QString() : cellText(cell->value));
    }
    if (m_widthsKnown) {
        m_console.say(line(cells));
        return;
    }
    m_waiting.push_back(cells);
    if (static_cast<qsizetype>(m_waiting.size()) > rowsLookedAt) {
        flush();
    }
}

void TableReport::end(const QStringList& lines, const QJsonObject& /*members*/)
{
    flush();
    if (m_inPart) {
        m_console.say({});
    }
    for (const QString& line : lines) {
        m_console.say(line);
    }
}

void TableReport::flush()
{
    m_widths.assign(m_shown.size(), 0);
    for (const QStringList& cells : m_waiting) {
        for (size_t place = 0; place < m_shown.size(); ++place) {
            m_widths[place] = std::max(m_widths[place], cells[static_cast<qsizetype>(place)].size());
        }
    }
    for (const QStringList& cells : m_waiting) {
        m_console.say(line(cells));
    }
    m_waiting.clear();
    m_widthsKnown = true;
}

QString TableReport::line(const QStringList& cells) const
{
    QString result = u" "_s;
    for (size_t place = 0; place < m_shown.size(); ++place) {
        const QString& cell = cells[static_cast<qsizetype>(place)];
        const bool number = m_columns[m_shown[place]].number;
        result += u' ' + (number ? cell.rightJustified(m_widths[place]) : cell.leftJustified(m_widths[place])) + u' ';
    }
    while (result.endsWith(u' ')) {
        result.chop(1);
    }
    return result;
}

} // namespace oVELDRA::data
