#include "StockBase.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>
#include <QTest>

#include <oveldra-datos/verification/BalanceCheck.h>
#include <oveldra-datos/verification/DischargeCheck.h>
#include <oveldra-datos/verification/RenumberingCheck.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::data;

namespace {

QJsonArray findingsOf(const StockBase& base)
{
    const CommandRun run(verificar(), {base.url()}, {{u"formato"_s, u"json"_s}});
    return QJsonDocument::fromJson(run.console.written().toUtf8())[u"hallazgos"].toArray();
}

/// Each finding as "code INTDCL/ARTDCL".
QStringList found(const StockBase& base)
{
    QStringList result;
    for (const QJsonValue finding : findingsOf(base)) {
        result.append(finding[u"tipo"].toString() + u' ' + finding[u"INTDCL"].toString() + u'/' +
                      finding[u"ARTDCL"].toString());
    }
    return result;
}

/// A declaration with two articles, discharges of both, and an article that nothing was taken of.
void addDeclaration(StockBase& base, const Cell& number, const Cell& dischargesNumber)
{
    base.header(number);
    base.article(number, 1, 1, 100, 70, u"AC-1");
    base.article(number, 1, 2, 50, 50, u"AC-2");
    base.article(number, 2, 1, 20, 12.5, u"AC-3");
    base.discharge(dischargesNumber, 1, 1, 10, u"AC-1");
    base.discharge(dischargesNumber, 1, 1, 20, u"ac-1 ");
    base.discharge(dischargesNumber, 2, 1, 7.5, u"AC-3");
}

const QString half = u"renumeracion-a-medias VIEJO/NUEVO"_s;

} // namespace

