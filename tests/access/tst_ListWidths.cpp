#include "EveryScreen.h"
#include "controls/HeaderMouse.h"
#include "controls/OpenForm.h"

#include <QLocale>
#include <QTest>
#include <QTreeView>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::access;

/// The lists of all screens keep the widths that the user gave to their columns.
class tst_ListWidths : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void nextScreenHasThem_data();
    void nextScreenHasThem();
    void untouchedOnesAreNotStored_data() { nextScreenHasThem_data(); }
    void untouchedOnesAreNotStored();
};

void tst_ListWidths::nextScreenHasThem_data()
{
    QTest::addColumn<QString>("screen");
    for (const ScreenCase& screen : everyScreen()) {
        if (!screen.list.isEmpty() && screen.stops.last().role == QAccessible::Tree) {
            QTest::newRow(qPrintable(screen.name)) << screen.name;
        }
    }
}

void tst_ListWidths::nextScreenHasThem()
{
    QFETCH(const QString, screen);
    QLocale::setDefault(QLocale(u"es_AR"_s)); // its decimal comma must not get into the text
    const ScreenCase& tested = screenCase(screen);
    ScreenUnderTest first(tested.make);
    int given = 0;
    first.whileOpen([&] {
        auto& list = static_cast<QTreeView&>(first.control(tested.list));
        controls::drag(*list.header(), 0, 37);
        given = list.columnWidth(0);
    });
    const QString stored = first.component.settings.get(u"oVELDRA"_s, tested.name, tested.list);
    QVERIFY2(!stored.section(u';', 0, 0).isEmpty() && !stored.contains(u','), qPrintable(stored));

    QLocale::setDefault(QLocale(u"en_US"_s));
    const auto next = tested.make(first);
    QVERIFY(controls::whileOpen(*next, [&] {
        const auto* list = next->findChild<QTreeView*>(tested.list);
        QVERIFY(qAbs(list->columnWidth(0) - given) <= 1);
    }));
}

void tst_ListWidths::untouchedOnesAreNotStored()
{
    QFETCH(const QString, screen);
    const ScreenCase& tested = screenCase(screen);
    ScreenUnderTest opened(tested.make);
    opened.whileOpen([&] { opened.form().resize(opened.form().size() + QSize(50, 50)); });
    QCOMPARE(opened.component.settings.get(u"oVELDRA"_s, tested.name, tested.list, u"(none)"_s), u"(none)"_s);
}

QTEST_MAIN(tst_ListWidths)
#include "tst_ListWidths.moc"
