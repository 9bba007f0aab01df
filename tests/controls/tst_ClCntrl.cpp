#include "doubles/RecordedPrompts.h"
#include "doubles/ThrownError.h"

#include <controls/ClCntrl.h>
#include <controls/OleColor.h>

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QStringListModel>
#include <QTest>
#include <QTextDocument>
#include <QTextEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::doubles;
using controls::ClCntrl;
using controls::colorFromOle;

namespace {

/// A screen with three text boxes, of which the middle one is bound; the focus is on the first.
class EntryScreen
{
public:
    explicit EntryScreen(const QString& tag = {})
    {
        auto* layout = new QVBoxLayout(&window);
        for (QLineEdit* box : {&before, &bound, &after}) {
            layout->addWidget(box);
        }
        bound.setProperty("Tag", tag);
        bound.setText(u"texto"_s);
        binder.sLinkText(&bound);
        window.show();
        before.setFocus();
    }

    [[nodiscard]] bool isReady() { return QTest::qWaitForWindowActive(&window) && before.hasFocus(); }
    [[nodiscard]] QColor color() const { return bound.palette().color(QPalette::Base); }

    RecordedPrompts prompts;
    QWidget window;
    QLineEdit before;
    QLineEdit bound;
    QLineEdit after;
    ClCntrl binder{prompts};
};

void release(QWidget& box, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyRelease(&box, key, modifiers);
}

/// Moves the mouse to a point of a list's client area, as the window system tells it.
void moveOver(const QListView& list, QPoint point)
{
    for (const QPoint next : {QPoint(0, 0), point}) { // a pointer that is already there does not move
        QTest::mouseMove(list.windowHandle(), list.viewport()->mapTo(&list, next));
    }
}

} // namespace

class tst_ClCntrl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void tagChoosesStyleOnFocusAndLeaving_data();
    void tagChoosesStyleOnFocusAndLeaving();
    void tagBBIsLeftAloneHoweverItIsEntered_data();
    void tagBBIsLeftAloneHoweverItIsEntered();
    void tagIsReadAnewAtEachFocus();
    void boundBoxStartsWhiteWithDarkTextUnderADarkTheme();

    void enterMovesToNextControlAndInsertsNothing_data();
    void enterMovesToNextControlAndInsertsNothing();
    void ctrlEnterIsNotTheBinders();
    void downMovesToNextControlWithoutWaiting();
    void upMovesToPreviousControlWithoutWaiting();
    void arrowsGoOnFromWhateverHasTheFocus();

    void keypadDecimalTypesCommaUnderCommaLocale();
    void mainKeyboardPeriodStaysUnderCommaLocale();
    void keypadDecimalTypesPeriodUnderPeriodLocale();
    void keypadCommaBecomesPeriodUnderPeriodLocale();
    void keypadCommaStaysUnderCommaLocale();
    void mainPeriodWhileKeypadKeyIsDownIsReplaced();
    void leavingForgetsTheKeypadKey();
    void keypadDecimalDoesNotWriteIntoReadOnlyBox();
    void keypadDecimalReplacesSelection();

    void separatorIsReadAgainAtEachCall();
    void separatorOfTheLastReadingIsTyped();
    void unknownSeparatorIsToldAndEmpty();
    void withoutSeparatorKeypadDecimalStaysPeriod();

    void rebindingLeavesTheOldBoxAlone();
    void unbinding();
    void deadControlsAreForgotten();
    void boxMayDieWithTheFocus();

    void listSearchSelectsFirstMatch();
    void listSearchWithoutMatchSelectsNothing_data();
    void listSearchWithoutMatchSelectsNothing();
    void comboSearch();
    void searchWithoutControlIsAnError();

    void toolTipIsTheItemUnderThePackedPoint();
    void toolTipIsEmptyWhereThePackingLeavesTheList();
    void toolTipShowsMarkupAsText();
    void toolTipOfEmptyListIsEmpty();

    void vaciarTxtEmptiesTextBoxesOnly();
};

void tst_ClCntrl::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_ClCntrl::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

