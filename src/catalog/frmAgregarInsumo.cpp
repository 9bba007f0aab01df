#include "frmAgregarInsumo.h"

#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <core/Prompts.h>
#include <runtime/Numbers.h>
#include <runtime/Texts.h>
#include <runtime/ValueConverter.h>

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace oVELDRA::catalog {

namespace {

using core::quoted;

constexpr QStringView QuantityMask = u"00.00000000";
constexpr QStringView PercentageMask = u"00.00000";

// All three procedures report under the first one's name; users know the text so.
constexpr QStringView Location = u"Sección [oVELDRA.frmAgregarInsumo.lp_AgregarInsumo]";

/// What a box spells, as the literal of a number with a fixed number of decimals.
QString numberLiteral(const QLineEdit& box, QStringView mask)
{
    return u'\'' + runtime::Format(runtime::toNumber(box.text()), mask) + u'\'';
}

QString flagLiteral(const QCheckBox& box)
{
    return box.isChecked() ? u"-1"_s : u"0"_s;
}

void load(QLineEdit& box, const QString& text)
{
    box.setText(text);
    box.setCursorPosition(0); // a long text is read from its beginning
}

void load(QCheckBox& box, const QVariant& flag)
{
    box.setChecked(runtime::toNumber(flag) != 0);
}

/// Puts a check box behind a text box, into its row.
void joinRow(QFormLayout& fields, QLineEdit& textBox, QCheckBox& checkBox)
{
    int row = 0;
    QFormLayout::ItemRole role = QFormLayout::FieldRole;
    fields.getWidgetPosition(&textBox, &row, &role);
    auto* together = new QHBoxLayout;
    together->setSpacing(fields.horizontalSpacing() / 2);
    together->addWidget(&textBox);
    together->addWidget(&checkBox);
    fields.setLayout(row, role, together);
}

} // namespace

frmAgregarInsumo::frmAgregarInsumo(core::Component& component)
    : Form(component, u"frmAgregarInsumo"_s, u"Relación Insumo-Producto"_s)
{
    lbTit = addTitle(u"lbTit"_s, u"Agrega Insumo"_s);
    addText(u"lbMSJ"_s, u"Genera la relación con el producto seleccionado y un insumo"_s);

    QFormLayout& fields = *addFields();
    lbCatalogo = addValue(fields, u"lbCatalogo"_s, u"Catálogo"_s);
    lbProducto = addValue(fields, u"lbProducto"_s, u"Producto"_s);
    for (QLabel* code : {lbCatalogo, lbProducto}) {
        // Room for the longest code that is stored; one that is longer must not widen the form.
        code->setMaximumWidth(50 * fontMetrics().horizontalAdvance(u'0'));
        code->setMinimumWidth(1);
    }

    QLabel* heading = addText(u"Label4"_s, windowTitle());
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    heading->setContentsMargins(0, fontMetrics().height() / 2, 0, 0);
    fields.addRow(heading);

    txtARTNRO = addTextBox(fields, u"txtARTNRO"_s, u"Código de Articulo"_s, 24);
    txtRPADES = addTextBox(fields, u"txtRPADES"_s, u"Descripción"_s, 48);
    txtRIPCAN = addTextBox(fields, u"txtRIPCAN"_s, u"Cantidad"_s, 18);
    txtMerma = addTextBox(fields, u"txtMerma"_s, u"Merma"_s, 18);
    chMerma = addCheckBox(u"chMerma"_s, u"en porcentaje"_s);
    joinRow(fields, *txtMerma, *chMerma);
    txtPerdida = addTextBox(fields, u"txtPerdida"_s, u"Perdida"_s, 18);
    chPerdida = addCheckBox(u"chPerdida"_s, u"en porcentaje"_s);
    joinRow(fields, *txtPerdida, *chPerdida);
    chObligatorio = addCheckBox(u"chObligatorio"_s, u"Establecer como obligatorio"_s);
    body().addStretch(1);
    addHint(u"Label7"_s, u"[F11] - Agregar - [ESC] Cerrar"_s);

    setKeys({{Qt::Key_F11, controls::AnyModifiers, controls::WholeForm, [this] { save(); }},
             {Qt::Key_Escape, controls::AnyModifiers, controls::WholeForm, [this] { unload(); }}});
}

void frmAgregarInsumo::Form_Load()
{
    core::trap(component().prompts(), u" - Seccion [oVELDRA.frmAgregarInsumo.frm_load]", [this] {
        const core::SharedState& state = component().state;
        lbTit->setText(u"Relación insumo producto"_s);
        lbTit->setAccessibleName(lbTit->text());
        showValue(*lbCatalogo, state.currentCatalog);
        showValue(*lbProducto, state.currentProduct);
        bindTextBoxes({txtARTNRO, txtRPADES, txtRIPCAN, txtMerma, txtPerdida});
        if (state.inputModify) {
            lp_MostrarInsumo();
        }
    });
}

void frmAgregarInsumo::lp_MostrarInsumo()
{
    core::trap(component().prompts(), Location, [this] {
        core::SharedState& state = component().state;
        const QString input = quoted(state.currentInput);
        // The input stands twice in the condition, and is meant to.
        const QString statement = u"select * from RIP where CATNRO = "_s + quoted(state.currentCatalog) +
                                  u" and ARTNRO = "_s + input + u" and PRDNRO = "_s + quoted(state.currentProduct) +
                                  u" and ARTNRO = "_s + input;
        const auto relation = core::rowsOf(*state.g_DBINS, statement);
        load(*txtARTNRO, runtime::toText(relation->value(u"ARTNRO")));
        load(*txtRPADES, runtime::Trim(runtime::toText(relation->value(u"RPADES"))));
        load(*txtRIPCAN, runtime::Format(relation->value(u"RIPCAN"), QuantityMask));
        load(*txtMerma, runtime::toText(relation->value(u"RIPMER")));
        load(*txtPerdida, runtime::toText(relation->value(u"RIPPER")));
        showValue(*lbCatalogo, state.currentCatalog);
        showValue(*lbProducto, state.currentProduct);
        load(*chMerma, relation->value(u"TRPMER"));
        load(*chPerdida, relation->value(u"TRPPER"));
        load(*chObligatorio, relation->value(u"DIPOBL"));
    });
}

void frmAgregarInsumo::lp_AgregarInsumo()
{
    core::trap(component().prompts(), Location, [this] {
        core::SharedState& state = component().state;
        state.inputSaved = false;
        if (!fieldsAreComplete()) {
            return;
        }
        if (countRelations() > 0) {
            component().prompts().messageBox(u"Este insumo ya esta relacionado con el producto."_s, core::CriticalBox);
            return;
        }
        write(u"insert into RIP (CATNRO,PRDNRO,ARTNRO,RPADES,RIPCAN,RIPMER,RIPPER,TRPMER,TRPPER,DIPOBL) values ("_s +
              quoted(state.currentCatalog) + u',' + quoted(state.currentProduct) + u',' + quoted(txtARTNRO->text()) +
              u',' + quoted(txtRPADES->text()) + u',' + numberLiteral(*txtRIPCAN, QuantityMask) + u',' +
              numberLiteral(*txtMerma, PercentageMask) + u',' + numberLiteral(*txtPerdida, PercentageMask) + u',' +
              flagLiteral(*chMerma) + u',' + flagLiteral(*chPerdida) + u',' + flagLiteral(*chObligatorio) + u')');
    });
}

void frmAgregarInsumo::lp_ModificarInsumo()
{
    core::trap(component().prompts(), Location, [this] {
        core::SharedState& state = component().state;
        state.inputSaved = false;
        if (!fieldsAreComplete()) {
            return;
        }
        // It is the typed code that is looked for: a code can be changed only in its letter case.
        if (countRelations() == 0) {
            component().prompts().messageBox(u"ERROR: No se encontro insumo en la base de datos"_s, core::CriticalBox);
            return;
        }
        write(u"update RIP set ARTNRO = "_s + quoted(txtARTNRO->text()) + u",RPADES = "_s + quoted(txtRPADES->text()) +
              u",RIPCAN = "_s + numberLiteral(*txtRIPCAN, QuantityMask) + u", RIPMER = "_s +
              numberLiteral(*txtMerma, PercentageMask) + u", RIPPER = "_s + numberLiteral(*txtPerdida, PercentageMask) +
              u", TRPMER = "_s + flagLiteral(*chMerma) + u",TRPPER = "_s + flagLiteral(*chPerdida) + u",DIPOBL = "_s +
              flagLiteral(*chObligatorio) + u" where CATNRO = "_s + quoted(state.currentCatalog) +
              u"  and PRDNRO = "_s + quoted(state.currentProduct) + u"  and ARTNRO = "_s + quoted(state.currentInput));
    });
}

void frmAgregarInsumo::designState()
{
    for (QLineEdit* textBox : {txtARTNRO, txtRPADES, txtRIPCAN, txtMerma, txtPerdida}) {
        textBox->clear();
    }
    for (QCheckBox* checkBox : {chMerma, chPerdida, chObligatorio}) {
        checkBox->setChecked(false);
    }
    txtARTNRO->setFocus();
}

void frmAgregarInsumo::save()
{
    if (component().state.inputModify) {
        lp_ModificarInsumo();
    } else {
        lp_AgregarInsumo();
    }
    if (component().state.inputSaved) {
        unload();
    }
}

bool frmAgregarInsumo::fieldsAreComplete() const
{
    QString fault;
    if (txtARTNRO->text().isEmpty()) {
        fault = u"El campo Código de Articulo no puede estar vacío"_s;
    } else if (txtRPADES->text().isEmpty()) {
        fault = u"El campo Descripcion no puede estar vacío"_s;
    } else if (runtime::toNumber(txtRIPCAN->text()) == 0) {
        fault = u"El campo Cantidad debe ser mayor a cero o tener un valor numérico"_s;
    } else {
        return true;
    }
    component().prompts().messageBox(fault, core::ExclamationBox);
    return false;
}

double frmAgregarInsumo::countRelations() const
{
    core::SharedState& state = component().state;
    const QString statement = u"select count(ARTNRO) as cantidad from RIP where CATNRO = "_s +
                              quoted(state.currentCatalog) + u" and ARTNRO = "_s + quoted(txtARTNRO->text()) +
                              u" and PRDNRO = "_s + quoted(state.currentProduct);
    std::unique_ptr<Recordset> count;
    if (!core::AbrirRecordset(*state.g_DBINS, statement, count) && !count) {
        throw RuntimeError(core::ApplicationError, u"No se genero el recordset"_s);
    }
    return runtime::toNumber(count->value(u"CANTIDAD"));
}

void frmAgregarInsumo::write(const QString& statement)
{
    core::SharedState& state = component().state;
    if (core::run(*state.g_DBINS, statement) > 0) {
        state.inputSaved = true;
    } else {
        component().prompts().messageBox(u"No se pudo agregar la relacion con el insumo"_s, core::CriticalBox,
                                         u"Agregar RIP"_s);
    }
}

} // namespace oVELDRA::catalog
