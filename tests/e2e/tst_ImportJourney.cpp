#include "Seat.h"

#include <QDate>
#include <QTest>

using namespace Qt::StringLiterals;

/// A declaration goes into the stock of inputs.
class tst_ImportJourney : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aDeclarationIsImportedWithTheKeyboard();
};

void tst_ImportJourney::initTestCase()
{
    e2e::prepare(e2e::XDisplay::missingPrograms());
}

void tst_ImportJourney::aDeclarationIsImportedWithTheKeyboard()
{
    e2e::Seat seat(u"import"_s);
    e2e::travel(seat, [&seat] {
        seat.sitDown();
        // The fifth declaration of the list is the one of two items.
        seat.keys({u"Home"_s, u"Down"_s, u"Down"_s, u"Down"_s, u"Down"_s, u"F3"_s});
        seat.expectWindow(u"Exportar a Stock de Insumos"_s);
        seat.fill(u"26001IT14000655K"_s);
        seat.fill(u"16/11/2026"_s);
        seat.fill(u"Repuestos"_s);
        seat.keys({u"Return"_s}); // the customs office stays
        seat.type(u"16/11/2027"_s);
        seat.keys({u"F11"_s});
        seat.expectWindow(u"oVELDRA"_s);
        seat.shot(u"imported"_s);
        seat.keys({u"Return"_s});
        seat.expectWindow(u"Exportar a Stock de Insumos"_s);
        seat.keys({u"Escape"_s});
        seat.expectWindow(e2e::hostTitle());
        seat.leave();

        const auto header = seat.rows(u"select * from INTINS where INTDCL = '26001IT14000655K'"_s);
        QCOMPARE(header->recordCount(), 1);
        QCOMPARE(header->value(u"INTNRO").toString(), u"IT260101"_s);
        QCOMPARE(header->value(u"INTDES").toString(), u"Repuestos"_s);
        QCOMPARE(header->value(u"INTADU").toString(), u"001"_s);
        QCOMPARE(header->value(u"INTFOF").toDate(), QDate(2026, 11, 16));
        QCOMPARE(header->value(u"INTVEN").toDate(), QDate(2027, 11, 16));
        const auto articles =
            seat.rows(u"select ARTNRO,ARTPRE from INS where INTDCL = '26001IT14000655K' order by ARTITM,ARTSBT"_s);
        QCOMPARE(articles->recordCount(), 3);
        QCOMPARE(articles->value(u"ARTNRO").toString(), u"COM-HER-170"_s);
        QCOMPARE(articles->value(u"ARTPRE").toDouble(), 38.333333);
    });
}

QTEST_GUILESS_MAIN(tst_ImportJourney)
#include "tst_ImportJourney.moc"
