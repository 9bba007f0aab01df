#include "SqlitePrinter.h"

#include "Functions.h"

#include <algorithm>
#include <span>

namespace oVELDRA::dialect {

namespace {

QByteArray quotedName(const QString& name)
{
    QByteArray result = name.toUtf8();
    result.replace('"', "\"\"");
    return '"' + result + '"';
}

bool isText(ValueType type)
{
    return type == ValueType::Text;
}

const char* comparisonSign(ExprKind kind)
{
    switch (kind) {
    case ExprKind::Equal:
        return " = ";
    case ExprKind::NotEqual:
        return " <> ";
    case ExprKind::Less:
        return " < ";
    case ExprKind::LessEqual:
        return " <= ";
    case ExprKind::Greater:
        return " > ";
    default:
        return " >= ";
    }
}

bool isEquality(ExprKind kind)
{
    return kind == ExprKind::Equal || kind == ExprKind::NotEqual || kind == ExprKind::In;
}

/// Writes one text of a plan.
class Writer
{
public:
    Writer(Plan& plan, Matching matching, EngineText& out) : m_plan(plan), m_matching(matching), m_out(out) {}

    void operator()(const Select& select)
    {
        m_out.sql += "SELECT ";
        QByteArray separator;
        for (const Fetched& fetched : m_plan.fetched) {
            m_out.sql += separator;
            separator = ", ";
            writeFetched(fetched);
        }
        if (m_plan.fetched.empty()) {
            m_out.sql += "NULL"; // a list of constants still gives a row for each row
        }
        if (select.distinct) {
            m_out.sql += ", min(rowid)"; // the other columns then come from the row of first appearance
        }
        m_out.sql += " FROM " + quotedName(m_plan.table.name);
        writeWhere(select.where.get());
        const bool aggregated = std::any_of(m_plan.fetched.begin(), m_plan.fetched.end(), [](const Fetched& fetched) {
            return fetched.expr && fetched.expr->aggregate;
        });
        if (select.distinct) {
            writeGroups();
        }
        if (!aggregated) {
            writeOrder(select);
        }
    }

    void operator()(const Insert& insert)
    {
        m_out.sql += "INSERT INTO " + quotedName(m_plan.table.name) + " (";
        QByteArray values;
        for (size_t i = 0; i < insert.columns.size(); ++i) {
            const Column& column = columnOf(insert.columns[i]);
            if (i > 0) {
                m_out.sql += ", ";
                values += ", ";
            }
            m_out.sql += quotedName(column.name);
            values += parameter({BindAs::Stored, insert.values[i].get(), &column, nullptr});
        }
        m_out.sql += ") VALUES (" + values + ')';
    }

    void operator()(const Update& update)
    {
        m_out.sql += "UPDATE " + quotedName(m_plan.table.name) + " SET ";
        for (size_t i = 0; i < update.assignments.size(); ++i) {
            const Assignment& assignment = update.assignments[i];
            const Column& column = columnOf(assignment.column);
            m_out.sql += (i > 0 ? ", " : "") + quotedName(column.name) + " = ";
            if (assignment.value->constant) {
                m_out.sql += parameter({BindAs::Stored, assignment.value.get(), &column, nullptr});
            } else {
                writeComputation(*assignment.value, &column);
            }
        }
        writeWhere(update.where.get());
    }

    void operator()(const Delete& remove)
    {
        m_out.sql += "DELETE FROM " + quotedName(m_plan.table.name);
        writeWhere(remove.where.get());
    }

private:
    [[nodiscard]] const Column& columnOf(const QString& name) const
    {
        return m_plan.table.columns[static_cast<size_t>(m_plan.table.find(name))];
    }

    QByteArray parameter(const Parameter& parameter)
    {
        m_out.parameters.push_back(parameter);
        return '?' + QByteArray::number(m_out.parameters.size());
    }

    void writeFetched(const Fetched& fetched)
    {
        if (!fetched.expr) {
            writeColumn(fetched.column);
        } else if (fetched.expr->aggregate) {
            writeAggregate(*fetched.expr);
        } else {
            writeValue(*fetched.expr);
        }
    }

    void writeAggregate(const Expr& expr)
    {
        const Expr& argument = *expr.args[0];
        if (argument.kind == ExprKind::Star) {
            m_out.sql += "count(*)";
            return;
        }
        const Function& function = functionTable()[static_cast<size_t>(expr.function)];
        m_out.sql += function.name.toLatin1() + '(';
        writeValue(argument);
        if (isText(argument.type) && function.id != FunctionId::Count) {
            m_out.sql += " COLLATE OVELDRA";
        }
        m_out.sql += ')';
    }

    void writeWhere(const Expr* where)
    {
        if (where) {
            m_out.sql += " WHERE ";
            writeCondition(*where);
        }
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
            writeValue(*item.expr);
            if (isText(item.expr->type)) {
                m_out.sql += " COLLATE OVELDRA";
            }
            m_out.sql += item.descending ? " DESC, " : ", ";
        }
        m_out.sql += select.distinct ? "min(rowid)" : "rowid";
    }

