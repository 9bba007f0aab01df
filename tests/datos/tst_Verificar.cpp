#include "StockBase.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>
#include <QTest>

#include <oveldra-datos/verification/RenumberingCheck.h>
#include <oveldra-datos/verification/TariffCheck.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::data;

namespace {

using Options = QMap<QString, QString>;

QJsonArray findingsOf(const StockBase& base, Options options = {})
{
    options.insert(u"formato"_s, u"json"_s);
    const CommandRun run(verificar(), {base.url()}, options);
    const QJsonArray findings = QJsonDocument::fromJson(run.console.written().toUtf8())[u"hallazgos"].toArray();
    const bool agrees = run.exitCode == (findings.isEmpty() ? Success : Findings);
    return agrees ? findings : QJsonArray{u"exit code %1"_s.arg(run.exitCode)};
}

/// Each finding as its code, table and key: "saldo-incorrecto INS D1/1/2".
QStringList found(const StockBase& base, const Options& options = {})
{
    QStringList result;
    for (const QJsonValue finding : findingsOf(base, options)) {
        QStringList key;
        for (const auto* const column : {u"INTDCL", u"ARTDCL", u"ARTITM", u"ARTSBT", u"CATNRO", u"PRDNRO", u"PRDNCM"}) {
            const QJsonObject object = finding.toObject();
            const auto value = object.constFind(QStringView(column));
            if (value != object.constEnd()) {
                key.append(value->isNull() ? u"Null"_s : value->toVariant().toString());
            }
        }
        result.append(finding[u"tipo"].toString() + u' ' + finding[u"tabla"].toString() + u' ' + key.join(u'/'));
    }
    return result;
}

/// A declaration with an article of which nothing was discharged.
void addUntouched(StockBase& base, const Cell& number)
{
    base.header(number);
    base.article(number, 1, 1, 10, 10);
}

} // namespace

