#include "Plan.h"

#include "Functions.h"
#include "Parser.h"
#include "Resolver.h"

#include <algorithm>

namespace oVELDRA::dialect {

using namespace Qt::StringLiterals;

namespace {

/// Works out which columns a query fetches and how its result is made of them.
class QueryPlanner
{
public:
    explicit QueryPlanner(Plan& plan) : m_plan(plan) {}

    void run()
    {
        const Select& select = m_plan.select();
        for (const SelectItem& item : select.items) {
            if (item.expr) {
                addItem(item, select.distinct);
            } else {
                addAllColumns();
            }
        }
        for (size_t i = 0; i < m_plan.columns.size() && m_plan.direct; ++i) {
            m_plan.direct = m_plan.columns[i].fetched == static_cast<int>(i);
        }
        m_plan.direct = m_plan.direct && m_plan.columns.size() == m_plan.fetched.size();
    }

private:
    void addAllColumns()
    {
        for (size_t i = 0; i < m_plan.table.columns.size(); ++i) {
            const Column& column = m_plan.table.columns[i];
            m_plan.columns.push_back({column.name, column.kind, fetchColumn(static_cast<int>(i)), nullptr});
        }
    }

    void addItem(const SelectItem& item, bool distinct)
    {
        const Expr& expr = *item.expr;
        ResultColumn column;
        column.name = !item.alias.isEmpty()           ? item.alias
                      : expr.kind == ExprKind::Column ? m_plan.table.columns[static_cast<size_t>(expr.column)].name
                                                      : u"Expr%1"_s.arg(1000 + m_plan.columns.size());
        column.kind = kindOf(expr);
        if (expr.kind == ExprKind::Column) {
            column.fetched = fetchColumn(expr.column);
        } else if (expr.aggregate || distinct) {
            column.fetched = fetchExpr(expr);
        } else {
            column.expr = &expr;
            fetchBelow(expr);
        }
        m_plan.columns.push_back(std::move(column));
    }

    int fetchColumn(int column)
    {
        const auto found = std::find_if(m_plan.fetched.begin(), m_plan.fetched.end(),
                                        [column](const Fetched& fetched) { return fetched.column == column; });
        if (found != m_plan.fetched.end()) {
            return static_cast<int>(found - m_plan.fetched.begin());
        }
        m_plan.fetched.push_back({column, nullptr, m_plan.table.columns[static_cast<size_t>(column)].kind});
        return static_cast<int>(m_plan.fetched.size()) - 1;
    }

    int fetchExpr(const Expr& expr)
    {
        m_plan.fetched.push_back({-1, &expr, kindOf(expr)});
        return static_cast<int>(m_plan.fetched.size()) - 1;
    }

    void fetchBelow(const Expr& expr)
    {
        if (expr.kind == ExprKind::Column) {
            fetchColumn(expr.column);
        } else if (expr.aggregate) {
            fetchExpr(expr);
        } else {
            for (const ExprPtr& arg : expr.args) {
                fetchBelow(*arg);
            }
        }
    }

    [[nodiscard]] ColumnKind kindOf(const Expr& expr) const
    {
        if (expr.kind == ExprKind::Column) {
            return m_plan.table.columns[static_cast<size_t>(expr.column)].kind;
        }
        if (expr.aggregate) {
            switch (functionTable()[static_cast<size_t>(expr.function)].id) {
            case FunctionId::Count:
                return ColumnKind::Integer;
            case FunctionId::Sum:
                return ColumnKind::Double;
            default:
                return kindOf(*expr.args[0]);
            }
        }
        switch (expr.type) {
        case ValueType::Number:
            return ColumnKind::Double;
        case ValueType::Boolean:
            return ColumnKind::SmallInteger;
        case ValueType::Date:
            return ColumnKind::Date;
        default:
            return ColumnKind::Text;
        }
    }

    Plan& m_plan;
};

void collectColumns(const Expr& expr, std::vector<int>& columns)
{
    if (expr.kind == ExprKind::Column && std::find(columns.begin(), columns.end(), expr.column) == columns.end()) {
        columns.push_back(expr.column);
    }
    for (const ExprPtr& arg : expr.args) {
        collectColumns(*arg, columns);
    }
}

void noteWrittenKey(Plan& plan, QStringView columnName)
{
    const int column = plan.table.find(columnName);
    if (std::find(plan.table.key.begin(), plan.table.key.end(), column) != plan.table.key.end()) {
        plan.writtenKey.push_back(column);
    }
}

} // namespace

std::vector<int> columnsIn(const Expr& expr)
{
    std::vector<int> columns;
    collectColumns(expr, columns);
    return columns;
}

std::unique_ptr<Plan> makePlan(const QString& text, const Catalog& catalog)
{
    auto plan = std::make_unique<Plan>();
    plan->text = text;
    plan->parsed = parse(plan->text);
    plan->table = resolve(plan->parsed, catalog);
    if (plan->isQuery()) {
        QueryPlanner(*plan).run();
    } else if (const auto* const insert = std::get_if<Insert>(&plan->parsed.statement)) {
        for (const QString& column : insert->columns) {
            noteWrittenKey(*plan, column);
        }
    } else if (const auto* const update = std::get_if<Update>(&plan->parsed.statement)) {
        for (const Assignment& assignment : update->assignments) {
            noteWrittenKey(*plan, assignment.column);
        }
    }
    return plan;
}

} // namespace oVELDRA::dialect
