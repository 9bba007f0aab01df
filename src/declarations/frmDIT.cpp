#include "frmDIT.h"

#include <controls/BusyPointer.h>
#include <controls/ListView.h>
#include <controls/OleColor.h>
#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <core/Prompts.h>
#include <runtime/Clock.h>
#include <runtime/Dates.h>
#include <runtime/Numbers.h>
#include <runtime/Texts.h>
#include <runtime/ValueConverter.h>

#include <QFontMetrics>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::declarations {

namespace {

using core::quoted;
using runtime::toText;

constexpr quint32 Black = 0;
constexpr quint32 Red = 255;
constexpr qsizetype MostCharacters = 17; // of a declaration number

bool hasRows(ConexionDB& connection, const QString& statement)
{
    return !core::rowsOf(connection, statement)->atEof();
}

controls::ListRow rowOf(const Recordset& declaration)
{
    const double available = runtime::toNumber(declaration.value(u"INTIOK"));
    return {{toText(declaration.value(u"INTDCL")), toText(declaration.value(u"INTNRO")),
             toText(declaration.value(u"INTDES")), toText(declaration.value(u"INTCTC")),
             runtime::Format(declaration.value(u"INTFOF"), u"dd/mm/yyyy"),
             runtime::Format(declaration.value(u"INTVEN"), u"dd/mm/yyyy"), runtime::CStr(available)},
            available == 0 ? std::optional(controls::colorFromOle(Red)) : std::nullopt};
}

/// Black, where it can be read: on a dark theme's list the theme's own colour takes its place.
std::optional<QColor> availableColor(const QWidget& list)
{
    constexpr int middle = 128;
    const bool isLight = list.palette().color(QPalette::Base).lightness() >= middle;
    return isLight ? std::optional(controls::colorFromOle(Black)) : std::nullopt;
}

/// What came of a new number for a declaration.
enum class Renumbering {
    Taken,     ///< it is another declaration's; nothing was written
    Untouched, ///< articles without a declaration have it, or the old number had no declaration or no articles
    Done
};

/// From the first check to the last update no other seat may write; the scope ends with this function, before any box.
Renumbering renumber(ConexionDB& inputs, const QString& oldNumber, const QString& newNumber)
{
    const controls::BusyPointer busy;
    const QString future = quoted(newNumber);
    const auto burst = inputs.beginBurst();
    if (hasRows(inputs, u"select INTDCL from INTINS where INTDCL = "_s + future) ||
        hasRows(inputs, u"select ARTDCL from DIP where ARTDCL = "_s + future)) {
        return Renumbering::Taken;
    }
    if (hasRows(inputs, u"select INTDCL from INS where INTDCL = "_s + future)) {
        return Renumbering::Untouched;
    }
    const QString present = quoted(oldNumber);
    core::run(inputs, u"update DIP set ARTDCL = "_s + future + u" where ARTDCL = "_s + present);
    const qint64 articles = core::run(inputs, u"update INS set INTDCL = "_s + future + u" where INTDCL = "_s + present);
    const qint64 headers =
        core::run(inputs, u"update INTINS set INTDCL = "_s + future + u" where INTDCL = "_s + present);
    burst->commit();
    return articles > 0 && headers > 0 ? Renumbering::Done : Renumbering::Untouched;
}

/// Deletes a declaration with its articles and discharges. False when there was none; then nothing else is deleted.
bool deleteDeclaration(ConexionDB& inputs, const QString& number)
{
    const controls::BusyPointer busy;
    const QString code = quoted(number);
    const auto burst = inputs.beginBurst();
    if (core::run(inputs, u"delete from INTINS where INTDCL = "_s + code) < 1) {
        return false;
    }
    core::run(inputs, u"delete from INS where INTDCL = "_s + code);
    core::run(inputs, u"delete from DIP where ARTDCL = "_s + code);
    burst->commit();
    return true;
}

} // namespace

