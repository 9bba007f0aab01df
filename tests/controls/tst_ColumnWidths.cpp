#include "controls/HeaderMouse.h"
#include "controls/OpenForm.h"
#include "doubles/TestComponent.h"

#include <oVELDRA/RuntimeError.h>

#include <controls/ColumnWidths.h>
#include <controls/ListView.h>

#include <QFontMetricsF>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;

namespace {

/// A list of three columns in a window in which they have room to spare.
class Window final : public QWidget
{
public:
    Window() : list({{u"Uno"_s, 10}, {u"Dos"_s, 10}, {u"Tres"_s, 10}})
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(&list);
        list.append({u"a"_s, u"un texto que es bastante más largo que su columna"_s, u"c"_s});
        resize(600, 200);
        show();
        if (!QTest::qWaitForWindowActive(this)) {
            qFatal("the window did not become active");
        }
        list.setFocus();
    }

    [[nodiscard]] QHeaderView& header() const { return *list.header(); }
    [[nodiscard]] double characters(int column) const
    {
        return list.columnWidth(column) / QFontMetricsF(list.font()).horizontalAdvance(u'0');
    }

    ListView list;
};

/// Settings that can neither be read nor written.
class RefusingSettings final : public runtime::SettingsStore
{
public:
    [[nodiscard]] QString get(const QString&, const QString&, const QString&, const QString&) const override
    {
        throw RuntimeError(75);
    }
    void save(const QString&, const QString&, const QString&, const QString&) override
    {
        ++tries;
        throw RuntimeError(75);
    }
    int tries = 0;
};

class WideForm final : public Form
{
public:
    explicit WideForm(core::Component& component) : Form(component, u"frmAncha"_s, u"Ancha"_s)
    {
        list = addList(u"lstV"_s, u"Lista"_s, {{u"Uno"_s, 10}, {u"Dos"_s, 10}, {u"Tres"_s, 30}});
    }
    ListView* list;
};

/// What is kept of the form's list; "(none)" when nothing was ever saved.
QString kept(const TestComponent& component)
{
    return component.settings.get(u"oVELDRA"_s, u"frmAncha"_s, u"lstV"_s, u"(none)"_s);
}

} // namespace

class tst_ColumnWidths : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void designedWidthsAreNoText();
    void draggedColumnIsRemembered();
    void textGivesTheWidthsBack();
    void charactersOutliveAnotherFont();
    void lastColumnThatOnlyFillsUpIsNotRemembered();
    void lastColumnThatTheUserDraggedIs();
    void doubleClickFitsTheContents();
    void programsAndWindowsChangeNothing();
    void otherTextsAreIgnored_data();
    void otherTextsAreIgnored();
    void keysFitAndReset();

    void formKeepsWhatTheUserDragged();
    void untouchedFormWritesNothing();
    void resetIsKept();
    void settingsThatFailDisturbNobody();
};

void tst_ColumnWidths::designedWidthsAreNoText()
{
    Window window;
    QCOMPARE(window.list.widths().text(), QString());
    QVERIFY(!window.list.widths().isChanged());
    QVERIFY(qAbs(window.characters(0) - 12) < 0.2);
}

void tst_ColumnWidths::draggedColumnIsRemembered()
{
    Window window;
    const int before = window.list.columnWidth(1);
    drag(window.header(), 1, 40);
    QCOMPARE(window.list.columnWidth(1), before + 40);
    QVERIFY(window.list.widths().isChanged());
    const QStringList parts = window.list.widths().text().split(u';');
    QCOMPARE(parts.size(), 3);
    QCOMPARE(parts.at(0), QString());
    QVERIFY(qAbs(parts.at(1).toDouble() - window.characters(1)) < 0.06);
    QCOMPARE(parts.at(2), QString());
}

void tst_ColumnWidths::textGivesTheWidthsBack()
{
    Window first;
    drag(first.header(), 0, 35);
    Window second;
    second.list.widths().setText(first.list.widths().text());
    QVERIFY(qAbs(second.list.columnWidth(0) - first.list.columnWidth(0)) <= 1);
    QCOMPARE(second.list.columnWidth(1), Window().list.columnWidth(1));
    QVERIFY(!second.list.widths().isChanged());
    QCOMPARE(second.list.widths().text(), first.list.widths().text());
}

void tst_ColumnWidths::charactersOutliveAnotherFont()
{
    Window window;
    window.list.widths().setText(u"20;;"_s);
    const int narrow = window.list.columnWidth(0);
    const QFont before = QApplication::font();
    QFont big = before;
    big.setPointSizeF(before.pointSizeF() * 2);
    QApplication::setFont(big);
    {
        Window large;
        large.list.widths().setText(u"20;;"_s);
        QVERIFY(qAbs(large.characters(0) - 20) < 0.1);
        QVERIFY(large.list.columnWidth(0) > narrow * 3 / 2);
    }
    QApplication::setFont(before);
}

void tst_ColumnWidths::lastColumnThatOnlyFillsUpIsNotRemembered()
{
    Window window;
    const int before = window.list.columnWidth(2);
    drag(window.header(), 0, -30);
    window.resize(700, 200);
    QTRY_VERIFY(window.list.columnWidth(2) > before); // it has filled up the window
    QCOMPARE(window.list.widths().text().section(u';', 2), QString());
    QVERIFY(!window.list.widths().text().section(u';', 0, 0).isEmpty());
}

