#include "Bindings.h"

#include <dialect/Functions.h>
#include <dialect/TextComparison.h>

#include <QStringEncoder>

#include <cmath>

namespace oVELDRA::store {

using dialect::BindAs;
using dialect::ColumnKind;
using dialect::ExprKind;
using dialect::Literal;
using dialect::Parameter;
using dialect::TokenKind;
using dialect::Value;
using dialect::ValueType;

namespace {

/// The text literal that an expression is, without quotes to undouble; null when it is something else.
const Literal* plainText(const dialect::Expr& expr, const dialect::Literals& literals)
{
    if (expr.kind != ExprKind::Literal) {
        return nullptr;
    }
    const Literal& literal = literals[expr.literal];
    return literal.kind == TokenKind::Text && !literal.doubled ? &literal : nullptr;
}

class Binder
{
public:
    Binder(const dialect::Literals& literals, const dialect::LazySeparators& separators, Bindings& bindings)
        : m_literals(literals), m_separators(separators), m_bindings(bindings)
    {}

    /// False when the value does not suit the parameter.
    bool bind(const Parameter& parameter)
    {
        switch (parameter.as) {
        case BindAs::Stored:
            bindStored(parameter);
            return true;
        case BindAs::Computation:
            m_bindings.addComputation({parameter.computation, &m_literals, &m_separators});
            return true;
        case BindAs::PlainText:
            return bindPlainText(*parameter.expr);
        case BindAs::Whole:
            return bindWhole(*parameter.expr);
        case BindAs::Count:
            bindCount(*parameter.expr);
            return true;
        case BindAs::Prefix:
        case BindAs::PrefixEnd:
            return bindPrefix(parameter);
        default:
            bindValue(parameter);
            return true;
        }
    }

private:
    [[nodiscard]] Value valueOf(const dialect::Expr& expr) const
    {
        return dialect::evaluate(expr, {&m_literals, &m_separators, nullptr});
    }

    void bindValue(const Parameter& parameter)
    {
        const Value value = valueOf(*parameter.expr);
        if (value.isNull()) {
            m_bindings.addNull();
        } else if (parameter.as == BindAs::Number) {
            m_bindings.addReal(dialect::numberOf(value, m_separators));
        } else if (parameter.as == BindAs::FoldedText) {
            m_bindings.addText(dialect::folded(dialect::textOf(value, m_separators)));
        } else if (parameter.as == BindAs::Expression) {
            m_bindings.addText(dialect::LikePattern(dialect::textOf(value, m_separators)).expression());
        } else {
            m_bindings.add(value);
        }
    }

    void bindCount(const dialect::Expr& expr)
    {
        const Value value = valueOf(expr);
        if (value.isNull()) {
            m_bindings.addNull();
        } else {
            m_bindings.addInteger(dialect::countOf(value, m_separators));
        }
    }

    bool bindWhole(const dialect::Expr& expr)
    {
        const Value value = valueOf(expr);
        if (value.isNull()) {
            m_bindings.addNull();
            return true;
        }
        constexpr double largest = 1LL << 53; // up to here every whole number is one
        const double number = dialect::numberOf(value, m_separators);
        if (number != std::trunc(number) || std::abs(number) > largest) {
            return false;
        }
        m_bindings.addInteger(static_cast<qint64>(number));
        return true;
    }

    bool bindPlain(QStringView text)
    {
        const QStringView trimmed = dialect::withoutTrailingBlanks(text);
        if (!dialect::isAscii(trimmed)) {
            return false;
        }
        m_bindings.addText(trimmed);
        return true;
    }

    bool bindPlainText(const dialect::Expr& expr)
    {
        if (const Literal* const literal = plainText(expr, m_literals)) {
            return bindPlain(literal->raw);
        }
        const Value value = valueOf(expr);
        if (value.isNull()) {
            m_bindings.addNull();
            return true;
        }
        return bindPlain(dialect::textOf(value, m_separators));
    }

