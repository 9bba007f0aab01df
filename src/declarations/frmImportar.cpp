#include "frmImportar.h"

#include <controls/BusyPointer.h>
#include <controls/Contrast.h>
#include <controls/OleColor.h>
#include <core/ErrorReport.h>
#include <core/Prompts.h>
#include <runtime/Dates.h>

#include <QCheckBox>
#include <QFontMetrics>
#include <QFormLayout>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QProgressBar>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::declarations {

namespace {

constexpr quint32 Black = 0;
constexpr quint32 Red = 255;
constexpr quint32 Blue = 16711680;
constexpr quint32 StatusBackground = 16777215;

/// The screen's progress bar. The form's events wait while the import runs, so it is painted at once.
class BarProgress final : public ImportProgress
{
public:
    explicit BarProgress(QProgressBar& bar) : m_bar(bar) {}

    void limits(int minimum, int maximum) override
    {
        m_bar.setRange(minimum, maximum);
        m_bar.reset();
        m_bar.repaint();
    }

    void advance() override
    {
        m_bar.setValue(++m_done);
        m_bar.repaint();
    }

private:
    QProgressBar& m_bar;
    int m_done = 0;
};

/// Shows its colour no paler than can be read: that of a failure is pure red, which is too pale for white.
class StatusLabel final : public QLabel
{
public:
    using QLabel::QLabel;

    /// Its room is fixed: no status changes the form's size, however long it is.
    [[nodiscard]] bool hasHeightForWidth() const override { return false; }

private:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        drawFrame(&painter);
        painter.setPen(controls::readableOn(palette().color(QPalette::WindowText), palette().color(QPalette::Window)));
        const int around = margin();
        const int flags = static_cast<int>(alignment()) | Qt::TextWordWrap;
        painter.drawText(contentsRect().adjusted(around, around, -around, -around), flags, text());
    }
};

} // namespace

frmImportar::frmImportar(core::Component& component, ImportRoutines routines)
    : Form(component, u"frmImportar"_s, u"Exportar a Stock de Insumos"_s), m_routines(std::move(routines))
{
    addTitle({}, windowTitle());
    addText({}, u"Exporta los artículos de la declaración al stock, para su uso posterior como insumos."_s);

    QFormLayout& fields = *addFields();
    txtINTNRO = addTextBox(fields, u"txtINTNRO"_s, u"Interno"_s, 18);
    txtINTDCL = addTextBox(fields, u"txtINTDCL"_s, u"Nro. Declaración"_s, 20);
    txtINTFOF = addTextBox(fields, u"txtINTFOF"_s, u"Fecha Oficialización"_s, 12);
    txtINTDES = addTextBox(fields, u"txtINTDES"_s, u"Descripción"_s, 48);
    txtAduana = addTextBox(fields, u"txtAduana"_s, u"Aduana"_s, 12);
    txtVEN = addTextBox(fields, u"txtVEN"_s, u"Vencimiento"_s, 12);
    chkAjustes = addCheckBox(u"chkAjustes"_s, u"Calcular con Ajustes"_s);
    chOK = addCheckBox(u"chOK"_s, u"Despacho disponible para descontar los insumos"_s);

    framProgress = new QFrame(this);
    framProgress->setObjectName(u"framProgress"_s);
    framProgress->setAccessibleName(u"Progreso"_s);
    QSizePolicy keepsItsPlace = framProgress->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    framProgress->setSizePolicy(keepsItsPlace);
    ProgressBar1 = new QProgressBar(framProgress);
    ProgressBar1->setObjectName(u"ProgressBar1"_s);
    ProgressBar1->setAccessibleName(u"Progreso"_s);
    auto* frameLayout = new QVBoxLayout(framProgress);
    frameLayout->setContentsMargins({});
    frameLayout->addWidget(ProgressBar1);
    body().addWidget(framProgress);

    lbTexto = new StatusLabel(this);
    lbTexto->setObjectName(u"lbTexto"_s);
    lbTexto->setTextFormat(Qt::PlainText);
    lbTexto->setWordWrap(true);
    lbTexto->setAutoFillBackground(true);
    lbTexto->setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
    lbTexto->setMargin(fontMetrics().height() / 4);
    lbTexto->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // Room for a database's long sentences; a single endless word must not widen the form.
    lbTexto->setMinimumSize(1, 6 * fontMetrics().lineSpacing() + 2 * lbTexto->margin());
    body().addWidget(lbTexto, 1);

    lbversion = addText(u"lbversion"_s, u"version." OVELDRA_VERSION ""_s);
    lbversion->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    addHint({}, u"[F11] Procesar - [ESC] Salir"_s);

    setKeys({{Qt::Key_Escape, controls::AnyModifiers, controls::WholeForm, [this] { unload(); }},
             {Qt::Key_F11, controls::AnyModifiers, controls::WholeForm, [this] { lp_Procesar(); }}});
}

