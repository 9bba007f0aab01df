#include "frmAgregarProducto.h"

#include <catalog/frmAgregarInsumo.h>
#include <controls/BusyPointer.h>
#include <controls/ListView.h>
#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <core/Prompts.h>
#include <nomenclature/FrmPosicion.h>
#include <nomenclature/Position.h>
#include <nomenclature/ProcesarNCM.h>
#include <nomenclature/SuffixText.h>
#include <nomenclature/VerificarSufijos.h>
#include <runtime/Numbers.h>
#include <runtime/ValueConverter.h>

#include <QFormLayout>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::catalog {

namespace {

using core::quoted;
using runtime::toText;

constexpr QStringView PriceMask = u"00.0000";
constexpr QStringView WeightMask = u"00.000";
constexpr QStringView MultiplierMask = u"00.000";
constexpr QStringView QuantityMask = u"00.00000000";

constexpr QStringView NoSuffixes = u"SUFIJOS";
constexpr QStringView SavingKeys = u"[F11] Grabar - [ESC] Salir";
constexpr QStringView InputKeys = u"[INS] Agregar Insumos - [ESC] Salir";

void setCaption(QLabel& label, QStringView text)
{
    label.setText(text.toString());
    label.setAccessibleName(label.text());
}

void load(QLineEdit& box, const QVariant& field)
{
    box.setText(toText(field));
    box.setCursorPosition(0); // a long text is read from its beginning
}

/// Rewrites a number in its form; what is no number becomes zero.
void rewrite(QLineEdit& box, QStringView mask)
{
    box.setText(runtime::Format(runtime::toNumber(box.text()), mask));
}

/// What a box spells, in the plain form of a number.
QString plainNumber(const QLineEdit& box)
{
    return runtime::CStr(runtime::toNumber(box.text()));
}

void replaceCommas(QLineEdit& box)
{
    box.setText(nomenclature::commasToPoints(box.text()));
}

/// A disabled box that looks so, and yet can be read in light and dark themes.
void showAsGiven(QLineEdit& box)
{
    const QPalette form = box.parentWidget()->palette();
    QPalette palette = box.palette();
    palette.setColor(QPalette::Base, form.color(QPalette::Active, QPalette::Window));
    palette.setColor(QPalette::Text, form.color(QPalette::Active, QPalette::WindowText));
    box.setPalette(palette);
}

bool isEnter(const QKeyEvent& event)
{
    const bool plain = (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == Qt::NoModifier;
    return plain && (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter);
}

void keepPlaceWhenHidden(QWidget& widget)
{
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

} // namespace

frmAgregarProducto::frmAgregarProducto(core::Component& component, ProductRoutines routines)
    : Form(component, u"frmAgregarProducto"_s, u"Relación Insumo - Producto"_s), m_routines(std::move(routines))
{
    addTitle(u"Label1"_s, windowTitle());

    QFormLayout& fields = *addFields();
    txtPRDNRO = addTextBox(fields, u"txtPRDNRO"_s, u"Código de Producto"_s, 24);
    txtPRDDES = addTextBox(fields, u"txtPRDDES"_s, u"Descripción"_s, 48);
    txtPRDNCM = addTextBox(fields, u"txtPRDNCM"_s, u"Posición"_s, 18);
    txtPRDMUL = addTextBox(fields, u"txtPRDMUL"_s, u"Multiplicador"_s, 12);
    txtPRDUNI = addTextBox(fields, u"txtPRDUNI"_s, u"Unidad"_s, 6);
    txtPRDPRE = addTextBox(fields, u"txtPRDPRE"_s, u"Precio unitario"_s, 18);
    txtPRDKGU = addTextBox(fields, u"txtPRDKGU"_s, u"Kilo Neto Unitario"_s, 18);
    txtPRDPAI = addTextBox(fields, u"txtPRDPAI"_s, u"Pais de Origen"_s, 6);

    lbSufijos = addText(u"lbSufijos"_s, NoSuffixes.toString());
    lbSufijos->setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
    lbSufijos->setMargin(fontMetrics().height() / 4);
    lbSufijos->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // Always the same room: long suffixes, even an endless word, must not change the form's size.
    lbSufijos->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    lbSufijos->setFixedHeight(2 * (fontMetrics().lineSpacing() + lbSufijos->margin() + lbSufijos->frameWidth()));

    lstVInsumos = addList(u"lstVInsumos"_s, u"Insumos"_s,
                          {{u"Insumo"_s, 18}, {u"Descripcion"_s, 40}, {u"Cantidad"_s, 16, Qt::AlignRight}});
    keepPlaceWhenHidden(*lstVInsumos);
    lbInsumo = addText(u"lbInsumo"_s, u"INS [Agregar Insumo]"_s);
    keepPlaceWhenHidden(*lbInsumo);
    lbTeclas = addHint(u"lbTeclas"_s, SavingKeys.toString());
}

frmAgregarProducto::~frmAgregarProducto() = default;

void frmAgregarProducto::Form_Load()
{
    bindTextBoxes({txtPRDNRO, txtPRDDES, txtPRDNCM, txtPRDUNI, txtPRDPAI, txtPRDKGU, txtPRDPRE, txtPRDMUL});
    setCaption(*lbTeclas, SavingKeys);
    if (component().state.productModify) {
        lp_Mostrar_Producto();
    }
}

void frmAgregarProducto::lp_Mostrar_Producto()
{
    core::trap(component().prompts(), u" - Seccion [oVELDRA.frmAgregarProducto.lp_Mostrar_Producto] ::", [this] {
        core::SharedState& state = component().state;
        state.productSaved = false;
        const auto product =
            core::rowsOf(*state.g_DBINS, u"select * from PRD where CATNRO = "_s + quoted(state.currentCatalog) +
                                             u" and PRDNRO = "_s + quoted(state.currentProduct));
        load(*txtPRDNRO, product->value(u"PRDNRO"));
        load(*txtPRDDES, product->value(u"PRDDES"));
        load(*txtPRDNCM, product->value(u"PRDNCM"));
        load(*txtPRDUNI, product->value(u"PRDUNI"));
        load(*txtPRDMUL, product->value(u"PRDMUL"));
        load(*txtPRDPAI, product->value(u"PRDPAI"));
        showSuffixes(toText(product->value(u"PRDSUF")));
        load(*txtPRDPRE, product->value(u"PRDPRE"));
        rewrite(*txtPRDPRE, PriceMask);
        load(*txtPRDKGU, product->value(u"PRDKGU"));
        rewrite(*txtPRDKGU, WeightMask);
        lp_InsumosLista(state.currentProduct, state.currentCatalog);
        lstVInsumos->show();
    });
}

void frmAgregarProducto::lp_Agregar_Producto()
{
    core::trap(component().prompts(), u" - Seccion [oVELDRA.frmAgregarProducto.lp_Agregar_Producto] ::", [this] {
        core::SharedState& state = component().state;
        state.productSaved = false;
        setStored(false);
        if (!passes({Check::Code, Check::Multiplier, Check::Position, Check::Unit})) {
            return;
        }
        rewrite(*txtPRDPRE, PriceMask);
        rewrite(*txtPRDKGU, WeightMask);
        const QString code = txtPRDNRO->text();
        if (countProducts(code) > 0) {
            component().prompts().messageBox(u"El codigo de producto ya existe en este catalogo"_s, core::CriticalBox);
            return;
        }
        const QString suffixes = VerificarSufijos(txtPRDNCM->text(), lbSufijos->text());
        const QString statement =
            u"insert into PRD (PRDNRO,PRDDES,PRDNCM,PRDMUL,PRDUNI,PRDPRE,PRDSUF,PRDPAI,PRDKGU,CATNRO) values ("_s +
            quoted(code) + u',' + quoted(txtPRDDES->text()) + u',' + quoted(txtPRDNCM->text()) + u',' +
            quoted(plainNumber(*txtPRDMUL)) + u',' + quoted(txtPRDUNI->text()) + u',' +
            quoted(plainNumber(*txtPRDPRE)) + u',' + quoted(suffixes) + u',' + quoted(txtPRDPAI->text()) + u',' +
            quoted(plainNumber(*txtPRDKGU)) + u',' + quoted(state.currentCatalog) + u')';
        if (core::run(*state.g_DBINS, statement) > 0) {
            switchToInputs(code, suffixes);
        } else {
            component().prompts().messageBox(u"No se agrego ningun registro en la base de datos"_s, core::CriticalBox);
        }
    });
}

void frmAgregarProducto::lp_Modificar_Producto()
{
    core::trap(component().prompts(), u" - Seccion [oVELDRA.frmAgregarProducto.lp_Modificar_Producto] ::", [this] {
        core::SharedState& state = component().state;
        state.productSaved = false;
        setStored(false);
        // Not the order of adding, and the multiplier is rewritten, too: both are meant so.
        if (!passes({Check::Code, Check::Position, Check::Multiplier, Check::Unit})) {
            return;
        }
        rewrite(*txtPRDPRE, PriceMask);
        rewrite(*txtPRDKGU, WeightMask);
        rewrite(*txtPRDMUL, MultiplierMask);
        const QString code = txtPRDNRO->text();
        if (countProducts(code) == 0) {
            component().prompts().messageBox(u"El codigo de producto no existe en este catalogo"_s, core::CriticalBox);
            return;
        }
        const QString suffixes = VerificarSufijos(txtPRDNCM->text(), lbSufijos->text());
        const QString statement =
            u"update PRD set PRDDES = "_s + quoted(txtPRDDES->text()) + u",PRDNCM = "_s + quoted(txtPRDNCM->text()) +
            u",PRDMUL = "_s + quoted(txtPRDMUL->text()) + u",PRDUNI = "_s + quoted(txtPRDUNI->text()) +
            u",PRDPRE = cdbl("_s + quoted(plainNumber(*txtPRDPRE)) + u"),PRDSUF = "_s + quoted(suffixes) +
            u",PRDPAI = "_s + quoted(txtPRDPAI->text()) + u",PRDKGU = cdbl("_s + quoted(plainNumber(*txtPRDKGU)) +
            u") where CATNRO = "_s + quoted(state.currentCatalog) + u" and PRDNRO = "_s + quoted(code);
        if (core::run(*state.g_DBINS, statement) <= 0) {
            component().prompts().messageBox(u"No se modifico ningun registro en la base de datos"_s,
                                             core::CriticalBox);
            return;
        }
        const bool otherProduct = code != state.currentProduct;
        switchToInputs(code, suffixes);
        if (otherProduct) {
            // The code can be typed over. The inputs in the list must be those that the keys act on.
            lp_InsumosLista(state.currentProduct, state.currentCatalog);
        }
    });
}

void frmAgregarProducto::lp_InsumosLista(const QString& product, const QString& catalog)
{
    core::trap(component().prompts(), u" - Seccion [oVELDRA.frmAgregarProducto.lp_InsumosLista]", [&] {
        const controls::BusyPointer busy;
        const controls::FillScope fill(*lstVInsumos);
        lstVInsumos->clear();
        lstVInsumos->append(
            core::rowsOf(*component().state.g_DBINS, u"select ARTNRO, RPADES, RIPCAN from RIP where PRDNRO = "_s +
                                                         quoted(product) + u" and CATNRO = "_s + quoted(catalog)),
            [](const Recordset& input) -> controls::ListRow {
                return {{toText(input.value(u"ARTNRO")), toText(input.value(u"RPADES")),
                         runtime::Format(input.value(u"RIPCAN"), QuantityMask)}};
            });
    });
}

void frmAgregarProducto::lp_AgregarInsumo()
{
    core::SharedState& state = component().state;
    state.inputSaved = false;
    state.inputModify = false;
    state.currentInput.clear();
    editInput();
}

void frmAgregarProducto::lp_ModificarInsumo()
{
    if (lstVInsumos->currentRow() < 0) {
        return;
    }
    core::SharedState& state = component().state;
    state.inputSaved = false;
    state.inputModify = true;
    state.currentInput = lstVInsumos->text(lstVInsumos->currentRow(), 0);
    editInput();
}

void frmAgregarProducto::lp_EliminarInsumo()
{
    core::trap(component().prompts(), u" - Seccion [oVELDRA.frmAgregarProducto.lp_EliminarInsumo]", [this] {
        if (lstVInsumos->currentRow() < 0) {
            return;
        }
        core::SharedState& state = component().state;
        state.currentInput = lstVInsumos->text(lstVInsumos->currentRow(), 0);
        const core::BoxAnswer answer = component().prompts().messageBox(
            u"Confirma eliminar la relación con el artículo "_s + state.currentInput, core::QuestionBox,
            u"Eliminar relaciósn"_s); // misspelt, and known so
        if (answer == core::AnswerNo) {
            return;
        }
        core::run(*state.g_DBINS, u"delete from RIP where CATNRO = "_s + quoted(state.currentCatalog) +
                                      u" and PRDNRO = "_s + quoted(state.currentProduct) + u" and ARTNRO = "_s +
                                      quoted(state.currentInput));
        lp_InsumosLista(state.currentProduct, state.currentCatalog);
    });
}

QString frmAgregarProducto::ProcesarNCM(QString& position) const
{
    return nomenclature::ProcesarNCM(component(), position);
}

QString frmAgregarProducto::VerificarSufijos(const QString& position, const QString& suffixes, int mode) const
{
    return m_routines.verifySuffixes ? m_routines.verifySuffixes(position, suffixes, mode)
                                     : nomenclature::VerificarSufijos(component(), position, suffixes, mode);
}

QString frmAgregarProducto::m_sVALSUF(const QString& value) const
{
    return nomenclature::m_sVALSUF(component().prompts(), value);
}

QString frmAgregarProducto::m_sVALCHAR(const QString& character) const
{
    return nomenclature::m_sVALCHAR(component().prompts(), character);
}

void frmAgregarProducto::designState()
{
    for (QLineEdit* textBox :
         {txtPRDNRO, txtPRDDES, txtPRDNCM, txtPRDMUL, txtPRDUNI, txtPRDPRE, txtPRDKGU, txtPRDPAI}) {
        textBox->clear();
        textBox->setEnabled(true);
    }
    showSuffixes(NoSuffixes.toString());
    lstVInsumos->clear();
    lstVInsumos->hide();
    lbInsumo->hide();
    setStored(false);
    txtPRDNRO->setFocus();
}

bool frmAgregarProducto::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && watched == txtPRDNCM && isEnter(*static_cast<const QKeyEvent*>(event))) {
        replaceCommas(*txtPRDNCM); // the key goes on to the binder, which moves to the next box
    }
    return Form::eventFilter(watched, event);
}

