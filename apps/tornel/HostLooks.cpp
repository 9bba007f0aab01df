#include "HostLooks.h"

#include <QApplication>
#include <QEvent>
#include <QFocusFrame>
#include <QPainter>
#include <QPalette>

#include <cstdlib>

namespace tornel {

namespace {

class FocusLine final : public QFocusFrame // which assistive technology passes over
{
public:
    explicit FocusLine(QWidget& window) : QFocusFrame(&window)
    {
        window.installEventFilter(this);
        connect(qApp, &QApplication::focusChanged, this, [this] { place(); });
    }

private:
    static constexpr int thickness = 2;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::UpdateRequest) { // what has moved is about to be drawn
            place();
        }
        return QFocusFrame::eventFilter(watched, event);
    }

    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), palette().color(QPalette::WindowText));
    }

    void place()
    {
        const QWidget* const control = QApplication::focusWidget();
        if (control == nullptr || control == window() || control->window() != window()) {
            hide();
            return;
        }
        const QRect outer = QRect(control->mapTo(window(), QPoint()), control->size())
                                .adjusted(-thickness, -thickness, thickness, thickness);
        if (isVisible() && geometry() == outer) {
            return;
        }
        setGeometry(outer);
        setMask(QRegion(rect()).subtracted(rect().adjusted(thickness, thickness, -thickness, -thickness)));
        raise();
        show();
    }
};

} // namespace

void surroundFocus(QWidget& window)
{
    new FocusLine(window);
}

QColor clearSelection(const QPalette& theme)
{
    constexpr int apart = 160; // of 255 shades of gray
    constexpr int step = 105;  // per cent
    QColor selection = theme.color(QPalette::Highlight);
    const int text = qGray(theme.color(QPalette::HighlightedText).rgb());
    const bool isTextLight = text > qGray(selection.rgb());
    while (std::abs(text - qGray(selection.rgb())) < apart && selection != QColor(Qt::black) &&
           selection.lightness() < 250) {
        selection = isTextLight ? selection.darker(step) : selection.lighter(step);
    }
    return selection;
}

} // namespace tornel
