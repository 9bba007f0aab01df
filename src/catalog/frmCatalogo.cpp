#include "frmCatalogo.h"

#include <catalog/frmABMCatalogo.h>
#include <controls/BusyPointer.h>
#include <controls/ListView.h>
#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <core/Prompts.h>
#include <runtime/Texts.h>
#include <runtime/ValueConverter.h>

#include <QLabel>
#include <QPainter>
#include <QPixmap>

using namespace Qt::StringLiterals;

namespace oVELDRA::catalog {

using runtime::toText;
using runtime::Trim;

namespace {

/// A folder, large enough to be scaled down for every screen.
QIcon catalogIcon()
{
    QPixmap picture(64, 64);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(150, 105, 20), 4, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin));
    painter.setBrush(QColor(225, 170, 60));
    painter.drawPolygon(QPolygon({{6, 12}, {26, 12}, {32, 20}, {58, 20}, {58, 54}, {6, 54}}));
    painter.setBrush(QColor(250, 210, 110));
    painter.drawRect(6, 28, 52, 26);
    return picture;
}

} // namespace

frmCatalogo::frmCatalogo(core::Component& component) : Form(component, u"frmCatalogo"_s, u"Catalogos"_s)
{
    QLabel* title = addTitle(u"Label2"_s, windowTitle());
    LstvCat = addList(u"LstvCat"_s, windowTitle(), {{u"Codigo"_s, 18}, {u"Descripcion"_s, 48}});
    LstvCat->setRowIcon(catalogIcon());
    title->setBuddy(LstvCat);
    addHint({}, u"[ENTER] Seleccionar - [INS] Agregar - [F6] Modificar - [DEL] Borrar - [ESC] Salir"_s);

    const auto choose = [this] {
        if (lp_Seleccionar_Catalogo()) {
            unload();
        }
    };
    setKeys({{Qt::Key_Return, controls::AnyModifiers, controls::WholeForm, choose},
             {Qt::Key_Insert, controls::AnyModifiers, controls::WholeForm, [this] { lp_Agregar_Catalogo(); }},
             {Qt::Key_F6, controls::AnyModifiers, controls::WholeForm, [this] { lp_Modificar_Catalogo(); }},
             {Qt::Key_Escape, controls::AnyModifiers, controls::WholeForm, [this] { unload(); }},
             {Qt::Key_Delete, controls::AnyModifiers, LstvCat, [this] { lp_Modificar_Eliminar(); }}});
}

frmCatalogo::~frmCatalogo() = default;

void frmCatalogo::Form_Load()
{
    lp_Cargar_Catalogo();
}

void frmCatalogo::lp_Cargar_Catalogo()
{
    core::trap(component().prompts(), u"Sección [oVELDRA.frmCatalogo.lp_Cargar_Catalogo]", [this] {
        const controls::BusyPointer busy;
        const controls::FillScope fill(*LstvCat);
        LstvCat->clear();
        LstvCat->append(core::rowsOf(*component().state.g_DBINS, u"select * from CAT order by CATDES"_s),
                        [](const Recordset& catalog) -> controls::ListRow {
                            return {{Trim(toText(catalog.value(u"CATNRO"))), Trim(toText(catalog.value(u"CATDES")))}};
                        });
    });
}

bool frmCatalogo::lp_Seleccionar_Catalogo()
{
    const int row = LstvCat->currentRow();
    if (row < 0) {
        return false;
    }
    component().state.currentCatalog = LstvCat->text(row, 0);
    return true;
}

void frmCatalogo::lp_Agregar_Catalogo()
{
    maintain(false, {});
}

void frmCatalogo::lp_Modificar_Catalogo()
{
    const int row = LstvCat->currentRow();
    if (row >= 0) {
        maintain(true, LstvCat->text(row, 0));
    }
}

void frmCatalogo::lp_Modificar_Eliminar()
{
    core::trap(component().prompts(), u"Sección [oVELDRA.frmCatalogo.lp_Modificar_Eliminar]", [this] {
        const int row = LstvCat->currentRow();
        if (row < 0) {
            return;
        }
        const QString catalog = LstvCat->text(row, 0);
        const QString question = u"Confirma eliminar el catalogo "_s + catalog + u" y todos sus articulos"_s;
        if (component().prompts().messageBox(question, core::QuestionBox) == core::AnswerNo) {
            return;
        }
        if (deleteCatalog(catalog) > 0) {
            lp_Cargar_Catalogo();
        }
    });
}

void frmCatalogo::designState()
{
    LstvCat->clear();
    LstvCat->setFocus();
}

void frmCatalogo::maintain(bool modify, const QString& catalog)
{
    core::SharedState& state = component().state;
    state.catalogSaved = false;
    state.catalogModify = modify;
    state.currentCatalog = catalog; // meant to stay so when the dialog is left without saving
    if (!m_dialog) {
        m_dialog = std::make_unique<frmABMCatalogo>(component());
    }
    m_dialog->showModal();
    if (state.catalogSaved) {
        lp_Cargar_Catalogo();
    }
}

qint64 frmCatalogo::deleteCatalog(const QString& catalog)
{
    ConexionDB& inputs = *component().state.g_DBINS;
    const QString code = core::quoted(catalog);
    const auto burst = inputs.beginBurst();
    // The products' input relations (RIP) are meant to stay.
    core::run(inputs, u"delete from PRD where CATNRO = "_s + code);
    const qint64 catalogs = core::run(inputs, u"delete from CAT where CATNRO = "_s + code);
    burst->commit();
    return catalogs;
}

} // namespace oVELDRA::catalog