void tst_ClCntrl::tagChoosesStyleOnFocusAndLeaving_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<quint32>("onFocus");
    QTest::addColumn<quint32>("onLeaving");
    QTest::newRow("empty") << QString() << 12648384U << 16777215U;
    QTest::newRow("any other") << u"x"_s << 12648384U << 16777215U;
    QTest::newRow("#F6 alone") << u"#F6"_s << 14083326U << 16777215U;
    QTest::newRow("ends with #F6") << u"dato#F6"_s << 14083326U << 16777215U;
    QTest::newRow("#F6 elsewhere") << u"#F6x"_s << 12648384U << 16777215U;
    QTest::newRow("lower case #f6 is another") << u"#f6"_s << 12648384U << 16777215U;
    QTest::newRow("lower case bb is another") << u"bb"_s << 12648384U << 16777215U;
    QTest::newRow("BB and #F6: orange stays") << u"BB#F6"_s << 14083326U << 14083326U;
}

void tst_ClCntrl::tagChoosesStyleOnFocusAndLeaving()
{
    QFETCH(const QString, tag);
    QFETCH(const quint32, onFocus);
    QFETCH(const quint32, onLeaving);
    EntryScreen screen(tag);
    QVERIFY(screen.isReady());

    screen.bound.setFocus();
    QCOMPARE(screen.color(), colorFromOle(onFocus));
    QCOMPARE(screen.bound.selectionStart(), 0);
    QCOMPARE(screen.bound.selectedText(), u"texto"_s);

    screen.after.setFocus();
    QCOMPARE(screen.color(), colorFromOle(onLeaving));
    QVERIFY(screen.bound.palette().color(QPalette::Text).lightness() < 64);
}

void tst_ClCntrl::tagBBIsLeftAloneHoweverItIsEntered_data()
{
    QTest::addColumn<bool>("withTab");
    QTest::newRow("Tab") << true;
    QTest::newRow("program") << false;
}

void tst_ClCntrl::tagBBIsLeftAloneHoweverItIsEntered()
{
    QFETCH(const bool, withTab);
    EntryScreen screen(u"BBx"_s);
    QPalette own = screen.bound.palette();
    own.setColor(QPalette::Base, Qt::cyan);
    screen.bound.setPalette(own);
    screen.bound.setCursorPosition(2);
    QVERIFY(screen.isReady());

    if (withTab) {
        QTest::keyClick(&screen.before, Qt::Key_Tab);
    } else {
        screen.bound.setFocus();
    }
    QVERIFY(screen.bound.hasFocus());
    QCOMPARE(screen.color(), QColor(Qt::cyan));
    QVERIFY(!screen.bound.hasSelectedText());
    QCOMPARE(screen.bound.cursorPosition(), 2);

    QTest::keyClick(&screen.bound, Qt::Key_Return); // the keys are as everywhere
    QVERIFY(screen.after.hasFocus());
    QCOMPARE(screen.color(), QColor(Qt::cyan));
}

void tst_ClCntrl::tagIsReadAnewAtEachFocus()
{
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.bound.setProperty("Tag", u"#F6"_s);
    screen.bound.setFocus();
    QCOMPARE(screen.color(), colorFromOle(14083326));
}

void tst_ClCntrl::boundBoxStartsWhiteWithDarkTextUnderADarkTheme()
{
    RecordedPrompts prompts;
    QPalette dark;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    QLineEdit box;
    box.setPalette(dark);
    QLineEdit ownColors;
    ownColors.setPalette(dark);
    ownColors.setProperty("Tag", u"BB"_s);
    ClCntrl binder(prompts);
    ClCntrl ownBinder(prompts);
    binder.sLinkText(&box);
    ownBinder.sLinkText(&ownColors);
    QCOMPARE(box.palette().color(QPalette::Base), QColor(Qt::white));
    QVERIFY(box.palette().color(QPalette::Text).lightness() < 64);
    QCOMPARE(ownColors.palette().color(QPalette::Base), QColor(Qt::black));
}