class tst_Renumeraciones : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data() { FreshBases::addEngines(); }

    void initTestCase() { QLocale::setDefault(QLocale(u"es_AR"_s)); }

    void onlyTheDischargesWereRenumbered()
    {
        StockBase base = inputs();
        addDeclaration(base, u"A", u"A");
        addDeclaration(base, u"VIEJO", u"NUEVO");
        QCOMPARE(found(base), QStringList(half));
        const QJsonValue finding = findingsOf(base).first();
        QCOMPARE(finding[u"tabla"].toString(), u"DIP"_s);
        QCOMPARE(finding[u"descargado"].toDouble(), 37.5);
        QCOMPARE(finding[u"detalle"].toString(),
                 u"Las descargas (3) del número «NUEVO» son justo las que faltan en los saldos de «VIEJO»: DIP ya "
                 u"tiene el número nuevo; INS e INTINS, todavía no."_s);
    }

    void dischargesAndArticlesWereRenumbered()
    {
        StockBase base = inputs();
        addDeclaration(base, u"A", u"A");
        base.header(u"VIEJO");
        base.article(u"NUEVO", 1, 1, 100, 70);
        base.discharge(u"NUEVO", 1, 1, 30);
        QCOMPARE(found(base), QStringList(half));
        QCOMPARE(findingsOf(base).first()[u"tabla"].toString(), u"INTINS"_s);
    }

    void articlesWithoutDischargesWereRenumbered()
    {
        StockBase base = inputs();
        base.header(u"VIEJO");
        base.article(u"NUEVO", 1, 1, 100, 100);
        QCOMPARE(found(base), QStringList(half));
    }

    void aWholeRenumberingIsNoFault()
    {
        StockBase base = inputs();
        addDeclaration(base, u"NUEVO", u"NUEVO");
        QCOMPARE(found(base), QStringList());
    }

    void anotherWrongBalanceOfAnArticleStaysReported()
    {
        StockBase base = inputs();
        base.header(u"VIEJO");
        base.article(u"NUEVO", 1, 1, 100, 60);
        base.discharge(u"NUEVO", 1, 1, 30);
        QCOMPARE(found(base), QStringList({u"saldo-incorrecto NUEVO/"_s, half}));
    }

    void dischargesUnderTheOldNumberSinceThenDoNotHideIt()
    {
        StockBase base = inputs();
        base.header(u"VIEJO");
        base.article(u"VIEJO", 1, 1, 100, 65);
        base.discharge(u"NUEVO", 1, 1, 30);
        base.discharge(u"VIEJO", 1, 1, 5);
        QCOMPARE(found(base), QStringList(half));
    }

    void quantitiesWithinTheToleranceAreNotSeenOnEitherSide()
    {
        StockBase base = inputs();
        base.header(u"VIEJO");
        base.article(u"VIEJO", 1, 1, 100, 70.01);
        base.article(u"VIEJO", 1, 2, 100, 99.995);
        base.discharge(u"NUEVO", 1, 1, 30);
        base.discharge(u"NUEVO", 1, 2, 0.005);
        QCOMPARE(found(base), QStringList(half));
    }

    void whatDoesNotFitExactlyStaysReportedRowByRow_data()
    {
        QTest::addColumn<double>("quantity");
        QTest::addColumn<int>("subitem");
        QTest::addColumn<QString>("code");
        QTest::newRow("another quantity") << 29.98 << 1 << u"AC-1"_s;
        QTest::newRow("another subitem") << 30.0 << 2 << u"AC-1"_s;
        QTest::newRow("another article") << 30.0 << 1 << u"AC-2"_s;
    }

    void whatDoesNotFitExactlyStaysReportedRowByRow()
    {
        QFETCH(double, quantity);
        QFETCH(int, subitem);
        QFETCH(QString, code);
        StockBase base = inputs();
        base.header(u"VIEJO");
        base.article(u"VIEJO", 1, 1, 100, 70, u"AC-1");
        base.article(u"VIEJO", 1, 2, 100, 100, u"AC-1");
        base.discharge(u"NUEVO", 1, subitem, quantity, code);
        QCOMPARE(found(base), QStringList({u"saldo-incorrecto VIEJO/"_s, u"descarga-sin-cabecera /NUEVO"_s}));
    }

    void moreIsWrongWithTheHeaderThanTheDischargesExplain()
    {
        StockBase base = inputs();
        base.header(u"VIEJO");
        base.article(u"VIEJO", 1, 1, 100, 70);
        base.article(u"VIEJO", 1, 2, 100, 99);
        base.discharge(u"NUEVO", 1, 1, 30);
        QCOMPARE(found(base), QStringList({u"saldo-incorrecto VIEJO/"_s, u"saldo-incorrecto VIEJO/"_s,
                                           u"descarga-sin-cabecera /NUEVO"_s}));
    }

    void sumsThatAgreeDoNotStandForEqualQuantities()
    {
        StockBase base = inputs();
        base.header(u"VIEJO");
        base.article(u"VIEJO", 1, 1, 100, 70);
        base.article(u"VIEJO", 1, 2, 100, 60);
        base.discharge(u"NUEVO", 1, 1, 40);
        base.discharge(u"NUEVO", 1, 2, 30);
        QCOMPARE(found(base), QStringList({u"saldo-incorrecto VIEJO/"_s, u"saldo-incorrecto VIEJO/"_s,
                                           u"descarga-sin-cabecera /NUEVO"_s, u"descarga-sin-cabecera /NUEVO"_s}));
    }

    void severalPairsAreToldApartByTheirQuantities()
    {
        StockBase base = inputs();
        for (int i = 1; i <= 3; ++i) {
            const QString oldNumber = u"VIEJO%1"_s.arg(i);
            base.header(oldNumber);
            base.article(oldNumber, 1, 1, 100, 100 - 10 * i);
            base.discharge(u"NUEVO%1"_s.arg(i), 1, 1, 40 - 10 * i); // the numbers in the other order
        }
        base.discharge(u"SUELTO", 1, 1, 15);
        QStringList pairs = found(base);
        pairs.sort();
        QCOMPARE(pairs,
                 QStringList({u"descarga-sin-cabecera /SUELTO"_s, u"renumeracion-a-medias VIEJO1/NUEVO3"_s,
                              u"renumeracion-a-medias VIEJO2/NUEVO2"_s, u"renumeracion-a-medias VIEJO3/NUEVO1"_s}));
    }

    void twoHeadersThatFitAreNone()
    {
        StockBase base = inputs();
        for (const char16_t* const number : {u"VIEJO1", u"VIEJO2"}) {
            base.header(number);
            base.article(number, 1, 1, 100, 70);
        }
        base.discharge(u"NUEVO", 1, 1, 30);
        QCOMPARE(found(base), QStringList({u"saldo-incorrecto VIEJO1/"_s, u"saldo-incorrecto VIEJO2/"_s,
                                           u"descarga-sin-cabecera /NUEVO"_s}));
    }

    void twoNumbersThatFitAreNone()
    {
        StockBase base = inputs();
        base.header(u"VIEJO");
        base.article(u"VIEJO", 1, 1, 100, 70);
        base.discharge(u"NUEVO1", 1, 1, 30);
        base.discharge(u"NUEVO2", 1, 1, 30);
        QCOMPARE(found(base), QStringList({u"saldo-incorrecto VIEJO/"_s, u"descarga-sin-cabecera /NUEVO1"_s,
                                           u"descarga-sin-cabecera /NUEVO2"_s}));
    }

    void twoHeadersWithNothingAreNone()
    {
        StockBase base = inputs();
        base.header(u"VIEJO1");
        base.header(u"VIEJO2");
        base.article(u"NUEVO", 1, 1, 100, 100);
        QCOMPARE(found(base), QStringList(u"articulo-sin-cabecera NUEVO/"_s));
    }

    void twoNumbersWithArticlesAreNone()
    {
        StockBase base = inputs();
        base.header(u"VIEJO");
        base.article(u"NUEVO1", 1, 1, 100, 100);
        base.article(u"NUEVO2", 1, 1, 100, 100);
        QCOMPARE(found(base), QStringList({u"articulo-sin-cabecera NUEVO1/"_s, u"articulo-sin-cabecera NUEVO2/"_s}));
    }

    void beyondItsLimitNothingIsRecognised_data()
    {
        QTest::addColumn<size_t>("limit");
        QTest::addColumn<bool>("recognised");
        QTest::newRow("at the limit") << size_t{2} << true;
        QTest::newRow("beyond it") << size_t{1} << false;
    }

    void beyondItsLimitNothingIsRecognised()
    {
        QFETCH(size_t, limit);
        QFETCH(bool, recognised);
        StockBase base = inputs();
        base.header(u"VIEJO");
        base.article(u"VIEJO", 1, 1, 100, 70);
        base.discharge(u"NUEVO", 1, 1, 30);
        base.discharge(u"SUELTO", 1, 1, 15);
        const dialect::Catalog tables = base.engine().catalog();
        base.engine().beginSnapshot();
        FindingSpool spool;
        RowTally tally([](qint64) {});
        BalanceCheck balances({}, spool);
        DischargeCheck discharges(spool);
        RenumberingCheck renumberings({}, spool, limit);
        StockWalk(base.engine(), tables, tally).run({&balances, &discharges, &renumberings});
        QCOMPARE(renumberings.finish(), recognised);
        QCOMPARE(spool.count(FindingKind::HalfRenumbered), recognised ? 1 : 0);
        QCOMPARE(spool.count(FindingKind::DischargeWithoutHeader), recognised ? 1 : 2);
        QCOMPARE(spool.count(FindingKind::WrongBalance), recognised ? 0 : 1);
        base.engine().rollback();
    }

private:
    StockBase inputs() { return {m_bases.url(), Database::Inputs}; }

    FreshBases m_bases;
};

QTEST_GUILESS_MAIN(tst_Renumeraciones)
#include "tst_Renumeraciones.moc"
