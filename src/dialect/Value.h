#pragma once

#include <dialect/Ast.h>
#include <dialect/Catalog.h>
#include <runtime/Numbers.h>

#include <QDate>
#include <QString>

#include <optional>

namespace oVELDRA::dialect {

/// A value while an expression is worked out.
struct Value
{
    ValueType type = ValueType::Null; ///< never Any
    double number = 0;                ///< of Number, and -1 or 0 of Boolean
    QString text;
    QDate date;

    [[nodiscard]] bool isNull() const { return type == ValueType::Null; }

    [[nodiscard]] static Value ofNumber(double number) { return {ValueType::Number, number, {}, {}}; }
    [[nodiscard]] static Value ofBoolean(bool truth) { return {ValueType::Boolean, truth ? -1.0 : 0.0, {}, {}}; }
    [[nodiscard]] static Value ofText(QString text) { return {ValueType::Text, 0, std::move(text), {}}; }
    [[nodiscard]] static Value ofDate(QDate date) { return {ValueType::Date, 0, {}, date}; }
};

/// The user's number separators, read when they are first needed: most statements convert no text.
class LazySeparators
{
public:
    [[nodiscard]] const runtime::Separators& get() const
    {
        if (!m_separators) {
            m_separators = runtime::Separators::current();
        }
        return *m_separators;
    }

private:
    mutable std::optional<runtime::Separators> m_separators;
};

/// A value where a number is needed: texts by the locale, dates as days. RuntimeError 13 for a text that is no number,
/// 94 for Null.
[[nodiscard]] double numberOf(const Value& value, const LazySeparators& separators);

/// A value where a text is needed: numbers in their plain form, dates as dd/mm/yyyy, Null as "".
[[nodiscard]] QString textOf(const Value& value, const LazySeparators& separators);

/// A value where a date is needed. RuntimeError 13 for a text that is no date, 94 for Null.
[[nodiscard]] QDate dateOf(const Value& value);

/// A value as a column keeps it: quoted numbers converted by the locale, integers rounded, yes/no as -1 or 0, dates
/// read.
///
/// RuntimeError: 13 what cannot be converted, 6 an integer out of range, -2147467259 (native number 3163) a text that
/// is longer than the column. Null stays Null.
[[nodiscard]] Value storedValue(Value value, const Column& column, const LazySeparators& separators);

/// Refuses a text of that many characters for a column that is narrower (-2147467259, native number 3163).
void checkWidth(qsizetype characters, const Column& column);

/// A date as engines keep and compare it: yyyy-mm-dd.
[[nodiscard]] QString isoDate(QDate date);

/// The number of a number literal: always with a point.
[[nodiscard]] double literalNumber(const Literal& literal);

/// The date between number signs: ISO, or month/day/year (day/month/year where that is the only valid reading).
/// RuntimeError -2147217900 for anything else.
[[nodiscard]] QDate literalDate(const Literal& literal);

} // namespace oVELDRA::dialect