class tst_Verificar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data() { FreshBases::addEngines(); }

    void initTestCase() { QLocale::setDefault(QLocale(u"es_AR"_s)); }

    // --- balances ------------------------------------------------------------------------------------------------

    void aStockThatIsRightHasNoFindings()
    {
        StockBase base = inputs();
        base.header(u"D1");
        base.article(u"D1", 1, 1, 100.5, 60.25, u"AC-1");
        base.article(u"D1", 1, 2, 7, 7, u"AC-2");
        base.discharge(u"D1", 1, 1, 30);
        base.discharge(u"D1", 1, 1, 10.25);
        base.header(u"D2");
        base.article(u"D2", 10, 1, 5, 0);
        base.discharge(u"D2", 10, 1, 5);
        base.catalog(u"C");
        base.product(u"C", u"P");
        base.relation(u"C", u"P", u"AC-1");
        StockBase tariff(m_bases.url(), Database::Nomenclature);
        tariff.position(u"8471.30.12", u"000", u"A");
        QCOMPARE(found(base, {{u"ncm"_s, tariff.url()}}), QStringList());
    }

    void anEmptyStockHasNoFindings() { QCOMPARE(found(inputs()), QStringList()); }

    void aWrongBalanceComesWithItsFigures()
    {
        StockBase base = inputs();
        base.header(u"D1");
        base.article(u"D1", 1, 1, 100, 65, u"AC-7");
        base.article(u"D1", 1, 2, 100, 70, u"AC-7");
        base.discharge(u"D1", 1, 1, 10);
        base.discharge(u"D1", 1, 1, 20);
        base.discharge(u"D1", 1, 2, 30);
        QCOMPARE(found(base), QStringList(u"saldo-incorrecto INS D1/1/1"_s));
        const QJsonObject finding = findingsOf(base).first().toObject();
        QCOMPARE(finding[u"ARTNRO"].toString(), u"AC-7"_s);
        QCOMPARE(finding[u"declarado"].toDouble(), 100);
        QCOMPARE(finding[u"descargado"].toDouble(), 30);
        QCOMPARE(finding[u"esperado"].toDouble(), 70);
        QCOMPARE(finding[u"saldo"].toDouble(), 65);
        QCOMPARE(finding[u"detalle"].toString(),
                 u"El artículo tiene un saldo de 65; lo declarado (100) menos lo descargado (30) es 70."_s);
    }

    void differencesUpToTheToleranceAreNone_data()
    {
        QTest::addColumn<double>("declared");
        QTest::addColumn<double>("discharged");
        QTest::addColumn<double>("balance");
        QTest::addColumn<QString>("tolerance");
        QTest::addColumn<bool>("wrong");
        QTest::newRow("just the tolerance") << 100.0 << 99.99 << 0.0 << QString() << false;
        QTest::newRow("just the tolerance, below") << 100.0 << 99.99 << 0.02 << QString() << false;
        QTest::newRow("a little more") << 100.0 << 99.9899 << 0.0 << QString() << true;
        QTest::newRow("a little more, below") << 100.0 << 99.99 << 0.0201 << QString() << true;
        QTest::newRow("just the tolerance of a million") << 1000000.0 << 999999.99 << 0.0 << QString() << false;
        QTest::newRow("more of a million") << 1000000.0 << 999999.9899 << 0.0 << QString() << true;
        QTest::newRow("larger tolerance") << 100.0 << 99.5 << 0.0 << u"0.5"_s << false;
        QTest::newRow("decimal comma") << 100.0 << 99.5 << 0.0 << u"0,5"_s << false;
        QTest::newRow("over the larger tolerance") << 100.0 << 99.4999 << 0.0 << u"0.5"_s << true;
        QTest::newRow("no tolerance") << 100.0 << 99.9999 << 0.0 << u"0"_s << true;
        QTest::newRow("no tolerance, binary fractions") << 0.3 << 0.1 << 0.2 << u"0"_s << false;
    }

    void differencesUpToTheToleranceAreNone()
    {
        QFETCH(double, declared);
        QFETCH(double, discharged);
        QFETCH(double, balance);
        QFETCH(QString, tolerance);
        QFETCH(bool, wrong);
        StockBase base = inputs();
        base.header(u"D1");
        base.article(u"D1", 1, 1, declared, balance);
        base.discharge(u"D1", 1, 1, discharged);
        const Options options = tolerance.isEmpty() ? Options() : Options{{u"tolerancia"_s, tolerance}};
        QCOMPARE(found(base, options), wrong ? QStringList(u"saldo-incorrecto INS D1/1/1"_s) : QStringList());
    }

    void manySmallDischargesAddUpExactly()
    {
        StockBase base = inputs();
        base.header(u"D1");
        base.article(u"D1", 1, 1, 100000, 99970);
        base.engine().begin();
        for (int i = 0; i < 300; ++i) {
            base.discharge(u"D1", 1, 1, 0.1);
        }
        base.engine().commit();
        QCOMPARE(found(base, {{u"tolerancia"_s, u"0"_s}}), QStringList());
    }

    void numbersAreComparedAsTheStoreComparesTexts()
    {
        StockBase base = inputs();
        base.header(u"26073Ñ01");
        base.article(u"26073ñ01 ", 1, 1, 10, 6);
        base.discharge(u"26073Ñ01", 1, 1, 1);
        base.discharge(u"26073ñ01  ", 1, 1, 3);
        QCOMPARE(found(base), QStringList());
        base.discharge(u"26073N01", 1, 1, 3);  // another letter
        base.discharge(u" 26073Ñ01", 1, 1, 3); // a blank in front
        QCOMPARE(found(base), QStringList({u"descarga-sin-cabecera DIP  26073Ñ01/1/1"_s,
                                           u"descarga-sin-cabecera DIP 26073N01/1/1"_s}));
    }

    void quantitiesThatAreNullCountAsZero()
    {
        StockBase base = inputs();
        base.header(u"D1");
        base.article(u"D1", 1, 1, 10, 10);
        base.discharge(u"D1", 1, 1, {});
        base.article(u"D1", 1, 2, {}, {});
        base.article(u"D1", 1, 3, {}, 5);
        QCOMPARE(found(base), QStringList(u"saldo-incorrecto INS D1/1/3"_s));
    }

    void rowsWithNullInTheirKeyBelongToNothing()
    {
        StockBase base = inputs();
        base.header({});
        base.article({}, 1, 1, 10, 4);
        base.discharge({}, 1, 1, 6);
        base.header(u"D1");
        base.article(u"D1", {}, 1, 10, 4);
        base.discharge(u"D1", {}, 1, 6);
        base.article(u"D1", {}, 1, 5, 5);
        QCOMPARE(found(base),
                 QStringList({u"saldo-incorrecto INS Null/1/1"_s, u"saldo-incorrecto INS D1/Null/1"_s,
                              u"descarga-sin-articulo DIP D1/Null/1"_s, u"descarga-sin-cabecera DIP Null/1/1"_s,
                              u"articulo-sin-cabecera INS Null/1/1"_s}));
    }

    void negativeBalances()
    {
        StockBase base = inputs();
        base.header(u"D1");
        base.article(u"D1", 1, 1, 10, -2);
        base.discharge(u"D1", 1, 1, 12);
        base.article(u"D1", 1, 2, 10, -0.01);
        base.discharge(u"D1", 1, 2, 10);
        QCOMPARE(found(base), QStringList(u"saldo-negativo INS D1/1/1"_s));
        QCOMPARE(found(base, {{u"tolerancia"_s, u"0"_s}}),
                 QStringList({u"saldo-incorrecto INS D1/1/2"_s, u"saldo-negativo INS D1/1/1"_s,
                              u"saldo-negativo INS D1/1/2"_s}));
    }

    // --- what points nowhere -------------------------------------------------------------------------------------

    void dischargesWithoutArticle()
    {
        StockBase base = inputs();
        addUntouched(base, u"D1");
        base.discharge(u"D1", 1, 2, 3);
        base.discharge(u"D1", 2, 1, 3);
        base.discharge(u"D1", 1, 1, 0);
        QCOMPARE(found(base),
                 QStringList({u"descarga-sin-articulo DIP D1/1/2"_s, u"descarga-sin-articulo DIP D1/2/1"_s}));
        const QJsonObject finding = findingsOf(base).first().toObject();
        QCOMPARE(finding[u"EXTINT"].toString(), u"EXP1"_s);
        QCOMPARE(finding[u"EXTSBT"].toDouble(), 7);
        QCOMPARE(finding[u"EXTNOF"].toString(), u"26001EC01000001A"_s);
        QCOMPARE(finding[u"descargado"].toDouble(), 3);
    }

    void dischargesWithoutHeaderAreReportedOnceWhetherTheirArticleIsThereOrNot()
    {
        StockBase base = inputs();
        addUntouched(base, u"D1");
        base.discharge(u"D2", 1, 1, 3);
        base.article(u"D3", 1, 1, 10, 7);
        base.discharge(u"D3", 1, 1, 3);
        QCOMPARE(found(base), QStringList({u"descarga-sin-cabecera DIP D2/1/1"_s, u"descarga-sin-cabecera DIP D3/1/1"_s,
                                           u"articulo-sin-cabecera INS D3/1/1"_s}));
        QCOMPARE(findingsOf(base)[0][u"detalle"].toString(),
                 u"No hay cabecera de la declaración «D2» en INTINS, ni el artículo en INS."_s);
        QCOMPARE(findingsOf(base)[1][u"detalle"].toString(),
                 u"No hay cabecera de la declaración «D3» en INTINS, aunque su artículo está en INS."_s);
    }

    void aHeaderWithoutArticlesIsNoFault()
    {
        StockBase base = inputs();
        base.header(u"D1");
        base.header(u"D2");
        addUntouched(base, u"D3");
        QCOMPARE(found(base), QStringList());
    }

    void repeatedArticlesAreOneStock()
    {
        StockBase base = inputs();
        base.header(u"D1");
        base.article(u"D1", 1, 1, 10, 8, u"AC-1");
        base.article(u"d1 ", 1, 1, 20, 15, u"AC-2");
        base.discharge(u"D1", 1, 1, 7);
        base.article(u"D1", 1, 2, 10, 10, u"AC-1");
        QCOMPARE(found(base), QStringList(u"articulo-repetido INS d1 /1/1"_s));
        base.discharge(u"D1", 1, 1, 1);
        QCOMPARE(found(base), QStringList({u"saldo-incorrecto INS D1/1/1"_s, u"articulo-repetido INS d1 /1/1"_s}));
        const QJsonObject finding = findingsOf(base).first().toObject();
        QCOMPARE(finding[u"declarado"].toDouble(), 30);
        QCOMPARE(finding[u"saldo"].toDouble(), 23);
        QVERIFY(finding[u"detalle"].toString().startsWith(u"Los 2 artículos repetidos tienen en conjunto"));
    }

    void relationsWithoutProduct()
    {
        StockBase base = inputs();
        base.product(u"C", u"Ñandú");
        base.product(u"sin catálogo", u"P");
        base.relation(u"c ", u"ñandú  ", u"A");
        base.relation(u"sin catálogo", u"P", u"A");
        base.relation(u"C", u"Nandú", u"A");
        base.relation(u"B", u"Ñandú", u"A");
        base.relation(u"Z", u"Ñandú", u"A");
        base.relation(u"C", {}, u"A");
        QCOMPARE(found(base),
                 QStringList({u"relacion-sin-producto RIP B/Ñandú"_s, u"relacion-sin-producto RIP C/Null"_s,
                              u"relacion-sin-producto RIP C/Nandú"_s, u"relacion-sin-producto RIP Z/Ñandú"_s}));
    }

    // --- keys ----------------------------------------------------------------------------------------------------

    void keysThatDifferInCaseOrTrailingBlanksOnly()
    {
        StockBase base = inputs(Keys::None);
        base.catalog(u"A");
        base.catalog(u"a ");
        base.catalog(u"Á");
        base.catalog(u" A");
        base.product(u"A", u"P");
        base.product(u"a", u"p  ");
        base.product(u"A", u"PP");
        base.relation(u"A", u"P", u"Ñ");
        base.relation(u"A", u"P", u"ñ");
        base.relation(u"A", u"P", u"N");
        base.header(u"D1");
        base.header(u"D1");
        base.header(u"d1");
        base.header({});
        base.header({});
        QCOMPARE(found(base), QStringList({u"clave-duplicada INTINS D1"_s, u"clave-duplicada INTINS d1"_s,
                                           u"clave-duplicada CAT a "_s, u"clave-duplicada RIP A/P"_s,
                                           u"clave-duplicada PRD a/p  "_s}));
        const QJsonArray findings = findingsOf(base);
        QCOMPARE(findings[0][u"detalle"].toString(), u"La clave «D1» ya está en otra fila de INTINS."_s);
        QCOMPARE(
            findings[2][u"detalle"].toString(),
            u"La clave «a » es la misma que «A» para el programa, que no distingue mayúsculas ni blancos finales."_s);
        QCOMPARE(findings[3][u"ARTNRO"].toString(), u"ñ"_s);
    }

    // --- the tariff ----------------------------------------------------------------------------------------------

    void positionsAreLookedUpInTheTariff()
    {
        StockBase base = inputs();
        base.product(u"C", u"1", u"8471.30.12.000A");
        base.product(u"C", u"2", u"8471.30.12.000a ");
        base.product(u"C", u"3", u"8471.30.12.000B");
        base.product(u"C", u"4", u"8471.30.12.000");
        base.product(u"C", u"5", u"8471.30.12.000B");
        base.product(u"C", u"6", u"");
        base.product(u"C", u"7", u"  ");
        base.product(u"C", u"8", {});
        StockBase tariff(m_bases.url(), Database::Nomenclature);
        tariff.position(u"8471.30.12", u"000", u"A");
        tariff.position(u"8471.30.12", u"000", {});
        QCOMPARE(found(base, {{u"ncm"_s, tariff.url()}}),
                 QStringList({u"posicion-fuera-del-nomenclador PRD C/4/8471.30.12.000"_s,
                              u"posicion-fuera-del-nomenclador PRD C/3/8471.30.12.000B"_s,
                              u"posicion-fuera-del-nomenclador PRD C/5/8471.30.12.000B"_s,
                              u"producto-sin-posicion PRD C/8/Null"_s, u"producto-sin-posicion PRD C/6/"_s,
                              u"producto-sin-posicion PRD C/7/  "_s}));
        QCOMPARE(found(base), QStringList());
    }

    void positionsAreFoundWhateverTheBlocksThatTheyAreLookedUpIn_data()
    {
        QTest::addColumn<int>("blockSize");
        QTest::newRow("one position") << 1;
        QTest::newRow("two positions") << 2;
        QTest::newRow("as many as there are") << 5;
        QTest::newRow("more") << 100;
    }

    void positionsAreFoundWhateverTheBlocksThatTheyAreLookedUpIn()
    {
        QFETCH(int, blockSize);
        StockBase base = inputs();
        int product = 0;
        for (const char16_t* const position : {u"1.0A", u"1.0A", u"10.0A", u"2.0A", u"7.0A", u"3.0A"}) {
            base.product(u"C", QString::number(++product), position);
        }
        StockBase tariff(m_bases.url(), Database::Nomenclature);
        for (const char16_t* const subheading : {u"3", u"10", u"1"}) {
            tariff.position(subheading, u"0", u"A");
        }
        const dialect::Catalog inputsTables = base.engine().catalog();
        const dialect::Catalog tariffTables = tariff.engine().catalog();
        base.engine().beginSnapshot();
        tariff.engine().beginSnapshot();
        FindingSpool spool;
        RowTally tally([](qint64) {});
        TariffCheck({base.engine(), inputsTables, tariff.engine(), tariffTables}, spool, tally,
                    static_cast<size_t>(blockSize))
            .run();
        QStringList missing;
        spool.forEach(FindingKind::PositionNotInTariff,
                      [&](const Finding& finding) { missing.append(finding.value(Field::PRDNCM).text); });
        QCOMPARE(missing, QStringList({u"2.0A"_s, u"7.0A"_s}));
        QCOMPARE(tally.rows().at(u"NCM"_s), 3);
        base.engine().rollback();
        tariff.engine().rollback();
    }

private:
    StockBase inputs(Keys keys = Keys::Unique) { return {m_bases.url(), Database::Inputs, keys}; }

    FreshBases m_bases;
};

QTEST_GUILESS_MAIN(tst_Verificar)
#include "tst_Verificar.moc"
