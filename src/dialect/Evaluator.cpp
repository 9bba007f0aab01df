#include "Evaluator.h"

#include "Functions.h"
#include "StatementError.h"
#include "TextComparison.h"

#include <QVarLengthArray>

#include <cmath>
#include <optional>

namespace oVELDRA::dialect {

namespace {

double finite(double number)
{
    if (!std::isfinite(number)) {
        throw RuntimeError(6);
    }
    return number;
}

double quotient(double dividend, double divisor)
{
    if (divisor == 0) {
        throw RuntimeError(dividend == 0 ? 6 : 11);
    }
    return finite(dividend / divisor);
}

class Evaluation
{
public:
    explicit Evaluation(const Surroundings& surroundings) : m_around(surroundings) {}

    [[nodiscard]] Value of(const Expr& expr) const
    {
        switch (expr.kind) {
        case ExprKind::Literal:
            return literal((*m_around.literals)[expr.literal]);
        case ExprKind::True:
            return Value::ofBoolean(true);
        case ExprKind::False:
            return Value::ofBoolean(false);
        case ExprKind::Null:
        case ExprKind::Star:
            return {};
        case ExprKind::Column:
            return m_around.row->column(expr.column);
        case ExprKind::Function:
            return function(expr);
        case ExprKind::Not:
        case ExprKind::And:
        case ExprKind::Or:
            return logic(expr);
        case ExprKind::Negate:
        case ExprKind::Add:
        case ExprKind::Subtract:
        case ExprKind::Multiply:
        case ExprKind::Divide:
            return arithmetic(expr);
        case ExprKind::Concatenate:
            return Value::ofText(textOf(of(*expr.args[0]), *m_around.separators) +
                                 textOf(of(*expr.args[1]), *m_around.separators));
        default:
            return truthValue(test(expr));
        }
    }

private:
    using Truth = std::optional<bool>;

    [[nodiscard]] static Value truthValue(Truth truth) { return truth ? Value::ofBoolean(*truth) : Value(); }

    [[nodiscard]] Truth truthOf(const Expr& expr) const
    {
        const Value value = of(expr);
        if (value.isNull()) {
            return std::nullopt;
        }
        return numberOf(value, *m_around.separators) != 0;
    }

    [[nodiscard]] static Value literal(const Literal& literal)
    {
        switch (literal.kind) {
        case TokenKind::Number:
            return Value::ofNumber(literalNumber(literal));
        case TokenKind::Date:
            return Value::ofDate(literalDate(literal));
        default:
            return Value::ofText(literal.text());
        }
    }

    [[nodiscard]] Value function(const Expr& expr) const
    {
        if (expr.aggregate) {
            return m_around.row->aggregate(expr);
        }
        const Function& function = functionTable()[static_cast<size_t>(expr.function)];
        if (function.id == FunctionId::IIf) {
            return of(*expr.args[truthOf(*expr.args[0]).value_or(false) ? 1 : 2]);
        }
        QVarLengthArray<Value, 3> arguments;
        for (const ExprPtr& argument : expr.args) {
            arguments.append(of(*argument));
        }
        return callFunction(function.id, arguments, *m_around.separators);
    }

    /// Three-valued: an operand that decides wins over a Null.
    [[nodiscard]] Value logic(const Expr& expr) const
    {
        if (expr.kind == ExprKind::Not) {
            const Truth truth = truthOf(*expr.args[0]);
            return truth ? Value::ofBoolean(!*truth) : Value();
        }
        const bool deciding = expr.kind == ExprKind::Or;
        bool unknown = false;
        for (const ExprPtr& operand : expr.args) {
            const Truth truth = truthOf(*operand);
            if (truth == deciding) {
                return Value::ofBoolean(deciding);
            }
            unknown = unknown || !truth;
        }
        return unknown ? Value() : Value::ofBoolean(!deciding);
    }

