#include "FirstPaint.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <cstdio>
#include <cstdlib>
#include <utility>

#if defined(TORNEL_XCB)
#include <xcb/xcb.h>
#endif

namespace tornel {

namespace {

/// Returns when what was painted is on the screen. (QGuiApplication::sync() would first do everything else that waits.)
void waitForScreen()
{
#if defined(TORNEL_XCB)
    const auto* x11 = qApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t* const connection = x11 != nullptr ? x11->connection() : nullptr; // null offscreen
    if (connection != nullptr) {
        // The server answers when it has done what was asked of it before.
        std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    }
#endif
}

} // namespace

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
                waitForScreen();
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
