#include "ValueConverter.h"

#include "Dates.h"
#include "Numbers.h"

#include <QDate>
#include <QMetaType>

using namespace Qt::StringLiterals;

namespace oVELDRA::runtime {

double toNumber(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
        return parseNumber(value.toString()).value_or(0.0);
    case QMetaType::Bool:
        return value.toBool() ? -1.0 : 0.0;
    default:
        return value.toDouble();
    }
}

QString toText(const QVariant& value)
{
    if (value.isNull()) {
        return {};
    }
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return CStr(value.toDouble());
    case QMetaType::Bool:
        return value.toBool() ? u"-1"_s : u"0"_s;
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        return FormatDate(value.toDate(), u"dd/mm/yyyy");
    default:
        return value.toString();
    }
}

} // namespace oVELDRA::runtime
