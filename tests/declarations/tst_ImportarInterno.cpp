#include "declarations/HostDeclaration.h"

#include <declarations/ImportarInterno.h>

#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::declarations;

namespace {

class RecordedProgress final : public ImportProgress
{
public:
    void limits(int minimum, int maximum) override { calls.append(u"limits %1 %2"_s.arg(minimum).arg(maximum)); }
    void advance() override { calls.append(u"advance"_s); }

    QStringList calls;
};

/// The arguments of an import; usual ones unless changed.
struct Arguments
{
    QString interno = u"INT-1"_s;
    QString declaration = u"24001IT14000001A"_s;
    QString officialDate = u"05/03/2024"_s;
    QString description = u"Repuestos"_s;
    QString expiry = u"05/03/2026"_s;
    QString customsOffice = u"001"_s;
    qint16 available = 1;
    bool adjustments = false;
};

/// One import over the scripted declaration.
struct Fixture
{
    QString import(const Arguments& arguments = {})
    {
        return ImportarInterno(state, progress, arguments.interno, arguments.declaration, arguments.officialDate,
                               arguments.description, arguments.expiry, arguments.customsOffice, arguments.available,
                               arguments.adjustments);
    }

    [[nodiscard]] QStringList articles() const { return host.db->statements().filter(HostDeclaration::article); }

    core::SharedState state;
    HostDeclaration host{state};
    RecordedProgress progress;
};

const QStringList undoStatements{u"delete from INTINS where INTNRO = 'INT-1' and INTDCL = '24001IT14000001A'"_s,
                                 u"delete from INS where INTDCL = '24001IT14000001A'"_s};

/// The statements of the usual import, in order.
QStringList usualStatements()
{
    return {
        u"select fobdivcambio, fletedivcambio, segurodivcambio from caratula where interno = 'INT-1'"_s,
        u"insert into INTINS (INTNRO,INTDCL,INTFOF,INTDES,INTVEN,INTADU,INTIOK) values ('INT-1','24001IT14000001A',"
        "datevalue('05/03/2024'),'Repuestos',datevalue('05/03/2026'),'001',1)"_s,
        u"select id,FobTotal,itflete,itseguro,ajusteinc,ajusteded  from item where interno = 'INT-1' and id<>0 "
        "order by id"_s,
        u"select IDARTICULO, IDUNIDAD, CANTIDAD, PRECIOUNITARIO, NCM, FOB from groupsubitems where interno = 'INT-1' "
        "and id = 1 order by idsub"_s,
        u"insert into INS (INTDCL,ARTNRO,ARTUNI,ARTCAT,ARTPRE,ARTDSC,ARTNCM,ARTITM,ARTSBT) values "
        "('24001IT14000001A','ART1','KG','3','38,333333','3','8471','001','000')"_s,
        u"select IDARTICULO, IDUNIDAD, CANTIDAD, PRECIOUNITARIO, NCM, FOB from groupsubitems where interno = 'INT-1' "
        "and id = 2 order by idsub"_s,
        u"insert into INS (INTDCL,ARTNRO,ARTUNI,ARTCAT,ARTPRE,ARTDSC,ARTNCM,ARTITM,ARTSBT) values "
        "('24001IT14000001A','ART2','UN','3','23','3','8472','002','001')"_s,
        u"insert into INS (INTDCL,ARTNRO,ARTUNI,ARTCAT,ARTPRE,ARTDSC,ARTNCM,ARTITM,ARTSBT) values "
        "('24001IT14000001A','ART3','UN','2','23','2','8473','002','002')"_s};
}

/// A host's database of its own, with the exchange factors of the declaration.
std::shared_ptr<doubles::FakeConexionDB> hostWithFactors(const doubles::FakeConexionDB::Row& factors)
{
    auto host = std::make_shared<doubles::FakeConexionDB>();
    host->willGiveRows(HostDeclaration::factors, {u"fobdivcambio"_s, u"fletedivcambio"_s, u"segurodivcambio"_s},
                       {factors});
    return host;
}

using TextArgument = QString Arguments::*;

} // namespace

Q_DECLARE_METATYPE(TextArgument)

