#include "Variants.h"

#include "Errors.h"
#include "Texts.h"

#include <QDate>
#include <QDateTime>

#include <cmath>
#include <limits>

using Microsoft::WRL::ComPtr;

namespace oVELDRA::automation {

namespace {

constexpr int WrongType = 13;

/// Day 0 of automation's dates, which count days.
const QDate dayZero(1899, 12, 30);

Variant changed(const VARIANT& value, VARTYPE type)
{
    Variant result;
    // Not the user's number format: only numbers and booleans come here. The headers do not say that the source stays
    // as it is.
    const HRESULT done = VariantChangeTypeEx(result.place(), const_cast<VARIANT*>(&value), LOCALE_INVARIANT, 0, type);
    if (FAILED(done)) {
        throw RuntimeError(numberOf(done));
    }
    return result;
}

bool isNumber(VARTYPE type)
{
    switch (type) {
    case VT_I1:
    case VT_I2:
    case VT_I4:
    case VT_I8:
    case VT_INT:
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
    case VT_UI8:
    case VT_UINT:
    case VT_R4:
    case VT_R8:
    case VT_CY:
    case VT_DECIMAL:
    case VT_BOOL:
        return true;
    default:
        return false;
    }
}

QDate dateFrom(DATE days)
{
    // The fraction is the time of day, also before day 0.
    return dayZero.addDays(static_cast<qint64>(std::trunc(days)));
}

/// By its seven digits, as the automation runtime shows a single: 0.1 is not to become 0.100000001490116.
double numberFrom(float single)
{
    constexpr int digitsOfSingle = 7;
    return QByteArray::number(static_cast<double>(single), 'g', digitsOfSingle).toDouble();
}

} // namespace

Variant::Variant() noexcept
{
    VariantInit(&m_value);
}

Variant::Variant(QStringView text) : Variant()
{
    m_value.bstrVal = newText(text);
    m_value.vt = VT_BSTR;
}

Variant::Variant(qint32 number) noexcept : Variant()
{
    m_value.lVal = number;
    m_value.vt = VT_I4;
}

Variant::Variant(VARIANT& value) noexcept : Variant()
{
    m_value.pvarVal = &value;
    m_value.vt = VT_VARIANT | VT_BYREF;
}

Variant::Variant(Variant&& other) noexcept : m_value(other.m_value)
{
    VariantInit(&other.m_value);
}

Variant::~Variant()
{
    VariantClear(&m_value);
}

ComPtr<IDispatch> Variant::object() const
{
    const Variant plain = plainOf(m_value);
    const VARIANT& value = *plain;
    ComPtr<IDispatch> found;
    if (value.vt == VT_DISPATCH) {
        found = value.pdispVal;
    } else if (value.vt == VT_UNKNOWN && value.punkVal != nullptr) {
        value.punkVal->QueryInterface(__uuidof(IDispatch), &found);
    }
    return found;
}

bool Variant::toBool() const
{
    const Variant plain = plainOf(m_value);
    if (!isNumber((*plain).vt)) {
        throw RuntimeError(WrongType);
    }
    return (*changed(*plain, VT_BOOL)).boolVal != VARIANT_FALSE;
}

qint64 Variant::toInteger() const
{
    const Variant plain = plainOf(m_value);
    if (plain.isEmpty()) {
        return 0;
    }
    if (!isNumber((*plain).vt)) {
        throw RuntimeError(WrongType);
    }
    return (*changed(*plain, VT_I8)).llVal;
}

Variant plainOf(const VARIANT& value)
{
    Variant plain;
    // Its headers do not say that the source stays as it is.
    const HRESULT done = VariantCopyInd(plain.place(), const_cast<VARIANT*>(&value));
    if (FAILED(done)) {
        throw RuntimeError(numberOf(done));
    }
    return plain;
}

QVariant fieldFrom(const VARIANT& value)
{
    switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
        return {};
    case VT_BSTR:
        return textFrom(value.bstrVal);
    case VT_BOOL:
        return value.boolVal != VARIANT_FALSE ? -1 : 0;
    case VT_UI1: // a small integer, as yes/no columns may keep
        return static_cast<int>(value.bVal);
    case VT_R4:
        return numberFrom(value.fltVal);
    case VT_R8:
        return value.dblVal;
    case VT_DATE:
        return dateFrom(value.date);
    case VT_CY:
    case VT_DECIMAL:
        return (*changed(value, VT_R8)).dblVal;
    default:
        if (!isNumber(value.vt)) {
            throw RuntimeError(WrongType);
        }
        return QVariant::fromValue<qlonglong>((*changed(value, VT_I8)).llVal);
    }
}

void putField(const QVariant& value, VARIANT& place)
{
    if (!value.isValid()) {
        place.vt = VT_NULL;
        return;
    }
    switch (value.typeId()) {
    case QMetaType::QString:
        place.bstrVal = newText(value.toString());
        place.vt = VT_BSTR;
        break;
    case QMetaType::Int:
        place.lVal = value.toInt();
        place.vt = VT_I4;
        break;
    case QMetaType::LongLong: {
        const qlonglong integer = value.toLongLong();
        // Scripts know no integers of 64 bits; a double holds all that have up to 15 digits.
        if (integer >= std::numeric_limits<LONG>::min() && integer <= std::numeric_limits<LONG>::max()) {
            place.lVal = static_cast<LONG>(integer);
            place.vt = VT_I4;
        } else {
            place.dblVal = static_cast<double>(integer);
            place.vt = VT_R8;
        }
        break;
    }
    case QMetaType::Double:
        place.dblVal = value.toDouble();
        place.vt = VT_R8;
        break;
    case QMetaType::QDate:
        place.date = static_cast<DATE>(dayZero.daysTo(value.toDate()));
        place.vt = VT_DATE;
        break;
    default:
        throw RuntimeError(WrongType);
    }
}

} // namespace oVELDRA::automation
