#include "OrderedRows.h"

#include "../KnownTables.h"

#include <oVELDRA/RuntimeError.h>

#include <algorithm>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Value;
using dialect::ValueType;

namespace {

/// Like the texts' UTF-8 bytes: the two halves of a letter beyond the first 65,536 stand behind all others.
std::strong_ordering compareLikeUtf8(QStringView a, QStringView b)
{
    const auto difference = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (difference.first == a.end() || difference.second == b.end()) {
        return a.size() <=> b.size();
    }
    const QChar unitA = *difference.first;
    const QChar unitB = *difference.second;
    if (unitA.isSurrogate() != unitB.isSurrogate()) {
        return unitA.isSurrogate() ? std::strong_ordering::greater : std::strong_ordering::less;
    }
    return unitA.unicode() <=> unitB.unicode();
}

std::strong_ordering compareNumbers(double a, double b)
{
    if (a == b) {
        return std::strong_ordering::equal;
    }
    return a < b ? std::strong_ordering::less : std::strong_ordering::greater;
}

const dialect::Table& tableOf(const dialect::Catalog& tables, const RowsWanted& wanted)
{
    return *tables.find(wanted.table);
}

} // namespace

std::strong_ordering operator<=>(const KeyPart& a, const KeyPart& b)
{
    if (a.kind != b.kind) {
        return a.kind <=> b.kind;
    }
    return a.kind == KeyPart::Kind::Text ? compareLikeUtf8(a.text, b.text) : compareNumbers(a.number, b.number);
}

KeyPart keyPartOf(Value value, bool digits)
{
    switch (value.type) {
    case ValueType::Null:
        return {};
    case ValueType::Text:
        if (digits) {
            bool whole = false;
            const int number = value.text.toInt(&whole);
            if (whole) {
                return {KeyPart::Kind::Number, static_cast<double>(number), {}};
            }
        }
        return {KeyPart::Kind::Text, 0, std::move(value.text)};
    default:
        return {KeyPart::Kind::Number, value.number, {}};
    }
}

bool isComplete(const Key& key)
{
    return std::none_of(key.begin(), key.end(), [](const KeyPart& part) { return part.isNull(); });
}

dialect::TableScan scanOf(const dialect::Table& table, const RowsWanted& wanted)
{
    dialect::TableScan scan;
    for (const QStringView column : wanted.columns) {
        scan.columns.push_back(requiredColumn(table, column));
    }
    for (const RowsWanted::KeyColumn& column : wanted.key) {
        scan.sort.push_back(requiredColumn(table, column.name));
    }
    return scan;
}

OrderedRows::OrderedRows(store::EngineConnection& engine, const dialect::Catalog& tables, const RowsWanted& wanted,
                         RowCounter counter)
    : m_table(wanted.table.toString()), m_counter(std::move(counter)),
      m_stream(engine, tableOf(tables, wanted), scanOf(tableOf(tables, wanted), wanted)), m_key(wanted.key.size())
{
    for (const RowsWanted::KeyColumn& column : wanted.key) {
        m_digits.push_back(column.digits);
    }
    advance();
}

void OrderedRows::advance()
{
    m_atEnd = !m_stream.next();
    if (m_atEnd) {
        return;
    }
    m_counter();
    std::swap(m_key, m_previous);
    readKey();
    if (m_key < m_previous) {
        throw RuntimeError(5,
                           u"No se puede recorrer la tabla %1 en orden: guarda números como textos de distinto largo. "
                           u"Pásela a una base nueva con 'copiar' o 'migrar' y verifique esa."_s.arg(m_table),
                           u"oVELDRA.datos"_s);
    }
}

void OrderedRows::readKey()
{
    m_key.clear();
    for (size_t place = 0; place < m_digits.size(); ++place) {
        m_key.push_back(keyPartOf(m_stream.key(place), m_digits[place]));
    }
}

} // namespace oVELDRA::data