class tst_ImportarInterno : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void integrityIsOkWithTheseStatements();
    void integrityRefusesSubitemsWithoutArticleCode();
    void integrityRefusesAKnownDeclarationNumber();
    void integrityWhenArticlesCannotBeOpened();
    void integrityWhenStockCannotBeOpened();
    void integrityTurnsRuntimeErrorsIntoStatus();
    void integrityTakesTheInternoOfTheHost();
    void integrityWithApostropheIsAnError_data();
    void integrityWithApostropheIsAnError();
    void integrityWithHostileDeclaration();

    void statementsInOrder();
    void numbersFollowTheLocale();
    void onlySubitemIsNumbered000();
    void severalSubitemsAreNumberedFrom001();
    void adjustmentsHaveNoEffectWhenCleared();
    void availableFlagIsWrittenBare_data();
    void availableFlagIsWrittenBare();
    void datesAreWrittenDayMonthYear_data();
    void datesAreWrittenDayMonthYear();
    void nullAmountsCountAsZero();
    void numbersMayComeAsTexts();
    void onlyTheSharedCifIsRoundedFirst();
    void itemWithoutSubitemsWritesNoRowAndTheImportGoesOn();
    void declarationWithoutItemsIsImported();
    void itemNumbersBeyondThreeDigits();

    void progressOfOneItem();
    void progressOfSeveralItems();
    void progressStopsWithAFailure();

    void headerThatAffectsNothing();
    void missingHostHeader();
    void factorsThatCannotBeOpenedStayZero();
    void quantityZero_data();
    void quantityZero();
    void itemFobZero();
    void failureAtEveryStatementIsUndone_data();
    void failureAtEveryStatementIsUndone();
    void failureOfTheUndoHidesNothing_data();
    void failureOfTheUndoHidesNothing();
    void missingColumnIsUndone();

    void statementsAreOneBurst();
    void burstIsLeftAfterTheUndo();
    void failureAtCommitIsUndone();
    void failureAtBeginOfBurstWritesAndDeletesNothing();
    void unconnectedDatabases();

    void apostropheRunsNoStatementAtAll_data();
    void apostropheRunsNoStatementAtAll();
    void hostTextWithApostropheIsUndone_data();
    void hostTextWithApostropheIsUndone();
    void hostileTextsStayInTheirLiterals();
    void statementCountIsLinear();
};

void tst_ImportarInterno::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_ImportarInterno::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

// --- integrity check ---

void tst_ImportarInterno::integrityIsOkWithTheseStatements()
{
    Fixture fixture;
    QCOMPARE(_VerificarIntegridadInterno(fixture.state, u"24001"_s), u"OK Verificar Integridad OK"_s);
    QCOMPARE(
        fixture.host.db->statements(),
        (QStringList{u"select count(idarticulo) as Total from groupsubitems where interno = 'INT-1'  and ( "
                     "idarticulo is null or  idarticulo = '' or  idarticulo = 'agrupado!') "_s,
                     u"select count(*) as Total from groupsubitems where interno = 'INT-1' and idarticulo is null"_s,
                     u"select count(INTDCL) as Total from INTINS where INTDCL = '24001'"_s}));
}

void tst_ImportarInterno::integrityRefusesSubitemsWithoutArticleCode()
{
    Fixture fixture;
    auto db = std::make_shared<doubles::FakeConexionDB>();
    db->willGiveRows(HostDeclaration::withoutCode, {u"Total"_s}, {{2}});
    fixture.state.g_DBTOR.assign(db);
    QCOMPARE(
        _VerificarIntegridadInterno(fixture.state, u"24001"_s),
        u"ER ERROR 1 - Se encontraron subitem's sin Codigo de Articulo o , esto impedira su descuento como insumo."_s);
    QVERIFY(fixture.host.db->statements().isEmpty());
}

void tst_ImportarInterno::integrityRefusesAKnownDeclarationNumber()
{
    Fixture fixture;
    auto db = std::make_shared<doubles::FakeConexionDB>();
    db->willGiveRows(HostDeclaration::sameNumber, {u"Total"_s}, {{1}});
    fixture.state.g_DBINS.assign(db);
    QCOMPARE(_VerificarIntegridadInterno(fixture.state, u"24001"_s),
             u"ER ERROR 1 - El número de Declaración ya esta en la base de datos"_s);
    QCOMPARE(db->statements().size(), 1);
}

void tst_ImportarInterno::integrityWhenArticlesCannotBeOpened()
{
    Fixture fixture;
    fixture.host.db->failStatement(1, RuntimeError(3709));
    QCOMPARE(_VerificarIntegridadInterno(fixture.state, u"24001"_s),
             u"ER ERROR 1 - Error en acceder a los articulos"_s);
    QCOMPARE(fixture.host.db->statements().size(), 1);
}

void tst_ImportarInterno::integrityWhenStockCannotBeOpened()
{
    Fixture fixture;
    fixture.host.db->failStatement(3, RuntimeError(3709));
    QCOMPARE(_VerificarIntegridadInterno(fixture.state, u"24001"_s),
             u"ER ERROR 1 - Error en acceder al Stock de insumos"_s);
}

