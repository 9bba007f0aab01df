#include "RecordData.h"

#include <QDate>

#include <algorithm>

namespace oVELDRA::store {

using dialect::ColumnKind;
using dialect::Value;
using dialect::ValueType;

namespace {

QString fromUtf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// The day at the start of an ISO date, with or without a time behind it.
QDate dayOf(QStringView text)
{
    return QDate::fromString(text.left(10), Qt::ISODate);
}

bool isYesNo(ColumnKind kind)
{
    return kind == ColumnKind::Boolean || kind == ColumnKind::SmallInteger;
}

} // namespace

RecordData::RecordData(std::shared_ptr<const ColumnKinds> kinds) : m_kinds(std::move(kinds))
{
    // Most results are one row of short texts: room for that at once, instead of growing towards it.
    constexpr size_t fewTexts = 128;
    m_blocks.emplace_back().reserve(std::min(m_kinds->size(), blockSize));
    m_texts.reserve(fewTexts);
}

RecordData::Cell& RecordData::newCell()
{
    if (m_blocks.back().size() == blockSize) {
        m_blocks.emplace_back().reserve(blockSize);
    }
    return m_blocks.back().emplace_back();
}

void RecordData::addInteger(qint64 integer)
{
    Cell& cell = newCell();
    cell.kind = Kind::Integer;
    cell.integer = integer;
}

void RecordData::addReal(double real)
{
    Cell& cell = newCell();
    cell.kind = Kind::Real;
    cell.real = real;
}

void RecordData::addText(std::string_view utf8)
{
    Cell& cell = newCell();
    cell.kind = Kind::Text;
    cell.length = static_cast<quint32>(utf8.size());
    cell.offset = m_texts.size();
    m_texts.append(utf8);
}

void RecordData::addValue(const Value& value)
{
    switch (value.type) {
    case ValueType::Text: {
        const QByteArray utf8 = value.text.toUtf8();
        addText({utf8.constData(), static_cast<size_t>(utf8.size())});
        break;
    }
    case ValueType::Date: {
        const QByteArray iso = dialect::isoDate(value.date).toLatin1();
        addText({iso.constData(), static_cast<size_t>(iso.size())});
        break;
    }
    case ValueType::Boolean:
        addInteger(static_cast<qint64>(value.number));
        break;
    case ValueType::Number:
        addReal(value.number);
        break;
    default:
        addNull();
        break;
    }
}

void RecordData::addCell(const RecordData& other, qsizetype row, size_t column)
{
    const Cell& source = other.cell(row, column);
    if (source.kind == Kind::Text) {
        addText(other.textOf(source));
    } else {
        newCell() = source;
    }
}

QVariant RecordData::variant(qsizetype row, size_t column) const
{
    const Cell& source = cell(row, column);
    const ColumnKind kind = (*m_kinds)[column];
    switch (source.kind) {
    case Kind::Null:
        return {};
    case Kind::Integer:
        if (kind == ColumnKind::Double) {
            return static_cast<double>(source.integer);
        }
        return isYesNo(kind) ? QVariant(static_cast<int>(source.integer)) : QVariant(source.integer);
    case Kind::Real:
        return isYesNo(kind) ? QVariant(static_cast<int>(source.real)) : QVariant(source.real);
    case Kind::Text:
        break;
    }
    QString text = fromUtf8(textOf(source));
    if (kind == ColumnKind::Date) {
        const QDate day = dayOf(text);
        if (day.isValid()) {
            return day;
        }
    }
    return text;
}

Value RecordData::value(qsizetype row, size_t column) const
{
    const Cell& source = cell(row, column);
    switch (source.kind) {
    case Kind::Integer:
        return valueOfNumber(static_cast<double>(source.integer), (*m_kinds)[column]);
    case Kind::Real:
        return valueOfNumber(source.real, (*m_kinds)[column]);
    case Kind::Text:
        return valueOfText(fromUtf8(textOf(source)), (*m_kinds)[column]);
    case Kind::Null:
        break;
    }
    return {};
}

Value valueOfText(QString text, ColumnKind kind)
{
    if (kind == ColumnKind::Date) {
        const QDate day = dayOf(text);
        if (day.isValid()) {
            return Value::ofDate(day);
        }
    }
    return Value::ofText(std::move(text));
}

Value valueOfNumber(double number, ColumnKind kind)
{
    Value value = Value::ofNumber(number);
    if (isYesNo(kind)) {
        value.type = ValueType::Boolean;
    }
    return value;
}

} // namespace oVELDRA::store