void tst_ClCntrl::enterMovesToNextControlAndInsertsNothing_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("Enter") << Qt::Key_Return << Qt::KeyboardModifiers(Qt::NoModifier);
    QTest::newRow("Enter of the keypad") << Qt::Key_Enter << Qt::KeyboardModifiers(Qt::KeypadModifier);
    QTest::newRow("Shift+Enter") << Qt::Key_Return << Qt::KeyboardModifiers(Qt::ShiftModifier);
}

void tst_ClCntrl::enterMovesToNextControlAndInsertsNothing()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    int returns = 0;
    QObject::connect(&screen.bound, &QLineEdit::returnPressed, &screen.bound, [&returns] { ++returns; });
    QTest::keyClick(&screen.bound, key, modifiers);
    QVERIFY(screen.after.hasFocus()); // at once: it waits for the Tab
    QCOMPARE(screen.bound.text(), u"texto"_s);
    QCOMPARE(returns, 0);
}

void tst_ClCntrl::ctrlEnterIsNotTheBinders()
{
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    QTest::keyClick(&screen.bound, Qt::Key_Return, Qt::ControlModifier);
    QVERIFY(screen.bound.hasFocus());
}

void tst_ClCntrl::downMovesToNextControlWithoutWaiting()
{
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    QTest::keyClick(&screen.bound, Qt::Key_Down);
    QVERIFY(screen.bound.hasFocus());
    QTRY_VERIFY(screen.after.hasFocus());
    QCOMPARE(screen.bound.text(), u"texto"_s);
}

void tst_ClCntrl::upMovesToPreviousControlWithoutWaiting()
{
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    QTest::keyClick(&screen.bound, Qt::Key_Up);
    QVERIFY(screen.bound.hasFocus());
    QTRY_VERIFY(screen.before.hasFocus());
}

void tst_ClCntrl::arrowsGoOnFromWhateverHasTheFocus()
{
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    QTest::keyClick(&screen.bound, Qt::Key_Down);
    QTest::keyClick(&screen.bound, Qt::Key_Return);
    QVERIFY(screen.after.hasFocus());
    QTRY_VERIFY(screen.before.hasFocus()); // the waiting Tab, typed into the last box
}

void tst_ClCntrl::keypadDecimalTypesCommaUnderCommaLocale()
{
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    QTest::keyClicks(&screen.bound, u"1"_s);
    QTest::keyClick(&screen.bound, Qt::Key_Period, Qt::KeypadModifier);
    QTest::keyClicks(&screen.bound, u"5"_s);
    QCOMPARE(screen.bound.text(), u"1,5"_s);
}

void tst_ClCntrl::mainKeyboardPeriodStaysUnderCommaLocale()
{
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    QTest::keyClicks(&screen.bound, u"1.5"_s);
    QCOMPARE(screen.bound.text(), u"1.5"_s);
    QTest::keyClick(&screen.bound, Qt::Key_Period, Qt::KeypadModifier);
    QTest::keyClicks(&screen.bound, u"."_s); // after the release, too
    QCOMPARE(screen.bound.text(), u"1.5,."_s);
}

void tst_ClCntrl::keypadDecimalTypesPeriodUnderPeriodLocale()
{
    QLocale::setDefault(QLocale(u"en_US"_s));
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    QTest::keyClick(&screen.bound, Qt::Key_Period, Qt::KeypadModifier);
    QCOMPARE(screen.bound.text(), u"."_s);
}

void tst_ClCntrl::keypadCommaBecomesPeriodUnderPeriodLocale()
{
    QLocale::setDefault(QLocale(u"en_US"_s));
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    QTest::keyClick(&screen.bound, Qt::Key_Comma, Qt::KeypadModifier);
    QTest::keyClick(&screen.bound, Qt::Key_Comma);
    QCOMPARE(screen.bound.text(), u".,"_s);
}

void tst_ClCntrl::keypadCommaStaysUnderCommaLocale()
{
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    QTest::keyClick(&screen.bound, Qt::Key_Comma, Qt::KeypadModifier);
    QCOMPARE(screen.bound.text(), u","_s);
}

