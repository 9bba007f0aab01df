#include "doubles/BoxDriver.h"

#include <core/Prompts.h>

#include <QApplication>
#include <QDialog>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTranslator>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::doubles;

namespace {

/// A translation that gives every text of Qt's own another one.
class AnyTranslation final : public QTranslator
{
public:
    [[nodiscard]] QString translate(const char* /*context*/, const char* /*source*/, const char* /*disambiguation*/,
                                    int /*n*/) const override
    {
        return u"übersetzt"_s;
    }
    [[nodiscard]] bool isEmpty() const override { return false; }
};

} // namespace

class tst_Prompts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void styles_data();
    void styles();
    void answersByKey_data();
    void answersByKey();
    void closingAnswers();
    void buttonsAreSpanishUnderAnyTranslation();
    void titleDefaultsToTheComponent();
    void markupIsShownAsItIs();
    void lineBreaksOfErrorsAreSingle();
    void boxStandsOverTheActiveWindow();
    void boxStandsOverTheModalFormWithoutAnActiveWindow();
    void boxIsModal();
    void inputBoxGivesTheLine();
    void inputBoxGivesTheProposal();
    void inputBoxCancelledIsEmpty_data();
    void inputBoxCancelledIsEmpty();
};

void tst_Prompts::styles_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<QMessageBox::Icon>("icon");
    QTest::addColumn<QStringList>("buttons");
    QTest::addColumn<int>("answer");
    const QStringList ok{u"Aceptar"_s};
    const QStringList yesNo{u"Sí"_s, u"No"_s};
    QTest::newRow("0") << 0 << QMessageBox::NoIcon << ok << 1;
    QTest::newRow("16") << 16 << QMessageBox::Critical << ok << 1;
    QTest::newRow("36") << 36 << QMessageBox::Question << yesNo << 6;
    QTest::newRow("48") << 48 << QMessageBox::Warning << ok << 1;
    QTest::newRow("64") << 64 << QMessageBox::Information << ok << 1;
}

void tst_Prompts::styles()
{
    QFETCH(const int, style);
    QFETCH(const QMessageBox::Icon, icon);
    QFETCH(QStringList, buttons);
    BoxDriver user;
    user.press(Qt::Key_Return);
    core::ScreenPrompts prompts;
    QTEST(int(prompts.messageBox(u"Texto"_s, core::BoxStyle(style), u"Título"_s)), "answer");
    QVERIFY(user.done());
    const auto& seen = user.seen().first();
    QCOMPARE(seen.text, u"Texto"_s);
    QCOMPARE(seen.title, u"Título"_s);
    QCOMPARE(seen.icon, icon);
    QCOMPARE(seen.focusedButton, buttons.first());
    // Which side Yes stands on is the desktop's habit.
    QStringList shown = seen.buttons;
    shown.sort();
    buttons.sort();
    QCOMPARE(shown, buttons);
}

void tst_Prompts::answersByKey_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<int>("answer");
    const auto row = [](const char* name, int style, Qt::Key key, int answer, Qt::KeyboardModifiers with = {}) {
        QTest::newRow(name) << style << key << with << answer;
    };
    row("Enter is Yes", 36, Qt::Key_Return, 6);
    row("Enter of the keypad is Yes", 36, Qt::Key_Enter, 6, Qt::KeypadModifier);
    row("Escape is No", 36, Qt::Key_Escape, 7);
    row("S is Yes", 36, Qt::Key_S, 6);
    row("N is No", 36, Qt::Key_N, 7);
    row("Alt+S is Yes", 36, Qt::Key_S, 6, Qt::AltModifier);
    row("Alt+N is No", 36, Qt::Key_N, 7, Qt::AltModifier);
    row("Escape closes an information", 64, Qt::Key_Escape, 1);
    row("blank closes an error", 16, Qt::Key_Space, 1);
}

void tst_Prompts::answersByKey()
{
    QFETCH(const int, style);
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    BoxDriver user;
    user.press(key, modifiers);
    core::ScreenPrompts prompts;
    QTEST(int(prompts.messageBox(u"¿Confirma?"_s, core::BoxStyle(style))), "answer");
    QVERIFY(user.done());
}

void tst_Prompts::closingAnswers()
{
    BoxDriver user;
    user.close();
    user.close();
    core::ScreenPrompts prompts;
    QCOMPARE(prompts.messageBox(u"¿Confirma?"_s, core::QuestionBox), core::AnswerNo);
    QCOMPARE(prompts.messageBox(u"Listo"_s, core::InformationBox), core::AnswerOk);
    QVERIFY(user.done());
}

void tst_Prompts::buttonsAreSpanishUnderAnyTranslation()
{
    AnyTranslation translation;
    QVERIFY(QCoreApplication::installTranslator(&translation));
    BoxDriver user;
    user.press(Qt::Key_Return);
    user.press(Qt::Key_Return);
    user.press(Qt::Key_Return);
    core::ScreenPrompts prompts;
    prompts.messageBox(u"a"_s, core::QuestionBox);
    prompts.messageBox(u"b"_s, core::PlainBox);
    prompts.inputBox(u"c"_s, u"t"_s);
    QVERIFY(user.done());
    QStringList buttons;
    for (const auto& seen : user.seen()) {
        buttons += seen.buttons;
    }
    buttons.sort();
    QCOMPARE(buttons, QStringList({u"Aceptar"_s, u"Aceptar"_s, u"Cancelar"_s, u"No"_s, u"Sí"_s}));
}

