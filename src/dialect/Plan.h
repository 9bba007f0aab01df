#pragma once

#include <dialect/Ast.h>
#include <dialect/Catalog.h>

#include <QByteArray>
#include <QString>

#include <array>
#include <deque>
#include <optional>
#include <vector>

namespace oVELDRA::dialect {

/// An expression that an engine hands back to be worked out here, with the columns it needs, in the order given.
struct Computation
{
    const Expr* expr = nullptr;
    const Column* target = nullptr; ///< the column that the value is written to, if it is
    std::vector<int> columns;
    std::vector<ColumnKind> kinds;
};

/// How a parameter's value is made fit for its place in the engine's text.
enum class BindAs : quint8 {
    Value,      ///< as it is
    Number,     ///< texts by the locale
    Whole,      ///< as Number; not whole: the plain text of the statement does not do
    PlainText,  ///< without trailing blanks; not ASCII: the plain text of the statement does not do
    FoldedText, ///< the form that is equal for texts that compare equal
    Prefix,     ///< what every match of a pattern begins with; none, or not ASCII: the plain text does not do
    PrefixEnd,  ///< the first text behind all that begin with that
    Count,      ///< a number of characters: whole, not negative
    Expression, ///< a pattern of `like` as a regular expression, for texts in lower case
    Stored,     ///< converted to the kind of the column that it is written to
    Computation ///< what the engine's own function for computations takes
};

struct Parameter
{
    BindAs as = BindAs::Value;
    const Expr* expr = nullptr;               ///< constant; null for a computation
    const Column* column = nullptr;           ///< of Stored
    const Computation* computation = nullptr; ///< of Computation
};

/// A statement in an engine's words, with numbered parameters.
struct EngineText
{
    QByteArray sql;
    std::vector<Parameter> parameters;
};

/// How far an engine's text may lean on the engine's own text comparison.
enum class Matching : quint8 {
    Plain, ///< all texts compared with are ASCII: the engine's indexes serve
    Exact  ///< any texts
};

/// A column that the engine delivers.
struct Fetched
{
    int column = -1;            ///< of the table, or
    const Expr* expr = nullptr; ///< an aggregate, or an expression that the engine must know to tell rows apart
    ColumnKind kind = ColumnKind::Text;
};

/// A column of the result.
struct ResultColumn
{
    QString name;
    ColumnKind kind = ColumnKind::Text;
    int fetched = -1;           ///< taken as it comes, or
    const Expr* expr = nullptr; ///< worked out here on the row that came
};

/// A statement that the engine has no words for. The engine delivers whole rows, and the statement is worked out here;
/// rows are written one by one.
struct WorkedHere
{
    std::vector<int> columns; ///< what the rows have, behind the engine's own mark of the row when it is written back
    QByteArray write; ///< writes one row: a parameter for each assignment, then the row's mark; empty for a query
};

/// Everything that can be known of a statement from its shape. It holds for all statements of that shape.
struct Plan
{
    Plan() = default;
    Plan(const Plan&) = delete;
    Plan& operator=(const Plan&) = delete;

    QString text; ///< the first statement of the shape; the tree's own literals point into it
    ParsedStatement parsed;
    Table table;
    std::vector<Fetched> fetched;
    std::vector<ResultColumn> columns;
    bool direct = true; ///< the result columns are the fetched ones, in order
    /// The columns of the table's key that the statement writes.
    std::vector<int> writtenKey;
    std::deque<Computation> computations;
    std::array<EngineText, 2> texts; ///< by Matching
    std::optional<WorkedHere> here;  ///< what the texts deliver is then the rows for that

    [[nodiscard]] bool isQuery() const { return std::holds_alternative<Select>(parsed.statement); }
    [[nodiscard]] const Select& select() const { return std::get<Select>(parsed.statement); }
};

/// A table to be read as a whole.
struct TableScan
{
    std::vector<int> columns; ///< the columns wanted
    std::vector<int> sort; ///< the columns that the rows are ordered by; ties, and everything without, in table order
};

/// Says the engine's words for the dialect.
class EnginePrinter
{
public:
    EnginePrinter() = default;
    EnginePrinter(const EnginePrinter&) = delete;
    EnginePrinter& operator=(const EnginePrinter&) = delete;
    virtual ~EnginePrinter() = default;

    /// Fills in a resolved plan's texts.
    virtual void print(Plan& plan) const = 0;

    /// A query that gives a row for every set of rows whose key compares equal; for keys with letters that the
    /// engine's own unique index does not know to be equal. Empty when it knows all.
    [[nodiscard]] virtual QByteArray duplicateKeys(const Table& table) const = 0;

    /// A query over a table as a whole. Its rows have the columns wanted and then a key for each column sorted by: of
    /// texts the folded form, ordered by its UTF-8 bytes; anything else as it is. Null comes first.
    [[nodiscard]] virtual QByteArray scan(const Table& table, const TableScan& scan) const = 0;

    /// An insert of that many rows at once, with a parameter for each of these columns of each row.
    [[nodiscard]] virtual QByteArray insertRows(const Table& table, const std::vector<int>& columns,
                                                int rows) const = 0;

    /// The commands that a new database needs before its tables; they change nothing when they run again.
    [[nodiscard]] virtual std::vector<QByteArray> setUp() const { return {}; }

    /// The commands that make a table with its key and indexes (each a list of columns).
    [[nodiscard]] virtual std::vector<QByteArray> createTable(const Table& table,
                                                              const std::vector<std::vector<int>>& indexes) const = 0;
};

/// The columns of the table that an expression reads, each once.
[[nodiscard]] std::vector<int> columnsIn(const Expr& expr);

/// Parses and resolves a statement and plans what to fetch for it; the engine's texts are left to its printer.
[[nodiscard]] std::unique_ptr<Plan> makePlan(const QString& text, const Catalog& catalog);

} // namespace oVELDRA::dialect
