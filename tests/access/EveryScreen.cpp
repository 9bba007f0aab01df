#include "EveryScreen.h"

#include "controls/OpenForm.h"

#include <catalog/frmABMCatalogo.h>
#include <catalog/frmAgregarInsumo.h>
#include <catalog/frmAgregarProducto.h>
#include <catalog/frmCatalogo.h>
#include <catalog/frmCopiar.h>
#include <catalog/frmProducto.h>
#include <declarations/drDITART.h>
#include <declarations/frmDIT.h>
#include <declarations/frmDITART.h>
#include <declarations/frmImportar.h>
#include <declarations/frmMODDIT.h>
#include <listings/frmListados.h>
#include <listings/frmVerINSxSBT.h>
#include <nomenclature/FrmCargaSufijos.h>
#include <nomenclature/FrmPosicion.h>

#include <QApplication>
#include <QDate>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::access {

namespace {

using Maker = ScreenUnderTest::Maker;

class TwoPrinters final : public listings::Printers
{
public:
    [[nodiscard]] QStringList deviceNames() const override { return {u"LASER"_s, u"MATRIZ"_s}; }
    [[nodiscard]] std::unique_ptr<listings::PrintDocument> begin(const QString&, const QString&) override
    {
        throw RuntimeError(482);
    }
};

class NoSpooler final : public listings::Spooler
{
public:
    void send(const QString&, const QString&) override { throw RuntimeError(482); }
};

/// Two rows with every column that a screen shows when it opens.
void fill(doubles::FakeConexionDB& database)
{
    const QDate first(2026, 3, 10);
    const QDate last(2027, 3, 10);
    const QList<std::pair<QString, std::pair<QVariant, QVariant>>> fields{
        {u"CATNRO"_s, {u"CAL"_s, u"ELE"_s}},
        {u"CATDES"_s, {u"Calzado de cuero"_s, u"Controles electrónicos"_s}},
        {u"PRDNRO"_s, {u"BOT-VAC-45"_s, u"ZAP-VAC-38"_s}},
        {u"PRDDES"_s, {u"Botín de cuero vacuno"_s, u"Zapato de cuero vacuno"_s}},
        {u"PRDNCM"_s, {u"6403.91.90.900A"_s, u"6403.99.90.900G"_s}},
        {u"PRDMUL"_s, {1.0, 1.0}},
        {u"PRDUNI"_s, {u"07"_s, u"07"_s}},
        {u"PRDPRE"_s, {95.5, 80.0}},
        {u"PRDKGU"_s, {1.8, 1.2}},
        {u"PRDPAI"_s, {u"200"_s, u"200"_s}},
        {u"PRDSUF"_s, {u"AA(NORTE)-CA00-"_s, QString()}},
        {u"ARTNRO"_s, {u"CUE-VAC-FL14"_s, u"SUE-TPU-4045"_s}},
        {u"RPADES"_s, {u"Cuero flor de 1,4 mm"_s, u"Suela de poliuretano"_s}},
        {u"RIPCAN"_s, {1.25, 2.0}},
        {u"RIPMER"_s, {2.5, 0.0}},
        {u"RIPPER"_s, {0.5, 0.0}},
        {u"TRPMER"_s, {-1, 0}},
        {u"TRPPER"_s, {-1, 0}},
        {u"DIPOBL"_s, {-1, 0}},
        {u"INTDCL"_s, {u"26001IT14000533F"_s, u"26073IT14000588P"_s}},
        {u"INTNRO"_s, {u"IT260062"_s, u"IT260090"_s}},
        {u"INTDES"_s, {u"Componentes para placas"_s, u"Repuestos en verificación"_s}},
        {u"INTCTC"_s, {u"CTC-1"_s, QString()}},
        {u"INTFOF"_s, {first, first}},
        {u"INTVEN"_s, {last, last}},
        {u"INTIOK"_s, {1, 0}},
        {u"ARTITM"_s, {u"001"_s, u"002"_s}},
        {u"ARTSBT"_s, {u"000"_s, u"001"_s}},
        {u"ARTUNI"_s, {u"07"_s, u"07"_s}},
        {u"ARTCAT"_s, {6350.0, 4920.0}},
        {u"ARTPRE"_s, {3.05, 1.38}},
        {u"ARTDSC"_s, {5565.69, 1.5}},
        {u"ARTNCM"_s, {u"8542.31.20.000W"_s, u"8534.00.12.100U"_s}},
        {u"ARTDCL"_s, {u"26001IT14000533F"_s, u"26001IT14000533F"_s}},
        {u"ARTCTC"_s, {QString(), QString()}},
        {u"pARTITM"_s, {u"001"_s, u"002"_s}},
        {u"pARTSBT"_s, {u"000"_s, u"001"_s}},
        {u"pARTCAT"_s, {u"6350,00"_s, u"4920,00"_s}},
        {u"pARTPRE"_s, {u"03,050000"_s, u"01,380000"_s}},
        {u"pARTDSC"_s, {u"5565,69"_s, u"1,50"_s}},
        {u"pPROC"_s, {u"87,65"_s, u"00,03"_s}},
        {u"RALCAN"_s, {653.52, 140.0}},
        {u"ncm"_s, {u"8471.30.90.100V"_s, u"8471.30.90.900N"_s}},
        {u"descrip"_s, {u"De valor FOB inferior"_s, QString()}},
        {u"descrip1"_s, {u"MÁQUINAS AUTOMÁTICAS PARA TRATAMIENTO DE DATOS"_s, QString()}},
        {u"sufijo"_s, {u"AA"_s, u"CA01"_s}},
        {u"detalle"_s, {u"MARCA"_s, u"REACONDICIONADAS"_s}},
    };
    QStringList columns;
    QVariantList one;
    QVariantList two;
    for (const auto& [column, values] : fields) {
        columns.append(column);
        one.append(values.first);
        two.append(values.second);
    }
    database.willGiveRows({}, columns, {one, two});
}

template <typename Screen>
Maker plain()
{
    return [](ScreenUnderTest& screen) { return std::make_unique<Screen>(screen.component); };
}

std::unique_ptr<controls::Form> makeCopy(ScreenUnderTest& screen)
{
    auto form = std::make_unique<catalog::frmCopiar>(screen.component);
    form->setOrigin(u"CAL"_s, u"BOT-VAC-45"_s);
    return form;
}

std::unique_ptr<controls::Form> makePositions(ScreenUnderTest& screen)
{
    auto form = std::make_unique<nomenclature::FrmPosicion>(screen.component);
    form->setSearchText(u"8471"_s);
    int enter = 13;
    form->TxtNCMF_KeyPress(enter);
    form->MostrarDatos(u"8471.30.90.100V"_s);
    return form;
}

std::unique_ptr<controls::Form> makeOptions(ScreenUnderTest& screen)
{
    auto form = std::make_unique<nomenclature::FrmCargaSufijos>(screen.component);
    form->setOptions({u"NA00 - Ninguna opción"_s, u"NA01 - DE PAGINA ENTERA"_s});
    return form;
}

std::unique_ptr<controls::Form> makeImport(ScreenUnderTest& screen)
{
    declarations::ImportRoutines routines;
    routines.verify = [](core::SharedState&, const QString&) { return u"ER ERROR 1 - Rechazada"_s; };
    return std::make_unique<declarations::frmImportar>(screen.component, routines);
}

std::unique_ptr<controls::Form> makeDeclarations(ScreenUnderTest& screen)
{
    return std::make_unique<declarations::frmDIT>(screen.component, declarations::DeclarationDialogs{});
}

std::unique_ptr<controls::Form> makeDeclarationEditor(ScreenUnderTest& screen)
{
    return std::make_unique<declarations::frmMODDIT>(screen.component, core::ScreenFactory());
}

std::unique_ptr<controls::Form> makeReport(ScreenUnderTest& screen)
{
    screen.database->setSql(u"select * from INS"_s);
    bool ok = false;
    return std::make_unique<declarations::drDITART>(screen.component, screen.database->openRecordset(ok));
}

std::unique_ptr<controls::Form> makeListing(ScreenUnderTest& screen)
{
    screen.printers = std::make_unique<TwoPrinters>();
    screen.spooler = std::make_unique<NoSpooler>();
    return std::make_unique<listings::frmListados>(screen.component, *screen.printers, *screen.spooler);
}

Stop box(const QString& name, const QString& caption)
{
    return {name, caption, QAccessible::EditableText};
}

Stop check(const QString& name, const QString& caption)
{
    return {name, caption, QAccessible::CheckBox};
}

Stop rows(const QString& name, const QString& caption)
{
    return {name, caption, QAccessible::Tree};
}

Stop lines(const QString& name, const QString& caption)
{
    return {name, caption, QAccessible::List};
}

QList<ScreenCase> catalogScreens()
{
    return {
        {u"frmCatalogo"_s, plain<catalog::frmCatalogo>(), {rows(u"LstvCat"_s, u"Catalogos"_s)}, u"LstvCat"_s},
        {u"frmABMCatalogo"_s,
         plain<catalog::frmABMCatalogo>(),
         {box(u"txtCATNRO"_s, u"Codigo Catalogo"_s), box(u"txtCATDES"_s, u"Descripción"_s)},
         {}},
        {u"frmProducto"_s, plain<catalog::frmProducto>(), {rows(u"lstV"_s, u"Productos"_s)}, u"lstV"_s},
        {u"frmAgregarProducto"_s,
         plain<catalog::frmAgregarProducto>(),
         {box(u"txtPRDNRO"_s, u"Código de Producto"_s), box(u"txtPRDDES"_s, u"Descripción"_s),
          box(u"txtPRDNCM"_s, u"Posición"_s), box(u"txtPRDMUL"_s, u"Multiplicador"_s), box(u"txtPRDUNI"_s, u"Unidad"_s),
          box(u"txtPRDPRE"_s, u"Precio unitario"_s), box(u"txtPRDKGU"_s, u"Kilo Neto Unitario"_s),
          box(u"txtPRDPAI"_s, u"Pais de Origen"_s), rows(u"lstVInsumos"_s, u"Insumos"_s)},
         u"lstVInsumos"_s},
        {u"frmAgregarInsumo"_s,
         plain<catalog::frmAgregarInsumo>(),
         {box(u"txtARTNRO"_s, u"Código de Articulo"_s), box(u"txtRPADES"_s, u"Descripción"_s),
          box(u"txtRIPCAN"_s, u"Cantidad"_s), box(u"txtMerma"_s, u"Merma"_s), check(u"chMerma"_s, u"en porcentaje"_s),
          box(u"txtPerdida"_s, u"Perdida"_s), check(u"chPerdida"_s, u"en porcentaje"_s),
          check(u"chObligatorio"_s, u"Establecer como obligatorio"_s)},
         {}},
        {u"frmCopiar"_s,
         makeCopy,
         {{u"cboCATNOM"_s, u"Catalogo"_s, QAccessible::ComboBox}, box(u"txtPRDNRO"_s, u"Producto"_s)},
         {}},
    };
}

QList<ScreenCase> nomenclatureScreens()
{
    return {
        {u"FrmPosicion"_s,
         makePositions,
         {box(u"TxtNCMF"_s, u"Posición"_s), lines(u"LstNCM"_s, u"Posiciones"_s),
          box(u"LbDescripcion"_s, u"Descripción"_s), lines(u"LstSufijos"_s, u"Sufijos"_s)},
         u"LstNCM"_s},
        {u"FrmCargaSufijos"_s, makeOptions, {lines(u"LstOpcion"_s, u"Selecione una Opción"_s)}, u"LstOpcion"_s},
    };
}

QList<ScreenCase> declarationScreens()
{
    return {
        {u"frmImportar"_s,
         makeImport,
         {box(u"txtINTNRO"_s, u"Interno"_s), box(u"txtINTDCL"_s, u"Nro. Declaración"_s),
          box(u"txtINTFOF"_s, u"Fecha Oficialización"_s), box(u"txtINTDES"_s, u"Descripción"_s),
          box(u"txtAduana"_s, u"Aduana"_s), box(u"txtVEN"_s, u"Vencimiento"_s),
          check(u"chkAjustes"_s, u"Calcular con Ajustes"_s),
          check(u"chOK"_s, u"Despacho disponible para descontar los insumos"_s)},
         {}},
        {u"frmDIT"_s,
         makeDeclarations,
         {box(u"txtDESDE"_s, u"Desde:"_s), box(u"txtHASTA"_s, u"Hasta:"_s), rows(u"lstVDIT"_s, u"Listados de DIT's"_s)},
         u"lstVDIT"_s},
        {u"frmMODDIT"_s,
         makeDeclarationEditor,
         {box(u"txtINTNRO"_s, u"Interno"_s), box(u"txtINTDES"_s, u"Descripción"_s),
          box(u"txtINTCTC"_s, u"Nro C.T.C."_s), box(u"txtINTFOF"_s, u"Fecha Oficialización"_s),
          box(u"txtINTVEN"_s, u"Fecha Vencimiento"_s), check(u"chDITOK"_s, u"Declaración habilitada"_s)},
         {}},
        {u"frmDITART"_s, plain<declarations::frmDITART>(), {rows(u"lstV"_s, u"Listado de articulos"_s)}, u"lstV"_s},
        {u"drDITART"_s, makeReport, {{u"vwPagina"_s, u"Vista previa"_s, QAccessible::Client}}, {}},
    };
}

QList<ScreenCase> listingScreens()
{
    return {
        {u"frmListados"_s,
         makeListing,
         {{u"opMODWIN"_s, u"Impresión modo Windows"_s, QAccessible::RadioButton},
          {u"cboImpresion"_s, u"Impresoras"_s, QAccessible::ComboBox},
          box(u"txtIMPTAM"_s, u"Tamaño Texto"_s),
          box(u"txtPAGLIN"_s, u"Lineas por pagina"_s)},
         {}},
        {u"frmVerINSxSBT"_s,
         plain<listings::frmVerINSxSBT>(),
         {rows(u"lstView"_s, u"Insumos descargados para este subitem's"_s)},
         u"lstView"_s},
    };
}

QPalette darkColors()
{
    QPalette dark(QColor(49, 54, 59), QColor(49, 54, 59));
    dark.setColor(QPalette::Base, QColor(35, 38, 41));
    dark.setColor(QPalette::AlternateBase, QColor(44, 48, 52));
    dark.setColor(QPalette::Text, QColor(239, 240, 241));
    dark.setColor(QPalette::Highlight, QColor(61, 174, 233));
    dark.setColor(QPalette::HighlightedText, QColor(239, 240, 241));
    dark.setColor(QPalette::ToolTipBase, QColor(49, 54, 59));
    dark.setColor(QPalette::ToolTipText, QColor(239, 240, 241));
    return dark;
}

} // namespace