void frmAgregarProducto::setStored(bool stored)
{
    const controls::KeyBinding leave{Qt::Key_Escape, controls::AnyModifiers, controls::WholeForm, [this] { unload(); }};
    if (stored) {
        setKeys({leave,
                 {Qt::Key_Insert, controls::AnyModifiers, controls::WholeForm, [this] { lp_AgregarInsumo(); }},
                 {Qt::Key_Return, controls::AnyModifiers, lstVInsumos, [this] { lp_ModificarInsumo(); }},
                 {Qt::Key_Delete, controls::AnyModifiers, lstVInsumos, [this] { lp_EliminarInsumo(); }}});
    } else {
        setKeys({leave,
                 {Qt::Key_F11, controls::AnyModifiers, controls::WholeForm, [this] { save(); }},
                 {Qt::Key_F6, controls::AnyModifiers, txtPRDNCM, [this] { searchPosition(); }}});
    }
}

void frmAgregarProducto::save()
{
    if (component().state.productModify) {
        lp_Modificar_Producto();
    } else {
        lp_Agregar_Producto();
    }
}

void frmAgregarProducto::searchPosition()
{
    core::SharedState& state = component().state;
    state.chosenPosition.clear();
    replaceCommas(*txtPRDNCM);
    if (m_routines.searchPosition) {
        m_routines.searchPosition(txtPRDNCM->text());
    } else {
        if (!m_positions) {
            m_positions = std::make_unique<nomenclature::FrmPosicion>(component());
        }
        int enter = 13;
        m_positions->setSearchText(txtPRDNCM->text());
        m_positions->TxtNCMF_KeyPress(enter);
        m_positions->showModal();
    }
    if (!state.chosenPosition.isEmpty()) {
        txtPRDNCM->setText(state.chosenPosition);
    }
}