void tst_ImportarInterno::integrityTurnsRuntimeErrorsIntoStatus()
{
    Fixture fixture;
    auto db = std::make_shared<doubles::FakeConexionDB>();
    db->willGiveRows(HostDeclaration::withoutCode, {u"Otra"_s}, {{0}});
    fixture.state.g_DBTOR.assign(db);
    QCOMPARE(_VerificarIntegridadInterno(fixture.state, u"24001"_s),
             u"ER ERROR 3265 - "_s + RuntimeError(3265).description());
}

void tst_ImportarInterno::integrityTakesTheInternoOfTheHost()
{
    Fixture fixture;
    fixture.state.sInternoExt = u"OTRO"_s;
    QVERIFY(_VerificarIntegridadInterno(fixture.state, u"24001"_s).startsWith(u"OK"));
    QVERIFY(fixture.host.db->statements().constFirst().contains(u"interno = 'OTRO'  and ("));
}

void tst_ImportarInterno::integrityWithApostropheIsAnError_data()
{
    QTest::addColumn<QString>("interno");
    QTest::addColumn<QString>("declaration");
    QTest::newRow("interno") << u"x' or '1'='1"_s << u"24001"_s;
    QTest::newRow("declaration") << u"INT-1"_s << u"x' or '1'='1"_s;
}

void tst_ImportarInterno::integrityWithApostropheIsAnError()
{
    QFETCH(const QString, interno);
    QFETCH(const QString, declaration);
    Fixture fixture;
    fixture.state.sInternoExt = interno;
    QVERIFY(_VerificarIntegridadInterno(fixture.state, declaration).startsWith(u"ER ERROR -2147217900 - "));
    QVERIFY(fixture.host.db->statements().filter(u"or '1'"_s).isEmpty());
}

void tst_ImportarInterno::integrityWithHostileDeclaration()
{
    for (const QString& text : hostileTexts()) {
        Fixture fixture;
        QCOMPARE(_VerificarIntegridadInterno(fixture.state, text), u"OK Verificar Integridad OK"_s);
        QCOMPARE(fixture.host.db->statements().size(), 3);
        QCOMPARE(fixture.host.db->statements().constLast(),
                 QString(u"select count(INTDCL) as Total from INTINS where INTDCL = '"_s + text + u'\''));
    }
}

// --- what is written ---

void tst_ImportarInterno::statementsInOrder()
{
    Fixture fixture;
    QCOMPARE(fixture.import(), u"OK"_s);
    QCOMPARE(fixture.host.db->statements(), usualStatements());
}

void tst_ImportarInterno::numbersFollowTheLocale()
{
    QLocale::setDefault(QLocale(u"en_US"_s));
    Fixture fixture;
    QCOMPARE(fixture.import(), u"OK"_s);
    QCOMPARE(fixture.host.db->statements(), usualStatements().replaceInStrings(u"38,333333"_s, u"38.333333"_s));
}

void tst_ImportarInterno::onlySubitemIsNumbered000()
{
    Fixture fixture;
    QCOMPARE(fixture.import(), u"OK"_s);
    QVERIFY(fixture.articles().at(0).endsWith(u"'38,333333','3','8471','001','000')"));
}

void tst_ImportarInterno::severalSubitemsAreNumberedFrom001()
{
    Fixture fixture;
    QCOMPARE(fixture.import(), u"OK"_s);
    QVERIFY(fixture.articles().at(1).endsWith(u"'23','3','8472','002','001')"));
    QVERIFY(fixture.articles().at(2).endsWith(u"'23','2','8473','002','002')"));
}

void tst_ImportarInterno::adjustmentsHaveNoEffectWhenCleared()
{
    Fixture with;
    Arguments adjusted;
    adjusted.adjustments = true;
    QCOMPARE(with.import(adjusted), u"OK"_s);
    QVERIFY(with.articles().at(0).contains(u"'3','40','3'")); // (115 + 7 - 2) / 3
    Fixture without;
    QCOMPARE(without.import(), u"OK"_s);
    QVERIFY(without.articles().at(0).contains(u"'3','38,333333','3'"));
}

void tst_ImportarInterno::availableFlagIsWrittenBare_data()
{
    QTest::addColumn<int>("available");
    QTest::newRow("0") << 0;
    QTest::newRow("1") << 1;
    QTest::newRow("-1") << -1;
}

void tst_ImportarInterno::availableFlagIsWrittenBare()
{
    QFETCH(const int, available);
    Fixture fixture;
    Arguments arguments;
    arguments.available = static_cast<qint16>(available);
    QCOMPARE(fixture.import(arguments), u"OK"_s);
    QVERIFY(fixture.host.db->statements().at(1).endsWith(u"'001',%1)"_s.arg(available)));
}

