#include "ReportOutput.h"

#include <oVELDRA/RuntimeError.h>

#include <declarations/BandedReport.h>
#include <listings/PrintQueue.h>

#include <QFileInfo>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace oVELDRA::declarations {

namespace {

/// Paints the pages from `first` to `last` (from 0). False when the device takes no more.
bool paintPages(const BandedReport& report, QPagedPaintDevice& device, int first, int last, int copies)
{
    QPainter painter;
    if (!painter.begin(&device)) {
        return false;
    }
    const double scale = std::min(device.width() / report.sheet().width(), device.height() / report.sheet().height());
    painter.scale(scale, scale);
    bool onFirstSheet = true;
    for (int copy = 0; copy < copies; ++copy) {
        for (int page = first; page <= last; ++page) {
            if (!onFirstSheet && !device.newPage()) {
                return false;
            }
            onFirstSheet = false;
            report.paintPage(painter, page);
        }
    }
    return painter.end();
}

/// The whole sheet: the report has margins of its own.
QPageLayout layoutOf(const BandedReport& report)
{
    return {QPageSize(report.sheet(), QPageSize::Point), QPageLayout::Portrait, {}};
}

} // namespace

void savePdf(const BandedReport& report, const QString& fileName, const QString& title)
{
    QSaveFile file(fileName);
    bool written = file.open(QIODevice::WriteOnly);
    if (written) {
        QPdfWriter writer(&file);
        writer.setTitle(title);
        writer.setCreator(u"oVELDRA"_s);
        writer.setPageLayout(layoutOf(report));
        written = paintPages(report, writer, 0, report.pageCount() - 1, 1);
    }
    if (!written || !file.commit()) {
        throw RuntimeError(
            75, u"No se pudo guardar el archivo %1: %2"_s.arg(QFileInfo(fileName).fileName(), file.errorString()));
    }
}

void printReport(const BandedReport& report, QPrinter& printer)
{
    int first = 0;
    int last = report.pageCount() - 1;
    if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
        first = std::min(printer.fromPage() - 1, last);
        last = std::clamp(printer.toPage() - 1, first, last);
    }
    const bool queued = printer.outputFormat() == QPrinter::NativeFormat;
    if (queued) {
        listings::queue::requireReady(printer.printerName());
    }
    printer.setFullPage(true);
    const int copies = printer.supportsMultipleCopies() ? 1 : printer.copyCount();
    const bool painted = paintPages(report, printer, first, last, copies) && printer.printerState() != QPrinter::Error;
    const QString refusal = queued ? listings::queue::lastRefusal() : QString();
    if (!painted || !refusal.isEmpty()) {
        throw RuntimeError(
            482, u"La impresora %1 no aceptó la impresión. %2"_s.arg(printer.printerName(), refusal).trimmed());
    }
}

} // namespace oVELDRA::declarations