ScreenUnderTest::ScreenUnderTest(const Maker& make)
{
    fill(*database);
    core::SharedState& state = component.state;
    state.g_DBINS.assign(database);
    state.g_DBNCM.assign(database);
    state.g_DBTOR.assign(database);
    state.sInternoExt = u"IT260062"_s;
    state.g_sAduana = u"001"_s;
    state.g_sFmtCantidad = u"00.000000"_s;
    state.g_sFmtListado = u"00.000000"_s;
    state.currentCatalog = u"CAL"_s;
    state.currentProduct = u"BOT-VAC-45"_s;
    state.currentInput = u"CUE-VAC-FL14"_s;
    state.catalogModify = false;
    state.productModify = true;
    state.inputModify = true;
    state.declaration.number = u"26001IT14000533F"_s;
    state.declaration.internalNumber = u"IT260062"_s;
    state.declaration.officialDate = u"10/03/2026"_s;
    state.declaration.expiryDate = u"10/03/2027"_s;
    component.clock.set(QDate(2026, 11, 20));
    m_form = make(*this);
}

ScreenUnderTest::~ScreenUnderTest() = default;

QWidget& ScreenUnderTest::control(const QString& name) const
{
    auto* control = m_form->findChild<QWidget*>(name);
    if (control == nullptr) {
        qFatal("no control %s", qPrintable(name));
    }
    return *control;
}

