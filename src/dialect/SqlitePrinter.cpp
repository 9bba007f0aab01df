#include "SqlitePrinter.h"

#include "EngineWriter.h"
#include "Functions.h"

#include <algorithm>

namespace oVELDRA::dialect {

namespace {

/// Writes one text of a plan.
class SqliteWriter final : public EngineWriter
{
public:
    using EngineWriter::EngineWriter;

private:
    [[nodiscard]] QByteArray mark(const Parameter& /*parameter*/) const override
    {
        return '?' + QByteArray::number(m_out.parameters.size());
    }

    [[nodiscard]] Wrapping wrapping(Operand operand) const override
    {
        switch (operand) {
        case Operand::Plain:
            return {"rtrim(", ") COLLATE NOCASE"};
        case Operand::Folded:
            return {"oveldra_fold(", ")"};
        case Operand::Ordered:
            return {"", " COLLATE OVELDRA"};
        case Operand::Native:
        case Operand::Whole:
            break;
        }
        return {};
    }

    [[nodiscard]] bool comparesPlainTexts() const override { return true; }
    [[nodiscard]] bool comparesWholeNumbers() const override { return false; }

    void writeTruth(const Expr& expr) override { writeValue(expr); }

    void writeComputation(const Expr& expr, const Column* target) override
    {
        Computation& computation = m_plan.computations.emplace_back();
        computation.expr = &expr;
        computation.target = target;
        computation.columns = columnsIn(expr);
        m_out.sql += "oveldra_value(" + parameter({BindAs::Computation, nullptr, nullptr, &computation});
        for (const int column : computation.columns) {
            computation.kinds.push_back(m_plan.table.columns[static_cast<size_t>(column)].kind);
            m_out.sql += ", ";
            writeColumn(column);
        }
        m_out.sql += ')';
    }

    void writeMatch(const Expr& text, const Expr& pattern) override
    {
        m_out.sql += "oveldra_like(";
        writeValue(text);
        m_out.sql += ", " + parameter({BindAs::Value, &pattern, nullptr, nullptr}) + ')';
    }

    void writeQuery(const Select& select) override
    {
        writeList();
        if (select.distinct) {
            m_out.sql += ", min(rowid)"; // the other columns then come from the row of first appearance
        }
        m_out.sql += " FROM " + quotedName(m_plan.table.name);
        writeWhere(select.where.get());
        if (select.distinct) {
            writeGroups();
        }
        if (!isAggregated()) {
            writeOrder(select);
        }
    }

    void writeAggregate(const Expr& expr) override
    {
        const Expr& argument = *expr.args[0];
        if (argument.kind == ExprKind::Star) {
            m_out.sql += "count(*)";
            return;
        }
        const Function& function = functionTable()[static_cast<size_t>(expr.function)];
        m_out.sql += function.name.toLatin1() + '(';
        writeValue(argument);
        if (argument.type == ValueType::Text && function.id != FunctionId::Count) {
            m_out.sql += " COLLATE OVELDRA";
        }
        m_out.sql += ')';
    }

    void writeGroups()
    {
        m_out.sql += " GROUP BY ";
        QByteArray separator;
        for (const Fetched& fetched : m_plan.fetched) {
            m_out.sql += separator;
            separator = ", ";
            const bool text = fetched.kind == ColumnKind::Text;
            m_out.sql += text ? "oveldra_fold(" : "";
            writeFetched(fetched);
            m_out.sql += text ? ")" : "";
        }
        if (m_plan.fetched.empty()) {
            m_out.sql += "NULL";
        }
    }