void tst_ImportarInterno::datesAreWrittenDayMonthYear_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("written");
    QTest::newRow("as fixed") << u"05/03/2024"_s << u"05/03/2024"_s;
    QTest::newRow("short") << u"5-3-24"_s << u"05/03/2024"_s;
    QTest::newRow("ISO") << u"2024-03-05"_s << u"05/03/2024"_s;
    QTest::newRow("no date is left to the database") << u"ayer"_s << u"ayer"_s;
}

void tst_ImportarInterno::datesAreWrittenDayMonthYear()
{
    QFETCH(const QString, typed);
    QFETCH(const QString, written);
    Fixture fixture;
    Arguments arguments;
    arguments.officialDate = typed;
    arguments.expiry = typed;
    QCOMPARE(fixture.import(arguments), u"OK"_s);
    QVERIFY(
        fixture.host.db->statements().at(1).contains(u",datevalue('%1'),'Repuestos',datevalue('%1'),"_s.arg(written)));
}

void tst_ImportarInterno::nullAmountsCountAsZero()
{
    Fixture fixture;
    const auto host = hostWithFactors({1.0, {}, {}});
    host->willGiveRows(HostDeclaration::items, HostDeclaration::itemColumns, {{1, 90.0, {}, 5.0, {}, {}}});
    host->willGiveRows(u"select IDARTICULO"_s, HostDeclaration::subitemColumns, {{u"A"_s, {}, 3.0, {}, {}, {}}});
    fixture.state.g_DBTOR.assign(host);
    Arguments arguments;
    arguments.adjustments = true;
    QCOMPARE(fixture.import(arguments), u"OK"_s);
    QVERIFY(fixture.articles().at(0).endsWith(u"values ('24001IT14000001A','A','','3','30','3','','001','000')"));
}

void tst_ImportarInterno::numbersMayComeAsTexts()
{
    Fixture fixture;
    const auto host = hostWithFactors({u"1,5"_s, u"1"_s, u"x"_s});
    host->willGiveRows(HostDeclaration::items, HostDeclaration::itemColumns,
                       {{u"7"_s, u"100"_s, u"1.234,5"_s, u"5"_s, {}, {}}});
    host->willGiveRows(u"select IDARTICULO"_s, HostDeclaration::subitemColumns,
                       {{u"A"_s, u"U"_s, u"2,5"_s, {}, {}, {}}});
    fixture.state.g_DBTOR.assign(host);
    QCOMPARE(fixture.import(), u"OK"_s);
    QVERIFY(host->statements().constLast().contains(u"and id = 7 order by idsub"));
    QVERIFY(fixture.articles().at(0).contains(u"'2,5','553,8','2,5'")); // (150 + 1234.5) / 2.5
}

void tst_ImportarInterno::onlyTheSharedCifIsRoundedFirst()
{
    Fixture fixture;
    const auto host = hostWithFactors({1.0, 1.0, 1.0});
    host->willGiveRows(HostDeclaration::items, HostDeclaration::itemColumns,
                       {{1, 100.0, 1.005, 0.0, 0.0, 0.0}, {2, 100.0, 1.005, 0.0, 0.0, 0.0}});
    host->willGiveRows(HostDeclaration::subitems(1), HostDeclaration::subitemColumns,
                       {{u"A"_s, u"U"_s, 1.0, 0.0, u"N"_s, 100.0}});
    host->willGiveRows(HostDeclaration::subitems(2), HostDeclaration::subitemColumns,
                       {{u"B"_s, u"U"_s, 1.0, 0.0, u"N"_s, 50.0}, {u"C"_s, u"U"_s, 1.0, 0.0, u"N"_s, 50.0}});
    fixture.state.g_DBTOR.assign(host);
    QCOMPARE(fixture.import(), u"OK"_s);
    QVERIFY(fixture.articles().at(0).contains(u"'1','101,005','1'"));
    QVERIFY(fixture.articles().at(1).contains(u"'1','50,505','1'")); // 101.01 / 2
}