void frmImportar::Form_Load()
{
    bindTextBoxes({txtINTNRO, txtINTDCL, txtINTFOF, txtINTDES, txtAduana, txtVEN});
    txtINTNRO->setText(component().state.sInternoExt);
    txtAduana->setText(component().state.g_sAduana);
    txtINTDCL->setFocus(); // not the interno, which is filled in: the first key would overwrite it
}

void frmImportar::lp_Procesar()
{
    if (m_processing) {
        return;
    }
    const QScopedValueRollback processing(m_processing, true);
    core::trap(component().prompts(), u"Sección [oVELDRA.frmImportar.lp_Procesar]", [this] { process(); });
}

void frmImportar::designState()
{
    for (QLineEdit* textBox : {txtINTNRO, txtINTDCL, txtINTFOF, txtINTDES, txtAduana, txtVEN}) {
        textBox->clear();
    }
    chkAjustes->setChecked(false);
    chOK->setChecked(false);
    framProgress->hide();
    ProgressBar1->reset();
    showStatus({}, Black);
}

void frmImportar::process()
{
    core::Prompts& prompts = component().prompts();
    if (const QString fault = inputFault(); !fault.isEmpty()) {
        prompts.messageBox(fault, core::ExclamationBox);
        return;
    }
    showStatus(u"Verificando Integridad"_s, Black);
    lbTexto->repaint();

    const auto [status, imported] = verifyAndImport();
    if (status.startsWith(u"ER")) {
        showStatus(status, Red);
    } else if (!status.startsWith(u"OK")) {
        showStatus(u"(desconocido) "_s + status, Red);
    } else if (!imported) {
        showStatus(u"Fecha de oficialización inválida"_s, Black);
        prompts.messageBox(u"El campo Fecha de Oficialización, debe tener una fecha valida"_s, core::ExclamationBox);
    } else {
        showStatus(status, Blue);
        prompts.messageBox(u"Articulos exportados correctamente."_s, core::InformationBox);
    }
}

QString frmImportar::inputFault() const
{
    if (txtINTNRO->text().isEmpty()) {
        return u"Falta código de interno Tornel."_s;
    }
    if (txtINTDCL->text().isEmpty()) {
        return u"Falta Numero de Declaración Maria."_s;
    }
    if (txtAduana->text().isEmpty()) {
        return u"Falta codigo de aduana."_s;
    }
    if (!runtime::IsDate(txtVEN->text())) {
        return u"Fecha de vencimiento debe tener una fecha válida"_s;
    }
    if (txtINTDCL->text().contains(u'-')) {
        return u"No puede ingresar guiones ( - ) en el Número de Declaración"_s;
    }
    return {};
}

frmImportar::Outcome frmImportar::verifyAndImport()
{
    const controls::BusyPointer busy;
    core::SharedState& state = component().state;
    try {
        // From the check to the last row no other seat may write; the scope ends with this procedure, before any box.
        const auto burst = state.g_DBINS->beginBurst();
        QString status = m_routines.verify(state, txtINTDCL->text());
        if (!status.startsWith(u"OK") || !runtime::IsDate(txtINTFOF->text())) {
            return {status, false};
        }
        framProgress->show();
        BarProgress progress(*ProgressBar1);
        status = m_routines.import(state, progress, txtINTNRO->text(), txtINTDCL->text(), txtINTFOF->text(),
                                   txtINTDES->text(), txtVEN->text(), txtAduana->text(),
                                   static_cast<qint16>(chOK->isChecked() ? 1 : 0), chkAjustes->isChecked());
        if (status.startsWith(u"OK")) {
            burst->commit();
        }
        return {status, true};
    } catch (const RuntimeError& error) {
        return {errorStatus(error.number(), error.description()), false};
    }
}

void frmImportar::showStatus(const QString& text, quint32 color)
{
    // The colours are meant for a light background; a dark theme's would swallow the blue.
    QPalette palette = lbTexto->palette();
    palette.setColor(QPalette::Window, controls::colorFromOle(StatusBackground));
    palette.setColor(QPalette::WindowText, controls::colorFromOle(color));
    lbTexto->setPalette(palette);
    lbTexto->setText(text);
    lbTexto->setAccessibleName(text);
}

} // namespace oVELDRA::declarations
