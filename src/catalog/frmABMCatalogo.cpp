#include "frmABMCatalogo.h"

#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <core/Prompts.h>
#include <runtime/Texts.h>
#include <runtime/ValueConverter.h>

#include <QFormLayout>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace oVELDRA::catalog {

using core::quoted;
using runtime::toText;

frmABMCatalogo::frmABMCatalogo(core::Component& component)
    : Form(component, u"frmABMCatalogo"_s, u"Altas y Modificación de Catalogos"_s)
{
    addTitle({}, windowTitle());
    QFormLayout& fields = *addFields();
    txtCATNRO = addTextBox(fields, u"txtCATNRO"_s, u"Codigo Catalogo"_s, 16);
    txtCATDES = addTextBox(fields, u"txtCATDES"_s, u"Descripción"_s, 44);
    addHint(u"Label4"_s, u"[F11] Grabar - [ESC] Salir"_s);

    setKeys({{Qt::Key_F11, controls::AnyModifiers, controls::WholeForm, [this] { save(); }},
             {Qt::Key_Escape, controls::AnyModifiers, controls::WholeForm, [this] { unload(); }}});
}

void frmABMCatalogo::Form_Load()
{
    bindTextBoxes({txtCATNRO, txtCATDES});
    if (component().state.catalogModify) {
        lp_Mostrar_Catalogo();
    }
}

void frmABMCatalogo::lp_Mostrar_Catalogo()
{
    core::trap(component().prompts(), u" - Sección [oVELDRA.frmABMCatalogo.lp_Mostrar_Catalogo]", [this] {
        core::SharedState& state = component().state;
        const auto catalog =
            core::rowsOf(*state.g_DBINS, u"select * from CAT where CATNRO = "_s + quoted(state.currentCatalog));
        if (catalog->atEof()) {
            return;
        }
        txtCATNRO->setText(toText(catalog->value(u"CATNRO")));
        txtCATNRO->setReadOnly(true); // the key of the catalog's products
        txtCATDES->setText(runtime::Trim(toText(catalog->value(u"CATDES"))));
        txtCATDES->setFocus();
    });
}

bool frmABMCatalogo::lp_Agregar_Catalogo()
{
    core::SharedState& state = component().state;
    core::trap(component().prompts(), u" - Sección [oVELDRA.frmABMCatalogo.lp_Agregar_Catalogo]", [&] {
        state.catalogSaved = false;
        if (txtCATNRO->text().isEmpty()) {
            component().prompts().messageBox(u"Debe ingresar Código de catálogo"_s, core::ExclamationBox);
            return;
        }
        // A code that exists is left to the table's key, which tells so.
        const QString statement = u"insert into CAT (CATNRO,CATDES) values ("_s + quoted(txtCATNRO->text()) + u',' +
                                  quoted(txtCATDES->text()) + u')';
        state.catalogSaved = core::run(*state.g_DBINS, statement) > 0;
    });
    return state.catalogSaved;
}

bool frmABMCatalogo::lp_Modificar_Catalogo()
{
    core::SharedState& state = component().state;
    core::trap(component().prompts(), u" - Sección [oVELDRA.frmABMCatalogo.lp_Modificar_Catalogo]", [&] {
        const QString statement = u"update CAT set CATDES = "_s + quoted(txtCATDES->text()) + u" where CATNRO = "_s +
                                  quoted(txtCATNRO->text());
        if (core::run(*state.g_DBINS, statement) > 0) {
            state.catalogSaved = true;
        }
    });
    return state.catalogSaved;
}

void frmABMCatalogo::designState()
{
    txtCATNRO->clear();
    txtCATNRO->setReadOnly(false);
    txtCATDES->clear();
    txtCATNRO->setFocus();
}

void frmABMCatalogo::save()
{
    if (component().state.catalogModify ? lp_Modificar_Catalogo() : lp_Agregar_Catalogo()) {
        unload();
    }
}

} // namespace oVELDRA::catalog
