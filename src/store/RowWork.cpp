#include "RowWork.h"

#include <dialect/Functions.h>
#include <dialect/TextComparison.h>

#include <QSet>

#include <algorithm>
#include <numeric>

namespace oVELDRA::store {

using dialect::Expr;
using dialect::FunctionId;
using dialect::Value;
using dialect::ValueType;

namespace {

/// The engine's mark of a row, where rows are written back.
size_t markColumns(const dialect::Plan& plan)
{
    return plan.here->write.isEmpty() ? 0 : 1;
}

/// One of the rows that the engine delivered.
class DeliveredRow final : public dialect::RowSource
{
public:
    DeliveredRow(const dialect::Plan& plan, const RecordData& rows, size_t first)
        : m_columns(plan.here->columns), m_rows(rows), m_first(first)
    {}

    DeliveredRow& at(qsizetype row)
    {
        m_row = row;
        return *this;
    }

    [[nodiscard]] Value column(int index) const override
    {
        const auto found = std::find(m_columns.begin(), m_columns.end(), index);
        return m_rows.value(m_row, m_first + static_cast<size_t>(found - m_columns.begin()));
    }

    [[nodiscard]] Value aggregate(const Expr& /*expr*/) const override { return {}; }

private:
    const std::vector<int>& m_columns;
    const RecordData& m_rows;
    size_t m_first;
    qsizetype m_row = 0;
};

/// The totals of a query that gives nothing else.
class Totals final : public dialect::RowSource
{
public:
    void add(const Expr* expr, Value value) { m_totals.emplace_back(expr, std::move(value)); }

    [[nodiscard]] Value column(int /*index*/) const override { return {}; }

