#include "PostgresPrinter.h"

#include "EngineWriter.h"
#include "Functions.h"

#include <algorithm>

namespace oVELDRA::dialect {

namespace {

/// Thrown while writing what has no words here.
struct NoWords
{};

QByteArray lowerCase(const QByteArray& text)
{
    // What ICU does in another way than we: two letters that have lower cases of their own with us, and the sigma,
    // whose lower case depends on the letters around it.
    return "(lower(translate(" + text +
           ", '\u0130\u212A\u03A3', '\uE000\uE001\u03C3') COLLATE \"und-x-icu\") COLLATE \"C\")";
}

QByteArray folded(const QByteArray& text)
{
    return lowerCase("rtrim(" + text + ')');
}

const char* storageType(ColumnKind kind)
{
    switch (kind) {
    case ColumnKind::Integer:
        return "integer";
    case ColumnKind::Double:
        return "double precision";
    case ColumnKind::Boolean:
    case ColumnKind::SmallInteger:
        return "smallint";
    case ColumnKind::Date:
        return "date";
    default:
        return "text";
    }
}

/// The parameter of a place, counted from 1; its type is always said, so that what is bound can be a text.
QByteArray marked(size_t place, const char* type)
{
    return "CAST($" + QByteArray::number(place) + " AS " + type + ')';
}

QByteArray ordered(const QByteArray& expression, bool descending)
{
    return expression + (descending ? " DESC NULLS LAST" : " NULLS FIRST");
}

class PostgresWriter final : public EngineWriter
{
public:
    using EngineWriter::EngineWriter;

    /// Writes the whole rows that a statement is worked out on, with as much of its condition as has words.
    void writeRows(const WorkedHere& work)
    {
        const bool writes = !work.write.isEmpty();
        const QByteArray mark = writes ? "CAST(" + m_plan.table.rowMark + " AS text)" : QByteArray();
        const QByteArray columns = columnList(m_plan.table, work.columns);
        const QByteArray list = mark + (mark.isEmpty() || columns.isEmpty() ? "" : ", ") + columns;
        m_out.sql = "SELECT " + (list.isEmpty() ? "NULL" : list) + " FROM " + quotedName(m_plan.table.name);
        writeWritable(conditionOf(m_plan.parsed.statement));
        m_out.sql += " ORDER BY " + m_plan.table.rowMark + (writes ? " FOR UPDATE" : "");
    }

private:
    static const Expr* conditionOf(const Statement& statement)
    {
        return std::visit(
            [](const auto& kind) -> const Expr* {
                if constexpr (requires { kind.where; }) {
                    return kind.where.get();
                } else {
                    return nullptr;
                }
            },
            statement);
    }

    void writeWritable(const Expr* where)
    {
        if (!where) {
            return;
        }
        const char* word = " WHERE ";
        const auto add = [&](const Expr& condition) {
            const EngineText before = m_out;
            m_out.sql += word;
            try {
                writeCondition(condition);
            } catch (const NoWords&) {
                m_out = before;
                return;
            }
            word = " AND ";
        };
        if (where->kind == ExprKind::And && !where->constant) {
            for (const ExprPtr& condition : where->args) {
                add(*condition);
            }
        } else {
            add(*where);
        }
    }

    [[nodiscard]] QByteArray mark(const Parameter& parameter) const override
    {
        return marked(m_out.parameters.size(), typeOfParameter(parameter));
    }

    static const char* typeOfParameter(const Parameter& parameter)
    {
        switch (parameter.as) {
        case BindAs::Stored:
            return storageType(parameter.column->kind);
        case BindAs::Number:
            return "double precision";
        case BindAs::Whole:
            return "bigint";
        case BindAs::Count:
            return "integer";
        case BindAs::Value:
            break;
        default:
            return "text";
        }
        switch (parameter.expr->type) {
        case ValueType::Date:
            return "date";
        case ValueType::Number:
        case ValueType::Boolean:
            return "double precision";
        case ValueType::Any:
            throw NoWords();
        default:
            return "text";
        }
    }

    [[nodiscard]] Wrapping wrapping(Operand operand) const override
    {
        static const QList<QByteArray> fold = folded("@").split('@');
        switch (operand) {
        case Operand::Plain:
        case Operand::Folded:
            return {fold[0], fold[1]};
        case Operand::Ordered:
            return {"(rtrim(", ") COLLATE \"oveldra\")"};
        case Operand::Native:
        case Operand::Whole:
            break;
        }
        return {};
    }

    [[nodiscard]] bool comparesPlainTexts() const override { return false; }
    [[nodiscard]] bool comparesWholeNumbers() const override { return true; }

