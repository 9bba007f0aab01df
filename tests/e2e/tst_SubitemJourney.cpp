#include "AccessibleBus.h"
#include "Seat.h"

#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;

/// What an export subitem took out of the stock is looked at.
///
/// What the list shows is read the way a screen reader does it, so that it can be compared with the rows.
class tst_SubitemJourney : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theDischargesOfASubitemAreSeenWithTheKeyboard();

private:
    [[nodiscard]] static QStringList expectedCells(e2e::Seat& seat);
    [[nodiscard]] static QStringList shownCells(const e2e::AccessibleBus& bus);
    /// The first cell's text of the row that the keyboard is on.
    [[nodiscard]] static QString focusedCell(const e2e::AccessibleBus& bus);
};

namespace {

const QString& subitemTitle()
{
    static const QString title = u"Insumos por subitem de exportación"_s;
    return title;
}

} // namespace

void tst_SubitemJourney::initTestCase()
{
    e2e::prepare(e2e::XDisplay::missingPrograms() + e2e::AccessibleBus::missingPrograms());
}

void tst_SubitemJourney::theDischargesOfASubitemAreSeenWithTheKeyboard()
{
    e2e::AccessibleBus bus;
    QVERIFY(bus.start());
    e2e::Seat seat(u"subitem"_s);
    e2e::travel(seat, [&] {
        seat.sitDown([&bus](const QProcessEnvironment& base) { return bus.environment(base); });
        const QByteArray before = seat.storedInputs();
        // The exports are on the other page of the host's lists; the second one took from two declarations.
        seat.keys({u"ctrl+Tab"_s, u"Home"_s, u"Down"_s, u"Return"_s});
        seat.expectWindow(subitemTitle());
        seat.shot(u"discharged"_s);

        const QStringList expected = expectedCells(seat);
        QCOMPARE(expected.size(), 5 * 6);
        QCOMPARE(e2e::awaited([&] { return shownCells(bus); }, expected), expected);

        // The arrows go through the list, and ESC is the only other key that does something.
        seat.keys({u"Home"_s});
        QCOMPARE(e2e::awaited([&] { return focusedCell(bus); }, expected.value(0)), expected.value(0));
        seat.keys({u"Down"_s});
        QCOMPARE(e2e::awaited([&] { return focusedCell(bus); }, expected.value(6)), expected.value(6));
        seat.keys({u"Return"_s, u"Insert"_s, u"Delete"_s, u"F6"_s, u"F11"_s, u"F12"_s});
        QCOMPARE(shownCells(bus), expected);
        QVERIFY(seat.isInSameWindow());
        seat.keys({u"Escape"_s});
        seat.expectWindow(e2e::hostTitle());
        QVERIFY(seat.storedInputs() == before);
        seat.leave();
    });
}

QStringList tst_SubitemJourney::expectedCells(e2e::Seat& seat)
{
    const auto number = [](const QVariant& value) {
        const QString text = QLocale().toString(value.toDouble(), 'f', 6);
        return text.rightJustified(9, u'0'); // at least two digits before the separator
    };
    QStringList cells;
    const auto rows =
        seat.rows(u"select * from DIP where EXTINT = 'EX260077' and EXTSBT = 77001 order by ARTDCL,ARTITM,ARTSBT"_s);
    for (; !rows->atEof(); rows->moveNext()) {
        for (const QStringView field : {u"ARTNRO", u"ARTDCL"}) {
            cells.append(rows->value(field).toString());
        }
        for (const QStringView field : {u"ARTITM", u"ARTSBT"}) {
            cells.append(u"%1"_s.arg(rows->value(field).toInt(), 3, 10, '0'_L1));
        }
        cells.append({number(rows->value(u"RALCAN")), number(rows->value(u"ARTPRE"))});
    }
    return cells;
}

QStringList tst_SubitemJourney::shownCells(const e2e::AccessibleBus& bus)
{
    QStringList cells;
    const auto list = bus.find(subitemTitle(), [&bus](const e2e::Accessible& object) {
        return bus.name(object) == u"Insumos descargados para este subitem's" && bus.role(object) == u"tree";
    });
    if (!list) {
        return cells;
    }
    for (const e2e::Accessible& child : bus.children(*list)) {
        if (bus.role(child) == u"tree item") {
            cells.append(bus.name(child));
        }
    }
    return cells;
}

QString tst_SubitemJourney::focusedCell(const e2e::AccessibleBus& bus)
{
    const auto cell = bus.find(subitemTitle(), [&bus](const e2e::Accessible& object) {
        return bus.role(object) == u"tree item" && bus.hasFocus(object);
    });
    return cell ? bus.name(*cell) : QString();
}

QTEST_GUILESS_MAIN(tst_SubitemJourney)
#include "tst_SubitemJourney.moc"
