#include "Value.h"

#include "StatementError.h"

#include <runtime/Dates.h>

#include <QLocale>

#include <cmath>
#include <limits>

namespace oVELDRA::dialect {

using namespace Qt::StringLiterals;

namespace {

// Day 0 of date arithmetic.
const QDate& dateOrigin()
{
    static const QDate origin(1899, 12, 30);
    return origin;
}

/// Halves go to the even neighbour, as everywhere in the automation runtime.
double rounded(double number, double largest)
{
    const double result = std::nearbyint(number);
    if (!(result >= -largest - 1 && result <= largest)) {
        throw RuntimeError(6);
    }
    return result;
}

} // namespace

double numberOf(const Value& value, const LazySeparators& separators)
{
    switch (value.type) {
    case ValueType::Text:
        return runtime::CDbl(value.text, separators.get());
    case ValueType::Date:
        return static_cast<double>(dateOrigin().daysTo(value.date));
    case ValueType::Null:
        throw RuntimeError(94);
    default:
        return value.number;
    }
}

QString textOf(const Value& value, const LazySeparators& separators)
{
    switch (value.type) {
    case ValueType::Text:
        return value.text;
    case ValueType::Date:
        return runtime::FormatDate(value.date, u"dd/mm/yyyy");
    case ValueType::Null:
        return {};
    default:
        return runtime::CStr(value.number, separators.get());
    }
}

QDate dateOf(const Value& value)
{
    switch (value.type) {
    case ValueType::Text:
        return runtime::DateValue(value.text);
    case ValueType::Date:
        return value.date;
    case ValueType::Null:
        throw RuntimeError(94);
    default: {
        const QDate date = dateOrigin().addDays(static_cast<qint64>(runtime::Int(value.number)));
        if (!date.isValid() || date.year() > 9999 || date.year() < 100) {
            throw RuntimeError(6);
        }
        return date;
    }
    }
}

void checkWidth(qsizetype characters, const Column& column)
{
    if (column.width > 0 && characters > column.width) {
        throw textTooLong(column.name, column.width);
    }
}

Value storedValue(Value value, const Column& column, const LazySeparators& separators)
{
    if (value.isNull()) {
        return value;
    }
    switch (column.kind) {
    case ColumnKind::Text:
        if (value.type != ValueType::Text) {
            value = Value::ofText(textOf(value, separators));
        }
        checkWidth(value.text.size(), column);
        return value;
    case ColumnKind::Date:
        return Value::ofDate(dateOf(value));
    case ColumnKind::Double:
        return Value::ofNumber(numberOf(value, separators));
    case ColumnKind::Integer:
        return Value::ofNumber(rounded(numberOf(value, separators), std::numeric_limits<qint32>::max()));
    case ColumnKind::SmallInteger:
        return Value::ofNumber(rounded(numberOf(value, separators), std::numeric_limits<qint16>::max()));
    case ColumnKind::Boolean:
        return Value::ofBoolean(numberOf(value, separators) != 0);
    }
    return value;
}

QString isoDate(QDate date)
{
    return date.toString(Qt::ISODate);
}

double literalNumber(const Literal& literal)
{
    return QLocale::c().toDouble(literal.raw);
}

QDate literalDate(const Literal& literal)
{
    const QString text = literal.text().trimmed();
    QDate date = QDate::fromString(text, u"yyyy-M-d"_s);
    if (!date.isValid()) {
        date = QDate::fromString(text, u"M/d/yyyy"_s);
    }
    if (!date.isValid()) {
        date = QDate::fromString(text, u"d/M/yyyy"_s);
    }
    if (!date.isValid()) {
        throw syntaxReason(u"una fecha entre signos #", u"'%1' no es una fecha"_s.arg(text.left(40)));
    }
    return date;
}

} // namespace oVELDRA::dialect