    bool bindPrefix(const Parameter& parameter)
    {
        const QString pattern = dialect::textOf(valueOf(*parameter.expr), m_separators);
        const QStringView prefix = dialect::withoutTrailingBlanks(dialect::LikePattern::prefixOf(pattern));
        if (prefix.isEmpty() || !dialect::isAscii(prefix)) {
            return false;
        }
        QString bound = prefix.toString().toLower();
        if (parameter.as == BindAs::PrefixEnd) {
            bound.back() = QChar(bound.back().unicode() + 1);
        }
        m_bindings.addText(bound);
        return true;
    }

    /// What is written to a column. Literals, the usual case, go straight from the statement to the engine.
    void bindStored(const Parameter& parameter)
    {
        const dialect::Column& column = *parameter.column;
        if (const Literal* const literal = plainText(*parameter.expr, m_literals)) {
            if (column.kind == ColumnKind::Text) {
                dialect::checkWidth(literal->raw.size(), column);
                m_bindings.addText(literal->raw);
                return;
            }
            if (column.kind == ColumnKind::Double) {
                m_bindings.addReal(runtime::CDbl(literal->raw, m_separators.get()));
                return;
            }
        }
        const Value value = dialect::storedValue(valueOf(*parameter.expr), column, m_separators);
        const bool whole = column.kind == ColumnKind::Integer || column.kind == ColumnKind::SmallInteger;
        if (whole && !value.isNull()) {
            m_bindings.addInteger(static_cast<qint64>(value.number));
        } else {
            m_bindings.add(value);
        }
    }

    const dialect::Literals& m_literals;
    const dialect::LazySeparators& m_separators;
    Bindings& m_bindings;
};

} // namespace

void Bindings::clear()
{
    m_items.clear();
    m_bytes.clear();
    m_computations.clear();
}

void Bindings::addInteger(qint64 integer)
{
    Item& item = m_items.emplace_back();
    item.kind = Kind::Integer;
    item.integer = integer;
}

void Bindings::addReal(double real)
{
    Item& item = m_items.emplace_back();
    item.kind = Kind::Real;
    item.real = real;
}

void Bindings::addText(QStringView text)
{
    const size_t offset = m_bytes.size();
    m_bytes.resize(offset + static_cast<size_t>(text.size()));
    size_t length = 0;
    for (const QChar c : text) {
        if (c.unicode() >= 0x80) {
            break;
        }
        m_bytes[offset + length++] = static_cast<char>(c.unicode());
    }
    if (length < static_cast<size_t>(text.size())) {
        const QByteArray utf8 = text.mid(static_cast<qsizetype>(length)).toUtf8();
        m_bytes.resize(offset + length);
        m_bytes.append(utf8.constData(), static_cast<size_t>(utf8.size()));
        length = m_bytes.size() - offset;
    }
    Item& item = m_items.emplace_back();
    item.kind = Kind::Text;
    item.offset = offset;
    item.length = length;
}

void Bindings::addComputation(const BoundComputation& computation)
{
    Item& item = m_items.emplace_back();
    item.kind = Kind::Computation;
    item.computation = &m_computations.emplace_back(computation);
}

void Bindings::add(const Value& value)
{
    switch (value.type) {
    case ValueType::Text:
        addText(value.text);
        break;
    case ValueType::Date:
        addText(dialect::isoDate(value.date));
        break;
    case ValueType::Boolean:
        addInteger(static_cast<qint64>(value.number));
        break;
    case ValueType::Number:
        addReal(value.number);
        break;
    default:
        addNull();
        break;
    }
}

bool bindParameters(const dialect::EngineText& text, const dialect::Literals& literals,
                    const dialect::LazySeparators& separators, Bindings& bindings)
{
    bindings.clear();
    Binder binder(literals, separators, bindings);
    for (const Parameter& parameter : text.parameters) {
        if (!binder.bind(parameter)) {
            return false;
        }
    }
    return true;
}

} // namespace oVELDRA::store
