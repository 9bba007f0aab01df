#pragma once

#include <QObject>

#include <functional>

class QWidget;

namespace tornel {

/// Tells, once, that a window has been painted for the first time: when the pass that painted it is over and the
/// window system has what it drew.
class FirstPaint : public QObject
{
public:
    /// Watches a window, which owns it. What it tells may close the window.
    FirstPaint(QWidget& window, std::function<void()> tell);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<void()> m_tell;
};

/// For the option of programs whose start is measured: when the window has been painted, writes one line to the
/// standard output and ends the application with exit code 0.
void quitWhenPainted(QWidget& window);

} // namespace tornel
