#include "StatementParts.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace oVELDRA::histories {

using namespace Qt::StringLiterals;

namespace {

QString inQuotes(QString text)
{
    return u'\'' + text.replace(u'\'', u"''"_s) + u'\'';
}

/// Decimals and what they are read back as.
Said saidNumber(double number, int decimals)
{
    QString digits = QString::number(number, 'f', decimals);
    const double read = digits.toDouble();
    return {digits.replace(u'.', QLocale().decimalPoint()), read};
}

Truth both(const Truth& a, const Truth& b)
{
    if (a == false || b == false) {
        return false;
    }
    return a && b ? Truth(true) : std::nullopt;
}

Truth negated(const Truth& truth)
{
    return truth ? Truth(!*truth) : std::nullopt;
}

} // namespace

Truth equals(const QVariant& cell, const QVariant& value)
{
    if (!cell.isValid() || !value.isValid()) {
        return std::nullopt;
    }
    if (cell.typeId() == QMetaType::QString) {
        return sameText(cell.toString(), value.toString());
    }
    return cellOrder(cell, value) == 0;
}

Said null()
{
    return {u"Null"_s, {}};
}

Said quoted(const QString& text)
{
    return {inQuotes(text), text};
}

Said bare(int number)
{
    return {QString::number(number), static_cast<double>(number)};
}

Said quotedNumber(double number, int decimals)
{
    const Said said = saidNumber(number, decimals);
    return {inQuotes(said.text), said.value};
}

Said threeDigitsOf(int number)
{
    constexpr int digits = 3;
    return {inQuotes(QString::number(number).rightJustified(digits, u'0')), static_cast<double>(number)};
}

Said cdblOf(double number, int decimals)
{
    const Said said = saidNumber(number, decimals);
    return {u"cdbl('"_s + said.text + u"')", said.value};
}

Said dateValue(QDate date)
{
    return {u"datevalue('"_s + date.toString(u"dd/MM/yyyy"_s) + u"')", date};
}

Said unreadableNumber()
{
    return {u"'doce'"_s, {}, Refusal{typeMismatch}};
}

Said unreadableDate()
{
    return {u"datevalue('31/02/2024')"_s, {}, Refusal{typeMismatch}};
}

Condition is(const QString& column, const Said& value)
{
    return {column + u" = " + value.text, [column, value](const ModelTable& table, const Row& row) {
                return equals(table.cell(row, column), value.value);
            }};
}

Condition in(const QString& column, const std::vector<Said>& values)
{
    QStringList texts;
    for (const Said& value : values) {
        texts << value.text;
    }
    return {column + u" in (" + texts.join(u',') + u')', [column, values](const ModelTable& table, const Row& row) {
                const QVariant cell = table.cell(row, column);
                return cell.isValid() ? Truth(std::any_of(
                                            values.begin(), values.end(),
                                            [&cell](const Said& value) { return equals(cell, value.value) == true; }))
                                      : std::nullopt;
            }};
}

Condition between(const QString& column, const Said& first, const Said& last)
{
    return {column + u" between " + first.text + u" and " + last.text,
            [column, first, last](const ModelTable& table, const Row& row) {
                const QVariant cell = table.cell(row, column);
                return cell.isValid() ? Truth(cellOrder(first.value, cell) <= 0 && cellOrder(cell, last.value) <= 0)
                                      : std::nullopt;
            }};
}

Condition like(const QString& column, const QString& pattern)
{
    return {column + u" like " + inQuotes(pattern), [column, pattern](const ModelTable& table, const Row& row) {
                const QVariant cell = table.cell(row, column);
                return cell.isValid() ? Truth(isLike(cell.toString(), pattern)) : std::nullopt;
            }};
}

Condition isNull(const QString& column)
{
    return {column + u" is null",
            [column](const ModelTable& table, const Row& row) { return Truth(!table.cell(row, column).isValid()); }};
}

Condition operator&&(const Condition& a, const Condition& b)
{
    return {a.text + u" and " + b.text,
            [a, b](const ModelTable& table, const Row& row) { return both(a.holds(table, row), b.holds(table, row)); }};
}

Condition operator||(const Condition& a, const Condition& b)
{
    return {u'(' + a.text + u" or " + b.text + u')', [a, b](const ModelTable& table, const Row& row) {
                return negated(both(negated(a.holds(table, row)), negated(b.holds(table, row))));
            }};
}

Condition operator!(const Condition& condition)
{
    return {u"not ("_s + condition.text + u')',
            [condition](const ModelTable& table, const Row& row) { return negated(condition.holds(table, row)); }};
}

} // namespace oVELDRA::histories
