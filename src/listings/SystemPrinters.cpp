#include "SystemPrinters.h"

#include <oVELDRA/RuntimeError.h>

#include <listings/PrintQueue.h>

#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

using namespace Qt::StringLiterals;

namespace oVELDRA::listings {

namespace {

constexpr int printerError = 482;

/// Lines of text, from the top of the sheet to its bottom.
class TextDocument final : public PrintDocument
{
public:
    TextDocument(const QPrinterInfo& info, const QString& title, bool landscape)
        : m_printer(info, QPrinter::HighResolution)
    {
        m_printer.setDocName(title);
        if (landscape) {
            m_printer.setPageOrientation(QPageLayout::Landscape);
        }
        if (!m_painter.begin(&m_printer)) {
            throw RuntimeError(printerError, u"La impresora %1 no acepta documentos."_s.arg(info.printerName()));
        }
        constexpr int points = 8; // 150 characters fit the width of a landscape sheet
        QFont font;
        font.setFamilies({u"Courier New"_s, u"Liberation Mono"_s});
        font.setStyleHint(QFont::TypeWriter);
        font.setFixedPitch(true);
        font.setPointSize(points);
        m_painter.setFont(font);
    }

    ~TextDocument() override
    {
        if (m_painter.isActive()) {
            m_printer.abort();
            m_painter.end();
        }
    }
    TextDocument(const TextDocument&) = delete;
    TextDocument& operator=(const TextDocument&) = delete;

    void print(const QString& text) override
    {
        const QFontMetricsF metrics(m_painter.font(), &m_printer);
        for (const QStringView line : QStringView(text).split(u"\r\n")) {
            if (m_top + metrics.lineSpacing() > m_printer.height()) {
                newPage();
            }
            m_painter.drawText(QPointF(0, m_top + metrics.ascent()), line.toString());
            m_top += metrics.lineSpacing();
        }
    }

    void newPage() override
    {
        if (!m_printer.newPage()) {
            throw RuntimeError(printerError, u"La impresora %1 dejó de imprimir."_s.arg(m_printer.printerName()));
        }
        m_top = 0;
    }

    void end() override
    {
        m_painter.end();
        const QString refusal = queue::lastRefusal();
        if (m_printer.printerState() == QPrinter::Error || !refusal.isEmpty()) {
            throw RuntimeError(printerError,
                               u"La impresora %1 no aceptó el documento. %2"_s.arg(m_printer.printerName(), refusal));
        }
    }

private:
    QPrinter m_printer;
    QPainter m_painter;
    double m_top = 0; ///< where the next line begins
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
    queue::sendRaw(deviceName, u"Listado de descargas"_s, queue::toCodePage850(page));
}

} // namespace oVELDRA::listings
