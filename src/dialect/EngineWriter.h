#pragma once

#include <dialect/Plan.h>

#include <span>

namespace oVELDRA::dialect {

[[nodiscard]] QByteArray quotedName(const QString& name);

/// The names of columns, with commas.
[[nodiscard]] QByteArray columnList(const Table& table, const std::vector<int>& columns);

/// The commands that make a table's indexes, that of its key first; `written` writes the columns of one.
[[nodiscard]] std::vector<QByteArray> indexCommands(const Table& table, const std::vector<std::vector<int>>& indexes,
                                                    QByteArray (*written)(const Table&, const std::vector<int>&));

/// Writes a plan's statement in an engine's words: what engines have in common, with their differences as hooks.
class EngineWriter
{
public:
    EngineWriter(Plan& plan, Matching matching, EngineText& out) : m_plan(plan), m_matching(matching), m_out(out) {}
    EngineWriter(const EngineWriter&) = delete;
    EngineWriter& operator=(const EngineWriter&) = delete;
    virtual ~EngineWriter() = default;

    /// Writes the whole statement.
    void write();

protected:
    /// How a text is compared; Native for what is no text.
    enum class Operand : quint8 {
        Native,
        Whole,  ///< a column of whole numbers and constants that must be whole
        Plain,  ///< equality where all texts compared with are ASCII
        Folded, ///< equality
        Ordered ///< before and after
    };
    struct Wrapping
    {
        QByteArray before;
        QByteArray behind;
    };

    /// What stands for the parameter that was added last.
    [[nodiscard]] virtual QByteArray mark(const Parameter& parameter) const = 0;
    [[nodiscard]] virtual Wrapping wrapping(Operand operand) const = 0;
    /// Whether there is a form of equality for texts of ASCII letters that needs nothing done to them.
    [[nodiscard]] virtual bool comparesPlainTexts() const = 0;
    /// Whether indexes on whole numbers serve whole numbers only.
    [[nodiscard]] virtual bool comparesWholeNumbers() const = 0;
    /// A value as a condition.
    virtual void writeTruth(const Expr& expr) = 0;
    /// An expression that is neither constant nor a column, as a value; for the column that it is written to, if any.
    virtual void writeComputation(const Expr& expr, const Column* target) = 0;
    /// Whether a text, which is not constant, matches a pattern, which is.
    virtual void writeMatch(const Expr& text, const Expr& pattern) = 0;
    virtual void writeAggregate(const Expr& expr) = 0;
    /// Everything of a query behind SELECT; the expressions in the order of Plan::fetched.
    virtual void writeQuery(const Select& select) = 0;

    [[nodiscard]] const Column& columnOf(const QString& name) const;
    [[nodiscard]] bool isAggregated() const;

    QByteArray parameter(const Parameter& parameter);
    /// What the engine is to deliver.
    void writeList();
    void writeFetched(const Fetched& fetched);
    void writeWhere(const Expr* where);
    void writeCondition(const Expr& expr);
    void writeColumn(int column);
    void writeValue(const Expr& expr, const Column* target = nullptr);
    void writeOperand(const Expr& expr, Operand operand);

    Plan& m_plan;
    Matching m_matching;
    EngineText& m_out;

private:
    void writeStatement(const Select& select);
    void writeStatement(const Insert& insert);
    void writeStatement(const Update& update);
    void writeStatement(const Delete& remove);
    void writeRun(std::span<const ExprPtr> conditions, const char* word);
    void writeLike(const Expr& expr);
    void writePrefix(const Expr& text, const Expr& pattern);
    void writeComparison(const Expr& expr);
    [[nodiscard]] Operand operandOf(const Expr& comparison) const;
    [[nodiscard]] static BindAs bindingOf(const Expr& constant, Operand operand);
};

} // namespace oVELDRA::dialect
