#include "FocusFrame.h"

#include <controls/Contrast.h>

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace oVELDRA::controls {

namespace {

/// The part of a control that it draws in. A check box is often given a whole row, of which its text ends early.
QRect drawnPart(const QWidget& control)
{
    QRect part = control.rect();
    const auto* button = qobject_cast<const QAbstractButton*>(&control);
    if (button != nullptr && button->isCheckable()) {
        part.setWidth(std::min(part.width(), button->sizeHint().width()));
    }
    return QStyle::visualRect(control.layoutDirection(), control.rect(), part);
}

} // namespace

FocusFrame::FocusFrame(QWidget& window) : QFocusFrame(&window)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget*, QWidget* now) { follow(now); });
}

int FocusFrame::reach() const
{
    return thickness() + 1;
}

bool FocusFrame::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
        place();
        break;
    default:
        break;
    }
    return QFocusFrame::eventFilter(watched, event);
}

void FocusFrame::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const QPalette& colors = parentWidget()->palette();
    const QColor line = readableOn(colors.color(QPalette::Highlight), colors.color(QPalette::Window));
    const QRect outer = rect();
    const int width = thickness();
    const QRect inner = outer.adjusted(width, width, -width, -width);
    for (const QRect& side : QRegion(outer).subtracted(inner)) {
        painter.fillRect(side, line);
    }
}

void FocusFrame::follow(QWidget* control)
{
    for (const QPointer<QWidget>& watched : m_watched) {
        if (watched) {
            watched->removeEventFilter(this);
        }
    }
    m_watched.clear();
    const bool isOurs = control != nullptr && control != window() && control->window() == window();
    m_control = isOurs ? control : nullptr;
    for (QWidget* part = m_control; part != nullptr && part != window(); part = part->parentWidget()) {
        part->installEventFilter(this);
        m_watched.append(part);
    }
    place();
}

void FocusFrame::place()
{
    if (!m_control || !m_control->isVisible()) {
        hide();
        return;
    }
    const int around = reach();
    const QRect part = drawnPart(*m_control);
    setGeometry(
        QRect(m_control->mapTo(window(), part.topLeft()), part.size()).adjusted(-around, -around, around, around));
    const QRect line = rect();
    const int width = thickness();
    setMask(QRegion(line).subtracted(line.adjusted(width, width, -width, -width)));
    raise();
    show();
}

int FocusFrame::thickness() const
{
    constexpr int linesOfText = 8;
    return std::max(2, fontMetrics().height() / linesOfText);
}

} // namespace oVELDRA::controls
