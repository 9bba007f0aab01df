#include "EngineWriter.h"

#include <algorithm>

namespace oVELDRA::dialect {

namespace {

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

bool isText(const Expr& expr)
{
    return expr.type == ValueType::Text;
}

bool isNumeric(const Expr& expr)
{
    // A text that is written in the statement is read as a number beside one.
    return expr.type == ValueType::Number || expr.type == ValueType::Boolean || (expr.constant && isText(expr));
}

bool isDate(const Expr& expr)
{
    return expr.type == ValueType::Date;
}

bool all(std::span<const ExprPtr> args, bool (*test)(const Expr&))
{
    return std::all_of(args.begin(), args.end(), [test](const ExprPtr& arg) { return test(*arg); });
}

} // namespace

QByteArray quotedName(const QString& name)
{
    QByteArray result = name.toUtf8();
    result.replace('"', "\"\"");
    return '"' + result + '"';
}

QByteArray columnList(const Table& table, const std::vector<int>& columns)
{
    QByteArray list;
    for (const int column : columns) {
        list += (list.isEmpty() ? "" : ", ") + quotedName(table.columns[static_cast<size_t>(column)].name);
    }
    return list;
}

std::vector<QByteArray> indexCommands(const Table& table, const std::vector<std::vector<int>>& indexes,
                                      QByteArray (*written)(const Table&, const std::vector<int>&))
{
    const auto command = [&](const char* verb, const QString& index, const std::vector<int>& columns) -> QByteArray {
        return verb + quotedName(index) + " ON " + quotedName(table.name) + " (" + written(table, columns) + ')';
    };
    std::vector<QByteArray> result;
    if (!table.key.empty()) {
        result.push_back(command("CREATE UNIQUE INDEX ", table.name + QStringView(u"_KEY"), table.key));
    }
    for (size_t i = 0; i < indexes.size(); ++i) {
        result.push_back(
            command("CREATE INDEX ", table.name + QStringView(u"_IDX") + QString::number(i + 1), indexes[i]));
    }
    return result;
}

void EngineWriter::write()
{
    std::visit([this](const auto& statement) { writeStatement(statement); }, m_plan.parsed.statement);
}

void EngineWriter::writeStatement(const Select& select)
{
    m_out.sql += "SELECT ";
    writeQuery(select);
}

void EngineWriter::writeStatement(const Insert& insert)
{
    QByteArray names;
    QByteArray values;
    for (size_t i = 0; i < insert.columns.size(); ++i) {
        const Column& column = columnOf(insert.columns[i]);
        names += (i > 0 ? ", " : "") + quotedName(column.name);
        values += (i > 0 ? ", " : "") + parameter({BindAs::Stored, insert.values[i].get(), &column, nullptr});
    }
    m_out.sql += "INSERT INTO " + quotedName(m_plan.table.name) + " (" + names + ") VALUES (" + values + ')';
}

void EngineWriter::writeStatement(const Update& update)
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

void EngineWriter::writeStatement(const Delete& remove)
{
    m_out.sql += "DELETE FROM " + quotedName(m_plan.table.name);
    writeWhere(remove.where.get());
}

const Column& EngineWriter::columnOf(const QString& name) const
{
    return m_plan.table.columns[static_cast<size_t>(m_plan.table.find(name))];
}

bool EngineWriter::isAggregated() const
{
    return std::any_of(m_plan.fetched.begin(), m_plan.fetched.end(),
                       [](const Fetched& fetched) { return fetched.expr && fetched.expr->aggregate; });
}

QByteArray EngineWriter::parameter(const Parameter& parameter)
{
    m_out.parameters.push_back(parameter);
    return mark(parameter);
}

void EngineWriter::writeList()
{
    QByteArray separator;
    for (const Fetched& fetched : m_plan.fetched) {
        m_out.sql += separator;
        separator = ", ";
        writeFetched(fetched);
    }
    if (m_plan.fetched.empty()) {
        m_out.sql += "NULL"; // a list of constants still gives a row for each row
    }
}

void EngineWriter::writeFetched(const Fetched& fetched)
{
    if (!fetched.expr) {
        writeColumn(fetched.column);
    } else if (fetched.expr->aggregate) {
        writeAggregate(*fetched.expr);
    } else {
        writeValue(*fetched.expr);
    }
}

void EngineWriter::writeWhere(const Expr* where)
{
    if (where) {
        m_out.sql += " WHERE ";
        writeCondition(*where);
    }
}

void EngineWriter::writeColumn(int column)
{
    m_out.sql += quotedName(m_plan.table.columns[static_cast<size_t>(column)].name);
}

void EngineWriter::writeValue(const Expr& expr, const Column* target)
{
    if (expr.constant) {
        m_out.sql += parameter({BindAs::Value, &expr, nullptr, nullptr});
    } else if (expr.kind == ExprKind::Column) {
        writeColumn(expr.column);
    } else {
        writeComputation(expr, target);
    }
}

/// A long run of conditions as a balanced tree: engines bound how deep an expression may be.
void EngineWriter::writeRun(std::span<const ExprPtr> conditions, const char* word)
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

void EngineWriter::writeCondition(const Expr& expr)
{
    if (expr.constant) {
        writeTruth(expr);
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
        writeTruth(expr);
        break;
    }
}

void EngineWriter::writeLike(const Expr& expr)
{
    const Expr& text = *expr.args[0];
    const Expr& pattern = *expr.args[1];
    const bool simple = isText(text) && !text.constant && isText(pattern) && pattern.constant;
    if (!simple) {
        writeTruth(expr);
        return;
    }
    m_out.sql += expr.negated ? "NOT (" : "(";
    if (m_matching == Matching::Plain && !expr.negated && text.kind == ExprKind::Column) {
        writePrefix(text, pattern);
    }
    writeMatch(text, pattern);
    m_out.sql += ')';
}

/// What an index can find of a pattern: the texts that begin as it does.
void EngineWriter::writePrefix(const Expr& text, const Expr& pattern)
{
    writeOperand(text, Operand::Plain);
    m_out.sql += " >= " + parameter({BindAs::Prefix, &pattern, nullptr, nullptr}) + " AND ";
    writeOperand(text, Operand::Plain);
    m_out.sql += " < " + parameter({BindAs::PrefixEnd, &pattern, nullptr, nullptr}) + " AND ";
}

EngineWriter::Operand EngineWriter::operandOf(const Expr& comparison) const
{
    const Expr& first = *comparison.args[0];
    // What an index can find: a column beside constants.
    const bool found = m_matching == Matching::Plain && first.kind == ExprKind::Column &&
                       std::all_of(comparison.args.begin() + 1, comparison.args.end(),
                                   [](const ExprPtr& arg) { return arg->constant; });
    if (all(comparison.args, isText)) {
        if (!isEquality(comparison.kind)) {
            return Operand::Ordered;
        }
        return found && comparesPlainTexts() ? Operand::Plain : Operand::Folded;
    }
    const bool whole = found && comparesWholeNumbers() &&
                       m_plan.table.columns[static_cast<size_t>(first.column)].kind == ColumnKind::Integer;
    return whole ? Operand::Whole : Operand::Native;
}

BindAs EngineWriter::bindingOf(const Expr& constant, Operand operand)
{
    switch (operand) {
    case Operand::Plain:
        return BindAs::PlainText;
    case Operand::Folded:
        return BindAs::FoldedText;
    case Operand::Whole:
        return BindAs::Whole;
    case Operand::Ordered:
        return BindAs::Value;
    case Operand::Native:
        break;
    }
    return isDate(constant) ? BindAs::Value : BindAs::Number;
}

void EngineWriter::writeComparison(const Expr& expr)
{
    if (!all(expr.args, isText) && !all(expr.args, isDate) && !all(expr.args, isNumeric)) {
        writeTruth(expr); // a mixture that only the row can settle
        return;
    }
    const Operand operand = operandOf(expr);
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

void EngineWriter::writeOperand(const Expr& expr, Operand operand)
{
    // What equality needs done to a text is done to a constant when it is bound.
    const bool equality = operand == Operand::Plain || operand == Operand::Folded;
    const Wrapping around = expr.constant && equality ? Wrapping() : wrapping(operand);
    m_out.sql += around.before;
    if (expr.constant) {
        m_out.sql += parameter({bindingOf(expr, operand), &expr, nullptr, nullptr});
    } else {
        writeValue(expr);
    }
    m_out.sql += around.behind;
}

} // namespace oVELDRA::dialect