void tst_ImportarInterno::itemWithoutSubitemsWritesNoRowAndTheImportGoesOn()
{
    Fixture fixture;
    const auto host = hostWithFactors({1.0, 1.0, 1.0});
    host->willGiveRows(HostDeclaration::items, HostDeclaration::itemColumns,
                       {{1, 0.0, 0.0, 0.0, 0.0, 0.0}, {2, 100.0, 10.0, 5.0, 0.0, 0.0}});
    host->willGiveRows(HostDeclaration::subitems(1), HostDeclaration::subitemColumns);
    host->willGiveRows(HostDeclaration::subitems(2), HostDeclaration::subitemColumns,
                       {{u"B"_s, u"U"_s, 1.0, 0.0, u"N"_s, 100.0}});
    fixture.state.g_DBTOR.assign(host);
    QCOMPARE(fixture.import(), u"OK"_s);
    QCOMPARE(fixture.articles().size(), 1);
    QVERIFY(fixture.articles().at(0).endsWith(u"'115','1','N','002','000')"));
    QCOMPARE(fixture.progress.calls, (QStringList{u"limits 1 2"_s, u"advance"_s, u"advance"_s}));
}

void tst_ImportarInterno::declarationWithoutItemsIsImported()
{
    Fixture fixture;
    const auto host = hostWithFactors({1.0, 1.0, 1.0});
    host->willGiveRows(HostDeclaration::items, HostDeclaration::itemColumns);
    fixture.state.g_DBTOR.assign(host);
    QCOMPARE(fixture.import(), u"OK"_s);
    QCOMPARE(fixture.host.db->statements(), usualStatements().mid(1, 1));
    QVERIFY(fixture.progress.calls.isEmpty());
}

void tst_ImportarInterno::itemNumbersBeyondThreeDigits()
{
    Fixture fixture;
    const auto host = hostWithFactors({1.0, 1.0, 1.0});
    host->willGiveRows(HostDeclaration::items, HostDeclaration::itemColumns,
                       {{12, 1.0, 0.0, 0.0, 0.0, 0.0}, {1234, 1.0, 0.0, 0.0, 0.0, 0.0}});
    host->willGiveRows(u"select IDARTICULO"_s, HostDeclaration::subitemColumns,
                       {{u"A"_s, u"U"_s, 1.0, 0.0, u"N"_s, 1.0}});
    fixture.state.g_DBTOR.assign(host);
    QCOMPARE(fixture.import(), u"OK"_s);
    QVERIFY(fixture.articles().at(0).endsWith(u"'012','000')"));
    QVERIFY(fixture.articles().at(1).endsWith(u"'1234','000')"));
    QVERIFY(host->statements().constLast().contains(u" and id = 1234 order"));
}

// --- progress ---

void tst_ImportarInterno::progressOfOneItem()
{
    Fixture fixture;
    const auto host = hostWithFactors({1.0, 1.0, 1.0});
    host->willGiveRows(HostDeclaration::items, HostDeclaration::itemColumns, {{1, 1.0, 0.0, 0.0, 0.0, 0.0}});
    host->willGiveRows(u"select IDARTICULO"_s, HostDeclaration::subitemColumns);
    fixture.state.g_DBTOR.assign(host);
    QCOMPARE(fixture.import(), u"OK"_s);
    QCOMPARE(fixture.progress.calls, (QStringList{u"limits 0 1"_s, u"advance"_s}));
}

void tst_ImportarInterno::progressOfSeveralItems()
{
    Fixture fixture;
    QCOMPARE(fixture.import(), u"OK"_s);
    QCOMPARE(fixture.progress.calls, (QStringList{u"limits 1 2"_s, u"advance"_s, u"advance"_s}));
}

void tst_ImportarInterno::progressStopsWithAFailure()
{
    Fixture fixture;
    fixture.host.db->failStatement(7, RuntimeError(5));
    QVERIFY(fixture.import().startsWith(u"ER"));
    QCOMPARE(fixture.progress.calls, (QStringList{u"limits 1 2"_s, u"advance"_s}));
}

// --- failures ---

void tst_ImportarInterno::headerThatAffectsNothing()
{
    Fixture fixture;
    auto inputs = std::make_shared<doubles::FakeConexionDB>();
    inputs->willAffect(HostDeclaration::header, 0);
    inputs->willAffect(u"delete"_s, 0);
    fixture.state.g_DBINS.assign(inputs);
    QCOMPARE(fixture.import(), u"ER Error, no se agrego el interno a stock"_s);
    QCOMPARE(inputs->statements(), usualStatements().mid(1, 1) + undoStatements);
    QCOMPARE(fixture.host.db->statements(), usualStatements().mid(0, 1));
}

void tst_ImportarInterno::missingHostHeader()
{
    Fixture fixture;
    auto host = std::make_shared<doubles::FakeConexionDB>();
    host->willGiveRows(HostDeclaration::factors, {u"fobdivcambio"_s, u"fletedivcambio"_s, u"segurodivcambio"_s});
    fixture.state.g_DBTOR.assign(host);
    QCOMPARE(fixture.import(), u"ER ERROR 3021 - "_s + RuntimeError(3021).description());
    QCOMPARE(fixture.host.db->statements(), undoStatements);
}