void tst_ColumnWidths::lastColumnThatTheUserDraggedIs()
{
    Window window;
    window.list.setMinimumWidth(100);
    window.layout()->activate();
    window.resize(200, 200); // narrower than the columns: the last one's edge is there to be taken
    QTRY_VERIFY(window.list.horizontalScrollBar()->maximum() > 0);
    window.list.horizontalScrollBar()->setValue(window.list.horizontalScrollBar()->maximum());
    drag(window.header(), 2, 30);
    const QString text = window.list.widths().text();
    QVERIFY2(text.startsWith(u";;") && text.size() > 2, qPrintable(text));
    QVERIFY(qAbs(text.mid(2).toDouble() - window.characters(2)) < 0.06);
}

void tst_ColumnWidths::doubleClickFitsTheContents()
{
    Window window;
    const int before = window.list.columnWidth(1);
    const QPoint edge = edgeOf(window.header(), 1);
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick,
                                    QEvent::MouseButtonRelease}) {
        sendMouse(window.header(), type, edge);
    }
    QVERIFY(window.list.columnWidth(1) > before);
    QVERIFY(!window.list.widths().text().section(u';', 1, 1).isEmpty());
}

void tst_ColumnWidths::programsAndWindowsChangeNothing()
{
    Window window;
    window.header().resizeSection(0, 200);
    window.resize(900, 300);
    window.list.append({u"x"_s});
    QCOMPARE(window.list.widths().text(), QString());
    QVERIFY(!window.list.widths().isChanged());
}

void tst_ColumnWidths::otherTextsAreIgnored_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QString();
    QTest::newRow("too few") << u"20;20"_s;
    QTest::newRow("too many") << u"20;20;20;20"_s;
    QTest::newRow("no numbers") << u"ancho;20;20"_s;
    QTest::newRow("a number and more") << u"20px;;"_s;
    QTest::newRow("decimal comma") << u"20,5;;"_s;
    QTest::newRow("no width at all") << u"0;20;20"_s;
    QTest::newRow("negative") << u"-20;20;20"_s;
    QTest::newRow("wider than any screen") << u"20;100000;20"_s;
    QTest::newRow("endless") << u"inf;20;20"_s;
    QTest::newRow("not a number") << u"nan;20;20"_s;
}

void tst_ColumnWidths::otherTextsAreIgnored()
{
    QFETCH(const QString, text);
    Window window;
    const int before = window.list.columnWidth(1);
    window.list.widths().setText(text);
    QVERIFY(qAbs(window.characters(0) - 12) < 0.2);
    QCOMPARE(window.list.columnWidth(1), before);
    QCOMPARE(window.list.widths().text(), QString());
}

void tst_ColumnWidths::keysFitAndReset()
{
    Window window;
    const int designed = window.list.columnWidth(1);
    QTest::keyClick(&window.list, Qt::Key_Plus, Qt::ControlModifier);
    QVERIFY(window.list.columnWidth(1) > designed);
    QVERIFY(!window.list.widths().text().isEmpty());
    QTest::keyClick(&window.list, Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(window.list.columnWidth(1), designed);
    QCOMPARE(window.list.widths().text(), QString());
    QVERIFY(window.list.widths().isChanged());
    QTest::keyClick(&window.list, Qt::Key_Plus); // not without Ctrl: that is typing
    QCOMPARE(window.list.columnWidth(1), designed);
}

void tst_ColumnWidths::formKeepsWhatTheUserDragged()
{
    TestComponent component;
    int dragged = 0;
    {
        WideForm form(component);
        QVERIFY(whileOpen(form, [&] {
            drag(*form.list->header(), 0, 50);
            dragged = form.list->columnWidth(0);
            QCOMPARE(kept(component), u"(none)"_s); // with the closing
        }));
        QVERIFY(kept(component) != u"(none)"_s);
        QVERIFY(whileOpen(form, [&] { QCOMPARE(form.list->columnWidth(0), dragged); }));
    }
    WideForm next(component);
    QVERIFY(whileOpen(next, [&] { QVERIFY(qAbs(next.list->columnWidth(0) - dragged) <= 1); }));
}

void tst_ColumnWidths::untouchedFormWritesNothing()
{
    TestComponent component;
    WideForm form(component);
    QVERIFY(whileOpen(form, [&] { form.resize(form.size() + QSize(100, 0)); }));
    QCOMPARE(kept(component), u"(none)"_s);

    component.settings.save(u"oVELDRA"_s, u"frmAncha"_s, u"lstV"_s, u"basura"_s);
    WideForm other(component);
    QVERIFY(whileOpen(other, [] {}));
    QCOMPARE(kept(component), u"basura"_s);
}

void tst_ColumnWidths::resetIsKept()
{
    TestComponent component;
    component.settings.save(u"oVELDRA"_s, u"frmAncha"_s, u"lstV"_s, u"33;;"_s);
    WideForm form(component);
    QVERIFY(whileOpen(form, [&] {
        QVERIFY(form.list->columnWidth(0) > 2 * form.list->columnWidth(1));
        form.list->setFocus();
        pressKey(Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(form.list->columnWidth(0), form.list->columnWidth(1));
    }));
    QCOMPARE(kept(component), QString());
}

void tst_ColumnWidths::settingsThatFailDisturbNobody()
{
    RecordedPrompts prompts;
    RefusingSettings settings;
    const FixedClock clock;
    core::Component component(prompts, settings, clock);
    WideForm form(component);
    QVERIFY(whileOpen(form, [&] { drag(*form.list->header(), 0, 50); }));
    QCOMPARE(settings.tries, 1);
    QVERIFY(whileOpen(form, [] {})); // tried again
    QCOMPARE(settings.tries, 2);
    QVERIFY(prompts.boxes().isEmpty());
}

QTEST_MAIN(tst_ColumnWidths)
#include "tst_ColumnWidths.moc"
