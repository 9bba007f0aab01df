#include "HistoryWords.h"

#include <utility>

namespace oVELDRA::histories {

using namespace Qt::StringLiterals;
using dialect::ColumnKind;

QString HistoryWords::catalog()
{
    return spelling(m_dice.oneOf<QString>({u"A1"_s, u"B-2"_s, u"Ñandú"_s, u"C 3"_s, u"100"_s, u"ca"_s}));
}

QString HistoryWords::product()
{
    return spelling(m_dice.oneOf<QString>(
        {u"P1"_s, u"P2"_s, u"Pñ"_s, u"10"_s, u"9"_s, u"Á"_s, u"A"_s, u"p-x"_s, u"P'5"_s, u"Lana (m)"_s}));
}

QString HistoryWords::article()
{
    return spelling(
        m_dice.oneOf<QString>({u"AC-1"_s, u"AC-2"_s, u"AC-3"_s, u"ñ-7"_s, u"tornillo"_s, u"Tórculo"_s, u"x[1]"_s}));
}

QString HistoryWords::unit()
{
    return m_dice.oneOf<QString>({u"01"_s, u"07"_s, u"KG"_s, u"kg"_s});
}

QString HistoryWords::position()
{
    return m_dice.oneOf<QString>({u"7208.90.00.110H"_s, u"7208.90.00.120V"_s, u"3920.10.99.000K"_s});
}

QString HistoryWords::interno()
{
    return m_dice.oneOf<QString>({u"TOR-1"_s, u"TOR-2"_s, u"tor-3"_s, u"Añejo"_s, u"5"_s});
}

QString HistoryWords::office()
{
    return m_dice.oneOf<QString>({u"073"_s, u"001"_s});
}

QString HistoryWords::export_()
{
    return u"26073EC01%1"_s.arg(m_dice.below(20), 3, 10, QChar(u'0'));
}

QString HistoryWords::declaration()
{
    if (m_dice.chance(60)) {
        return spelling(u"26073IT140000%1a"_s.arg(m_dice.below(25), 2, 10, QChar(u'0')));
    }
    return spelling(
        m_dice.oneOf<QString>({u"Ñandú 1"_s, u"nandu 1"_s, u"Z"_s, u"24001it01"_s, u"24001IT02"_s, u"Ü-2"_s}));
}

QString HistoryWords::word()
{
    static const std::vector<QString> parts{u"chapa"_s, u"Ñu"_s,   u"año"_s, u"ÁRBOL"_s, u"arbol"_s, u"pingüino"_s,
                                            u"m2"_s,    u"(B)"_s,  u"1.5"_s, u"x*y"_s,   u"50%"_s,   u"a_b"_s,
                                            u"[z]"_s,   u"\\d+"_s, u"^"_s,   u"$|?"_s,   u"{3}"_s,   u"#1&2"_s};
    return m_dice.oneOf(parts);
}

QString HistoryWords::description()
{
    QString text = word();
    for (int more = m_dice.below(3); more > 0; --more) {
        text += (m_dice.chance(70) ? u" "_s : u"-"_s) + word();
    }
    return spelling(text);
}

QDate HistoryWords::date()
{
    return QDate(2023, 1, 1).addDays(m_dice.below(4 * 365));
}

double HistoryWords::number(int decimals)
{
    const double whole = m_dice.below(m_dice.chance(80) ? 1'000 : 100'000'000);
    double unit = 1;
    for (int digits = m_dice.below(decimals + 1); digits > 0; --digits) {
        unit *= 10;
    }
    return whole / unit; // in one step, so that it is the very number that its text is read as
}

QString HistoryWords::spelling(const QString& code)
{
    switch (m_dice.below(6)) {
    case 0:
        return code.toUpper();
    case 1:
        return code.toLower();
    case 2:
        return code + u' ';
    default:
        return code;
    }
}

Said HistoryWords::valueFor(const dialect::Column& column)
{
    if (m_dice.chance(6)) {
        return null();
    }
    switch (column.kind) {
    case ColumnKind::Text:
        return quoted(column.width > 0 && column.width < 20 ? unit() : description());
    case ColumnKind::Date:
        return dateValue(date());
    case ColumnKind::Boolean:
    case ColumnKind::SmallInteger:
        return bare(m_dice.below(3) - 1);
    case ColumnKind::Integer:
        return m_dice.chance(50) ? threeDigitsOf(m_dice.below(12)) : bare(m_dice.below(12));
    case ColumnKind::Double:
        break;
    }
    constexpr int decimals = 6;
    const double value = number(decimals);
    return m_dice.chance(50) ? cdblOf(value, decimals) : quotedNumber(value, decimals);
}

QString HistoryWords::pattern(const QString& text)
{
    const QString start = text.left(m_dice.below(4));
    switch (m_dice.below(6)) {
    case 0:
        return u'%' + text.mid(m_dice.below(3), 2) + u'%';
    case 1:
        return u'_' + text.mid(1, 1) + u'%';
    case 2:
        return u"[a-fñ]%"_s;
    case 3:
        return u"%[!a-z]"_s;
    case 4:
        return spelling(text);
    default:
        return spelling(start) + u'%';
    }
}

QString HistoryWords::presentText(const ReferenceModel& model, const QString& table, const QString& column,
                                  const QString& otherwise)
{
    const ModelTable& rows = model.table(table);
    if (rows.rows.empty()) {
        return otherwise;
    }
    const QVariant cell = rows.cell(m_dice.oneOf(rows.rows), column);
    return cell.isValid() ? cell.toString() : otherwise;
}

/// Mostly a value that is there.
Said HistoryWords::likelyValue(const ReferenceModel& model, const QString& table, const dialect::Column& column)
{
    const std::vector<Row>& rows = model.table(table).rows;
    const QVariant cell =
        rows.empty() || m_dice.chance(20) ? QVariant() : model.table(table).cell(m_dice.oneOf(rows), column.name);
    if (!cell.isValid()) {
        Said value = valueFor(column);
        return value.value.isValid() ? value : quoted({});
    }
    switch (column.kind) {
    case ColumnKind::Text:
        return quoted(spelling(cell.toString()));
    case ColumnKind::Date:
        return dateValue(cell.toDate());
    case ColumnKind::Double: {
        constexpr int decimals = 6;
        return m_dice.chance(50) ? cdblOf(cell.toDouble(), decimals) : quotedNumber(cell.toDouble(), decimals);
    }
    default:
        return m_dice.chance(50) ? bare(cell.toInt()) : quotedNumber(cell.toDouble(), 0);
    }
}

Condition HistoryWords::textCondition(const ReferenceModel& model, const QString& table, const dialect::Column& column)
{
    const auto value = [&] { return quoted(spelling(presentText(model, table, column.name, u"x"_s))); };
    switch (m_dice.below(4)) {
    case 0:
        return in(column.name, {value(), value(), quoted(description())});
    case 1:
        return like(column.name, pattern(presentText(model, table, column.name, u"año"_s)));
    case 2: {
        const Said first = value();
        return between(column.name, first, value());
    }
    default:
        return is(column.name, value());
    }
}

Condition HistoryWords::simpleCondition(const ReferenceModel& model, const QString& table)
{
    const dialect::Column& column = m_dice.oneOf(model.table(table).definition.columns);
    if (m_dice.chance(8)) {
        return isNull(column.name);
    }
    if (column.kind == ColumnKind::Text) {
        return textCondition(model, table, column);
    }
    const Said value = likelyValue(model, table, column);
    if (value.value.typeId() == QMetaType::QString) { // nothing there to compare with
        return isNull(column.name);
    }
    if (m_dice.chance(40)) {
        const Said other = likelyValue(model, table, column);
        return other.value.typeId() == QMetaType::QString ? is(column.name, value) : between(column.name, value, other);
    }
    return m_dice.chance(30) ? in(column.name, {value, value}) : is(column.name, value);
}

Condition HistoryWords::condition(const ReferenceModel& model, const QString& table)
{
    Condition first = simpleCondition(model, table);
    switch (m_dice.below(6)) {
    case 0:
        return first && simpleCondition(model, table);
    case 1:
        return first || simpleCondition(model, table);
    case 2:
        return !first;
    default:
        return first;
    }
}

} // namespace oVELDRA::histories
