#pragma once

#include "catalog/FormFixture.h"
#include "doubles/BoxDriver.h"

#include <controls/OleColor.h>

namespace oVELDRA::catalog {

/// The names of the controls that Tab visits, from the one that has the focus.
[[nodiscard]] inline QStringList tabOrder(int count)
{
    QStringList order;
    for (int step = 0; step < count; ++step) {
        order.append(QApplication::focusWidget()->objectName());
        controls::pressKey(Qt::Key_Tab);
    }
    return order;
}

/// Texts that must reach a statement as they are, within their literals.
[[nodiscard]] inline QStringList hostileTexts()
{
    return {QStringLiteral("\"x\""),
            QStringLiteral("x -- y"),
            QStringLiteral("/* x */"),
            QStringLiteral("%1 %2"),
            QStringLiteral("x; delete from RIP"),
            QStringLiteral("x; delete from PRD"),
            QStringLiteral(u"\U0001F6A2 Ñandú \u202e"),
            QString(10'000, QLatin1Char('x'))};
}

/// Enter leaves a text box that has the focus; its colours say which one has it.
inline void checkEnterLeaves(const QLineEdit& box)
{
    QVERIFY2(box.hasFocus(), qPrintable(box.objectName()));
    QCOMPARE(box.palette().color(QPalette::Base), controls::colorFromOle(12648384));
    controls::pressKey(Qt::Key_Return);
    QCOMPARE(box.palette().color(QPalette::Base), controls::colorFromOle(16777215));
}

/// Saves what `fillIn` fills into an editor, which says in one box that it did not work: no write scope is open then.
template <typename Fixture>
void checkNoWriteScopeWhileABoxIsOpen(Fixture& editor, const std::function<void()>& fillIn)
{
    bool openInBox = false;
    editor.component.prompts.whileShown = [&] { openInBox = openInBox || editor.inputs->burstIsOpen(); };
    QVERIFY(controls::whileOpen(editor.form, [&] {
        fillIn();
        controls::pressKey(Qt::Key_F11);
    }));
    QCOMPARE(editor.boxes().size(), 1);
    QVERIFY(!openInBox);
}

/// Saves an editor as it comes up, empty, over the component's own prompts: its first check shows `text` in a real box.
template <typename FormUnderTest>
void checkRealBoxOfAnEmptySave(const QString& text)
{
    core::ScreenPrompts prompts;
    doubles::MemorySettings settings;
    const doubles::FixedClock clock;
    core::Component component(prompts, settings, clock);
    FormUnderTest form(component);
    doubles::BoxDriver user;
    user.press(Qt::Key_Return);
    QVERIFY(controls::whileOpen(form, [] { controls::pressKey(Qt::Key_F11); }));
    QVERIFY(user.done());
    QCOMPARE(user.seen().constFirst().text, text);
    QCOMPARE(user.seen().constFirst().icon, QMessageBox::Warning);
    QCOMPARE(user.seen().constFirst().title, QStringLiteral("oVELDRA"));
}

} // namespace oVELDRA::catalog
