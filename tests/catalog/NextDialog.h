#pragma once

#include "controls/OpenForm.h"

#include <QApplication>

namespace oVELDRA::catalog {

/// Acts on the form of that name that the next key opens over the current one. Call it before the key; a form that the
/// actions leave open is closed behind them. It fails the test when another form, or none, comes up.
inline void inNextDialog(const QString& name, const std::function<void(controls::Form&)>& actions)
{
    QTimer::singleShot(0, qApp, [name, actions] {
        auto* form = dynamic_cast<controls::Form*>(QApplication::activeModalWidget());
        // QTest::qWaitForWindowActive() takes the form below for it.
        const auto isActive = [form] { return QApplication::activeWindow() == form; };
        if (form == nullptr || form->objectName() != name || !QTest::qWaitFor(isActive)) {
            QTest::qFail(qPrintable(QStringLiteral("the form did not come up: ") + name), __FILE__, __LINE__);
            return;
        }
        actions(*form);
        if (form->isVisible()) {
            form->unload();
        }
    });
}

/// Puts a form back into focus once its dialog has closed: a window manager does, the suite's platform does not.
inline void returnTo(controls::Form& form)
{
    form.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &form);
}

} // namespace oVELDRA::catalog
