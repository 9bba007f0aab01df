#include "drDITART.h"

#include <controls/BusyPointer.h>
#include <core/ErrorReport.h>
#include <core/Prompts.h>
#include <declarations/ArticleReport.h>
#include <declarations/PageView.h>
#include <declarations/ReportOutput.h>
#include <runtime/Clock.h>

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPrinter>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::declarations {

drDITART::drDITART(core::Component& component, std::unique_ptr<Recordset> articles, ReportDialogs dialogs)
    : Form(component, u"drDITART"_s, u"Rerporte DIT"_s), // meant to be spelled so
      m_report(articleReport(component.clock().today()), std::move(articles)), m_dialogs(std::move(dialogs)),
      m_documentName(windowTitle())
{
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    lbPagina = addText(u"lbPagina"_s, {});
    vwPagina = new PageView(m_report, this);
    vwPagina->setObjectName(u"vwPagina"_s);
    vwPagina->setAccessibleName(u"Vista previa"_s);
    vwPagina->setChangeHandler([this] { showPosition(); });
    body().addWidget(vwPagina, 1);
    addHint(u"lbTeclas"_s, u"[AV PÁG] [RE PÁG] Página siguiente, anterior - [INICIO] [FIN] Primera, última - "
                           "[+] [-] Zoom - [0] Página entera - [1] Ancho de página - "
                           "[F11] Guardar PDF - [F12] Imprimir - [ESC] Salir"_s)
        ->setWordWrap(true);

    const auto key = [](int code, std::function<void()> procedure) -> controls::KeyBinding {
        return {code, controls::AnyModifiers, controls::WholeForm, std::move(procedure)};
    };
    setKeys({key(Qt::Key_PageDown, [this] { vwPagina->goToPage(vwPagina->page() + 1); }),
             key(Qt::Key_PageUp, [this] { vwPagina->goToPage(vwPagina->page() - 1); }),
             key(Qt::Key_Home, [this] { vwPagina->goToPage(0); }),
             key(Qt::Key_End, [this] { vwPagina->goToPage(m_report.pageCount() - 1); }),
             key(Qt::Key_Plus, [this] { vwPagina->zoomIn(); }), key(Qt::Key_Minus, [this] { vwPagina->zoomOut(); }),
             key(Qt::Key_0, [this] { vwPagina->fitPage(); }), key(Qt::Key_1, [this] { vwPagina->fitWidth(); }),
             key(Qt::Key_F11, [this] { savePdf(); }), key(Qt::Key_F12, [this] { print(); }),
             key(Qt::Key_Escape, [this] { unload(); })});
}

void drDITART::designState()
{
    vwPagina->fitWidth();
    vwPagina->goToPage(0);
    vwPagina->setFocus();
}

void drDITART::showPosition()
{
    const QString position = u"Página %1 de %2 - %3 %"_s.arg(vwPagina->page() + 1)
                                 .arg(m_report.pageCount())
                                 .arg(qRound(vwPagina->zoom() * 100));
    lbPagina->setText(position);
    lbPagina->setAccessibleName(position);
    vwPagina->setAccessibleDescription(position);
}

void drDITART::print()
{
    core::trap(component().prompts(), u" - Sección [oVELDRA.drDITART.print]", [this] {
        QPrinter printer(QPrinter::HighResolution);
        printer.setDocName(m_documentName);
        printer.setPageSize(QPageSize(QPageSize::A4));
        printer.setPageOrientation(QPageLayout::Portrait);
        if (m_dialogs.printer(*this, printer, m_report.pageCount())) {
            const controls::BusyPointer busy;
            printReport(m_report, printer);
        }
    });
}

void drDITART::savePdf()
{
    core::trap(component().prompts(), u" - Sección [oVELDRA.drDITART.savePdf]", [this] {
        const QString fileName = m_dialogs.pdfFile(*this, proposedFile());
        if (fileName.isEmpty() || !mayReplace(fileName)) {
            return;
        }
        {
            const controls::BusyPointer busy;
            declarations::savePdf(m_report, fileName, m_documentName);
        }
        component().prompts().messageBox(u"Se guardó el archivo "_s + QDir::toNativeSeparators(fileName),
                                         core::InformationBox);
    });
}

QString drDITART::proposedFile() const
{
    static const QRegularExpression unfit(u"[^\\w .()-]"_s, QRegularExpression::UseUnicodePropertiesOption);
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return folder + u'/' + QString(m_documentName).replace(unfit, u"_"_s) + u".pdf"_s;
}

bool drDITART::mayReplace(const QString& fileName) const
{
    if (!QFileInfo::exists(fileName)) {
        return true;
    }
    const QString question =
        u"El archivo "_s + QDir::toNativeSeparators(fileName) + u" ya existe. Confirma reemplazarlo?"_s;
    return component().prompts().messageBox(question, core::QuestionBox) != core::AnswerNo;
}

} // namespace oVELDRA::declarations