void tst_ClCntrl::mainPeriodWhileKeypadKeyIsDownIsReplaced()
{
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    QTest::keyPress(&screen.bound, Qt::Key_Comma, Qt::KeypadModifier);
    QTest::keyClick(&screen.bound, Qt::Key_Period);
    release(screen.bound, Qt::Key_Comma, Qt::KeypadModifier);
    QTest::keyClick(&screen.bound, Qt::Key_Period);
    QCOMPARE(screen.bound.text(), u",,."_s);
}

void tst_ClCntrl::leavingForgetsTheKeypadKey()
{
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    QTest::keyPress(&screen.bound, Qt::Key_Period, Qt::KeypadModifier);
    screen.after.setFocus();
    release(screen.after, Qt::Key_Period, Qt::KeypadModifier);
    screen.bound.setFocus();
    QTest::keyClick(&screen.bound, Qt::Key_Period);
    QCOMPARE(screen.bound.text(), u"."_s);
}

void tst_ClCntrl::keypadDecimalDoesNotWriteIntoReadOnlyBox()
{
    EntryScreen screen;
    screen.bound.setReadOnly(true);
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    QTest::keyClick(&screen.bound, Qt::Key_Period, Qt::KeypadModifier);
    QCOMPARE(screen.bound.text(), u"texto"_s);
}

void tst_ClCntrl::keypadDecimalReplacesSelection()
{
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    screen.bound.setSelection(1, 3);
    QTest::keyClick(&screen.bound, Qt::Key_Period, Qt::KeypadModifier);
    QCOMPARE(screen.bound.text(), u"t,o"_s);
}

void tst_ClCntrl::separatorIsReadAgainAtEachCall()
{
    RecordedPrompts prompts;
    ClCntrl binder(prompts);
    QCOMPARE(binder.Separador_Decimal(), u","_s);
    QLocale::setDefault(QLocale(u"en_US"_s));
    QCOMPARE(binder.Separador_Decimal(), u"."_s);
    QLocale::setDefault(QLocale(u"es_AR"_s));
    QCOMPARE(binder.Obtener_Sep_Decim(), u","_s);
    QVERIFY(prompts.boxes().isEmpty());
}

void tst_ClCntrl::separatorOfTheLastReadingIsTyped()
{
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    QLocale::setDefault(QLocale(u"en_US"_s));
    QTest::keyClick(&screen.bound, Qt::Key_Period, Qt::KeypadModifier);
    screen.binder.ObtenerDecimal();
    QTest::keyClick(&screen.bound, Qt::Key_Period, Qt::KeypadModifier);
    QCOMPARE(screen.bound.text(), u",."_s);
}

void tst_ClCntrl::unknownSeparatorIsToldAndEmpty()
{
    RecordedPrompts prompts;
    std::optional<QString> separator;
    ClCntrl binder(prompts, [&separator] { return separator; });
    const RecordedPrompts::Box told{u"No se puedo obtener la información"_s, core::PlainBox, {}};
    QCOMPARE(prompts.boxes(), QList{told});
    QCOMPARE(binder.Separador_Decimal(), QString());
    QCOMPARE(prompts.boxes(), (QList{told, told}));
    separator = u"."_s;
    QCOMPARE(binder.Separador_Decimal(), u"."_s);
    QCOMPARE(prompts.boxes().size(), 2);
}

void tst_ClCntrl::withoutSeparatorKeypadDecimalStaysPeriod()
{
    EntryScreen screen;
    ClCntrl binder(screen.prompts, [] { return std::optional<QString>(); });
    screen.binder.sLinkText(nullptr);
    binder.sLinkText(&screen.bound);
    QVERIFY(screen.isReady());
    screen.bound.setFocus();
    QTest::keyClick(&screen.bound, Qt::Key_Period, Qt::KeypadModifier);
    QCOMPARE(screen.bound.text(), u"."_s);
}

void tst_ClCntrl::rebindingLeavesTheOldBoxAlone()
{
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.binder.sLinkText(&screen.after);
    screen.bound.setFocus();
    QCOMPARE(screen.color(), colorFromOle(16777215));
    QTest::keyClick(&screen.bound, Qt::Key_Return);
    QVERIFY(screen.bound.hasFocus());
    screen.after.setFocus();
    QCOMPARE(screen.after.palette().color(QPalette::Base), colorFromOle(12648384));
}

