#pragma once

#include <controls/Form.h>

#include <QTest>
#include <QTimer>

#include <functional>

namespace oVELDRA::controls {

/// Opens a form as its entry operation does and lets the user act on it. A form that the actions leave open is closed
/// behind them. Answers whether the form was still open then.
inline bool whileOpen(Form& form, const std::function<void()>& actions)
{
    bool leftOpen = false;
    QTimer::singleShot(0, &form, [&] {
        if (QTest::qWaitForWindowActive(&form)) {
            actions();
        } else {
            QTest::qFail("the form did not become the active window", __FILE__, __LINE__);
        }
        leftOpen = form.isVisible();
        if (leftOpen) {
            form.unload();
        }
    });
    form.showModal();
    return leftOpen;
}

/// Presses and releases a key on whatever has the focus.
inline void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QVERIFY(QApplication::focusWidget() != nullptr);
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

/// Types a text into whatever has the focus.
inline void typeText(const QString& text)
{
    QVERIFY(QApplication::focusWidget() != nullptr);
    QTest::keyClicks(QApplication::focusWidget(), text);
}

} // namespace oVELDRA::controls