frmDIT::frmDIT(core::Component& component, DeclarationDialogs dialogs)
    : Form(component, u"frmDIT"_s, u"Listados de DIT's"_s), m_dialogs(std::move(dialogs))
{
    QLabel* title = addTitle({}, windowTitle());
    addText(u"Label2"_s, u"Seleccione los intervalos de fecha para el listados de DIT's"_s);

    auto* range = new QHBoxLayout;
    range->setSpacing(fontMetrics().height());
    txtDESDE = addDate(*range, u"txtDESDE"_s, u"Label3"_s, u"Desde:"_s);
    txtHASTA = addDate(*range, u"txtHASTA"_s, u"Label4"_s, u"Hasta:"_s);
    range->addWidget(addText(u"Label5"_s, u"[F11] - Mostrar"_s), 1);
    body().addLayout(range);

    lstVDIT = addList(u"lstVDIT"_s, windowTitle(),
                      {{u"Declaración"_s, 18},
                       {u"Interno"_s, 12},
                       {u"Descripción"_s, 28},
                       {u"Nro CTC"_s, 12},
                       {u"Fecha Ofic."_s, 10},
                       {u"Fecha Venc."_s, 10},
                       {u"Disp"_s, 4}});
    title->setBuddy(lstVDIT);
    addText(u"Label6"_s, u"DISP.: (1) Habilitado - (2) Bloqueado"_s);
    addHint(u"Label1"_s, u"[ENTER] - Modificar - [CTRL + ENTER] Modificar Nro Declaración - [F6] Ver Articulos - "
                         "[DEL] Eliminar - [ESC] Salir"_s);

    setKeys({{Qt::Key_Escape, controls::AnyModifiers, controls::WholeForm, [this] { unload(); }},
             {Qt::Key_F11, controls::AnyModifiers, controls::WholeForm, [this] { Cargar_INTINS(); }},
             {Qt::Key_Return, Qt::NoModifier, lstVDIT, [this] { lp_ModificarDIT(); }},
             {Qt::Key_Return, Qt::ControlModifier, lstVDIT, [this] { lp_ModificarDCL(); }},
             {Qt::Key_F6, controls::AnyModifiers, lstVDIT, [this] { lp_Ver_DITART(); }},
             {Qt::Key_Delete, controls::AnyModifiers, lstVDIT, [this] { f_EliminarDIT(); }}});
}

void frmDIT::Form_Load()
{
    core::trap(component().prompts(), u" - Sección [oVELDRA.frmDIT.form_load]", [this] {
        bindTextBoxes({txtDESDE, txtHASTA});
        const QString year = QString::number(component().clock().today().year());
        txtDESDE->setText(u"01/01/"_s + year);
        txtHASTA->setText(u"31/12/"_s + year);
        Cargar_INTINS();
    });
}

void frmDIT::Cargar_INTINS()
{
    core::trap(component().prompts(), u" - Seccion [oVELDRA.frmDIT.Cargar_INTINS]", [this] {
        requireRange();
        const controls::BusyPointer busy;
        const controls::FillScope fill(*lstVDIT);
        lstVDIT->clear();
        lstVDIT->append(
            core::rowsOf(*component().state.g_DBINS, u"select * from INTINS where INTFOF between datevalue("_s +
                                                         quoted(txtDESDE->text()) + u") and datevalue ("_s +
                                                         quoted(txtHASTA->text()) + u')'),
            rowOf);
    });
}

void frmDIT::lp_ModificarDIT()
{
    const int row = lstVDIT->currentRow();
    if (row < 0) {
        return;
    }
    core::trap(component().prompts(), u" - Sección [oVELDRA.frmDIT.lp_ModificarDIT]", [this, row] {
        core::CurrentDeclaration& declaration = component().state.declaration;
        declaration = {};
        declaration.number = lstVDIT->text(row, 0);
        showDialog(m_editor, m_dialogs.editor);
        if (declaration.saved) {
            refreshRow(row, declaration);
        }
    });
}

