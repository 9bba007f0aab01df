#include "SqlLiteral.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace tornel::sql {

QString text(QStringView value)
{
    QString doubled = value.toString();
    doubled.replace(u'\'', u"''"_s);
    return u'\'' + doubled + u'\'';
}

QString textOrNull(QStringView value)
{
    return value.isEmpty() ? u"Null"_s : text(value);
}

QString number(double value)
{
    QString digits = QString::number(value, 'f', 8);
    while (digits.endsWith(u'0')) {
        digits.chop(1);
    }
    if (digits.endsWith(u'.')) {
        digits.chop(1);
    }
    return decimal(digits);
}

QString decimal(QStringView pointed)
{
    QString digits = pointed.toString();
    digits.replace(u'.', QLocale().decimalPoint());
    return textOrNull(digits);
}

QString date(QDate value)
{
    return u"datevalue('"_s + value.toString(u"dd/MM/yyyy"_s) + u"')"_s;
}

QString flag(bool value)
{
    return value ? u"-1"_s : u"0"_s;
}

} // namespace tornel::sql
