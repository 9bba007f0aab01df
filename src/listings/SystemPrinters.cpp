#include "SystemPrinters.h"

#include <oVELDRA/RuntimeError.h>

#include <listings/PrintQueue.h>

#include <QFontMetricsF>
#include <QPageSize>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

using namespace Qt::StringLiterals;

namespace oVELDRA::listings {

namespace {

constexpr int printerError = 482;

/// The width that every line of a listing fits in.
constexpr int columns = 150;

/// The font of a sheet: of 8 points, or as much smaller as the columns need.
QFont fontFor(QPrinter& printer)
{
    QFont font;
    font.setFamilies({u"Courier New"_s, u"Liberation Mono"_s});
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    constexpr double points = 8;
    font.setPointSizeF(points);
    const double width = QFontMetricsF(font, &printer).horizontalAdvance(QString(columns, u'0'));
    if (width > printer.width()) {
        font.setPointSizeF(points * printer.width() / width);
    }
    return font;
}

/// Lines of text, from the top of the sheet to its bottom. They are painted when the document is ended, since the print
/// engine hands over whatever was begun, even after an abort.
class TextDocument final : public PrintDocument
{
public:
    TextDocument(const QPrinterInfo& info, const QString& title, bool landscape)
        : m_printer(info, QPrinter::HighResolution)
    {
        m_printer.setDocName(title);
        // By itself the document would be laid out for A4, whatever paper the printer is set up with.
        if (const QPageSize paper = info.defaultPageSize(); paper.isValid()) {
            m_printer.setPageSize(paper);
        }
        if (landscape) {
            m_printer.setPageOrientation(QPageLayout::Landscape);
        }
    }

    void print(const QString& text) override { m_pages.last() += text.split(u"\r\n"_s); }

    void newPage() override { m_pages.append(QStringList()); }

    void end() override
    {
        paint();
        const QString refusal = queue::lastRefusal();
        if (m_printer.printerState() == QPrinter::Error || !refusal.isEmpty()) {
            throw RuntimeError(printerError,
                               u"La impresora %1 no aceptó el documento. %2"_s.arg(m_printer.printerName(), refusal));
        }
    }

private:
    void paint()
    {
        QPainter painter;
        if (!painter.begin(&m_printer)) {
            throw RuntimeError(printerError, u"La impresora %1 no acepta documentos."_s.arg(m_printer.printerName()));
        }
        painter.setFont(fontFor(m_printer));
        paintPage(painter, m_pages.first());
        for (qsizetype page = 1; page < m_pages.size(); ++page) {
            nextSheet();
            paintPage(painter, m_pages.at(page));
        }
    }

    void paintPage(QPainter& painter, const QStringList& lines)
    {
        const QFontMetricsF metrics(painter.font(), &m_printer);
        double top = 0;
        for (const QString& line : lines) {
            if (!line.isEmpty() && top + metrics.lineSpacing() > m_printer.height()) { // no sheet for a blank line
                nextSheet();
                top = 0;
            }
            painter.drawText(QPointF(0, top + metrics.ascent()), line);
            top += metrics.lineSpacing();
        }
    }

    void nextSheet()
    {
        if (!m_printer.newPage()) {
            throw RuntimeError(printerError, u"La impresora %1 dejó de imprimir."_s.arg(m_printer.printerName()));
        }
    }

    QPrinter m_printer;
    QList<QStringList> m_pages{QStringList()};
};

} // namespace

QStringList SystemPrinters::deviceNames() const
{
    return QPrinterInfo::availablePrinterNames();
}

std::unique_ptr<PrintDocument> SystemPrinters::begin(const QString& deviceName, const QString& title)
{
    const bool picked = !deviceName.isEmpty();
    const QPrinterInfo info = picked ? QPrinterInfo::printerInfo(deviceName) : QPrinterInfo::defaultPrinter();
    if (info.isNull() && !picked) {
        throw RuntimeError(printerError, u"El sistema no tiene una impresora predeterminada."_s);
    }
    queue::requireReady(picked ? deviceName : info.printerName());
    return std::make_unique<TextDocument>(info, title, picked);
}

void SystemSpooler::send(const QString& deviceName, const QString& page)
{
    if (deviceName.isEmpty()) {
        throw RuntimeError(printerError, u"El modo DOS necesita una impresora elegida de la lista."_s);
    }
    queue::sendRaw(deviceName, u"Listado de descargas"_s, queue::toCodePage850(page));
}

} // namespace oVELDRA::listings