    /// Ties, and everything without an order of its own, stand in the order of the table.
    void writeOrder(const Select& select)
    {
        m_out.sql += " ORDER BY ";
        for (const OrderItem& item : select.order) {
            if (item.expr->constant) {
                continue; // sorts nothing; SQLite would take a number for a column's place
            }
            writeOperand(*item.expr, item.expr->type == ValueType::Text ? Operand::Ordered : Operand::Native);
            m_out.sql += item.descending ? " DESC, " : ", ";
        }
        m_out.sql += select.distinct ? "min(rowid)" : "rowid";
    }
};

const char* typeName(ColumnKind kind)
{
    switch (kind) {
    case ColumnKind::Integer:
        return "INTEGER";
    case ColumnKind::Double:
        return "DOUBLE";
    case ColumnKind::Boolean:
        return "BOOLEAN";
    case ColumnKind::SmallInteger:
        return "SMALLINT";
    case ColumnKind::Date:
        return "DATE";
    default:
        return "TEXT";
    }
}

QByteArray indexColumns(const Table& table, const std::vector<int>& columns)
{
    QByteArray result;
    for (const int index : columns) {
        const Column& column = table.columns[static_cast<size_t>(index)];
        if (!result.isEmpty()) {
            result += ", ";
        }
        const QByteArray name = quotedName(column.name);
        result += column.kind == ColumnKind::Text ? "rtrim(" + name + ") COLLATE NOCASE" : name;
    }
    return result;
}

} // namespace

void SqlitePrinter::print(Plan& plan) const
{
    for (const Matching matching : {Matching::Plain, Matching::Exact}) {
        SqliteWriter(plan, matching, plan.texts[static_cast<size_t>(matching)]).write();
    }
}

QByteArray SqlitePrinter::duplicateKeys(const Table& table) const
{
    QByteArray columns;
    QByteArray whole; // Null equals nothing
    for (const int index : table.key) {
        const Column& column = table.columns[static_cast<size_t>(index)];
        const QByteArray name = quotedName(column.name);
        columns +=
            (columns.isEmpty() ? "" : ", ") + (column.kind == ColumnKind::Text ? "oveldra_fold(" + name + ')' : name);
        whole += (whole.isEmpty() ? " WHERE " : " AND ") + name + " IS NOT NULL";
    }
    return "SELECT 1 FROM " + quotedName(table.name) + whole + " GROUP BY " + columns + " HAVING count(*) > 1";
}

QByteArray SqlitePrinter::scan(const Table& table, const TableScan& scan) const
{
    const auto nameOf = [&table](int column) { return quotedName(table.columns[static_cast<size_t>(column)].name); };
    QByteArray list = columnList(table, scan.columns);
    QByteArray order;
    for (const int column : scan.sort) {
        const bool text = table.columns[static_cast<size_t>(column)].kind == ColumnKind::Text;
        list += (list.isEmpty() ? "" : ", ") + (text ? "oveldra_fold(" + nameOf(column) + ')' : nameOf(column));
        order += QByteArray::number(scan.columns.size() + static_cast<size_t>(order.count(',')) + 1) + ", ";
    }
    return "SELECT " + list + " FROM " + quotedName(table.name) + " ORDER BY " + order + "rowid";
}

QByteArray SqlitePrinter::insertRows(const Table& table, const std::vector<int>& columns, int rows) const
{
    QByteArray marks = "(?";
    for (size_t i = 1; i < columns.size(); ++i) {
        marks += ", ?";
    }
    marks += ')';
    QByteArray values = marks;
    for (int row = 1; row < rows; ++row) {
        values += ", " + marks;
    }
    return "INSERT INTO " + quotedName(table.name) + " (" + columnList(table, columns) + ") VALUES " + values;
}

std::vector<QByteArray> SqlitePrinter::createTable(const Table& table,
                                                   const std::vector<std::vector<int>>& indexes) const
{
    QByteArray columns;
    for (const Column& column : table.columns) {
        if (!columns.isEmpty()) {
            columns += ", ";
        }
        columns += quotedName(column.name) + ' ';
        if (column.kind == ColumnKind::Text) {
            columns += column.width > 0 ? "VARCHAR(" + QByteArray::number(column.width) + ")" : QByteArray("TEXT");
            columns += " COLLATE NOCASE";
        } else {
            columns += typeName(column.kind);
        }
    }
    std::vector<QByteArray> result;
    result.push_back("CREATE TABLE " + quotedName(table.name) + " (" + columns + ')');
    const std::vector<QByteArray> further = indexCommands(table, indexes, indexColumns);
    result.insert(result.end(), further.begin(), further.end());
    return result;
}

} // namespace oVELDRA::dialect