    void writeColumn(int column) { m_out.sql += quotedName(m_plan.table.columns[static_cast<size_t>(column)].name); }

    void writeValue(const Expr& expr)
    {
        if (expr.constant) {
            m_out.sql += parameter({BindAs::Value, &expr, nullptr, nullptr});
        } else if (expr.kind == ExprKind::Column) {
            writeColumn(expr.column);
        } else {
            writeComputation(expr);
        }
    }

    void writeComputation(const Expr& expr, const Column* target = nullptr)
    {
        Computation& computation = m_plan.computations.emplace_back();
        computation.expr = &expr;
        computation.target = target;
        collectColumns(expr, computation);
        m_out.sql += "oveldra_value(" + parameter({BindAs::Computation, nullptr, nullptr, &computation});
        for (const int column : computation.columns) {
            m_out.sql += ", ";
            writeColumn(column);
        }
        m_out.sql += ')';
    }

    void collectColumns(const Expr& expr, Computation& computation) const
    {
        if (expr.kind == ExprKind::Column && std::find(computation.columns.begin(), computation.columns.end(),
                                                       expr.column) == computation.columns.end()) {
            computation.columns.push_back(expr.column);
            computation.kinds.push_back(m_plan.table.columns[static_cast<size_t>(expr.column)].kind);
        }
        for (const ExprPtr& arg : expr.args) {
            collectColumns(*arg, computation);
        }
    }

    /// A long run of conditions as a balanced tree: SQLite bounds how deep an expression may be.
    void writeRun(std::span<const ExprPtr> conditions, const char* word)
    {
        if (conditions.size() == 1) {
            writeCondition(*conditions.front());
            return;
        }
        const size_t half = conditions.size() / 2;
        m_out.sql += '(';
        writeRun(conditions.first(half), word);
        m_out.sql += word;
        writeRun(conditions.subspan(half), word);
        m_out.sql += ')';
    }

    void writeCondition(const Expr& expr)
    {
        if (expr.constant) {
            writeValue(expr);
            return;
        }
        switch (expr.kind) {
        case ExprKind::And:
            writeRun(expr.args, " AND ");
            break;
        case ExprKind::Or:
            writeRun(expr.args, " OR ");
            break;
        case ExprKind::Not:
            m_out.sql += "NOT (";
            writeCondition(*expr.args[0]);
            m_out.sql += ')';
            break;
        case ExprKind::IsNull:
            writeValue(*expr.args[0]);
            m_out.sql += expr.negated ? " IS NOT NULL" : " IS NULL";
            break;
        case ExprKind::Like:
            writeLike(expr);
            break;
        case ExprKind::Equal:
        case ExprKind::NotEqual:
        case ExprKind::Less:
        case ExprKind::LessEqual:
        case ExprKind::Greater:
        case ExprKind::GreaterEqual:
        case ExprKind::In:
        case ExprKind::Between:
            writeComparison(expr);
            break;
        default:
            writeValue(expr);
            break;
        }
    }

    void writeLike(const Expr& expr)
    {
        const Expr& text = *expr.args[0];
        const Expr& pattern = *expr.args[1];
        const bool simple = isText(text.type) && !text.constant && isText(pattern.type) && pattern.constant;
        if (!simple) {
            writeComputation(expr);
            return;
        }
        if (expr.negated) {
            m_out.sql += "NOT ";
        }
        m_out.sql += '(';
        if (m_matching == Matching::Plain && !expr.negated && text.kind == ExprKind::Column) {
            m_out.sql += "rtrim(";
            writeColumn(text.column);
            m_out.sql +=
                ") COLLATE NOCASE >= " + parameter({BindAs::Prefix, &pattern, nullptr, nullptr}) + " AND rtrim(";
            writeColumn(text.column);
            m_out.sql += ") COLLATE NOCASE < " + parameter({BindAs::PrefixEnd, &pattern, nullptr, nullptr}) + " AND ";
        }
        m_out.sql += "oveldra_like(";
        writeValue(text);
        m_out.sql += ", " + parameter({BindAs::Value, &pattern, nullptr, nullptr}) + "))";
    }

    /// How an operand of a comparison is written.
    enum class Operand : quint8 { Native, Folded, Trimmed, Ordered };