    void writeTruth(const Expr& expr) override
    {
        m_out.sql += '(';
        if (expr.constant) {
            m_out.sql += parameter({BindAs::Number, &expr, nullptr, nullptr});
        } else {
            writeValue(expr);
        }
        m_out.sql += " <> 0)";
    }

    void writeComputation(const Expr& expr, const Column* target) override
    {
        const bool texts = std::all_of(expr.args.begin(), expr.args.end(),
                                       [](const ExprPtr& arg) { return arg->type == ValueType::Text; });
        if (target || (!texts && expr.kind != ExprKind::Function)) {
            throw NoWords();
        }
        switch (expr.kind) {
        case ExprKind::Add:
            writeJoined(expr, "", "");
            break;
        case ExprKind::Concatenate:
            writeJoined(expr, "coalesce(", ", '')");
            break;
        case ExprKind::Function:
            writeFunction(expr);
            break;
        default:
            throw NoWords();
        }
    }

    void writeJoined(const Expr& expr, const char* before, const char* behind)
    {
        const char* separator = "(";
        for (const ExprPtr& arg : expr.args) {
            m_out.sql += QByteArray(separator) + before;
            writeValue(*arg);
            m_out.sql += behind;
            separator = " || ";
        }
        m_out.sql += ')';
    }

    void writeFunction(const Expr& expr)
    {
        const FunctionId id = functionTable()[static_cast<size_t>(expr.function)].id;
        const bool cut = id == FunctionId::Left || id == FunctionId::Right;
        const bool written = (cut && expr.args[1]->constant) || id == FunctionId::Trim;
        if (!written || expr.args[0]->type != ValueType::Text) {
            throw NoWords();
        }
        m_out.sql += cut ? (id == FunctionId::Left ? "left(" : "right(") : "btrim(";
        writeValue(*expr.args[0]);
        m_out.sql += ", ";
        m_out.sql += cut ? parameter({BindAs::Count, expr.args[1].get(), nullptr, nullptr}) : QByteArray("' '");
        m_out.sql += ')';
    }

    void writeMatch(const Expr& text, const Expr& pattern) override
    {
        static const QList<QByteArray> lower = lowerCase("@").split('@');
        m_out.sql += lower[0];
        writeValue(text);
        m_out.sql += lower[1] + " ~ " + parameter({BindAs::Expression, &pattern, nullptr, nullptr});
    }

    void writeQuery(const Select& select) override
    {
        if (select.distinct) {
            writeDistinct(select);
            return;
        }
        writeList();
        writeFrom(select);
        if (isAggregated() || findsOneRow(select)) {
            return;
        }
        m_out.sql += " ORDER BY ";
        for (const OrderItem& item : select.order) {
            if (!item.expr->constant) {
                writeSortKey(*item.expr);
                m_out.sql += ordered("", item.descending) + ", ";
            }
        }
        m_out.sql += m_plan.table.rowMark;
    }

    /// Whether the condition names the whole key. What the screens ask most is asked in this way, and even a single row
    /// takes time to sort.
    [[nodiscard]] bool findsOneRow(const Select& select) const
    {
        const std::vector<int>& key = m_plan.table.key;
        const auto isNamed = [&select](int column) {
            const auto names = [column](const Expr& condition) {
                return condition.kind == ExprKind::Equal && condition.args[0]->column == column &&
                       condition.args[0]->kind == ExprKind::Column && condition.args[1]->constant;
            };
            return names(*select.where) ||
                   (select.where->kind == ExprKind::And &&
                    std::any_of(select.where->args.begin(), select.where->args.end(),
                                [&names](const ExprPtr& condition) { return names(*condition); }));
        };
        return m_plan.table.rowMark == PostgresPrinter::rowMark && select.where && !key.empty() &&
               std::all_of(key.begin(), key.end(), isNamed);
    }

    void writeFrom(const Select& select)
    {
        m_out.sql += " FROM " + quotedName(m_plan.table.name);
        writeWhere(select.where.get());
    }

    void writeSortKey(const Expr& expr)
    {
        writeOperand(expr, expr.type == ValueType::Text ? Operand::Ordered : Operand::Native);
    }