void tst_ClCntrl::unbinding()
{
    EntryScreen screen;
    QVERIFY(screen.isReady());
    screen.binder.sLinkText(nullptr);
    screen.bound.setFocus();
    QTest::keyClick(&screen.bound, Qt::Key_Return);
    QVERIFY(screen.bound.hasFocus());
}

void tst_ClCntrl::deadControlsAreForgotten()
{
    RecordedPrompts prompts;
    ClCntrl binder(prompts);
    {
        QLineEdit box;
        QListView list;
        QComboBox combo;
        binder.sLinkText(&box);
        binder.sLinkListBox(&list);
        binder.sLinkCBoBox(&combo);
    }
    QCOMPARE(numberThrownBy([&] { binder.LstBuscarStr(u"x"_s); }), 91);
    QCOMPARE(numberThrownBy([&] { binder.BuscarCBO(u"x"_s); }), 91);
    QLineEdit next;
    binder.sLinkText(&next);
    QCOMPARE(next.palette().color(QPalette::Base), QColor(Qt::white));
}

void tst_ClCntrl::boxMayDieWithTheFocus()
{
    RecordedPrompts prompts;
    ClCntrl binder(prompts);
    QWidget window;
    auto* box = new QLineEdit(&window);
    binder.sLinkText(box);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    box->setFocus();
    QVERIFY(box->hasFocus());
    delete box;
    QLineEdit next;
    binder.sLinkText(&next);
    QCOMPARE(next.palette().color(QPalette::Base), QColor(Qt::white));
}

void tst_ClCntrl::listSearchSelectsFirstMatch()
{
    RecordedPrompts prompts;
    QStringListModel model({u"Alambre"_s, u"Bulón"_s, u"bulones"_s});
    QListView list;
    list.setModel(&model);
    ClCntrl binder(prompts);
    binder.sLinkListBox(&list);
    binder.LstBuscarStr(u"bul"_s);
    QCOMPARE(list.currentIndex().row(), 1);
    QVERIFY(list.selectionModel()->isSelected(model.index(1)));
    binder.LstBuscarStr(u"bul"_s); // always from the first item
    QCOMPARE(list.currentIndex().row(), 1);
}

void tst_ClCntrl::listSearchWithoutMatchSelectsNothing_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("no match") << u"Zinc"_s;
    QTest::newRow("empty text") << QString();
}

void tst_ClCntrl::listSearchWithoutMatchSelectsNothing()
{
    QFETCH(const QString, text);
    RecordedPrompts prompts;
    QStringListModel model({u"Alambre"_s, u"Bulón"_s});
    QListView list;
    list.setModel(&model);
    list.setCurrentIndex(model.index(1));
    ClCntrl binder(prompts);
    binder.sLinkListBox(&list);
    binder.LstBuscarStr(text);
    QVERIFY(!list.currentIndex().isValid());
    QVERIFY(!list.selectionModel()->hasSelection());
}

void tst_ClCntrl::comboSearch()
{
    RecordedPrompts prompts;
    QComboBox combo;
    combo.addItems({u"Alambre"_s, u"Bulón"_s});
    ClCntrl binder(prompts);
    binder.sLinkCBoBox(&combo);
    binder.BuscarCBO(u"BU"_s);
    QCOMPARE(combo.currentIndex(), 1);
    binder.BuscarCBO(u"Zinc"_s);
    QCOMPARE(combo.currentIndex(), -1);
}

void tst_ClCntrl::searchWithoutControlIsAnError()
{
    RecordedPrompts prompts;
    ClCntrl binder(prompts);
    QCOMPARE(numberThrownBy([&] { binder.LstBuscarStr(u"x"_s); }), 91);
    QCOMPARE(numberThrownBy([&] { binder.BuscarCBO(u"x"_s); }), 91);
}

