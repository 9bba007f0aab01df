#include "HistoryStore.h"

#include <oVELDRA/Store.h>

#include <controls/ListView.h>

#include <QLineEdit>
#include <QTreeView>

namespace oVELDRA::histories {

using namespace Qt::StringLiterals;
using Scope = Statements::Scope;

namespace {

const QDate firstListed(1990, 1, 1);
const QDate lastListed(2079, 12, 31);
constexpr qsizetype mostCharacters = 17; // of a declaration number

QString shown(const QStringList& list, const QStringList& boxes)
{
    return u"list:\n"_s + list.join(u'\n') + u"\nboxes:\n" + boxes.join(u'\n');
}

/// The numbers that the list shows, with the conditions that it shows them under.
QStringList listedBy(const ReferenceModel& model)
{
    const ModelTable& headers = model.table(u"INTINS");
    QStringList numbers;
    for (const Row& row : headers.rows) {
        const QVariant date = headers.cell(row, u"INTFOF");
        if (date.isValid() && date.toDate() >= firstListed && date.toDate() <= lastListed) {
            numbers << headers.cell(row, u"INTDCL").toString();
        }
    }
    return numbers;
}

bool has(const ReferenceModel& model, const QString& table, const QString& column, const QString& number)
{
    const ModelTable& rows = model.table(table);
    const Condition which = is(column, quoted(number));
    return !model.rowsOf(table, [&](const Row& row) { return which.holds(rows, row); }).empty();
}

/// The outcome of a command as a number of rows.
int affected(ReferenceModel& model, const StatementPtr& statement)
{
    return statement->outcome(model).section(u' ', 1).toInt();
}

/// The box that the renumbering ends with; empty for none.
QString renumbered(ReferenceModel& model, const QString& oldNumber, const QString& newNumber)
{
    if (newNumber.trimmed().isEmpty()) {
        return {};
    }
    if (newNumber.size() > mostCharacters) {
        return u"El numero de declaración debe tener como maximo 17 caracteres"_s;
    }
    if (has(model, u"INTINS"_s, u"INTDCL"_s, newNumber) || has(model, u"DIP"_s, u"ARTDCL"_s, newNumber)) {
        return u"El número de daclaración "_s + newNumber + u" ya existe en la base de datos.";
    }
    if (has(model, u"INS"_s, u"INTDCL"_s, newNumber)) {
        return {};
    }
    const auto change = [&](const QString& table, const QString& column) {
        return affected(model, update(table, {{column, quoted(newNumber)}}, is(column, quoted(oldNumber))));
    };
    change(u"DIP"_s, u"ARTDCL"_s);
    const int articles = change(u"INS"_s, u"INTDCL"_s);
    const int headers = change(u"INTINS"_s, u"INTDCL"_s);
    return articles > 0 && headers > 0 ? u"Número de declaración cambiada con exito."_s : QString();
}

QString playedOn(ReferenceModel& model, const Renumbering& renumbering)
{
    const QStringList list = listedBy(model);
    if (list.isEmpty()) {
        return shown(list, {});
    }
    QStringList boxes{u"Confirma cambiar el Número de Declaración?"_s};
    const QString end = renumbered(model, list.at(renumbering.row % list.size()), renumbering.newNumber);
    if (!end.isEmpty()) {
        boxes << end;
    }
    return shown(list, boxes);
}

QString playedOn(ReferenceModel& model, const Deletion& deletion)
{
    const QStringList list = listedBy(model);
    if (list.isEmpty()) {
        return shown(list, {});
    }
    const QString& number = list.at(deletion.row % list.size());
    QStringList boxes{u"Confirma eliminar la DIT "_s + number};
    const auto remove = [&](const QString& table, const QString& column) {
        return affected(model, deleteFrom(table, is(column, quoted(number))));
    };
    if (remove(u"INTINS"_s, u"INTDCL"_s) > 0) {
        remove(u"INS"_s, u"INTDCL"_s);
        remove(u"DIP"_s, u"ARTDCL"_s);
    } else {
        boxes << u"No pudo eliminar el interno "_s + number;
    }
    return shown(list, boxes);
}

} // namespace

HistoryStore::HistoryStore(const QString& inputsUrl, const QString& hostUrl, const std::vector<HostFile>& hostFiles)
    : m_played(createStore(inputsUrl, Database::Inputs)), m_reader(connectStore(inputsUrl, Access::ReadOnly))
{
    const auto host = createStore(hostUrl, Database::Host);
    for (const HostFile& file : hostFiles) {
        addTo(*host, file);
    }
    m_component.state.g_DBINS.assign(m_played);
    m_component.state.g_DBTOR.assign(connectStore(hostUrl, Access::ReadOnly));
    m_list = std::make_unique<declarations::frmDIT>(m_component, declarations::DeclarationDialogs{});
    m_list->Form_Load();
    m_list->findChild<QLineEdit*>(u"txtDESDE"_s)->setText(firstListed.toString(u"dd/MM/yyyy"_s));
    m_list->findChild<QLineEdit*>(u"txtHASTA"_s)->setText(lastListed.toString(u"dd/MM/yyyy"_s));
}

QString HistoryStore::play(const Step& step, const ReferenceModel& model)
{
    return std::visit([&](const auto& kind) { return played(kind, model); }, step);
}

QString HistoryStore::played(const Statements& statements, const ReferenceModel& model)
{
    std::unique_ptr<WriteBurst> burst;
    if (statements.scope != Scope::None) {
        burst = m_played->beginBurst();
    }
    QStringList outcomes;
    for (const StatementPtr& statement : statements.statements) {
        outcomes << outcomeIn(*m_played, *statement, model);
    }
    if (statements.scope == Scope::Committed) {
        burst->commit();
    }
    return outcomes.join(u'\n');
}

QString HistoryStore::played(const ImportRequest& request, const ReferenceModel& /*model*/)
{
    return imported(m_component.state, request);
}

QString HistoryStore::listed(int row)
{
    m_component.prompts.clear();
    m_list->Cargar_INTINS();
    auto& list = *static_cast<controls::ListView*>(m_list->findChild<QTreeView*>(u"lstVDIT"_s));
    QStringList numbers;
    for (int i = 0; i < list.rowCount(); ++i) {
        numbers << list.text(i, 0);
    }
    if (!numbers.isEmpty()) {
        list.selectRow(row % list.rowCount());
    }
    return numbers.join(u'\n');
}

QString HistoryStore::played(const Renumbering& renumbering, const ReferenceModel& /*model*/)
{
    const QString list = listed(renumbering.row);
    if (!list.isEmpty()) {
        m_component.prompts.willAnswer(core::AnswerYes);
        m_component.prompts.willType(renumbering.newNumber);
    }
    m_list->lp_ModificarDCL();
    return shown({list}, m_component.prompts.texts());
}

QString HistoryStore::played(const Deletion& deletion, const ReferenceModel& /*model*/)
{
    const QString list = listed(deletion.row);
    if (!list.isEmpty()) {
        m_component.prompts.willAnswer(core::AnswerYes);
    }
    m_list->f_EliminarDIT();
    return shown({list}, m_component.prompts.texts());
}

QStringList HistoryStore::content(const ModelTable& table)
{
    QStringList columns;
    for (const dialect::Column& column : table.definition.columns) {
        columns << column.name;
    }
    return rowTexts(*m_reader, u"select * from "_s + table.definition.name, columns);
}

QString playedOn(ReferenceModel& model, const Step& step, const History& history)
{
    if (const auto* const statements = std::get_if<Statements>(&step)) {
        QStringList outcomes;
        for (const StatementPtr& statement : statements->statements) {
            outcomes << statement->outcome(model);
        }
        return outcomes.join(u'\n');
    }
    if (const auto* const request = std::get_if<ImportRequest>(&step)) {
        return imported(model, history.hostFile(request->interno), *request);
    }
    if (const auto* const renumbering = std::get_if<Renumbering>(&step)) {
        return playedOn(model, *renumbering);
    }
    return playedOn(model, std::get<Deletion>(step));
}

QStringList contentOf(const ModelTable& table)
{
    QStringList texts;
    for (const Row& row : table.rows) {
        texts << rowText(row);
    }
    return texts;
}

} // namespace oVELDRA::histories
