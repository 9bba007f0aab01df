#include "Seat.h"

#include <QDate>
#include <QTest>

using namespace Qt::StringLiterals;

/// A declaration is corrected, gets another number, and is deleted.
class tst_DeclarationJourney : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aDeclarationIsCorrectedRenumberedAndDeletedWithTheKeyboard();

private:
    static void browse(e2e::Seat& seat);
    static void correct(e2e::Seat& seat);
    static void renumber(e2e::Seat& seat, const QString& number);
    static void erase(e2e::Seat& seat);
};

namespace {

const QString& browserTitle()
{
    static const QString title = u"Listados de DIT's"_s;
    return title;
}

} // namespace

void tst_DeclarationJourney::initTestCase()
{
    e2e::prepare(e2e::XDisplay::missingPrograms());
}

void tst_DeclarationJourney::aDeclarationIsCorrectedRenumberedAndDeletedWithTheKeyboard()
{
    const QString before = u"26073IT14000588P"_s;
    const QString after = u"26073IT14000601Q"_s;
    const auto header = [](const QString& number) { return u"select * from INTINS where INTDCL = '%1'"_s.arg(number); };
    const auto articles = [](const QString& number) { return u"select * from INS where INTDCL = '%1'"_s.arg(number); };
    e2e::Seat seat(u"declaration"_s);
    e2e::travel(seat, [&] {
        seat.sitDown();
        QCOMPARE(seat.count(u"select * from INTINS"_s), 4);
        const qsizetype allArticles = seat.count(u"select * from INS"_s);
        browse(seat);

        QCOMPARE(seat.rows(header(before))->value(u"INTIOK").toInt(), 0);
        correct(seat);
        const auto corrected = seat.rows(header(before));
        QCOMPARE(corrected->recordCount(), 1);
        QCOMPARE(corrected->value(u"INTDES").toString(), u"Repuestos verificados"_s);
        QCOMPARE(corrected->value(u"INTIOK").toInt(), 1);
        QCOMPARE(corrected->value(u"INTNRO").toString(), u"IT260090"_s);
        QCOMPARE(corrected->value(u"INTFOF").toDate(), QDate(2026, 5, 14));
        QCOMPARE(corrected->value(u"INTVEN").toDate(), QDate(2027, 8, 31));

        // A number that is taken changes nothing.
        renumber(seat, u"26001IT14000533F"_s);
        QCOMPARE(seat.count(header(before)), 1);
        QCOMPARE(seat.count(articles(before)), 3);
        renumber(seat, after);
        QCOMPARE(seat.count(header(before)), 0);
        QCOMPARE(seat.count(articles(before)), 0);
        QCOMPARE(seat.rows(header(after))->value(u"INTDES").toString(), u"Repuestos verificados"_s);
        QCOMPARE(seat.count(articles(after)), 3);
        seat.shot(u"renumbered"_s);

        erase(seat);
        QCOMPARE(seat.count(header(after)), 0);
        QCOMPARE(seat.count(articles(after)), 0);
        QCOMPARE(seat.count(u"select * from INTINS"_s), 3);
        QCOMPARE(seat.count(u"select * from INS"_s), allArticles - 3);
        seat.shot(u"deleted"_s);
        seat.keys({u"Escape"_s});
        seat.expectWindow(e2e::hostTitle());
        seat.leave();
    });
}

void tst_DeclarationJourney::browse(e2e::Seat& seat)
{
    seat.keys({u"F4"_s});
    seat.expectWindow(browserTitle());
    // It opens on the current year, whatever that is; the sample declarations are of 2026. The list has the keyboard,
    // the two dates are before it.
    seat.keys({u"shift+Tab"_s, u"shift+Tab"_s, u"ctrl+a"_s});
    seat.fill(u"01/05/2026"_s);
    seat.keys({u"ctrl+a"_s});
    seat.type(u"31/12/2026"_s);
    seat.keys({u"F11"_s, u"Tab"_s, u"Home"_s});
}

void tst_DeclarationJourney::correct(e2e::Seat& seat)
{
    seat.keys({u"Return"_s});
    seat.expectWindow(u"Modificar DIT"_s);
    seat.keys({u"Return"_s, u"ctrl+a"_s}); // the interno stays
    seat.fill(u"Repuestos verificados"_s);
    seat.keys({u"Return"_s, u"Return"_s, u"ctrl+a"_s}); // so do CTC and official date
    seat.fill(u"31/08/2027"_s);
    seat.keys({u"space"_s});
    seat.shot(u"corrected"_s);
    seat.keys({u"F11"_s});
    seat.expectWindow(browserTitle());
}

void tst_DeclarationJourney::renumber(e2e::Seat& seat, const QString& number)
{
    seat.keys({u"ctrl+Return"_s});
    seat.expectWindow(u"oVELDRA"_s);
    seat.keys({u"alt+s"_s});
    seat.expectWindow(u"Modificar"_s);
    seat.keys({u"ctrl+a"_s});
    seat.fill(number);
    seat.expectWindow(u"oVELDRA"_s); // what came of it
    seat.keys({u"Return"_s});
    seat.expectWindow(browserTitle());
}

void tst_DeclarationJourney::erase(e2e::Seat& seat)
{
    // Not without being asked.
    const qsizetype all = seat.count(u"select * from INTINS"_s);
    seat.keys({u"Delete"_s});
    seat.expectWindow(u"oVELDRA"_s);
    seat.keys({u"Escape"_s});
    seat.expectWindow(browserTitle());
    QCOMPARE(seat.count(u"select * from INTINS"_s), all);
    seat.keys({u"Delete"_s});
    seat.expectWindow(u"oVELDRA"_s);
    seat.keys({u"Return"_s});
    seat.expectWindow(browserTitle());
}

QTEST_GUILESS_MAIN(tst_DeclarationJourney)
#include "tst_DeclarationJourney.moc"