    void writeComparison(const Expr& expr)
    {
        const auto among = [&expr](auto test) {
            return std::all_of(expr.args.begin(), expr.args.end(), [&test](const ExprPtr& arg) { return test(*arg); });
        };
        const bool texts = among([](const Expr& arg) { return isText(arg.type); });
        const bool dates = among([](const Expr& arg) { return arg.type == ValueType::Date; });
        const bool numbers = among([](const Expr& arg) {
            return arg.type == ValueType::Number || arg.type == ValueType::Boolean ||
                   (arg.constant && arg.type == ValueType::Text);
        });
        if (!texts && !dates && !numbers) {
            writeComputation(expr); // a mixture that only the row can settle
            return;
        }
        Operand operand = Operand::Native;
        if (texts && !isEquality(expr.kind)) {
            operand = Operand::Ordered;
        } else if (texts) {
            const bool plain =
                m_matching == Matching::Plain && expr.args[0]->kind == ExprKind::Column &&
                std::all_of(expr.args.begin() + 1, expr.args.end(), [](const ExprPtr& arg) { return arg->constant; });
            operand = plain ? Operand::Trimmed : Operand::Folded;
        }
        m_out.sql += expr.negated ? "NOT (" : "(";
        writeOperand(*expr.args[0], operand);
        if (expr.kind == ExprKind::In) {
            m_out.sql += " IN (";
            for (size_t i = 1; i < expr.args.size(); ++i) {
                m_out.sql += i > 1 ? ", " : "";
                writeOperand(*expr.args[i], operand);
            }
            m_out.sql += ')';
        } else if (expr.kind == ExprKind::Between) {
            m_out.sql += " BETWEEN ";
            writeOperand(*expr.args[1], operand);
            m_out.sql += " AND ";
            writeOperand(*expr.args[2], operand);
        } else {
            m_out.sql += comparisonSign(expr.kind);
            writeOperand(*expr.args[1], operand);
        }
        m_out.sql += ')';
    }

    void writeOperand(const Expr& expr, Operand operand)
    {
        if (expr.constant) {
            BindAs as = expr.type == ValueType::Date ? BindAs::Value : BindAs::Number;
            if (operand == Operand::Folded) {
                as = BindAs::FoldedText;
            } else if (operand == Operand::Trimmed) {
                as = BindAs::PlainText;
            } else if (operand == Operand::Ordered) {
                as = BindAs::Value;
            }
            m_out.sql += parameter({as, &expr, nullptr, nullptr});
            return;
        }
        switch (operand) {
        case Operand::Folded:
            m_out.sql += "oveldra_fold(";
            writeValue(expr);
            m_out.sql += ')';
            break;
        case Operand::Trimmed:
            m_out.sql += "rtrim(";
            writeValue(expr);
            m_out.sql += ") COLLATE NOCASE";
            break;
        case Operand::Ordered:
            writeValue(expr);
            m_out.sql += " COLLATE OVELDRA";
            break;
        case Operand::Native:
            writeValue(expr);
            break;
        }
    }

    Plan& m_plan;
    Matching m_matching;
    EngineText& m_out;
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
    return " (" + result + ')';
}

} // namespace

void SqlitePrinter::print(Plan& plan) const
{
    for (const Matching matching : {Matching::Plain, Matching::Exact}) {
        std::visit(Writer(plan, matching, plan.texts[static_cast<size_t>(matching)]), plan.parsed.statement);
    }
}

QByteArray SqlitePrinter::duplicateKeys(const Table& table) const
{
    QByteArray columns;
    for (const int index : table.key) {
        const Column& column = table.columns[static_cast<size_t>(index)];
        const QByteArray name = quotedName(column.name);
        columns +=
            (columns.isEmpty() ? "" : ", ") + (column.kind == ColumnKind::Text ? "oveldra_fold(" + name + ')' : name);
    }
    return "SELECT 1 FROM " + quotedName(table.name) + " GROUP BY " + columns + " HAVING count(*) > 1";
}

QByteArray SqlitePrinter::scan(const Table& table, const TableScan& scan) const
{
    const auto nameOf = [&table](int column) { return quotedName(table.columns[static_cast<size_t>(column)].name); };
    QByteArray list;
    for (const int column : scan.columns) {
        list += (list.isEmpty() ? "" : ", ") + nameOf(column);
    }
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
    QByteArray names;
    QByteArray marks;
    for (const int column : columns) {
        names += (names.isEmpty() ? "" : ", ") + quotedName(table.columns[static_cast<size_t>(column)].name);
        marks += marks.isEmpty() ? "?" : ", ?";
    }
    QByteArray values = '(' + marks + ')';
    for (int row = 1; row < rows; ++row) {
        values += ", (" + marks + ')';
    }
    return "INSERT INTO " + quotedName(table.name) + " (" + names + ") VALUES " + values;
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
    if (!table.key.empty()) {
        result.push_back("CREATE UNIQUE INDEX " + quotedName(table.name + QStringView(u"_KEY")) + " ON " +
                         quotedName(table.name) + indexColumns(table, table.key));
    }
    for (size_t i = 0; i < indexes.size(); ++i) {
        result.push_back("CREATE INDEX " + quotedName(table.name + QStringView(u"_IDX") + QString::number(i + 1)) +
                         " ON " + quotedName(table.name) + indexColumns(table, indexes[i]));
    }
    return result;
}

} // namespace oVELDRA::dialect