    [[nodiscard]] Value arithmetic(const Expr& expr) const
    {
        const Value left = of(*expr.args[0]);
        if (expr.kind == ExprKind::Negate) {
            return left.isNull() ? Value() : Value::ofNumber(-numberOf(left, *m_around.separators));
        }
        const Value right = of(*expr.args[1]);
        if (left.isNull() || right.isNull()) {
            return {};
        }
        if (expr.kind == ExprKind::Add && left.type == ValueType::Text && right.type == ValueType::Text) {
            return Value::ofText(left.text + right.text);
        }
        const double a = numberOf(left, *m_around.separators);
        const double b = numberOf(right, *m_around.separators);
        switch (expr.kind) {
        case ExprKind::Multiply:
            return Value::ofNumber(finite(a * b));
        case ExprKind::Divide:
            return Value::ofNumber(quotient(a, b));
        default:
            break;
        }
        const double result = finite(expr.kind == ExprKind::Add ? a + b : a - b);
        const bool oneDate = (left.type == ValueType::Date) != (right.type == ValueType::Date);
        return oneDate ? Value::ofDate(dateOf(Value::ofNumber(result))) : Value::ofNumber(result);
    }

    [[nodiscard]] Truth test(const Expr& expr) const
    {
        const Value left = of(*expr.args[0]);
        switch (expr.kind) {
        case ExprKind::IsNull:
            return left.isNull() != expr.negated;
        case ExprKind::Like: {
            const Value pattern = of(*expr.args[1]);
            if (left.isNull() || pattern.isNull()) {
                return std::nullopt;
            }
            return LikePattern(textOf(pattern, *m_around.separators)).matches(textOf(left, *m_around.separators)) !=
                   expr.negated;
        }
        case ExprKind::Between: {
            const Truth low = ordered(left, of(*expr.args[1]), ExprKind::GreaterEqual);
            const Truth high = ordered(left, of(*expr.args[2]), ExprKind::LessEqual);
            if (low == false || high == false) {
                return expr.negated;
            }
            return low && high ? Truth(!expr.negated) : std::nullopt;
        }
        case ExprKind::In:
            return within(expr, left);
        default:
            return ordered(left, of(*expr.args[1]), expr.kind);
        }
    }

    [[nodiscard]] Truth within(const Expr& expr, const Value& left) const
    {
        bool unknown = false;
        for (size_t i = 1; i < expr.args.size(); ++i) {
            const Truth same = ordered(left, of(*expr.args[i]), ExprKind::Equal);
            if (same == true) {
                return !expr.negated;
            }
            unknown = unknown || !same;
        }
        return unknown ? std::nullopt : Truth(expr.negated);
    }

    [[nodiscard]] Truth ordered(const Value& a, const Value& b, ExprKind comparison) const
    {
        if (a.isNull() || b.isNull()) {
            return std::nullopt;
        }
        if (a.type == ValueType::Text && b.type == ValueType::Text) {
            if (comparison == ExprKind::Equal) {
                return equalTexts(a.text, b.text);
            }
            if (comparison == ExprKind::NotEqual) {
                return !equalTexts(a.text, b.text);
            }
            return holds(spanishOrder(a.text, b.text), comparison);
        }
        if ((a.type == ValueType::Date) != (b.type == ValueType::Date)) {
            throw typeMismatch();
        }
        const double x = numberOf(a, *m_around.separators);
        const double y = numberOf(b, *m_around.separators);
        return holds(x < y ? -1 : (x > y ? 1 : 0), comparison);
    }

    [[nodiscard]] static bool holds(int order, ExprKind comparison)
    {
        switch (comparison) {
        case ExprKind::Equal:
            return order == 0;
        case ExprKind::NotEqual:
            return order != 0;
        case ExprKind::Less:
            return order < 0;
        case ExprKind::LessEqual:
            return order <= 0;
        case ExprKind::Greater:
            return order > 0;
        default:
            return order >= 0;
        }
    }

    const Surroundings& m_around;
};

} // namespace

Value evaluate(const Expr& expr, const Surroundings& surroundings)
{
    return Evaluation(surroundings).of(expr);
}

} // namespace oVELDRA::dialect
