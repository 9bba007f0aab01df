#include "ReportDialogs.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPrinter>

using namespace Qt::StringLiterals;

namespace oVELDRA::declarations {

bool askForPrinter(QWidget& owner, QPrinter& printer, int pages)
{
    QPrintDialog dialog(&printer, &owner);
    dialog.setObjectName(u"dlgImprimir"_s);
    dialog.setWindowTitle(u"Imprimir"_s);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setMinMax(1, pages);
    dialog.setFromTo(1, pages);
    return dialog.exec() == QDialog::Accepted;
}

QString askForPdfFile(QWidget& owner, const QString& proposal)
{
    QFileDialog dialog(&owner, u"Guardar como PDF"_s, QFileInfo(proposal).path(), u"Documento PDF (*.pdf)"_s);
    dialog.setObjectName(u"dlgGuardarPDF"_s);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(u"pdf"_s);
    dialog.setOption(QFileDialog::DontConfirmOverwrite); // its own question does not speak Spanish everywhere
    dialog.setLabelText(QFileDialog::LookIn, u"Buscar en:"_s);
    dialog.setLabelText(QFileDialog::FileName, u"Nombre:"_s);
    dialog.setLabelText(QFileDialog::FileType, u"Tipo:"_s);
    dialog.setLabelText(QFileDialog::Accept, u"Guardar"_s);
    dialog.setLabelText(QFileDialog::Reject, u"Cancelar"_s);
    dialog.selectFile(QFileInfo(proposal).fileName());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().constFirst() : QString();
}

} // namespace oVELDRA::declarations
