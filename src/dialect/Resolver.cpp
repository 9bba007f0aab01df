#include "Resolver.h"

#include "Functions.h"
#include "StatementError.h"

#include <algorithm>

namespace oVELDRA::dialect {

using namespace Qt::StringLiterals;

namespace {

ValueType typeOf(ColumnKind kind)
{
    switch (kind) {
    case ColumnKind::Text:
        return ValueType::Text;
    case ColumnKind::Date:
        return ValueType::Date;
    case ColumnKind::Boolean:
    case ColumnKind::SmallInteger:
        return ValueType::Boolean;
    default:
        return ValueType::Number;
    }
}

bool isNumeric(ValueType type)
{
    return type == ValueType::Number || type == ValueType::Boolean;
}

bool isOpen(ValueType type)
{
    return type == ValueType::Null || type == ValueType::Any;
}

class Resolver
{
public:
    Resolver(const Table& table, const Literals& literals) : m_table(table), m_literals(literals) {}

    void operator()(Select& select)
    {
        bool aggregated = false;
        for (const SelectItem& item : select.items) {
            if (item.expr) {
                resolve(*item.expr);
                aggregated = aggregated || item.expr->aggregated;
            }
        }
        if (aggregated) {
            checkAggregated(select);
        }
        condition(select.where.get());
        for (OrderItem& item : select.order) {
            resolveOrder(item, select);
        }
    }

    void operator()(Insert& insert)
    {
        for (const QString& column : insert.columns) {
            static_cast<void>(columnIndex(column));
        }
        for (const ExprPtr& value : insert.values) {
            resolve(*value);
            if (!value->constant) {
                throw unknownColumn(firstColumn(*value));
            }
            noAggregate(*value, u"la cláusula VALUES");
        }
    }

    void operator()(Update& update)
    {
        for (const Assignment& assignment : update.assignments) {
            static_cast<void>(columnIndex(assignment.column));
            resolve(*assignment.value);
            noAggregate(*assignment.value, u"la instrucción UPDATE");
        }
        condition(update.where.get());
    }

    void operator()(Delete& remove) { condition(remove.where.get()); }

private:
    [[nodiscard]] int columnIndex(QStringView name) const
    {
        const int index = m_table.find(name);
        if (index < 0) {
            throw unknownColumn(name);
        }
        return index;
    }

    static QString firstColumn(const Expr& expr)
    {
        if (expr.kind == ExprKind::Column) {
            return expr.name;
        }
        for (const ExprPtr& arg : expr.args) {
            if (!arg->constant) {
                return firstColumn(*arg);
            }
        }
        return expr.name;
    }

    static void noAggregate(const Expr& expr, QStringView place)
    {
        if (expr.aggregated) {
            throw syntaxReason(place, u"aquí no puede haber funciones de totales"_s);
        }
    }

    /// With a total in the list the whole result is one row, so nothing else may depend on single rows.
    static void checkAggregated(const Select& select)
    {
        const bool fits = !select.distinct && select.order.empty() &&
                          std::all_of(select.items.begin(), select.items.end(),
                                      [](const SelectItem& item) { return item.expr && onlyTotals(*item.expr); });
        if (!fits) {
            throw syntaxReason(u"la instrucción SELECT",
                               u"las funciones de totales no se mezclan con filas, DISTINCT ni ORDER BY"_s);
        }
    }

    static bool onlyTotals(const Expr& expr)
    {
        return expr.aggregate ||
               (expr.kind != ExprKind::Column &&
                std::all_of(expr.args.begin(), expr.args.end(), [](const ExprPtr& arg) { return onlyTotals(*arg); }));
    }

    void condition(Expr* where)
    {
        if (where) {
            resolve(*where);
            noAggregate(*where, u"la cláusula WHERE");
            truth(*where);
        }
    }

    void resolveOrder(OrderItem& item, const Select& select)
    {
        Expr& expr = *item.expr;
        if (expr.kind == ExprKind::Column && m_table.find(expr.name) < 0) {
            const auto named =
                std::find_if(select.items.begin(), select.items.end(), [&expr](const SelectItem& candidate) {
                    return candidate.expr && candidate.alias.compare(expr.name, Qt::CaseInsensitive) == 0;
                });
            if (named != select.items.end()) {
                item.expr = copy(*named->expr);
                return;
            }
        }
        resolve(expr);
        noAggregate(expr, u"la cláusula ORDER BY");
    }

    static ExprPtr copy(const Expr& expr)
    {
        auto result = std::make_unique<Expr>();
        result->kind = expr.kind;
        result->negated = expr.negated;
        result->bracketed = expr.bracketed;
        result->depth = expr.depth;
        result->literal = expr.literal;
        result->name = expr.name;
        result->type = expr.type;
        result->column = expr.column;
        result->function = expr.function;
        result->constant = expr.constant;
        for (const ExprPtr& arg : expr.args) {
            result->args.push_back(copy(*arg));
        }
        return result;
    }