void tst_ImportarInterno::factorsThatCannotBeOpenedStayZero()
{
    Fixture fixture;
    auto host = std::make_shared<doubles::FakeConexionDB>();
    host->willNotOpen(HostDeclaration::factors, RuntimeError(5));
    host->willGiveRows(HostDeclaration::items, HostDeclaration::itemColumns, {{1, 100.0, 10.0, 5.0, 0.0, 0.0}});
    host->willGiveRows(u"select IDARTICULO"_s, HostDeclaration::subitemColumns,
                       {{u"A"_s, u"U"_s, 3.0, 0.0, u"N"_s, 100.0}});
    fixture.state.g_DBTOR.assign(host);
    QCOMPARE(fixture.import(), u"OK"_s);
    QVERIFY(fixture.articles().at(0).contains(u"'3','0','3'"));
}

void tst_ImportarInterno::quantityZero_data()
{
    QTest::addColumn<QVariant>("quantity");
    QTest::addColumn<double>("fob");
    QTest::addColumn<int>("number");
    QTest::newRow("zero") << QVariant(0.0) << 100.0 << 11;
    QTest::newRow("Null") << QVariant() << 100.0 << 11;
    QTest::newRow("zero of nothing") << QVariant(0.0) << 0.0 << 6;
}

void tst_ImportarInterno::quantityZero()
{
    QFETCH(const QVariant, quantity);
    QFETCH(const double, fob);
    QFETCH(const int, number);
    Fixture fixture;
    const auto host = hostWithFactors({1.0, 1.0, 1.0});
    host->willGiveRows(HostDeclaration::items, HostDeclaration::itemColumns, {{1, fob, 0.0, 0.0, 0.0, 0.0}});
    host->willGiveRows(u"select IDARTICULO"_s, HostDeclaration::subitemColumns,
                       {{u"A"_s, u"U"_s, quantity, 0.0, u"N"_s, 100.0}});
    fixture.state.g_DBTOR.assign(host);
    QCOMPARE(fixture.import(), errorStatus(number, RuntimeError(number).description()));
    QCOMPARE(fixture.host.db->statements(), usualStatements().mid(1, 1) + undoStatements);
}

void tst_ImportarInterno::itemFobZero()
{
    Fixture fixture;
    const auto host = hostWithFactors({1.0, 1.0, 1.0});
    host->willGiveRows(HostDeclaration::items, HostDeclaration::itemColumns, {{1, 0.0, 10.0, 0.0, 0.0, 0.0}});
    host->willGiveRows(u"select IDARTICULO"_s, HostDeclaration::subitemColumns,
                       {{u"A"_s, u"U"_s, 1.0, 0.0, u"N"_s, 60.0}, {u"B"_s, u"U"_s, 1.0, 0.0, u"N"_s, 40.0}});
    fixture.state.g_DBTOR.assign(host);
    QCOMPARE(fixture.import(), u"ER ERROR 11 - División por cero"_s);
}

void tst_ImportarInterno::failureAtEveryStatementIsUndone_data()
{
    const QString own = u"ER ERROR -2147467259 - Tabla bloqueada"_s;
    QTest::addColumn<int>("ordinal");
    QTest::addColumn<int>("statementsBeforeUndo");
    QTest::addColumn<QString>("status");
    // Without factors the import goes on with zeros, until it shares a CIF of 0 by a FOB of 0.
    QTest::newRow("factors") << 1 << 6 << u"ER ERROR 6 - Desbordamiento"_s;
    QTest::newRow("header") << 2 << 2 << own;
    QTest::newRow("items") << 3 << 3 << u"ER Error en acceder a los Item's del despacho"_s;
    QTest::newRow("subitems of item 1") << 4 << 4 << u"ER No hay articulos en el item 001"_s;
    QTest::newRow("article of item 1") << 5 << 5 << own;
    QTest::newRow("subitems of item 2") << 6 << 6 << u"ER No hay articulos en el item 002"_s;
    QTest::newRow("first article of item 2") << 7 << 7 << own;
    QTest::newRow("second article of item 2") << 8 << 8 << own;
}

void tst_ImportarInterno::failureAtEveryStatementIsUndone()
{
    QFETCH(const int, ordinal);
    QFETCH(const int, statementsBeforeUndo);
    QFETCH(const QString, status);
    Fixture fixture;
    fixture.host.db->failStatement(ordinal, RuntimeError(-2147467259, u"Tabla bloqueada"_s));
    QCOMPARE(fixture.import(), status);
    const QStringList& statements = fixture.host.db->statements();
    QCOMPARE(statements.mid(statementsBeforeUndo), undoStatements);
    if (ordinal != 1) {
        QCOMPARE(statements.mid(0, statementsBeforeUndo), usualStatements().mid(0, statementsBeforeUndo));
    }
    QCOMPARE(fixture.host.db->commits(), 0);
}

