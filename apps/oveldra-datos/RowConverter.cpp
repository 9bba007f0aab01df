#include "RowConverter.h"

#include <oVELDRA/RuntimeError.h>

#include <dialect/StatementError.h>
#include <dialect/TextComparison.h>

#include <algorithm>
#include <cmath>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Column;
using dialect::ColumnKind;
using dialect::Value;
using dialect::ValueType;

namespace {

constexpr int overflow = 6;
constexpr qsizetype shownCharacters = 40;

QString inColumn(const QString& column, const QString& reason)
{
    return u"%1: %2"_s.arg(column, reason);
}

QString troubleOf(const QString& text)
{
    if (text.contains(QChar::Null)) {
        return u"el texto tiene un carácter nulo"_s;
    }
    return text.isValidUtf16() ? QString() : u"el texto tiene caracteres que no existen"_s;
}

/// Why storedValue() refused.
QString reasonOf(const RuntimeError& error, const Column& column, const QString& shown)
{
    if (error.number() == dialect::databaseErrorNumber) {
        return u"el texto tiene más de %1 caracteres: «%2»"_s.arg(column.width).arg(shown);
    }
    if (column.kind == ColumnKind::Date) {
        return u"la fecha es imposible: «%1»"_s.arg(shown);
    }
    return error.number() == overflow ? u"el número no cabe: «%1»"_s.arg(shown) : u"no es un número: «%1»"_s.arg(shown);
}

/// Whether a value that is a number already would be changed by being stored.
bool changes(const Column& column, const Value& cell, const Value& stored)
{
    if (cell.type != ValueType::Number) {
        return false;
    }
    if (column.kind == ColumnKind::Date) {
        return cell.number != std::floor(cell.number);
    }
    return stored.type == ValueType::Number && stored.number != cell.number;
}

} // namespace

RowConverter::RowConverter(dialect::Table table, const QStringList& sourceColumns, std::vector<int> identity)
    : m_table(std::move(table)), m_identity(std::move(identity)), m_sources(m_table.columns.size(), -1)
{
    for (qsizetype place = 0; place < sourceColumns.size(); ++place) {
        const int column = m_table.find(sourceColumns[place]);
        if (column < 0) {
            m_unknown.push_back(static_cast<size_t>(place));
        } else {
            m_sources[static_cast<size_t>(column)] = static_cast<int>(place);
        }
    }
    for (size_t column = 0; column < m_sources.size(); ++column) {
        if (m_sources[column] >= 0) {
            m_columns.push_back(static_cast<int>(column));
        }
    }
    for (const int column : m_table.key) {
        const auto found = std::find(m_columns.begin(), m_columns.end(), column);
        if (found == m_columns.end()) {
            throw RuntimeError(dialect::databaseErrorNumber,
                               u"La tabla %1 del origen no tiene la columna %2, que es de su clave."_s.arg(
                                   m_table.name, m_table.columns[static_cast<size_t>(column)].name),
                               u"oVELDRA.datos"_s);
        }
        m_keyPlaces.push_back(static_cast<size_t>(found - m_columns.begin()));
    }
}

QStringList RowConverter::missingColumns() const
{
    QStringList missing;
    for (size_t column = 0; column < m_sources.size(); ++column) {
        if (m_sources[column] < 0) {
            missing.append(m_table.columns[column].name);
        }
    }
    return missing;
}

int RowConverter::sourcePlace(QStringView column) const
{
    const int found = m_table.find(column);
    return found < 0 ? -1 : m_sources[static_cast<size_t>(found)];
}

QString RowConverter::convert(const SourceRow& row, qint64 number, std::vector<Value>& values)
{
    values.resize(m_columns.size());
    for (const CellTrouble& trouble : row.troubles) {
        const auto column = std::find(m_sources.begin(), m_sources.end(), static_cast<int>(trouble.column));
        if (column != m_sources.end()) {
            return inColumn(m_table.columns[static_cast<size_t>(column - m_sources.begin())].name, trouble.reason);
        }
    }
    for (size_t i = 0; i < m_columns.size(); ++i) {
        const auto column = static_cast<size_t>(m_columns[i]);
        const Value& cell = row.cells[static_cast<size_t>(m_sources[column])];
        const QString reason = convertCell(m_table.columns[column], cell, values[i]);
        if (!reason.isNull()) {
            return inColumn(m_table.columns[column].name, reason);
        }
    }
    const QString key = foldedKey(values);
    if (key.isNull()) {
        return {};
    }
    const auto known = m_rowsOfKeys.constFind(key);
    if (known != m_rowsOfKeys.constEnd()) {
        return u"clave repetida: es la de la fila %1 (no se distinguen mayúsculas ni blancos finales)"_s.arg(
            known.value());
    }
    m_rowsOfKeys.insert(key, number);
    return {};
}

QString RowConverter::convertCell(const Column& column, const Value& cell, Value& value) const
{
    if (cell.type == ValueType::Text) {
        QString reason = troubleOf(cell.text);
        if (!reason.isNull()) {
            return reason;
        }
    }
    if (cell.type == ValueType::Number && !std::isfinite(cell.number)) {
        return u"el número no es finito"_s;
    }
    if (column.kind == ColumnKind::SmallInteger && cell.type == ValueType::Boolean) {
        // The component itself writes 1 there, and shows what is written.
        value = Value::ofNumber(cell.number != 0 ? 1 : 0);
        return {};
    }
    try {
        value = dialect::storedValue(cell, column, m_separators);
    } catch (const RuntimeError& error) {
        return reasonOf(error, column, dialect::textOf(cell, m_separators).left(shownCharacters));
    }
    if (changes(column, cell, value)) {
        const QString shown = dialect::textOf(cell, m_separators);
        return column.kind == ColumnKind::Date ? u"la fecha tiene hora: «%1»"_s.arg(shown)
                                               : u"el número no es entero: «%1»"_s.arg(shown);
    }
    return {};
}

QString RowConverter::foldedKey(const std::vector<Value>& values) const
{
    QString key;
    for (const size_t place : m_keyPlaces) {
        if (values[place].isNull()) {
            return {};
        }
        // No text that came this far has a character 0 in it.
        key += dialect::folded(dialect::textOf(values[place], m_separators)) + QChar(QChar::Null);
    }
    return key;
}

QString RowConverter::describe(const SourceRow& row) const
{
    QStringList parts;
    for (const int column : m_identity) {
        const int place = m_sources[static_cast<size_t>(column)];
        if (place >= 0) {
            const QString text = dialect::textOf(row.cells[static_cast<size_t>(place)], m_separators);
            parts.append(m_table.columns[static_cast<size_t>(column)].name + u'=' + text);
        }
    }
    return parts.join(u", "_s);
}

} // namespace oVELDRA::data