    void resolve(Expr& expr)
    {
        expr.constant = expr.kind != ExprKind::Column;
        for (const ExprPtr& arg : expr.args) {
            resolve(*arg);
            expr.constant = expr.constant && arg->constant;
            expr.aggregated = expr.aggregated || arg->aggregated;
        }
        expr.type = typed(expr);
    }

    ValueType typed(Expr& expr)
    {
        switch (expr.kind) {
        case ExprKind::Literal:
            return literalType(m_literals[expr.literal]);
        case ExprKind::True:
        case ExprKind::False:
            return ValueType::Boolean;
        case ExprKind::Null:
        case ExprKind::Star:
            return ValueType::Null;
        case ExprKind::Column:
            return columnType(expr);
        case ExprKind::Function:
            return functionType(expr);
        case ExprKind::Not:
        case ExprKind::And:
        case ExprKind::Or:
            for (const ExprPtr& arg : expr.args) {
                truth(*arg);
            }
            return ValueType::Boolean;
        case ExprKind::Negate:
        case ExprKind::Multiply:
        case ExprKind::Divide:
            for (const ExprPtr& arg : expr.args) {
                number(*arg);
            }
            return ValueType::Number;
        case ExprKind::Add:
        case ExprKind::Subtract:
            return sumType(expr);
        case ExprKind::Concatenate:
            return ValueType::Text;
        case ExprKind::IsNull:
        case ExprKind::Like:
            return ValueType::Boolean;
        default:
            for (size_t i = 1; i < expr.args.size(); ++i) {
                comparable(*expr.args[0], *expr.args[i]);
            }
            return ValueType::Boolean;
        }
    }

    static ValueType literalType(const Literal& literal)
    {
        switch (literal.kind) {
        case TokenKind::Number:
            return ValueType::Number;
        case TokenKind::Date:
            return ValueType::Date;
        default:
            return ValueType::Text;
        }
    }

    ValueType columnType(Expr& expr)
    {
        expr.column = columnIndex(expr.name);
        return typeOf(m_table.columns[static_cast<size_t>(expr.column)].kind);
    }

    ValueType functionType(Expr& expr) const
    {
        const Function& function = functionTable()[static_cast<size_t>(expr.function)];
        if (function.aggregate) {
            if (expr.aggregated) {
                throw syntaxReason(u"la instrucción SELECT", u"una función de totales dentro de otra"_s);
            }
            expr.aggregate = true;
            expr.aggregated = true;
            expr.constant = false;
            if (function.id == FunctionId::Sum) {
                number(*expr.args[0]);
            }
            return function.type == ValueType::Any ? expr.args[0]->type : function.type;
        }
        if (function.id == FunctionId::IIf) {
            truth(*expr.args[0]);
            const ValueType yes = expr.args[1]->type;
            const ValueType no = expr.args[2]->type;
            return yes == no || no == ValueType::Null ? yes : (yes == ValueType::Null ? no : ValueType::Any);
        }
        return function.type;
    }

    static ValueType sumType(const Expr& expr)
    {
        const ValueType left = expr.args[0]->type;
        const ValueType right = expr.args[1]->type;
        if (isOpen(left) || isOpen(right)) {
            return ValueType::Any;
        }
        if (left == ValueType::Date || right == ValueType::Date) {
            return left == right ? ValueType::Number : ValueType::Date;
        }
        const bool texts = expr.kind == ExprKind::Add && left == ValueType::Text && right == ValueType::Text;
        return texts ? ValueType::Text : ValueType::Number;
    }

    /// A text column is never a number or a truth; a text that is written in the statement is read as one.
    static void number(const Expr& expr)
    {
        const bool fits = isNumeric(expr.type) || isOpen(expr.type) || (expr.type == ValueType::Text && expr.constant);
        if (!fits) {
            throw typeMismatch();
        }
    }

    static void truth(const Expr& expr)
    {
        if (!isNumeric(expr.type) && !isOpen(expr.type)) {
            throw typeMismatch();
        }
    }

    static void comparable(const Expr& a, const Expr& b)
    {
        const bool fits = isOpen(a.type) || isOpen(b.type) || a.type == b.type ||
                          (isNumeric(a.type) && isNumeric(b.type)) ||
                          (isNumeric(a.type) && b.type == ValueType::Text && b.constant) ||
                          (isNumeric(b.type) && a.type == ValueType::Text && a.constant);
        if (!fits) {
            throw typeMismatch();
        }
    }

    const Table& m_table;
    const Literals& m_literals;
};

const QString& tableName(const Statement& statement)
{
    return std::visit([](const auto& kind) -> const QString& { return kind.table; }, statement);
}

} // namespace

const Table& resolve(ParsedStatement& parsed, const Catalog& catalog)
{
    const QString& name = tableName(parsed.statement);
    const Table* const table = catalog.find(name);
    if (!table) {
        throw unknownTable(name);
    }
    std::visit(Resolver(*table, parsed.literals), parsed.statement);
    return *table;
}

} // namespace oVELDRA::dialect
