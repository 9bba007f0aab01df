#pragma once

#include "Bindings.h"
#include "Engine.h"
#include "RecordData.h"

#include <dialect/Evaluator.h>
#include <dialect/Plan.h>

#include <memory>

namespace oVELDRA::store {

/// Statements that an engine has no words for, worked out on the rows that it delivers (see dialect::WorkedHere).
class RowWork
{
public:
    /// Nothing is owned; all must outlive it.
    RowWork(const dialect::Plan& plan, const dialect::Literals& literals, const dialect::LazySeparators& separators);

    /// What the rows that the engine delivers have.
    [[nodiscard]] static std::shared_ptr<const ColumnKinds> kindsOf(const dialect::Plan& plan);

    /// The result of a query.
    [[nodiscard]] RecordData result(const RecordData& rows, std::shared_ptr<const ColumnKinds> kinds) const;

    /// Writes the rows that the condition finds, with the engine's statement for one row; answers how many. An error
    /// leaves those before it written.
    qint64 write(const RecordData& rows, EngineStatement& statement) const;

private:
    using Row = std::vector<dialect::Value>;

    [[nodiscard]] std::vector<qsizetype> found(const RecordData& rows) const;
    [[nodiscard]] Row resultOf(const dialect::RowSource& row) const;
    [[nodiscard]] dialect::Value totalOf(const dialect::Expr& expr, const RecordData& rows,
                                         const std::vector<qsizetype>& places) const;
    void sort(const RecordData& rows, std::vector<qsizetype>& places) const;
    [[nodiscard]] dialect::Value value(const dialect::Expr& expr, const dialect::RowSource& row) const;

    const dialect::Plan& m_plan;
    const dialect::Literals& m_literals;
    const dialect::LazySeparators& m_separators;
    size_t m_first; ///< place of the first column of the table in a row: behind the engine's mark, if there is one
};

} // namespace oVELDRA::store