    /// Of the rows that are the same the one that stands first in the table.
    void writeDistinct(const Select& select)
    {
        QByteArray order;
        for (size_t i = 0; i < m_plan.fetched.size(); ++i) {
            m_out.sql += (i > 0 ? ", f" : "f") + QByteArray::number(i);
        }
        m_out.sql += m_plan.fetched.empty() ? "NULL FROM (SELECT " : " FROM (SELECT ";
        for (size_t i = 0; i < m_plan.fetched.size(); ++i) {
            writeFetched(m_plan.fetched[i]);
            m_out.sql += " AS f" + QByteArray::number(i) + ", ";
        }
        for (const OrderItem& item : select.order) {
            if (!item.expr->constant) {
                const QByteArray name = 'o' + QByteArray::number(order.count(','));
                writeSortKey(*item.expr);
                m_out.sql += " AS " + name + ", ";
                order += ordered(name, item.descending) + ", ";
            }
        }
        m_out.sql += m_plan.table.rowMark + " AS mark, row_number() OVER (PARTITION BY ";
        for (const Fetched& fetched : m_plan.fetched) {
            const Wrapping around = wrapping(fetched.kind == ColumnKind::Text ? Operand::Folded : Operand::Native);
            m_out.sql += around.before;
            writeFetched(fetched);
            m_out.sql += around.behind + ", ";
        }
        m_out.sql += "NULL ORDER BY " + m_plan.table.rowMark + ") AS place";
        writeFrom(select);
        m_out.sql += ") AS found WHERE place = 1 ORDER BY " + order + "mark";
    }

    void writeAggregate(const Expr& expr) override
    {
        const Expr& argument = *expr.args[0];
        if (argument.kind == ExprKind::Star) {
            m_out.sql += "count(*)";
            return;
        }
        const FunctionId id = functionTable()[static_cast<size_t>(expr.function)].id;
        if (argument.type == ValueType::Text && id != FunctionId::Count) {
            writeExtreme(argument, id == FunctionId::Max);
            return;
        }
        m_out.sql += functionTable()[static_cast<size_t>(expr.function)].name.toLatin1() + '(';
        writeValue(argument);
        // Binary fractions add up to the same digits only in the same order.
        m_out.sql += id == FunctionId::Sum ? " ORDER BY " + m_plan.table.rowMark + ')' : QByteArray(")");
    }

