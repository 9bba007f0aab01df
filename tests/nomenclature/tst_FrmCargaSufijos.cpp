#include "HoverOver.h"
#include "controls/OpenForm.h"
#include "doubles/TestComponent.h"

#include <nomenclature/FrmCargaSufijos.h>

#include <QGroupBox>
#include <QListView>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;
using nomenclature::FrmCargaSufijos;
using nomenclature::hoverOver;

namespace {

const QStringList lines{u"AB00 - Ninguna opción"_s, u"AB01 - UNO"_s, u"AB02 - DOS"_s, u"AB11 - ONCE"_s};

struct Fixture
{
    Fixture() { form.setOptions(lines); }

    [[nodiscard]] QListView& list() const { return *form.findChild<QListView*>(u"LstOpcion"_s); }
    [[nodiscard]] QString selected() const { return list().currentIndex().data().toString(); }
    [[nodiscard]] const QString& chosen() const { return component.state.chosenSuffix; }

    TestComponent component;
    FrmCargaSufijos form{component};
};

} // namespace

class tst_FrmCargaSufijos : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void controlsHaveTheirNamesAndTexts();
    void frameShowsWithTheOptions();
    void firstLineIsSelectedOnActivation();
    void enterHandsTheLineBackAndCloses_data();
    void enterHandsTheLineBackAndCloses();
    void doubleClickHandsTheLineBackAndCloses();
    void escapeClosesWithoutAChoice();
    void typingFindsByPrefix();
    void enterInAnEmptyListDoesNothing();
    void everyOpeningStartsAtItsFirstLine();
    void longLinesShowAsToolTipsAndOnSeveralRows();
};

void tst_FrmCargaSufijos::controlsHaveTheirNamesAndTexts()
{
    const Fixture fixture;
    QCOMPARE(fixture.form.objectName(), u"FrmCargaSufijos"_s);
    QCOMPARE(fixture.form.windowTitle(), u"Carga de Sufijos"_s);
    const auto* frame = fixture.form.findChild<QGroupBox*>(u"FrmList"_s);
    QVERIFY(frame != nullptr);
    QCOMPARE(frame->title(), u"Selecione una Opción"_s);
    QVERIFY(frame->isAncestorOf(&fixture.list()));
    QCOMPARE(fixture.list().accessibleName(), frame->title());
    QVERIFY(fixture.list().editTriggers() == QListView::NoEditTriggers);
}

void tst_FrmCargaSufijos::frameShowsWithTheOptions()
{
    TestComponent component;
    FrmCargaSufijos form(component);
    const auto* frame = form.findChild<QGroupBox*>(u"FrmList"_s);
    QVERIFY(frame->isHidden());
    form.setOptions(lines);
    QVERIFY(!frame->isHidden());
    QVERIFY(whileOpen(form, [&] { QVERIFY(frame->isVisible()); }));
}

void tst_FrmCargaSufijos::firstLineIsSelectedOnActivation()
{
    Fixture fixture;
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QVERIFY(fixture.list().hasFocus());
        QCOMPARE(fixture.selected(), lines.constFirst());
        QVERIFY(fixture.list().selectionModel()->isSelected(fixture.list().currentIndex()));
        QCOMPARE(fixture.list().model()->rowCount(), lines.size());
    }));
}

void tst_FrmCargaSufijos::enterHandsTheLineBackAndCloses_data()
{
    QTest::addColumn<int>("downs");
    QTest::addColumn<int>("enter");
    QTest::newRow("first") << 0 << static_cast<int>(Qt::Key_Return);
    QTest::newRow("second") << 1 << static_cast<int>(Qt::Key_Return);
    QTest::newRow("last, with the keypad") << 3 << static_cast<int>(Qt::Key_Enter);
}

void tst_FrmCargaSufijos::enterHandsTheLineBackAndCloses()
{
    QFETCH(const int, downs);
    QFETCH(const int, enter);
    Fixture fixture;
    QVERIFY(!whileOpen(fixture.form, [=] {
        for (int i = 0; i < downs; ++i) {
            pressKey(Qt::Key_Down);
        }
        pressKey(static_cast<Qt::Key>(enter));
    }));
    QCOMPARE(fixture.chosen(), lines.at(downs));
}

void tst_FrmCargaSufijos::doubleClickHandsTheLineBackAndCloses()
{
    Fixture fixture;
    QVERIFY(!whileOpen(fixture.form, [&fixture] {
        const QPoint at = fixture.list().visualRect(fixture.list().model()->index(2, 0)).center();
        QTest::mouseClick(fixture.list().viewport(), Qt::LeftButton, {}, at);
        QVERIFY(fixture.form.isVisible());
        QTest::mouseDClick(fixture.list().viewport(), Qt::LeftButton, {}, at);
    }));
    QCOMPARE(fixture.chosen(), lines.at(2));
}

void tst_FrmCargaSufijos::escapeClosesWithoutAChoice()
{
    Fixture fixture;
    QVERIFY(!whileOpen(fixture.form, [] {
        pressKey(Qt::Key_Down);
        pressKey(Qt::Key_Escape);
    }));
    QCOMPARE(fixture.chosen(), QString());
}

void tst_FrmCargaSufijos::typingFindsByPrefix()
{
    Fixture fixture;
    QVERIFY(!whileOpen(fixture.form, [&fixture] {
        typeText(u"ab1"_s);
        QCOMPARE(fixture.selected(), u"AB11 - ONCE"_s);
        pressKey(Qt::Key_Return);
    }));
    QCOMPARE(fixture.chosen(), u"AB11 - ONCE"_s);
}

void tst_FrmCargaSufijos::enterInAnEmptyListDoesNothing()
{
    Fixture fixture;
    fixture.form.setOptions({});
    QVERIFY(whileOpen(fixture.form, [] { pressKey(Qt::Key_Return); }));
    QCOMPARE(fixture.chosen(), QString());
}

void tst_FrmCargaSufijos::everyOpeningStartsAtItsFirstLine()
{
    Fixture fixture;
    QVERIFY(whileOpen(fixture.form, [] { pressKey(Qt::Key_End); }));
    QVERIFY(whileOpen(fixture.form, [&fixture] { QCOMPARE(fixture.selected(), lines.constFirst()); }));
    fixture.form.setOptions(lines.mid(2));
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.selected(), lines.at(2));
        QCOMPARE(fixture.list().model()->rowCount(), 2);
    }));
}

void tst_FrmCargaSufijos::longLinesShowAsToolTipsAndOnSeveralRows()
{
    const QString line = u"AB01 - "_s + u"palabra "_s.repeated(40);
    Fixture fixture;
    fixture.form.setOptions({line, u"AB02 - DOS"_s});
    QVERIFY(whileOpen(fixture.form, [&] {
        const QRect first = fixture.list().visualRect(fixture.list().model()->index(0, 0));
        const QRect second = fixture.list().visualRect(fixture.list().model()->index(1, 0));
        QVERIFY(first.height() >= 3 * second.height());
        hoverOver(fixture.list(), 0);
        QTRY_COMPARE(fixture.list().toolTip(), line);
    }));
}

QTEST_MAIN(tst_FrmCargaSufijos)
#include "tst_FrmCargaSufijos.moc"