void frmAgregarProducto::editInput()
{
    core::SharedState& state = component().state;
    if (m_routines.editInput) {
        m_routines.editInput();
    } else {
        if (!m_inputEditor) {
            m_inputEditor = std::make_unique<frmAgregarInsumo>(component());
        }
        m_inputEditor->showModal();
    }
    if (state.inputSaved) {
        lp_InsumosLista(state.currentProduct, state.currentCatalog);
    }
}

bool frmAgregarProducto::passes(std::initializer_list<Check> checks) const
{
    const Check* const failed =
        std::find_if(checks.begin(), checks.end(), [this](Check check) { return !faultOf(check).isEmpty(); });
    if (failed == checks.end()) {
        return true;
    }
    component().prompts().messageBox(faultOf(*failed), core::ExclamationBox);
    return false;
}

QString frmAgregarProducto::faultOf(Check check) const
{
    switch (check) {
    case Check::Code:
        return txtPRDNRO->text().isEmpty() ? u"Debe ingresar el Codigo de Producto"_s : QString();
    case Check::Multiplier: {
        const bool isZero = runtime::toNumber(txtPRDMUL->text()) == 0; // a negative one passes, whatever the text says
        return isZero ? u"El campo MULTIPLICADOR debe ser numérico y mayor a cero"_s : QString();
    }
    case Check::Position:
        return txtPRDNCM->text().isEmpty() ? u"Debe ingresar una posición válida"_s : QString();
    case Check::Unit:
        break;
    }
    return txtPRDUNI->text().isEmpty() ? u"Debe ingresar un codigo de unidad válido"_s : QString();
}

