#pragma once

#include "ReferenceModel.h"
#include "StatementParts.h"

#include <oVELDRA/ConexionDB.h>

#include <QStringList>

#include <memory>

namespace oVELDRA::histories {

/// A statement that can be given to a store as a text and to the model as what it means.
class Statement
{
public:
    Statement() = default;
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    virtual ~Statement() = default;

    [[nodiscard]] virtual QString text() const = 0;
    /// The columns of the result of a query; empty for a command.
    [[nodiscard]] virtual QStringList resultColumns(const ReferenceModel& /*model*/) const { return {}; }
    /// What comes of the statement: the rows affected, the rows found, or the error. Throws no Refusal.
    [[nodiscard]] QString outcome(ReferenceModel& model) const;

protected:
    [[nodiscard]] virtual QString run(ReferenceModel& model) const = 0;
};

using StatementPtr = std::shared_ptr<const Statement>;

/// What comes of the statement in a store, in the words of Statement::outcome().
[[nodiscard]] QString outcomeIn(ConexionDB& store, const Statement& statement, const ReferenceModel& model);

/// The rows of a query as a text each. Throws the connection's reason when it cannot be opened.
[[nodiscard]] QStringList rowTexts(ConexionDB& store, const QString& query, const QStringList& columns);

/// Cells as one text.
[[nodiscard]] QString rowText(const Row& cells);

/// A column and the value for it: a Said, or worked out from the row that is changed.
struct Assignment
{
    QString column;
    Said said;
    std::function<QVariant(const QVariant& before)> change{}; ///< of the column itself; `said` is only the text then
};

[[nodiscard]] StatementPtr insertInto(const QString& table, std::vector<Assignment> values);
[[nodiscard]] StatementPtr update(const QString& table, std::vector<Assignment> values, Condition which);
[[nodiscard]] StatementPtr deleteFrom(const QString& table, Condition which);

/// A column of a select list.
struct Item
{
    QString text;
    QString name;
    std::function<QVariant(const ModelTable&, const Row&)> value;
};

[[nodiscard]] Item column(const QString& name);
/// format(column,'000') under another name.
[[nodiscard]] Item threeDigits(const QString& column, const QString& name);

struct SelectParts
{
    std::vector<Item> items{}; ///< empty: all columns
    QString table;
    std::optional<Condition> which{};
    QStringList order{}; ///< column names, perhaps with " desc"
    bool distinct = false;
};

[[nodiscard]] StatementPtr select(SelectParts parts);
/// select count(what) as Total; `what` is a column, whose Nulls are not counted, or *.
[[nodiscard]] StatementPtr count(const QString& what, const QString& table, Condition which);
/// A text that is refused whatever is in the database.
[[nodiscard]] StatementPtr refused(const QString& text, int number);

} // namespace oVELDRA::histories