    /// The first text of those that come first, or last; min() of this engine would take any of them.
    void writeExtreme(const Expr& text, bool last)
    {
        m_out.sql += "(array_agg(";
        writeValue(text);
        m_out.sql += " ORDER BY ";
        writeOperand(text, Operand::Ordered);
        m_out.sql += (last ? " DESC, " : ", ") + m_plan.table.rowMark + ") FILTER (WHERE ";
        writeValue(text);
        m_out.sql += " IS NOT NULL))[1]";
    }
};

void add(std::vector<int>& columns, const Expr* expr)
{
    if (!expr) {
        return;
    }
    for (const int column : columnsIn(*expr)) {
        if (std::find(columns.begin(), columns.end(), column) == columns.end()) {
            columns.push_back(column);
        }
    }
}

/// What rows must have for a statement to be worked out on them.
std::vector<int> columnsNeeded(const Plan& plan)
{
    std::vector<int> columns;
    if (const auto* const select = std::get_if<Select>(&plan.parsed.statement)) {
        for (const Fetched& fetched : plan.fetched) {
            if (!fetched.expr) {
                columns.push_back(fetched.column);
            }
        }
        for (const SelectItem& item : select->items) {
            add(columns, item.expr.get());
        }
        for (const OrderItem& item : select->order) {
            add(columns, item.expr.get());
        }
        add(columns, select->where.get());
    } else if (const auto* const update = std::get_if<Update>(&plan.parsed.statement)) {
        for (const Assignment& assignment : update->assignments) {
            add(columns, assignment.value.get());
        }
        add(columns, update->where.get());
    } else if (const auto* const remove = std::get_if<Delete>(&plan.parsed.statement)) {
        add(columns, remove->where.get());
    }
    return columns;
}

/// The command that writes one of the rows; empty for a query.
QByteArray rowCommand(const Plan& plan)
{
    const QByteArray name = quotedName(plan.table.name);
    const char* const markType = plan.table.rowMark == PostgresPrinter::placeMark ? "tid" : "bigint";
    const auto where = [&](size_t place) -> QByteArray {
        return " WHERE " + plan.table.rowMark + " = " + marked(place, markType);
    };
    if (const auto* const update = std::get_if<Update>(&plan.parsed.statement)) {
        QByteArray assignments;
        size_t place = 0;
        for (const Assignment& assignment : update->assignments) {
            const Column& column = plan.table.columns[static_cast<size_t>(plan.table.find(assignment.column))];
            assignments += (assignments.isEmpty() ? "" : ", ") + quotedName(column.name) + " = " +
                           marked(++place, storageType(column.kind));
        }
        return "UPDATE " + name + " SET " + assignments + where(place + 1);
    }
    return plan.isQuery() ? QByteArray() : "DELETE FROM " + name + where(1);
}

QByteArray indexColumns(const Table& table, const std::vector<int>& columns)
{
    QByteArray result;
    for (const int index : columns) {
        const Column& column = table.columns[static_cast<size_t>(index)];
        const QByteArray name = quotedName(column.name);
        result += (result.isEmpty() ? "" : ", ") + (column.kind == ColumnKind::Text ? folded(name) : name);
    }
    return result;
}

QByteArray typeOf(const Column& column)
{
    if (column.kind == ColumnKind::Text && column.width > 0) {
        return "varchar(" + QByteArray::number(column.width) + ')';
    }
    return column.kind == ColumnKind::Boolean ? PostgresPrinter::yesNoDomain : storageType(column.kind);
}

} // namespace

QByteArray PostgresPrinter::lockKey(const char* schema)
{
    return QByteArray("hashtextextended('oVELDRA ' || ") + schema + ", 0)";
}

void PostgresPrinter::print(Plan& plan) const
{
    constexpr std::array both = {Matching::Plain, Matching::Exact};
    try {
        for (const Matching matching : both) {
            PostgresWriter(plan, matching, plan.texts[static_cast<size_t>(matching)]).write();
        }
        return;
    } catch (const NoWords&) {
        plan.here = WorkedHere{columnsNeeded(plan), rowCommand(plan)};
    }
    for (const Matching matching : both) {
        EngineText& text = plan.texts[static_cast<size_t>(matching)];
        text = {};
        PostgresWriter(plan, matching, text).writeRows(*plan.here);
    }
}

QByteArray PostgresPrinter::scan(const Table& table, const TableScan& scan) const
{
    const auto nameOf = [&table](int column) { return quotedName(table.columns[static_cast<size_t>(column)].name); };
    QByteArray list = columnList(table, scan.columns);
    QByteArray order;
    size_t place = scan.columns.size();
    for (const int column : scan.sort) {
        const bool text = table.columns[static_cast<size_t>(column)].kind == ColumnKind::Text;
        list += (list.isEmpty() ? "" : ", ") + (text ? folded(nameOf(column)) : nameOf(column));
        order += ordered(QByteArray::number(++place), false) + ", ";
    }
    return "SELECT " + list + " FROM " + quotedName(table.name) + " ORDER BY " + order + table.rowMark;
}

QByteArray PostgresPrinter::insertRows(const Table& table, const std::vector<int>& columns, int rows) const
{
    QByteArray values;
    size_t place = 0;
    for (int row = 0; row < rows; ++row) {
        QByteArray marks;
        for (const int column : columns) {
            marks += (marks.isEmpty() ? "" : ", ") +
                     marked(++place, storageType(table.columns[static_cast<size_t>(column)].kind));
        }
        values += (row > 0 ? ", (" : "(") + marks + ')';
    }
    return "INSERT INTO " + quotedName(table.name) + " (" + columnList(table, columns) + ") VALUES " + values;
}

std::vector<QByteArray> PostgresPrinter::setUp() const
{
    return {"CREATE COLLATION IF NOT EXISTS \"oveldra\" (provider = icu, locale = 'es-AR-u-kk-ks-level2', "
            "deterministic = false)",
            QByteArray("DO $$ BEGIN CREATE DOMAIN ") + yesNoDomain +
                " AS smallint; EXCEPTION WHEN duplicate_object THEN NULL; END $$",
            "CREATE OR REPLACE FUNCTION oveldra_wait() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN "
            "PERFORM pg_advisory_xact_lock_shared(" +
                lockKey("TG_TABLE_SCHEMA") + "); RETURN NULL; END $$"};
}

std::vector<QByteArray> PostgresPrinter::createTable(const Table& table,
                                                     const std::vector<std::vector<int>>& indexes) const
{
    QByteArray columns;
    for (const Column& column : table.columns) {
        columns += quotedName(column.name) + ' ' + typeOf(column) + ", ";
    }
    columns += QByteArray(rowMark) + " bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY";
    const QByteArray name = quotedName(table.name);
    std::vector<QByteArray> result;
    result.push_back("CREATE TABLE " + name + " (" + columns + ')');
    result.push_back("CREATE TRIGGER oveldra_wait BEFORE INSERT OR UPDATE OR DELETE ON " + name +
                     " FOR EACH STATEMENT EXECUTE FUNCTION oveldra_wait()");
    const std::vector<QByteArray> further = indexCommands(table, indexes, indexColumns);
    result.insert(result.end(), further.begin(), further.end());
    return result;
}

} // namespace oVELDRA::dialect
