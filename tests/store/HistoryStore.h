#pragma once

#include "History.h"
#include "doubles/TestComponent.h"

#include <declarations/frmDIT.h>

#include <QString>

#include <memory>

namespace oVELDRA::histories {

/// A real store that a history is played on, with the host's database beside it and a list of declarations before it.
class HistoryStore
{
public:
    /// Makes both databases, on the same engine, and fills the host's. Another connection than the one that is played
    /// on reads what is there.
    HistoryStore(const QString& inputsUrl, const QString& hostUrl, const std::vector<HostFile>& hostFiles);

    /// Plays a step; answers what came of it. `model` is asked for the columns of tables only.
    [[nodiscard]] QString play(const Step& step, const ReferenceModel& model);
    /// All rows of a table as texts, in table order.
    [[nodiscard]] QStringList content(const ModelTable& table);

private:
    [[nodiscard]] QString played(const Statements& statements, const ReferenceModel& model);
    [[nodiscard]] QString played(const ImportRequest& request, const ReferenceModel& model);
    [[nodiscard]] QString played(const Renumbering& renumbering, const ReferenceModel& model);
    [[nodiscard]] QString played(const Deletion& deletion, const ReferenceModel& model);
    /// Lists the declarations and selects one; answers the list.
    [[nodiscard]] QString listed(int row);

    std::shared_ptr<ConexionDB> m_played;
    std::shared_ptr<ConexionDB> m_reader;
    doubles::TestComponent m_component;
    std::unique_ptr<declarations::frmDIT> m_list;
};

/// What comes of a step, in the words of HistoryStore::play(); of an import only the beginning.
[[nodiscard]] QString playedOn(ReferenceModel& model, const Step& step, const History& history);
[[nodiscard]] QStringList contentOf(const ModelTable& table);

} // namespace oVELDRA::histories
