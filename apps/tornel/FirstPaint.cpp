#include "FirstPaint.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <cstdio>
#include <utility>

namespace tornel {

FirstPaint::FirstPaint(QWidget& window, std::function<void()> tell) : QObject(&window), m_tell(std::move(tell))
{
    window.installEventFilter(this);
}

bool FirstPaint::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        // The children are painted and the whole is handed over before the event loop comes to this.
        QMetaObject::invokeMethod(
            this,
            [this] {
                QGuiApplication::sync();
                m_tell();
            },
            Qt::QueuedConnection);
    }
    return false;
}

void quitWhenPainted(QWidget& window)
{
    new FirstPaint(window, [] {
        std::puts("mostrada");
        std::fflush(stdout);
        QApplication::quit();
    });
}

} // namespace tornel
