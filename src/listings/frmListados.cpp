#include "frmListados.h"

#include <controls/BusyPointer.h>
#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <core/Prompts.h>
#include <listings/Pagination.h>
#include <listings/Printing.h>
#include <runtime/Clock.h>
#include <runtime/Numbers.h>
#include <runtime/Settings.h>
#include <runtime/ValueConverter.h>

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

#include <memory>
#include <span>

using namespace Qt::StringLiterals;

namespace oVELDRA::listings {

namespace {

constexpr int EnterKey = 13;

} // namespace

frmListados::frmListados(core::Component& component, Printers& printers, Spooler& spooler)
    : Form(component, u"frmListados"_s, u"Listado de Descargas"_s), m_printers(printers), m_spooler(spooler)
{
    addTitle({}, windowTitle());
    QFormLayout& declaration = *addFields();
    lbINTDCL = addValue(declaration, u"lbINTDCL"_s, u"DIT Nro:"_s);
    lbINTFOF = addValue(declaration, u"lbINTFOF"_s, u"Fecha Oficialización"_s);
    lbINTVEN = addValue(declaration, u"lbINTVEN"_s, u"Fecha Vencimiento"_s);

    auto* settings = new QGroupBox(u"Configuración"_s);
    settings->setObjectName(u"Frame1"_s);
    body().addWidget(settings);
    auto* groups = new QVBoxLayout(settings);
    const auto addOption = [groups](const QString& name, const QString& text) {
        auto* option = new QRadioButton(text);
        option->setObjectName(name);
        option->setAccessibleName(text);
        groups->addWidget(option);
        return option;
    };
    opMODWIN = addOption(u"opMODWIN"_s, u"Impresión modo Windows"_s);
    opMODDOS = addOption(u"opMODDOS"_s, u"Impresión DOS con SPOOL API"_s);
    auto* fields = new QFormLayout;
    groups->addLayout(fields);
    cboImpresion = new QComboBox;
    cboImpresion->setObjectName(u"cboImpresion"_s);
    cboImpresion->setAccessibleName(u"Impresoras"_s);
    cboImpresion->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboImpresion->setMinimumContentsLength(32);
    fields->addRow(cboImpresion->accessibleName(), cboImpresion);
    txtIMPTAM = addTextBox(*fields, u"txtIMPTAM"_s, u"Tamaño Texto"_s, 6);
    txtPAGLIN = addTextBox(*fields, u"txtPAGLIN"_s, u"Lineas por pagina"_s, 6);

    lbMensaje = addText(u"lbMensaje"_s, {});
    body().addStretch(1);
    addHint({}, u"[F12] - Imprimir - [ESC] Salir"_s);

    const auto enterInPrinters = [this] {
        int key = EnterKey;
        cboImpresion_KeyPress(key);
    };
    setKeys({{Qt::Key_F12, controls::AnyModifiers, controls::WholeForm, [this] { Imprimir(); }},
             {Qt::Key_Escape, controls::AnyModifiers, controls::WholeForm, [this] { unload(); }},
             {Qt::Key_Return, controls::AnyModifiers, cboImpresion, enterInPrinters}});
}

void frmListados::Form_Load()
{
    const core::CurrentDeclaration& declaration = component().state.declaration;
    showValue(*lbINTDCL, declaration.number);
    showValue(*lbINTFOF, declaration.officialDate);
    showValue(*lbINTVEN, declaration.expiryDate);
    bindTextBoxes({txtIMPTAM, txtPAGLIN});
    const runtime::SettingsStore& settings = component().settings();
    txtIMPTAM->setText(settings.get(u"oZENDALO"_s, u"IMPRESION"_s, u"IMPTAM"_s, u"10"_s));
    txtPAGLIN->setText(settings.get(u"oZENDALO"_s, u"IMPRESION"_s, u"PAGLIN"_s, u"75"_s));
    CargarImpresoras();
}

void frmListados::CargarImpresoras()
{
    // The location names another component's form; users know it so.
    core::trap(component().prompts(), u"Sección [oZENDALO.frmImpresion.CargarImpresion]", [this] {
        const QString wanted = component().settings().get(u"oZENDALO"_s, u"IMPRESION"_s, u"IMPNOM"_s);
        const QStringList names = m_printers.deviceNames();
        cboImpresion->clear();
        cboImpresion->addItems(names);
        cboImpresion->setCurrentIndex(static_cast<int>(names.indexOf(wanted)));
    });
}

bool frmListados::GenerarLineas()
{
    bool read = false;
    core::trap(component().prompts(), u" - seccion [oVELDRA.frmListados_GenerarLineas]::", [&] {
        core::SharedState& state = component().state;
        ConexionDB& inputs = *state.g_DBINS;
        std::unique_ptr<Recordset> header;
        if (!core::AbrirRecordset(
                inputs, u"select INTDCL from INTINS where INTNRO = "_s + core::quoted(state.declaration.internalNumber),
                header)) {
            component().prompts().messageBox(u"No se puede acceder"_s);
        }
        if (!header) {
            throw RuntimeError(inputs.lastError());
        }
        const QString number = runtime::toText(header->value(u"INTDCL"));
        std::unique_ptr<Recordset> discharges;
        if (!core::AbrirRecordset(inputs,
                                  u"select * from DIP where ARTDCL = "_s + core::quoted(number) + u" order by EXTFOF"_s,
                                  discharges)) {
            component().prompts().messageBox(u"No hay Exportaciones relacionadas con este DIT"_s, core::ExclamationBox);
            return;
        }
        const controls::BusyPointer busy;
        const LossAndWaste shown =
            lossAndWasteOf(component().settings().get(u"TORNEL"_s, u"OBJ"_s, u"VELDRA.RestarPerMer"_s));
        m_lines.clear();
        m_lines.reserve(static_cast<size_t>(discharges->recordCount()));
        for (; !discharges->atEof(); discharges->moveNext()) {
            m_lines.push_back(dischargeLine(*discharges, shown));
        }
        read = true;
    });
    return read;
}

void frmListados::Imprimir()
{
    core::trap(component().prompts(), u" - seccion [oveldra.frmlistados_Imprimir]::", [this] {
        if (cboImpresion->count() == 0) {
            component().prompts().messageBox(u"No hay Impresoras en el Sistema"_s, core::CriticalBox);
            return;
        }
        showMessage(u"Preparando Impresora"_s);
        const qint32 linesPerPage = runtime::CLng(txtPAGLIN->text()); // the text's size is meant to be left alone
        if (GenerarLineas()) {
            print(linesPerPage);
        }
    });
}

void frmListados::cboImpresion_KeyPress(int& key)
{
    if (key == EnterKey) {
        focusNextChild();
    }
}

void frmListados::designState()
{
    opMODWIN->setChecked(true);
    txtIMPTAM->setText(u"13"_s);
    txtPAGLIN->setText(u"30"_s);
    lbMensaje->clear();
    cboImpresion->setFocus();
}

void frmListados::print(int linesPerPage)
{
    const controls::BusyPointer busy;
    const core::SharedState& state = component().state;
    const auto records = static_cast<qsizetype>(m_lines.size());
    const int pages = pageCount(records, linesPerPage);
    const ListingLayout layout{state.g_bOpVDE, state.g_sFmtCantidad, state.g_sFmtListado};
    const ListedDeclaration declaration{lbINTDCL->text(), lbINTFOF->text(), lbINTVEN->text()};
    const QString deviceName = cboImpresion->currentText();
    const auto document =
        opMODWIN->isChecked() ? m_printers.begin(deviceName, u"DIT "_s + declaration.number) : nullptr;
    for (int page = 1; page <= pages; ++page) {
        showMessage(u"Imprimiendo "_s + QString::number(page) + u" de "_s + QString::number(pages));
        const auto onPage = static_cast<size_t>(recordsOnPage(page, records, linesPerPage));
        const QString lines = recordLines(std::span(m_lines).first(onPage), layout);
        if (!document) {
            m_spooler.send(deviceName, lines); // meant to be the records alone, without the heading
            continue;
        }
        if (page > 1) {
            document->newPage();
        }
        document->print(pageHeading(page, pages, component().clock().today(), declaration, layout));
        document->print(lines);
    }
    if (document) {
        document->end();
    }
    showMessage(u"Datos enviados a la impresora"_s);
}

void frmListados::showMessage(const QString& text)
{
    lbMensaje->setText(text);
    lbMensaje->setAccessibleName(text);
    lbMensaje->repaint(); // the form's events wait while it prints
}

} // namespace oVELDRA::listings
