#include "Functions.h"

#include <oVELDRA/RuntimeError.h>

#include <runtime/Dates.h>
#include <runtime/Texts.h>

#include <QLocale>

#include <algorithm>
#include <array>
#include <limits>

namespace oVELDRA::dialect {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array functions = {
    Function{u"format", FunctionId::Format, 2, 2, ValueType::Text, false},
    Function{u"left", FunctionId::Left, 2, 2, ValueType::Text, false},
    Function{u"right", FunctionId::Right, 2, 2, ValueType::Text, false},
    Function{u"mid", FunctionId::Mid, 2, 3, ValueType::Text, false},
    Function{u"len", FunctionId::Len, 1, 1, ValueType::Number, false},
    Function{u"trim", FunctionId::Trim, 1, 1, ValueType::Text, false},
    Function{u"ucase", FunctionId::UCase, 1, 1, ValueType::Text, false},
    Function{u"lcase", FunctionId::LCase, 1, 1, ValueType::Text, false},
    Function{u"cdbl", FunctionId::CDbl, 1, 1, ValueType::Number, false},
    Function{u"cstr", FunctionId::CStr, 1, 1, ValueType::Text, false},
    Function{u"val", FunctionId::Val, 1, 1, ValueType::Number, false},
    Function{u"datevalue", FunctionId::DateValue, 1, 1, ValueType::Date, false},
    Function{u"iif", FunctionId::IIf, 3, 3, ValueType::Any, false},
    Function{u"count", FunctionId::Count, 1, 1, ValueType::Number, true},
    Function{u"sum", FunctionId::Sum, 1, 1, ValueType::Number, true},
    Function{u"min", FunctionId::Min, 1, 1, ValueType::Any, true},
    Function{u"max", FunctionId::Max, 1, 1, ValueType::Any, true},
};

/// The number at the start of a text, always with a point, 0 without one: what `val` reads.
double leadingNumber(const QString& text)
{
    QString digits;
    for (const QChar c : text) {
        if (c == u' ') {
            continue; // val skips blanks, even between digits
        }
        const bool sign = (c == u'-' || c == u'+') && digits.isEmpty();
        const bool point = c == u'.' && !digits.contains(u'.');
        if (!sign && !point && (c < u'0' || c > u'9')) {
            break;
        }
        digits += c;
    }
    return QLocale::c().toDouble(digits);
}

Value formatted(const Value& value, const QString& mask, const LazySeparators& separators)
{
    switch (value.type) {
    case ValueType::Null:
        return Value::ofText({});
    case ValueType::Date:
        return Value::ofText(runtime::FormatDate(value.date, mask));
    case ValueType::Text:
        return Value::ofText(runtime::Format(QVariant(value.text), mask, separators.get()));
    default:
        return Value::ofText(runtime::Format(value.number, mask, separators.get()));
    }
}

} // namespace

std::span<const Function> functionTable()
{
    return functions;
}

int findFunction(QStringView name)
{
    const auto* const found = std::find_if(functions.begin(), functions.end(), [name](const Function& function) {
        return name.compare(function.name, Qt::CaseInsensitive) == 0;
    });
    return found == functions.end() ? -1 : static_cast<int>(found - functions.begin());
}

qsizetype countOf(const Value& value, const LazySeparators& separators)
{
    const double number = numberOf(value, separators);
    if (!(number >= 0)) {
        throw RuntimeError(5);
    }
    return static_cast<qsizetype>(std::min(number, double{std::numeric_limits<qint32>::max()}));
}

Value callFunction(FunctionId id, std::span<const Value> arguments, const LazySeparators& separators)
{
    const Value& first = arguments[0];
    if (id == FunctionId::Format) {
        return formatted(first, textOf(arguments[1], separators), separators);
    }
    if (id == FunctionId::CDbl) {
        return Value::ofNumber(numberOf(first, separators));
    }
    if (first.isNull()) {
        if (id == FunctionId::CStr || id == FunctionId::DateValue || id == FunctionId::Val) {
            throw RuntimeError(94);
        }
        return {};
    }
    const QString text = id == FunctionId::DateValue ? QString() : textOf(first, separators);
    switch (id) {
    case FunctionId::Left:
        return Value::ofText(text.left(countOf(arguments[1], separators)));
    case FunctionId::Right:
        return Value::ofText(text.right(countOf(arguments[1], separators)));
    case FunctionId::Mid: {
        const qsizetype start = countOf(arguments[1], separators);
        if (start == 0) {
            throw RuntimeError(5);
        }
        return Value::ofText(arguments.size() == 3 ? text.mid(start - 1, countOf(arguments[2], separators))
                                                   : text.mid(start - 1));
    }
    case FunctionId::Len:
        return Value::ofNumber(static_cast<double>(text.size()));
    case FunctionId::Trim:
        return Value::ofText(runtime::Trim(text));
    case FunctionId::UCase:
        return Value::ofText(text.toUpper());
    case FunctionId::LCase:
        return Value::ofText(text.toLower());
    case FunctionId::CStr:
        return Value::ofText(text);
    case FunctionId::Val:
        return Value::ofNumber(leadingNumber(text));
    case FunctionId::DateValue:
        return Value::ofDate(dateOf(first));
    default:
        throw RuntimeError(5);
    }
}

} // namespace oVELDRA::dialect
