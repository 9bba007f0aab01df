#include "frmProducto.h"

#include <catalog/frmCopiar.h>
#include <controls/BusyPointer.h>
#include <controls/ListView.h>
#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <core/Prompts.h>
#include <runtime/ValueConverter.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPixmap>

#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::catalog {

using core::quoted;
using runtime::toText;

namespace {

/// A box, large enough to be scaled down for every screen.
QIcon productIcon()
{
    QPixmap picture(64, 64);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(40, 80, 130), 4, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin));
    painter.setBrush(QColor(165, 200, 235));
    painter.drawPolygon(QPolygon({{32, 6}, {58, 18}, {32, 30}, {6, 18}}));
    painter.setBrush(QColor(115, 160, 210));
    painter.drawPolygon(QPolygon({{6, 18}, {32, 30}, {32, 58}, {6, 46}}));
    painter.setBrush(QColor(75, 120, 175));
    painter.drawPolygon(QPolygon({{58, 18}, {32, 30}, {32, 58}, {58, 46}}));
    return picture;
}

core::Screen& made(std::unique_ptr<core::Screen>& screen, const core::ScreenFactory& factory, core::Component& owner)
{
    if (!screen) {
        screen = factory(owner);
    }
    return *screen;
}

} // namespace

frmProducto::frmProducto(core::Component& component, ProductDialogs dialogs)
    : Form(component, u"frmProducto"_s, u"Productos"_s), m_dialogs(std::move(dialogs))
{
    auto* heading = new QHBoxLayout;
    heading->setSpacing(fontMetrics().height());
    QLabel* caption = addTitle(u"Label1"_s, u"Catálogo"_s);
    heading->addWidget(caption);
    lbCatalogo = addTitle(u"lbCatalogo"_s, {});
    lbCatalogo->setAccessibleName(caption->text());
    caption->setBuddy(lbCatalogo);
    heading->addWidget(lbCatalogo, 1);
    QLabel* hint = addText(u"Label2"_s, u"[F11] - Seleccionar Catalogo"_s);
    hint->setWordWrap(false);
    heading->addWidget(hint);
    body().addLayout(heading);

    lstV = addList(u"lstV"_s, windowTitle(),
                   {{u"Codigo"_s, 16}, {u"Descripción"_s, 40}, {u"Posición"_s, 16}, {u"Pais"_s, 6}});
    lstV->setRowIcon(productIcon());
    lstV->setSortedByHeader(true);
    QSizePolicy keepsItsPlace = lstV->sizePolicy(); // while the catalog list stands over it
    keepsItsPlace.setRetainSizeWhenHidden(true);
    lstV->setSizePolicy(keepsItsPlace);

    addHint(u"Label3"_s, u"[ENTER] Seleccionar - [INS] Agregar - [F6] Modificar - [DEL] Borrar"_s);
    addText({}, u"[F5] Copiar - [ESC] Salir"_s)->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);

    const auto choose = [this] {
        if (lp_SeleccionarArticulo()) {
            unload();
        }
    };
    setKeys({{Qt::Key_F11, controls::AnyModifiers, controls::WholeForm, [this] { lp_Cargar_Producto(true); }},
             {Qt::Key_Insert, controls::AnyModifiers, controls::WholeForm, [this] { addProduct(); }},
             {Qt::Key_Escape, controls::AnyModifiers, controls::WholeForm, [this] { unload(); }},
             {Qt::Key_Return, controls::AnyModifiers, lstV, choose},
             {Qt::Key_Delete, controls::AnyModifiers, lstV, [this] { EliminarArticulo(); }},
             {Qt::Key_F6, controls::AnyModifiers, lstV, [this] { ModificarArticulo(); }},
             {Qt::Key_F5, controls::AnyModifiers, lstV, [this] { copyProduct(); }}});
}

frmProducto::~frmProducto() = default;

void frmProducto::Form_Load()
{
    lp_Cargar_Producto(false);
}

