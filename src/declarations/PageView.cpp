#include "PageView.h"

#include <declarations/BandedReport.h>

#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace oVELDRA::declarations {

namespace {

constexpr double factors[] = {0.25, 0.33, 0.5, 0.67, 0.75, 0.9, 1, 1.1, 1.25, 1.5, 1.75, 2, 2.5, 3, 4};
constexpr double smallest = 0.05; // of a page that is fitted into a window that is hardly there
constexpr int border = 12;        // around the page, in pixels

} // namespace

PageView::PageView(const BandedReport& report, QWidget* parent) : QAbstractScrollArea(parent), m_report(report)
{
    // Always there: its coming and going would change the width that the page is to fit.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Dark);
    viewport()->setAutoFillBackground(true);
}

void PageView::goToPage(int page)
{
    m_page = std::clamp(page, 0, m_report.pageCount() - 1);
    m_wheel = 0;
    verticalScrollBar()->setValue(0);
    viewport()->update();
    m_changed();
}

void PageView::zoomIn()
{
    const auto* next = std::upper_bound(std::begin(factors), std::end(factors), m_zoom);
    setZoom(next == std::end(factors) ? m_zoom : *next, Fit::Free);
}

void PageView::zoomOut()
{
    const auto* next = std::lower_bound(std::begin(factors), std::end(factors), m_zoom);
    setZoom(next == std::begin(factors) ? m_zoom : *std::prev(next), Fit::Free);
}

void PageView::fitPage()
{
    m_fit = Fit::Page;
    fit();
}

void PageView::fitWidth()
{
    m_fit = Fit::Width;
    fit();
}

QSize PageView::sizeHint() const
{
    const QSizeF page = m_report.sheet() * pixelsPerPoint(1);
    const int frame = 2 * (frameWidth() + border);
    return {qRound(page.width()) + frame + verticalScrollBar()->sizeHint().width(), qRound(page.height() * 0.8)};
}

QSize PageView::minimumSizeHint() const
{
    constexpr int characters = 40;
    constexpr int lines = 10;
    return {characters * fontMetrics().horizontalAdvance(u'0'), lines * fontMetrics().lineSpacing()};
}

void PageView::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    const QPoint topLeft = corner();
    const QRect page(topLeft, pageSize());
    const QRect exposed = event->rect() & page;
    painter.fillRect(exposed, Qt::white);
    painter.setClipRect(exposed);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.translate(topLeft);
    const double scale = pixelsPerPoint(m_zoom);
    painter.scale(scale, scale);
    const QRect onPage = exposed.translated(-topLeft);
    if (!onPage.isEmpty()) {
        m_report.paintPage(painter, m_page,
                           {onPage.x() / scale, onPage.y() / scale, onPage.width() / scale, onPage.height() / scale});
    }
}

void PageView::resizeEvent(QResizeEvent* /*event*/)
{
    fit();
}

void PageView::keyPressEvent(QKeyEvent* event)
{
    const bool down = event->key() == Qt::Key_Down;
    if ((down || event->key() == Qt::Key_Up) && turnAtEnd(down)) {
        return;
    }
    QAbstractScrollArea::keyPressEvent(event);
}

void PageView::wheelEvent(QWheelEvent* event)
{
    constexpr int notch = 120;
    const int turned = event->angleDelta().y();
    const bool down = turned < 0;
    const QScrollBar& bar = *verticalScrollBar();
    if (turned == 0 || bar.value() != (down ? bar.maximum() : bar.minimum())) {
        m_wheel = 0;
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    // Touch pads send many small turns, which must not leaf through the report.
    m_wheel = (m_wheel < 0) == down ? m_wheel + turned : turned;
    if (std::abs(m_wheel) >= notch) {
        turnAtEnd(down);
    }
    event->accept();
}

void PageView::setZoom(double zoom, Fit fit)
{
    m_zoom = zoom;
    m_fit = fit;
    layOut();
    m_changed();
}

void PageView::fit()
{
    if (m_fit == Fit::Free) {
        layOut();
        return;
    }
    const QSizeF page = m_report.sheet() * pixelsPerPoint(1);
    const QSize room = viewport()->size().shrunkBy({border, border, border, border});
    double zoom = room.width() / page.width();
    if (m_fit == Fit::Page) {
        zoom = std::min(zoom, room.height() / page.height());
    }
    setZoom(std::clamp(zoom, smallest, *std::rbegin(factors)), m_fit);
}

void PageView::layOut()
{
    const QSize whole = pageSize().grownBy({border, border, border, border});
    const QSize seen = viewport()->size();
    const int line = 3 * fontMetrics().lineSpacing();
    const auto setBar = [line](QScrollBar& bar, int length, int page) {
        // The same place of the page stays at the edge.
        const double before = static_cast<double>(bar.value()) / std::max(bar.maximum() + bar.pageStep(), 1);
        bar.setRange(0, std::max(length - page, 0));
        bar.setPageStep(page);
        bar.setSingleStep(line);
        bar.setValue(qRound(before * length));
    };
    setBar(*horizontalScrollBar(), whole.width(), seen.width());
    setBar(*verticalScrollBar(), whole.height(), seen.height());
    viewport()->update();
}

bool PageView::turnAtEnd(bool down)
{
    QScrollBar& bar = *verticalScrollBar();
    const int next = m_page + (down ? 1 : -1);
    if (bar.value() != (down ? bar.maximum() : bar.minimum()) || next < 0 || next >= m_report.pageCount()) {
        return false;
    }
    goToPage(next);
    if (!down) {
        bar.setValue(bar.maximum());
    }
    return true;
}

double PageView::pixelsPerPoint(double zoom) const
{
    return zoom * logicalDpiY() / 72;
}

QSize PageView::pageSize() const
{
    return (m_report.sheet() * pixelsPerPoint(m_zoom)).toSize();
}

QPoint PageView::corner() const
{
    const QSize page = pageSize();
    const auto place = [](int length, int seen, int scrolled) {
        return length + 2 * border <= seen ? (seen - length) / 2 : border - scrolled;
    };
    return {place(page.width(), viewport()->width(), horizontalScrollBar()->value()),
            place(page.height(), viewport()->height(), verticalScrollBar()->value())};
}

} // namespace oVELDRA::declarations