void frmDIT::lp_ModificarDCL()
{
    const int row = lstVDIT->currentRow();
    if (row < 0) {
        return;
    }
    core::trap(component().prompts(), u" - Seccion [oVELDRA.frmDIT.lp_ModificarDCL]", [this, row] {
        core::Prompts& prompts = component().prompts();
        if (prompts.messageBox(u"Confirma cambiar el Número de Declaración?"_s, core::QuestionBox) == core::AnswerNo) {
            return;
        }
        const QString oldNumber = lstVDIT->text(row, 0);
        const QString newNumber =
            prompts.inputBox(u"Ingrese el nuevo Número de Declaración"_s, u"Modificar"_s, oldNumber);
        if (runtime::Trim(newNumber).isEmpty()) {
            return;
        }
        if (newNumber.size() > MostCharacters) {
            prompts.messageBox(u"El numero de declaración debe tener como maximo 17 caracteres"_s,
                               core::ExclamationBox);
            return;
        }
        switch (renumber(*component().state.g_DBINS, oldNumber, newNumber)) {
        case Renumbering::Taken:
            prompts.messageBox(u"El número de daclaración "_s + newNumber + u" ya existe en la base de datos."_s,
                               core::ExclamationBox);
            break;
        case Renumbering::Untouched:
            break; // meant to end without a word
        case Renumbering::Done:
            lstVDIT->setText(row, 0, newNumber);
            prompts.messageBox(u"Número de declaración cambiada con exito."_s, core::InformationBox);
            break;
        }
    });
}

void frmDIT::lp_Ver_DITART()
{
    const int row = lstVDIT->currentRow();
    if (row < 0) {
        return;
    }
    core::trap(component().prompts(), u" - Sección [oVELDRA.frmDIT.lp_Ver_DITART]", [this, row] {
        component().state.declaration.number = lstVDIT->text(row, 0);
        showDialog(m_articleListing, m_dialogs.articleListing);
    });
}

bool frmDIT::f_EliminarDIT()
{
    const int row = lstVDIT->currentRow();
    if (row < 0) {
        return false;
    }
    bool deleted = false;
    core::trap(component().prompts(), u" - Sección [oVELDRA.frmDIT.f_EliminarDIT]", [&] {
        core::Prompts& prompts = component().prompts();
        const QString number = lstVDIT->text(row, 0);
        if (prompts.messageBox(u"Confirma eliminar la DIT "_s + number, core::QuestionBox) == core::AnswerNo) {
            return;
        }
        if (deleteDeclaration(*component().state.g_DBINS, number)) {
            lstVDIT->removeRow(row);
            deleted = true;
        } else {
            prompts.messageBox(u"No pudo eliminar el interno "_s + number, core::ExclamationBox);
        }
    });
    return deleted;
}

void frmDIT::designState()
{
    txtDESDE->clear();
    txtHASTA->clear();
    lstVDIT->clear();
    lstVDIT->setFocus();
}

QLineEdit* frmDIT::addDate(QBoxLayout& line, const QString& name, const QString& labelName, const QString& label)
{
    auto* field = new QFormLayout;
    line.addLayout(field);
    QLineEdit* date = addTextBox(*field, name, label, 12);
    field->labelForField(date)->setObjectName(labelName);
    return date;
}

void frmDIT::requireRange() const
{
    const auto first = runtime::parseDate(txtDESDE->text());
    if (!first) {
        throw RuntimeError(core::ApplicationError, u"El campo FECHA DESDE, debe tener una valor fecha valida"_s);
    }
    const auto last = runtime::parseDate(txtHASTA->text());
    if (!last) {
        throw RuntimeError(core::ApplicationError, u"El campo FECHA HASTA, debe tener una valor fecha valida"_s);
    }
    if (*last < *first) {
        throw RuntimeError(core::ApplicationError, u"El valor fecha DESDE debe ser menor al valor de HASTA"_s);
    }
}

void frmDIT::showDialog(std::unique_ptr<core::Screen>& dialog, const core::ScreenFactory& factory)
{
    if (!dialog) {
        dialog = factory(component());
    }
    dialog->showModal();
}

void frmDIT::refreshRow(int row, const core::CurrentDeclaration& saved)
{
    int column = 0;
    for (const QString& text :
         {saved.internalNumber, saved.description, saved.ctc, saved.officialDate, saved.expiryDate, saved.enabled}) {
        lstVDIT->setText(row, ++column, text);
    }
    const bool isAvailable = saved.enabled == u"1";
    lstVDIT->setColor(row, isAvailable ? availableColor(*lstVDIT) : controls::colorFromOle(Red));
}

} // namespace oVELDRA::declarations
