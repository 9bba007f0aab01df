#pragma once

#include "ReferenceModel.h"

#include <QDate>

namespace oVELDRA::histories {

/// A value as a statement says it, and what that is to the store.
struct Said
{
    QString text;
    QVariant value;
    std::optional<Refusal> refusal{};
};

[[nodiscard]] Said null();
/// Quoted, with its quotes doubled.
[[nodiscard]] Said quoted(const QString& text);
/// Bare.
[[nodiscard]] Said bare(int number);
/// Quoted, with that many decimals and the locale's separator, like the masks of the screens write it.
[[nodiscard]] Said quotedNumber(double number, int decimals);
/// Quoted, with at least three digits.
[[nodiscard]] Said threeDigitsOf(int number);
/// A number as updates write it: cdbl('…').
[[nodiscard]] Said cdblOf(double number, int decimals);
/// datevalue('dd/mm/yyyy').
[[nodiscard]] Said dateValue(QDate date);
/// A text that neither a number column nor datevalue() can take.
[[nodiscard]] Said unreadableNumber();
[[nodiscard]] Said unreadableDate();

/// Whether a cell equals a value, as a condition sees it.
[[nodiscard]] Truth equals(const QVariant& cell, const QVariant& value);

/// A condition of a statement.
struct Condition
{
    QString text;
    std::function<Truth(const ModelTable&, const Row&)> holds;
};

[[nodiscard]] Condition is(const QString& column, const Said& value);
[[nodiscard]] Condition in(const QString& column, const std::vector<Said>& values);
[[nodiscard]] Condition between(const QString& column, const Said& first, const Said& last);
[[nodiscard]] Condition like(const QString& column, const QString& pattern);
[[nodiscard]] Condition isNull(const QString& column);
[[nodiscard]] Condition operator&&(const Condition& a, const Condition& b);
[[nodiscard]] Condition operator||(const Condition& a, const Condition& b);
[[nodiscard]] Condition operator!(const Condition& condition);

} // namespace oVELDRA::histories
