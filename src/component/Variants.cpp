#include "Variants.h"

#include "ConnectionHandle.h"

#include <QDate>
#include <QObject>

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>

namespace oVELDRA::cinterface {

namespace {

constexpr int WrongArgument = 5;
constexpr int Overflow = 6;
constexpr int WrongType = 13;
constexpr int NullWhereValueIsNeeded = 94;

QDate dateFrom(const char* text)
{
    const QDate date = QDate::fromString(textFrom(text), Qt::ISODate);
    if (!date.isValid()) {
        throw RuntimeError(WrongArgument);
    }
    return date;
}

/// A yes/no column keeps the small integer that was written.
int flagFrom(qint64 integer)
{
    if (integer < std::numeric_limits<int>::min() || integer > std::numeric_limits<int>::max()) {
        throw RuntimeError(Overflow);
    }
    return static_cast<int>(integer);
}

} // namespace

QString textFrom(const char* text)
{
    if (text == nullptr) {
        throw RuntimeError(NullWhereValueIsNeeded);
    }
    const QByteArrayView bytes(text);
    if (!bytes.isValidUtf8()) {
        throw RuntimeError(WrongArgument, QStringLiteral("El texto no está en UTF-8."), QStringLiteral("oVELDRA"));
    }
    return QString::fromUtf8(bytes);
}

char* newText(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    if (bytes.contains('\0')) {
        throw RuntimeError(WrongArgument, QStringLiteral("El texto contiene un carácter nulo."),
                           QStringLiteral("oVELDRA"));
    }
    auto copy = std::make_unique<char[]>(static_cast<std::size_t>(bytes.size()) + 1);
    std::copy(bytes.cbegin(), bytes.cend(), copy.get());
    return copy.release();
}

QVariant argumentFrom(const oveldra_variant& variant)
{
    switch (variant.kind) {
    case OVELDRA_OMITTED:
        return {};
    case OVELDRA_NULL:
        return QVariant::fromValue(nullptr);
    case OVELDRA_BOOLEAN:
        return variant.value.integer != 0;
    case OVELDRA_INTEGER:
        return QVariant::fromValue<qlonglong>(variant.value.integer);
    case OVELDRA_DOUBLE:
        return variant.value.number;
    case OVELDRA_TEXT:
        return textFrom(variant.value.text);
    case OVELDRA_DATE:
        return dateFrom(variant.value.text);
    case OVELDRA_CONNECTION:
        return QVariant::fromValue(variant.value.connection != nullptr ? variant.value.connection->connection
                                                                       : nullptr);
    case OVELDRA_OBJECT:
        // Whatever it is, it is an object, and none that the component knows.
        return QVariant::fromValue<QObject*>(nullptr);
    default:
        throw RuntimeError(WrongArgument);
    }
}

QVariant fieldFrom(const oveldra_variant& variant)
{
    switch (variant.kind) {
    case OVELDRA_NULL:
        return {};
    case OVELDRA_BOOLEAN:
        return flagFrom(variant.value.integer);
    case OVELDRA_INTEGER:
    case OVELDRA_DOUBLE:
    case OVELDRA_TEXT:
    case OVELDRA_DATE:
        return argumentFrom(variant);
    default:
        throw RuntimeError(WrongType);
    }
}

oveldra_variant variantFrom(const QVariant& value, qint32 none)
{
    oveldra_variant result{};
    if (!value.isValid()) {
        result.kind = none;
        return result;
    }
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
        result.kind = OVELDRA_BOOLEAN;
        result.value.integer = value.toInt();
        break;
    case QMetaType::LongLong:
        result.kind = OVELDRA_INTEGER;
        result.value.integer = value.toLongLong();
        break;
    case QMetaType::Double:
        result.kind = OVELDRA_DOUBLE;
        result.value.number = value.toDouble();
        break;
    case QMetaType::QString:
        result.kind = OVELDRA_TEXT;
        result.value.text = newText(value.toString());
        break;
    case QMetaType::QDate:
        result.kind = OVELDRA_DATE;
        result.value.text = newText(value.toDate().toString(Qt::ISODate));
        break;
    default:
        throw RuntimeError(WrongType);
    }
    return result;
}

} // namespace oVELDRA::cinterface