void tst_ImportarInterno::failureOfTheUndoHidesNothing_data()
{
    QTest::addColumn<bool>("first");
    QTest::addColumn<bool>("second");
    QTest::newRow("first delete") << true << false;
    QTest::newRow("second delete") << false << true;
    QTest::newRow("both") << true << true;
}

void tst_ImportarInterno::failureOfTheUndoHidesNothing()
{
    QFETCH(const bool, first);
    QFETCH(const bool, second);
    Fixture fixture;
    fixture.host.db->failStatement(5, RuntimeError(-2147467259, u"Tabla bloqueada"_s));
    if (first) {
        fixture.host.db->failStatement(6, RuntimeError(3709));
    }
    if (second) {
        fixture.host.db->failStatement(7, RuntimeError(3709));
    }
    QCOMPARE(fixture.import(), u"ER ERROR -2147467259 - Tabla bloqueada"_s);
    QCOMPARE(fixture.host.db->statements().mid(5), undoStatements);
}

void tst_ImportarInterno::missingColumnIsUndone()
{
    Fixture fixture;
    const auto host = hostWithFactors({1.0, 1.0, 1.0});
    host->willGiveRows(HostDeclaration::items, HostDeclaration::itemColumns.mid(0, 4), {{1, 1.0, 0.0, 0.0}});
    fixture.state.g_DBTOR.assign(host);
    QVERIFY(fixture.import().startsWith(u"ER ERROR 3265 - "));
    QCOMPARE(fixture.host.db->statements(), usualStatements().mid(1, 1) + undoStatements);
}

// --- the write burst ---

void tst_ImportarInterno::statementsAreOneBurst()
{
    Fixture fixture;
    QCOMPARE(fixture.import(), u"OK"_s);
    QCOMPARE(fixture.host.db->events(), QStringList{u"<begin>"_s} + usualStatements() + QStringList{u"<commit>"_s});
    QCOMPARE(fixture.host.db->commits(), 1);
}

void tst_ImportarInterno::burstIsLeftAfterTheUndo()
{
    Fixture fixture;
    fixture.host.db->failStatement(3, RuntimeError(5));
    QVERIFY(fixture.import().startsWith(u"ER"));
    QCOMPARE(fixture.host.db->events(),
             QStringList{u"<begin>"_s} + usualStatements().mid(0, 3) + undoStatements + QStringList{u"<end>"_s});
}

void tst_ImportarInterno::failureAtCommitIsUndone()
{
    Fixture fixture;
    fixture.host.db->failCommit(RuntimeError(-2147467259, u"Disco lleno"_s));
    QCOMPARE(fixture.import(), u"ER ERROR -2147467259 - Disco lleno"_s);
    QCOMPARE(fixture.host.db->events(),
             QStringList{u"<begin>"_s} + usualStatements() + QStringList{u"<commit>"_s} + undoStatements);
    QVERIFY(!fixture.host.db->burstIsOpen());
}

void tst_ImportarInterno::failureAtBeginOfBurstWritesAndDeletesNothing()
{
    class LockedConnection final : public ConexionDB
    {
    public:
        void setSql(const QString& text) override { statements.append(text); }
        std::unique_ptr<Recordset> openRecordset(bool& ok) override
        {
            ok = false;
            return nullptr;
        }
        qint64 execute() override { return 0; }
        std::unique_ptr<WriteBurst> beginBurst() override { throw RuntimeError(-2147467259, u"Bloqueada"_s); }

        QStringList statements;
    };
    Fixture fixture;
    const auto locked = std::make_shared<LockedConnection>();
    fixture.state.g_DBINS.assign(locked);
    QCOMPARE(fixture.import(), u"ER ERROR -2147467259 - Bloqueada"_s);
    QVERIFY(locked->statements.isEmpty());
    QVERIFY(fixture.host.db->statements().isEmpty());
}

void tst_ImportarInterno::unconnectedDatabases()
{
    core::SharedState state;
    RecordedProgress progress;
    const QString status =
        ImportarInterno(state, progress, u"I"_s, u"D"_s, u"05/03/2024"_s, {}, u"05/03/2024"_s, u"001"_s, 0, false);
    QVERIFY2(status.startsWith(u"ER ERROR 3709 - "), qPrintable(status));
    QCOMPARE(_VerificarIntegridadInterno(state, u"D"_s), u"ER ERROR 1 - Error en acceder a los articulos"_s);
}

