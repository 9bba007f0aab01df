#include "frmMODDIT.h"

#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <core/Prompts.h>
#include <runtime/Dates.h>
#include <runtime/ValueConverter.h>

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::declarations {

namespace {

using core::quoted;

/// A text with its apostrophes turned into accents, so that a statement can hold it.
QString withoutApostrophes(QString text)
{
    return text.replace(u'\'', u'´');
}

} // namespace

frmMODDIT::frmMODDIT(core::Component& component, core::ScreenFactory dischargeListing)
    : Form(component, u"frmMODDIT"_s, u"Modificar DIT"_s), m_makeListing(std::move(dischargeListing))
{
    addTitle({}, windowTitle());
    QFormLayout& fields = *addFields();
    lbINTDCL = addValue(fields, u"lbINTDCL"_s, u"DIT Nro:"_s);
    txtINTNRO = addTextBox(fields, u"txtINTNRO"_s, u"Interno"_s, 18);
    txtINTDES = addTextBox(fields, u"txtINTDES"_s, u"Descripción"_s, 48);
    txtINTCTC = addTextBox(fields, u"txtINTCTC"_s, u"Nro C.T.C."_s, 18);
    txtINTFOF = addTextBox(fields, u"txtINTFOF"_s, u"Fecha Oficialización"_s, 12);
    txtINTVEN = addTextBox(fields, u"txtINTVEN"_s, u"Fecha Vencimiento"_s, 12);
    chDITOK = addCheckBox(u"chDITOK"_s, u"Declaración habilitada"_s);
    body().addStretch(1);
    addHint({}, u"[F11] Guardar - [ESC] Salir"_s);
    addText({}, u"[F12] - Impresión de exportaciones relacionadas a la DIT"_s)
        ->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);

    const auto save = [this] {
        if (fp_ModificarDIT()) {
            unload();
        }
    };
    setKeys({{Qt::Key_Escape, controls::AnyModifiers, controls::WholeForm, [this] { unload(); }},
             {Qt::Key_F11, controls::AnyModifiers, controls::WholeForm, save},
             {Qt::Key_F12, controls::AnyModifiers, controls::WholeForm, [this] { listDischarges(); }}});
}

void frmMODDIT::Form_Load()
{
    bindTextBoxes({txtINTNRO, txtINTDES, txtINTCTC, txtINTFOF, txtINTVEN});
    fp_CargarDIT();
}

bool frmMODDIT::fp_CargarDIT()
{
    // The location leaves out the underscore; users know it so.
    return core::trap(component().prompts(), u"Sección [oVELDRA.frmMODDIT.fpCargarDIT]", [this] {
        core::SharedState& state = component().state;
        const QString& number = state.declaration.number;
        std::unique_ptr<Recordset> header;
        // No statement can ask for a number with an apostrophe, so its search fails like any other.
        if (number.contains(u'\'') ||
            !core::AbrirRecordset(*state.g_DBINS, u"select * from INTINS where INTDCL = "_s + quoted(number), header)) {
            throw RuntimeError(core::ApplicationError,
                               u"No existe la declaración "_s + number + u" u ocurrio un error en su busqueda"_s);
        }
        const auto text = [&header](QStringView field) { return runtime::toText(header->value(field)); };
        showValue(*lbINTDCL, text(u"INTDCL"));
        txtINTNRO->setText(text(u"INTNRO"));
        txtINTDES->setText(text(u"INTDES"));
        txtINTDES->setCursorPosition(0); // a long text is read from its beginning
        txtINTCTC->setText(text(u"INTCTC"));
        txtINTFOF->setText(text(u"INTFOF"));
        txtINTVEN->setText(text(u"INTVEN"));
        chDITOK->setChecked(runtime::toNumber(header->value(u"INTIOK")) != 0);
    });
}

bool frmMODDIT::fp_ModificarDIT()
{
    core::SharedState& state = component().state;
    core::CurrentDeclaration& declaration = state.declaration;
    core::trap(component().prompts(), u" - Sección [oVELDRA.frmMODDIT.fp_ModificarDIT]", [&] {
        declaration.saved = false;
        requireFields();
        const QString internalNumber = withoutApostrophes(txtINTNRO->text());
        const QString description = withoutApostrophes(txtINTDES->text());
        const QString ctc = txtINTCTC->text(); // its apostrophes are meant to stay, and to break the statement
        const QString officialDate = txtINTFOF->text();
        const QString expiryDate = txtINTVEN->text();
        const QString enabled = QString::number(chDITOK->isChecked() ? 1 : 0);
        ConexionDB& inputs = *state.g_DBINS;
        inputs.setSql(u"update INTINS set INTNRO = "_s + quoted(internalNumber) + u",INTDES = "_s +
                      quoted(description) + u",INTCTC = "_s + quoted(ctc) + u",INTFOF = datevalue("_s +
                      quoted(officialDate) + u"),INTVEN = datevalue("_s + quoted(expiryDate) + u"),INTIOK = "_s +
                      enabled + u" where INTDCL = "_s + quoted(lbINTDCL->text()));
        if (inputs.execute() < 1) {
            return;
        }
        declaration.internalNumber = internalNumber;
        declaration.description = description;
        declaration.ctc = ctc;
        declaration.officialDate = officialDate;
        declaration.expiryDate = expiryDate;
        declaration.enabled = enabled;
        declaration.saved = true;
    });
    return declaration.saved;
}

void frmMODDIT::designState()
{
    showValue(*lbINTDCL, {});
    for (QLineEdit* textBox : {txtINTNRO, txtINTDES, txtINTCTC, txtINTFOF, txtINTVEN}) {
        textBox->clear();
    }
    chDITOK->setChecked(false);
    txtINTNRO->setFocus();
}

void frmMODDIT::listDischarges()
{
    // Both dates are complained about with the official date's text, and only the expiry date's fault ends here; both
    // are meant so.
    const QString fault = u"Debe ingresar una fecha valida en Fecha de Oficialización"_s;
    core::CurrentDeclaration& declaration = component().state.declaration;
    declaration.internalNumber = txtINTNRO->text();
    declaration.number = lbINTDCL->text();
    if (!runtime::IsDate(txtINTFOF->text())) {
        component().prompts().messageBox(fault, core::ExclamationBox);
    }
    declaration.officialDate = txtINTFOF->text();
    if (!runtime::IsDate(txtINTVEN->text())) {
        component().prompts().messageBox(fault, core::ExclamationBox);
        return;
    }
    declaration.expiryDate = txtINTVEN->text();
    if (!m_listing) {
        m_listing = m_makeListing(component());
    }
    m_listing->showModal();
}

void frmMODDIT::requireFields() const
{
    if (txtINTNRO->text().isEmpty()) {
        throw RuntimeError(core::ApplicationError, u"Debe ingresar algun valor en Nro de INTERNO."_s);
    }
    if (!runtime::IsDate(txtINTFOF->text())) {
        throw RuntimeError(core::ApplicationError, u"El valor ingresado en la fecha de oficialización de inválida."_s);
    }
    if (!runtime::IsDate(txtINTVEN->text())) {
        throw RuntimeError(core::ApplicationError, u"El valor ingresado en la fecha de vencimiento de inválida."_s);
    }
}

} // namespace oVELDRA::declarations
