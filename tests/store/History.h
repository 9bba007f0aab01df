#pragma once

#include "HistoryStatements.h"
#include "HistoryWords.h"
#include "HostFile.h"

#include <variant>

namespace oVELDRA::histories {

/// Statements that follow one another, by themselves or in a write scope.
struct Statements
{
    enum class Scope { None, Committed, Left };
    std::vector<StatementPtr> statements;
    Scope scope = Scope::None;
};

/// Renumbering of a declaration of the list, on the screen.
struct Renumbering
{
    int row; ///< of the list, counted round when there are fewer
    QString newNumber;
};

/// Deletion of a declaration of the list, on the screen.
struct Deletion
{
    int row;
};

using Step = std::variant<Statements, ImportRequest, Renumbering, Deletion>;

/// A random history of an inputs database. The same seed and the same model give the same history.
class History
{
public:
    explicit History(quint64 seed);

    /// The declarations of the host that are imported. That of an interno, or null.
    [[nodiscard]] const std::vector<HostFile>& hostFiles() const { return m_hostFiles; }
    [[nodiscard]] const HostFile* hostFile(const QString& interno) const;

    /// The next step for a database as the model has it.
    [[nodiscard]] Step next(const ReferenceModel& model);

private:
    using Maker = Step (History::*)(const ReferenceModel& model);

    void makeHostFiles();
    [[nodiscard]] HostItem hostItem(bool shared);

    [[nodiscard]] Step catalog(const ReferenceModel& model);
    [[nodiscard]] Step deletedCatalog(const ReferenceModel& model);
    [[nodiscard]] Step product(const ReferenceModel& model);
    [[nodiscard]] Step editedProduct(const ReferenceModel& model);
    [[nodiscard]] Step deletedProduct(const ReferenceModel& model);
    [[nodiscard]] Step relation(const ReferenceModel& model);
    [[nodiscard]] Step editedRelation(const ReferenceModel& model);
    [[nodiscard]] Step movedKeys(const ReferenceModel& model);
    [[nodiscard]] Step import(const ReferenceModel& model);
    [[nodiscard]] Step editedHeader(const ReferenceModel& model);
    [[nodiscard]] Step renumbering(const ReferenceModel& model);
    [[nodiscard]] Step uncheckedRenumbering(const ReferenceModel& model);
    [[nodiscard]] Step deletion(const ReferenceModel& model);
    [[nodiscard]] Step discharge(const ReferenceModel& model);
    [[nodiscard]] Step bulkEdit(const ReferenceModel& model);
    [[nodiscard]] Step refusedStatement(const ReferenceModel& model);
    [[nodiscard]] Step failingBurst(const ReferenceModel& model);
    [[nodiscard]] Step screenQuery(const ReferenceModel& model);
    [[nodiscard]] Step anyQuery(const ReferenceModel& model);

    [[nodiscard]] StatementPtr insertedHeader(const ReferenceModel& model);
    [[nodiscard]] StatementPtr refusedText();
    [[nodiscard]] QString anyTable(const ReferenceModel& model);
    [[nodiscard]] Statements alone(StatementPtr statement) const { return {{std::move(statement)}}; }
    [[nodiscard]] Statements::Scope anyScope();

    Dice m_dice;
    HistoryWords m_words;
    std::vector<HostFile> m_hostFiles;
    std::vector<Maker> m_makers; ///< each as often as it is likely
};

/// A step in words, for a failure's report.
[[nodiscard]] QString describe(const Step& step);

} // namespace oVELDRA::histories