// --- hostile texts ---

void tst_ImportarInterno::apostropheRunsNoStatementAtAll_data()
{
    QTest::addColumn<TextArgument>("argument");
    QTest::newRow("interno") << &Arguments::interno;
    QTest::newRow("declaration") << &Arguments::declaration;
    QTest::newRow("official date") << &Arguments::officialDate;
    QTest::newRow("description") << &Arguments::description;
    QTest::newRow("expiry") << &Arguments::expiry;
    QTest::newRow("customs office") << &Arguments::customsOffice;
}

void tst_ImportarInterno::apostropheRunsNoStatementAtAll()
{
    QFETCH(const TextArgument, argument);
    for (const auto& text : {u"'"_s, u"O'Brien"_s, u"x' or 'a'='a"_s, u"'); delete from INS; --"_s, u"''"_s}) {
        Fixture fixture;
        Arguments arguments;
        arguments.*argument = text;
        QVERIFY(fixture.import(arguments).startsWith(u"ER ERROR -2147217900 - "));
        QVERIFY(fixture.host.db->events().isEmpty());
        QVERIFY(fixture.progress.calls.isEmpty());
    }
}

void tst_ImportarInterno::hostTextWithApostropheIsUndone_data()
{
    QTest::addColumn<int>("column");
    QTest::newRow("article") << 0;
    QTest::newRow("unit") << 1;
    QTest::newRow("position") << 4;
}

void tst_ImportarInterno::hostTextWithApostropheIsUndone()
{
    QFETCH(const int, column);
    Fixture fixture;
    const auto host = hostWithFactors({1.0, 1.0, 1.0});
    host->willGiveRows(HostDeclaration::items, HostDeclaration::itemColumns, {{1, 1.0, 0.0, 0.0, 0.0, 0.0}});
    QVariantList good{u"A"_s, u"U"_s, 1.0, 0.0, u"N"_s, 1.0};
    QVariantList bad = good;
    bad[column] = u"x','1','1','1','1','1'),('y"_s;
    host->willGiveRows(u"select IDARTICULO"_s, HostDeclaration::subitemColumns, {good, bad});
    fixture.state.g_DBTOR.assign(host);
    QVERIFY(fixture.import().startsWith(u"ER ERROR -2147217900 - "));
    QCOMPARE(fixture.articles().size(), 1);
    QCOMPARE(fixture.host.db->statements().mid(2), undoStatements);
}

void tst_ImportarInterno::hostileTextsStayInTheirLiterals()
{
    for (const QString& text : hostileTexts()) {
        Fixture fixture;
        Arguments arguments;
        arguments.declaration = text;
        arguments.description = text;
        arguments.customsOffice = text;
        QCOMPARE(fixture.import(arguments), u"OK"_s);
        QStringList expected = usualStatements();
        for (QString& statement : expected) {
            statement.replace(u"'24001IT14000001A'"_s, QString(u'\'' + text + u'\''));
            statement.replace(u"'Repuestos'"_s, QString(u'\'' + text + u'\''));
            statement.replace(u"'001',1)"_s, QString(u'\'' + text + u"',1)"));
        }
        QCOMPARE(fixture.host.db->statements(), expected);
    }
}

void tst_ImportarInterno::statementCountIsLinear()
{
    constexpr int itemCount = 40;
    constexpr int subitemCount = 25;
    QList<QVariantList> items;
    QList<QVariantList> subitems;
    for (int item = 1; item <= itemCount; ++item) {
        items.append(QVariantList{item, 2500.0, 10.0, 5.0, 0.0, 0.0});
    }
    for (int subitem = 1; subitem <= subitemCount; ++subitem) {
        subitems.append(QVariantList{u"ART%1"_s.arg(subitem), u"KG"_s, 4.0, 0.0, u"8471"_s, 100.0});
    }
    Fixture fixture;
    const auto host = hostWithFactors({1.0, 1.0, 1.0});
    host->willGiveRows(HostDeclaration::items, HostDeclaration::itemColumns, items);
    host->willGiveRows(u"select IDARTICULO"_s, HostDeclaration::subitemColumns, subitems);
    fixture.state.g_DBTOR.assign(host);
    QCOMPARE(fixture.import(), u"OK"_s);
    QCOMPARE(host->statements().size(), 2 + itemCount);
    QCOMPARE(fixture.articles().size(), itemCount * subitemCount);
    QVERIFY(fixture.articles().constLast().endsWith(u"'ART25','KG','4','25,15','4','8471','040','025')"));
}

QTEST_MAIN(tst_ImportarInterno)
#include "tst_ImportarInterno.moc"