double frmAgregarProducto::countProducts(const QString& code) const
{
    core::SharedState& state = component().state;
    const QString statement = u"select count(PRDNRO) as Total from PRD where CATNRO = "_s +
                              quoted(state.currentCatalog) + u" and PRDNRO = "_s + quoted(code);
    std::unique_ptr<Recordset> count;
    if (!core::AbrirRecordset(*state.g_DBINS, statement, count) && !count) {
        throw RuntimeError(core::ApplicationError, u"Error en crear registros"_s, u"CrearCountPRDNRO"_s);
    }
    return runtime::toNumber(count->value(u"total"));
}

void frmAgregarProducto::showSuffixes(const QString& suffixes)
{
    setCaption(*lbSufijos, suffixes);
    // The label has room for two lines. Tool tips read markup; suffixes are none.
    lbSufijos->setToolTip(Qt::mightBeRichText(suffixes) ? Qt::convertFromPlainText(suffixes) : suffixes);
}

void frmAgregarProducto::switchToInputs(const QString& code, const QString& suffixes)
{
    showSuffixes(suffixes);
    lbInsumo->show();
    lstVInsumos->show();
    lstVInsumos->setFocus(); // before the boxes go, else the focus would wander through them
    for (QLineEdit* textBox :
         {txtPRDDES, txtPRDKGU, txtPRDNCM, txtPRDNRO, txtPRDPAI, txtPRDPRE, txtPRDUNI, txtPRDMUL}) {
        textBox->setEnabled(false);
        showAsGiven(*textBox);
    }
    setCaption(*lbTeclas, InputKeys);
    setStored(true);
    core::SharedState& state = component().state;
    state.productSaved = true;
    state.currentProduct = code;
}

} // namespace oVELDRA::catalog