void tst_ClCntrl::toolTipIsTheItemUnderThePackedPoint()
{
    RecordedPrompts prompts;
    QStringListModel model({u"Alambre de acero, rollo de 200 metros"_s, u"Bulón"_s, u"Clavo"_s});
    QListView list;
    list.setModel(&model);
    list.resize(300, 200);
    ClCntrl binder(prompts);
    binder.sLinkListBox(&list);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));

    const QPoint second = list.visualRect(model.index(1)).center();
    moveOver(list, QPoint(second.y() + 40, second.y()));
    QTRY_COMPARE(list.toolTip(), u"Bulón"_s);
    moveOver(list, QPoint(150, 2));
    QTRY_COMPARE(list.toolTip(), u"Alambre de acero, rollo de 200 metros"_s);
}

void tst_ClCntrl::toolTipIsEmptyWhereThePackingLeavesTheList()
{
    RecordedPrompts prompts;
    QStringListModel model({u"Alambre"_s, u"Bulón"_s, u"Clavo"_s});
    QListView list;
    list.setModel(&model);
    list.resize(300, 200);
    ClCntrl binder(prompts);
    binder.sLinkListBox(&list);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));

    // y * 65535 + x is y * 65536 + (x - y): left of the diagonal the unpacked x is negative.
    const QPoint third = list.visualRect(model.index(2)).center();
    moveOver(list, QPoint(third.y(), third.y()));
    QTRY_COMPARE(list.toolTip(), u"Clavo"_s);
    moveOver(list, QPoint(third.y() - 1, third.y()));
    QTRY_COMPARE(list.toolTip(), QString());
}

void tst_ClCntrl::toolTipShowsMarkupAsText()
{
    RecordedPrompts prompts;
    QStringListModel model({u"<b>negrita</b> & <i>cursiva</i>"_s});
    QListView list;
    list.setModel(&model);
    list.resize(300, 200);
    ClCntrl binder(prompts);
    binder.sLinkListBox(&list);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    moveOver(list, QPoint(50, 2));
    QTRY_VERIFY(!list.toolTip().isEmpty());
    QTextDocument shown;
    shown.setHtml(list.toolTip());
    QCOMPARE(shown.toPlainText(), model.stringList().constFirst());
}

void tst_ClCntrl::toolTipOfEmptyListIsEmpty()
{
    RecordedPrompts prompts;
    QStringListModel model;
    QListView list;
    list.setModel(&model);
    list.setToolTip(u"de antes"_s);
    ClCntrl binder(prompts);
    binder.sLinkListBox(&list);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    moveOver(list, QPoint(50, 2));
    QTRY_COMPARE(list.toolTip(), QString());
}

void tst_ClCntrl::vaciarTxtEmptiesTextBoxesOnly()
{
    RecordedPrompts prompts;
    QWidget screen;
    auto* frame = new QFrame(&screen);
    auto* line = new QLineEdit(u"uno"_s, &screen);
    auto* inFrame = new QLineEdit(u"dos"_s, frame);
    auto* plain = new QPlainTextEdit(u"tres"_s, &screen);
    auto* rich = new QTextEdit(u"cuatro"_s, &screen);
    auto* combo = new QComboBox(&screen);
    combo->setEditable(true);
    combo->setEditText(u"cinco"_s);
    auto* spin = new QSpinBox(&screen);
    spin->setValue(6);
    auto* label = new QLabel(u"siete"_s, &screen);
    auto* otherScreen = new QDialog(&screen);
    auto* elsewhere = new QLineEdit(u"ocho"_s, otherScreen);

    ClCntrl(prompts).VaciarTxt(screen);
    QCOMPARE(line->text(), QString());
    QCOMPARE(inFrame->text(), QString());
    QCOMPARE(plain->toPlainText(), QString());
    QCOMPARE(rich->toPlainText(), QString());
    QCOMPARE(combo->currentText(), u"cinco"_s);
    QCOMPARE(spin->text(), u"6"_s);
    QCOMPARE(label->text(), u"siete"_s);
    QCOMPARE(elsewhere->text(), u"ocho"_s);
}

QTEST_MAIN(tst_ClCntrl)
#include "tst_ClCntrl.moc"