void tst_Prompts::titleDefaultsToTheComponent()
{
    BoxDriver user;
    user.press(Qt::Key_Return);
    user.press(Qt::Key_Return);
    core::ScreenPrompts prompts;
    prompts.messageBox(u"a"_s);
    prompts.inputBox(u"b"_s, {});
    QVERIFY(user.done());
    QCOMPARE(user.seen().at(0).title, u"oVELDRA"_s);
    QCOMPARE(user.seen().at(1).title, u"oVELDRA"_s);
}

void tst_Prompts::markupIsShownAsItIs()
{
    const QString text = u"<b>Tornillo</b> 1/2\" &amp; <a href='x'>y</a>"_s;
    BoxDriver user;
    user.press(Qt::Key_Return);
    user.type(u"<i>&x"_s);
    core::ScreenPrompts prompts;
    prompts.messageBox(text, core::ExclamationBox);
    QCOMPARE(prompts.inputBox(text, u"t"_s, text), u"<i>&x"_s);
    QVERIFY(user.done());
    for (const auto& seen : user.seen()) {
        QCOMPARE(seen.text, text);
        QCOMPARE(seen.format, Qt::PlainText);
    }
    QCOMPARE(user.seen().at(1).proposal, text);
}

void tst_Prompts::lineBreaksOfErrorsAreSingle()
{
    int withCrLf = 0;
    int withLf = 0;
    const auto height = [](int& result) {
        return [&result] {
            result = QApplication::activeModalWidget()->findChild<QLabel*>(u"qt_msgbox_label"_s)->sizeHint().height();
        };
    };
    BoxDriver user;
    core::ScreenPrompts prompts;
    user.press(Qt::Key_Return);
    user.beforeNext(height(withCrLf));
    prompts.messageBox(u"uno\r\n\r\ntres"_s, core::CriticalBox);
    user.press(Qt::Key_Return);
    user.beforeNext(height(withLf));
    prompts.messageBox(u"uno\n\ntres"_s, core::CriticalBox);
    QVERIFY(user.done());
    QCOMPARE(user.seen().first().text, u"uno\r\n\r\ntres"_s);
    QVERIFY(withLf > 0);
    QCOMPARE(withCrLf, withLf);
}

void tst_Prompts::boxStandsOverTheActiveWindow()
{
    QDialog form;
    form.show();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    BoxDriver user;
    user.press(Qt::Key_Return);
    core::ScreenPrompts prompts;
    prompts.messageBox(u"a"_s);
    QVERIFY(user.done());
    QCOMPARE(user.seen().at(0).parent.data(), &form);

    form.activateWindow(); // what a window manager does when the box has gone
    QVERIFY(QTest::qWaitForWindowActive(&form));
    user.press(Qt::Key_Return);
    prompts.inputBox(u"b"_s, {});
    QVERIFY(user.done());
    QCOMPARE(user.seen().at(1).parent.data(), &form);
}

void tst_Prompts::boxStandsOverTheModalFormWithoutAnActiveWindow()
{
    QDialog form;
    form.open();
    QApplication::setActiveWindow(nullptr); // the user is in another program, or a box has only just closed
    QVERIFY(QApplication::activeWindow() == nullptr);
    BoxDriver user;
    user.press(Qt::Key_Return);
    core::ScreenPrompts().messageBox(u"a"_s);
    QVERIFY(user.done());
    QCOMPARE(user.seen().first().parent.data(), &form);
}

void tst_Prompts::boxIsModal()
{
    BoxDriver user;
    bool modal = false;
    user.press(Qt::Key_Return);
    user.beforeNext([&] { modal = QApplication::activeModalWidget()->isModal(); });
    core::ScreenPrompts().messageBox(u"a"_s);
    QVERIFY(user.done());
    QVERIFY(modal);
}

void tst_Prompts::inputBoxGivesTheLine()
{
    BoxDriver user;
    user.type(u"24001IT14000002B"_s);
    QCOMPARE(core::ScreenPrompts().inputBox(u"Nuevo número"_s, u"Renumerar"_s, u"24001IT14000001A"_s),
             u"24001IT14000002B"_s);
    QVERIFY(user.done());
    const auto& seen = user.seen().first();
    QVERIFY(seen.input);
    QCOMPARE(seen.text, u"Nuevo número"_s);
    QCOMPARE(seen.title, u"Renumerar"_s);
    QCOMPARE(seen.proposal, u"24001IT14000001A"_s);
}

void tst_Prompts::inputBoxGivesTheProposal()
{
    BoxDriver user;
    user.press(Qt::Key_Return);
    QCOMPARE(core::ScreenPrompts().inputBox(u"p"_s, u"t"_s, u"propuesta"_s), u"propuesta"_s);
    QVERIFY(user.done());
}

void tst_Prompts::inputBoxCancelledIsEmpty_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Escape") << true;
    QTest::newRow("close button") << false;
}

void tst_Prompts::inputBoxCancelledIsEmpty()
{
    QFETCH(const bool, byKey);
    BoxDriver user;
    if (byKey) {
        user.type(u"x"_s, Qt::Key_Escape);
    } else {
        user.close();
    }
    QCOMPARE(core::ScreenPrompts().inputBox(u"p"_s, u"t"_s, u"propuesta"_s), QString());
    QVERIFY(user.done());
}

QTEST_MAIN(tst_Prompts)
#include "tst_Prompts.moc"