    [[nodiscard]] Value aggregate(const Expr& expr) const override
    {
        return std::find_if(m_totals.begin(), m_totals.end(),
                            [&expr](const auto& total) { return total.first == &expr; })
            ->second;
    }

private:
    std::vector<std::pair<const Expr*, Value>> m_totals;
};

/// As databases order: Null first, texts in Spanish.
int compared(const Value& a, const Value& b)
{
    if (a.isNull() || b.isNull()) {
        return static_cast<int>(b.isNull()) - static_cast<int>(a.isNull());
    }
    if (a.type == ValueType::Text && b.type == ValueType::Text) {
        return dialect::spanishOrder(a.text, b.text);
    }
    if (a.type == ValueType::Date && b.type == ValueType::Date) {
        return a.date < b.date ? -1 : static_cast<int>(b.date < a.date);
    }
    return a.number < b.number ? -1 : static_cast<int>(b.number < a.number);
}

/// A text that is the same for rows that are not distinct.
QString identityOf(const std::vector<Value>& row)
{
    QString result;
    for (const Value& value : row) {
        QString cell;
        if (value.type == ValueType::Text) {
            cell = dialect::folded(value.text);
        } else if (value.type == ValueType::Date) {
            cell = dialect::isoDate(value.date);
        } else if (!value.isNull()) {
            cell = QString::number(value.number, 'g', QLocale::FloatingPointShortest);
        }
        result += QString::number(value.isNull() ? -1 : cell.size()) + u':' + cell;
    }
    return result;
}

} // namespace

RowWork::RowWork(const dialect::Plan& plan, const dialect::Literals& literals,
                 const dialect::LazySeparators& separators)
    : m_plan(plan), m_literals(literals), m_separators(separators), m_first(markColumns(plan))
{}

std::shared_ptr<const ColumnKinds> RowWork::kindsOf(const dialect::Plan& plan)
{
    auto kinds = std::make_shared<ColumnKinds>(markColumns(plan), dialect::ColumnKind::Text);
    for (const int column : plan.here->columns) {
        kinds->push_back(plan.table.columns[static_cast<size_t>(column)].kind);
    }
    return kinds;
}

RecordData RowWork::result(const RecordData& rows, std::shared_ptr<const ColumnKinds> kinds) const
{
    RecordData result(std::move(kinds));
    const auto add = [&result](const Row& row) {
        for (const Value& value : row) {
            result.addValue(value);
        }
        result.endRow();
    };
    std::vector<qsizetype> places = found(rows);
    Totals totals;
    bool aggregated = false;
    for (const dialect::Fetched& fetched : m_plan.fetched) {
        if (fetched.expr && fetched.expr->aggregate) {
            aggregated = true;
            totals.add(fetched.expr, totalOf(*fetched.expr, rows, places));
        }
    }
    if (aggregated) {
        add(resultOf(totals));
        return result;
    }
    const bool distinct = m_plan.select().distinct;
    DeliveredRow row(m_plan, rows, m_first);
    if (distinct) {
        // Which rows stay is settled in table order, before they are sorted.
        QSet<QString> seen;
        std::erase_if(places, [&](qsizetype place) {
            const QString identity = identityOf(resultOf(row.at(place)));
            const bool again = seen.contains(identity);
            seen.insert(identity);
            return again;
        });
    }
    sort(rows, places);
    for (const qsizetype place : places) {
        add(resultOf(row.at(place)));
    }
    return result;
}

qint64 RowWork::write(const RecordData& rows, EngineStatement& statement) const
{
    DeliveredRow row(m_plan, rows, m_first);
    const auto* const update = std::get_if<dialect::Update>(&m_plan.parsed.statement);
    qint64 affected = 0;
    Bindings bindings;
    for (const qsizetype place : found(rows)) {
        bindings.clear();
        row.at(place);
        for (size_t i = 0; update && i < update->assignments.size(); ++i) {
            const dialect::Assignment& assignment = update->assignments[i];
            const auto column = static_cast<size_t>(m_plan.table.find(assignment.column));
            bindings.add(
                dialect::storedValue(value(*assignment.value, row), m_plan.table.columns[column], m_separators));
        }
        bindings.add(rows.value(place, 0));
        affected += statement.execute(bindings);
    }
    return affected;
}

std::vector<qsizetype> RowWork::found(const RecordData& rows) const
{
    const Expr* const where = std::visit(
        [](const auto& statement) -> const Expr* {
            if constexpr (requires { statement.where; }) {
                return statement.where.get();
            } else {
                return nullptr;
            }
        },
        m_plan.parsed.statement);
    std::vector<qsizetype> places(static_cast<size_t>(rows.rows()));
    std::iota(places.begin(), places.end(), qsizetype{0});
    if (where) {
        DeliveredRow row(m_plan, rows, m_first);
        std::erase_if(places, [&](qsizetype place) {
            const Value truth = value(*where, row.at(place));
            return truth.isNull() || dialect::numberOf(truth, m_separators) == 0;
        });
    }
    return places;
}

RowWork::Row RowWork::resultOf(const dialect::RowSource& row) const
{
    Row result;
    for (const dialect::ResultColumn& column : m_plan.columns) {
        if (column.expr) {
            result.push_back(value(*column.expr, row));
            continue;
        }
        const dialect::Fetched& fetched = m_plan.fetched[static_cast<size_t>(column.fetched)];
        result.push_back(fetched.expr ? value(*fetched.expr, row) : row.column(fetched.column));
    }
    return result;
}

Value RowWork::totalOf(const Expr& expr, const RecordData& rows, const std::vector<qsizetype>& places) const
{
    const FunctionId id = dialect::functionTable()[static_cast<size_t>(expr.function)].id;
    const Expr& argument = *expr.args[0];
    if (argument.kind == dialect::ExprKind::Star) {
        return Value::ofNumber(static_cast<double>(places.size()));
    }
    DeliveredRow row(m_plan, rows, m_first);
    qsizetype count = 0;
    Value total;
    for (const qsizetype place : places) {
        Value next = value(argument, row.at(place));
        if (next.isNull()) {
            continue;
        }
        ++count;
        if (id == FunctionId::Sum) {
            total = Value::ofNumber(total.number + dialect::numberOf(next, m_separators));
        } else if (total.isNull() || (id == FunctionId::Max ? compared(next, total) > 0 : compared(next, total) < 0)) {
            total = std::move(next);
        }
    }
    return id == FunctionId::Count ? Value::ofNumber(static_cast<double>(count)) : total;
}

void RowWork::sort(const RecordData& rows, std::vector<qsizetype>& places) const
{
    const std::vector<dialect::OrderItem>& order = m_plan.select().order;
    if (order.empty()) {
        return;
    }
    std::vector<Row> keys(static_cast<size_t>(rows.rows()));
    DeliveredRow row(m_plan, rows, m_first);
    for (const qsizetype place : places) {
        row.at(place);
        for (const dialect::OrderItem& item : order) {
            keys[static_cast<size_t>(place)].push_back(value(*item.expr, row));
        }
    }
    std::stable_sort(places.begin(), places.end(), [&](qsizetype a, qsizetype b) {
        for (size_t i = 0; i < order.size(); ++i) {
            const int difference = compared(keys[static_cast<size_t>(a)][i], keys[static_cast<size_t>(b)][i]);
            if (difference != 0) {
                return order[i].descending ? difference > 0 : difference < 0;
            }
        }
        return false;
    });
}

Value RowWork::value(const Expr& expr, const dialect::RowSource& row) const
{
    return dialect::evaluate(expr, {&m_literals, &m_separators, &row});
}

} // namespace oVELDRA::store