void frmProducto::lp_Cargar_Producto(bool choose)
{
    core::trap(component().prompts(), u"Sección [oVELDRA.frmProducto.lp_Cargar_Producto]", [this, choose] {
        core::SharedState& state = component().state;
        const controls::FillScope fill(*lstV);
        lstV->clear();
        if (choose || state.currentCatalog.isEmpty()) {
            made(m_catalogList, m_dialogs.catalogList, component()).showModal();
            if (state.currentCatalog.isEmpty()) {
                showCatalog(u"(No hay catalogo seleccionado)"_s);
                return;
            }
        }
        showCatalog(state.currentCatalog);

        const controls::BusyPointer busy;
        lstV->append(core::rowsOf(*state.g_DBINS, u"select PRDNRO,PRDDES,PRDNCM,PRDPAI from PRD where CATNRO = "_s +
                                                      quoted(state.currentCatalog)),
                     [](const Recordset& product) -> controls::ListRow {
                         return {{toText(product.value(u"PRDNRO")), toText(product.value(u"PRDDES")),
                                  toText(product.value(u"PRDNCM")), toText(product.value(u"PRDPAI"))}};
                     });
    });
}

bool frmProducto::lp_SeleccionarArticulo()
{
    core::SharedState& state = component().state;
    state.g_bOK = false;
    const int row = lstV->currentRow();
    if (row < 0) {
        return false;
    }
    core::trap(component().prompts(), u" - Sección [oVELDRA.frmProducto.lp_SeleccionarArticulo]", [&] {
        const auto product = core::rowsOf(*state.g_DBINS, u"select * from PRD"_s + statementEnd(lstV->text(row, 0)));
        if (product->atEof()) {
            return;
        }
        const auto text = [&product](QStringView field) { return toText(product->value(field)); };
        state.g_sCATNRO = text(u"CATNRO");
        state.g_sPRDNRO = text(u"PRDNRO");
        state.g_sPRDDES = text(u"PRDDES");
        state.g_sPRDNCM = text(u"PRDNCM");
        state.g_sPRDUNI = text(u"PRDUNI");
        state.g_sPRDPAI = text(u"PRDPAI");
        state.g_dPRDPRE = runtime::toNumber(product->value(u"PRDPRE"));
        state.g_sPRDSUF = text(u"PRDSUF");
        state.g_bOK = true;
    });
    return state.g_bOK;
}

void frmProducto::ModificarArticulo()
{
    const int row = lstV->currentRow();
    if (row < 0) {
        return;
    }
    core::trap(component().prompts(), u"Sección [oVELDRA.frmProducto.ModificarArticulo]", [this, row] {
        core::SharedState& state = component().state;
        state.currentProduct = lstV->text(row, 0);
        state.productModify = true;
        state.productSaved = false;
        openEditor(); // what it changed is meant to show at the next loading only
    });
}

void frmProducto::EliminarArticulo()
{
    const int row = lstV->currentRow();
    if (row < 0) {
        return;
    }
    // The location names another procedure; users know it so.
    core::trap(component().prompts(), u"Sección [oVELDRA.frmProducto.EliminarProducto]", [this, row] {
        const QString product = lstV->text(row, 0);
        if (component().prompts().messageBox(u"Confirma eliminar el producto "_s + product, core::QuestionBox) ==
            core::AnswerNo) {
            return;
        }
        if (deleteProduct(product) > 0) {
            lp_Cargar_Producto(false);
        }
    });
}

void frmProducto::designState()
{
    lstV->clear();
    lstV->unsort();
    showCatalog({});
    lstV->setFocus();
}

void frmProducto::addProduct()
{
    core::LimpiarEdicion(component().state);
    openEditor();
    if (component().state.productSaved) {
        lp_Cargar_Producto(false);
    }
}

void frmProducto::copyProduct()
{
    const int row = lstV->currentRow();
    if (row < 0) {
        return;
    }
    if (!m_copy) {
        m_copy = std::make_unique<frmCopiar>(component());
    }
    m_copy->setOrigin(lbCatalogo->text(), lstV->text(row, 0));
    m_copy->showModal();
}

void frmProducto::openEditor()
{
    made(m_productEditor, m_dialogs.productEditor, component()).showModal();
}

QString frmProducto::statementEnd(const QString& product) const
{
    return u" where CATNRO = "_s + quoted(component().state.currentCatalog) + u" and PRDNRO = "_s + quoted(product);
}

qint64 frmProducto::deleteProduct(const QString& product)
{
    ConexionDB& inputs = *component().state.g_DBINS;
    const QString end = statementEnd(product);
    const auto burst = inputs.beginBurst();
    core::run(inputs, u"delete from RIP"_s + end);
    const qint64 products = core::run(inputs, u"delete from PRD"_s + end);
    burst->commit();
    return products;
}

void frmProducto::showCatalog(const QString& text)
{
    showValue(*lbCatalogo, text);
}

} // namespace oVELDRA::catalog