void ScreenUnderTest::whileOpen(const std::function<void()>& actions)
{
    QVERIFY2(controls::whileOpen(*m_form, actions), "the actions closed the screen");
    for (const auto& box : component.prompts.boxes()) {
        QFAIL(qPrintable(u"a message: "_s + box.text));
    }
}

const QList<ScreenCase>& everyScreen()
{
    static const QList<ScreenCase> screens =
        catalogScreens() + nomenclatureScreens() + declarationScreens() + listingScreens();
    return screens;
}

const ScreenCase& screenCase(const QString& name)
{
    const auto found = std::find_if(everyScreen().begin(), everyScreen().end(),
                                    [&name](const ScreenCase& screen) { return screen.name == name; });
    if (found == everyScreen().end()) {
        qFatal("no screen %s", qPrintable(name));
    }
    return *found;
}

void addScreens()
{
    QTest::addColumn<QString>("screen");
    for (const ScreenCase& screen : everyScreen()) {
        QTest::newRow(qPrintable(screen.name)) << screen.name;
    }
}

void addScreensAndThemes()
{
    QTest::addColumn<QString>("screen");
    QTest::addColumn<bool>("dark");
    for (const ScreenCase& screen : everyScreen()) {
        QTest::addRow("%s, light", qPrintable(screen.name)) << screen.name << false;
        QTest::addRow("%s, dark", qPrintable(screen.name)) << screen.name << true;
    }
}

Theme::Theme(bool dark) : m_before(QApplication::palette())
{
    if (dark) {
        QApplication::setPalette(darkColors());
    }
}

Theme::~Theme()
{
    QApplication::setPalette(m_before);
}

FontSize::FontSize(double factor) : m_before(QApplication::font())
{
    QFont font = m_before;
    font.setPointSizeF(font.pointSizeF() * factor);
    QApplication::setFont(font);
}

FontSize::~FontSize()
{
    QApplication::setFont(m_before);
}

} // namespace oVELDRA::access
