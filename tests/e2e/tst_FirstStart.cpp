#include <oVELDRA/Store.h>

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <tornel/DataFolder.h>
#include <tornel/FirstStart.h>
#include <tornel/HostLists.h>

using namespace Qt::StringLiterals;
using namespace tornel;
using oVELDRA::Access;
using oVELDRA::ConexionDB;
using oVELDRA::Database;

/// The databases that the demonstration makes for itself.
class tst_FirstStart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void makesTheThreeDatabases_data();
    void makesTheThreeDatabases();
    void theDeclarationsAddUp();
    void theHostsListsAreRead();
    void stoppedHalfWayItLeavesNothing_data();
    void stoppedHalfWayItLeavesNothing();
    void leftoversOfABrokenStartAreClearedAway();
    void onlyWhatIsMissingIsMade();
    void aFolderThatCannotBeMadeIsReported();

private:
    static bool run(const DataFolder& folder)
    {
        return FirstStart(folder).run([](qsizetype, qsizetype) { return true; });
    }
    static QVariant value(ConexionDB& connection, const QString& statement, QStringView column)
    {
        return lists::open(connection, statement)->value(column);
    }
    static qsizetype rows(ConexionDB& connection, const QString& statement)
    {
        return lists::open(connection, statement)->recordCount();
    }
    static QStringList files(const DataFolder& folder)
    {
        return QDir(folder.path()).entryList(QDir::Files, QDir::Name);
    }
};

void tst_FirstStart::makesTheThreeDatabases_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::newRow("comma") << QLocale(QLocale::Spanish, QLocale::Argentina);
    QTest::newRow("point") << QLocale(QLocale::English, QLocale::UnitedStates);
}

void tst_FirstStart::makesTheThreeDatabases()
{
    QFETCH(const QLocale, locale);
    QLocale::setDefault(locale);
    const QTemporaryDir place;
    const DataFolder folder(place.filePath(u"nueva/carpeta"_s));
    FirstStart start(folder);
    QVERIFY(start.needed());
    qsizetype last = 0;
    qsizetype total = 0;
    QVERIFY(start.run([&](qsizetype done, qsizetype of) {
        last = done;
        total = of;
        return true;
    }));
    QVERIFY(!start.needed());
    QVERIFY(total > 33110 + 4607 + 12000);
    QCOMPARE(last, total);
    QCOMPARE(files(folder), (QStringList{u"insumos.sqlite"_s, u"nomenclador.sqlite"_s, u"tornel.sqlite"_s}));

    const auto nomenclature = folder.connect(Database::Nomenclature, Access::ReadOnly);
    QCOMPARE(rows(*nomenclature, u"select [001] from NCM"_s), 33110);
    QCOMPARE(rows(*nomenclature, u"select sim from sufidos"_s), 4607);
    const QString horse = u"select * from NCM where [001] = '0101.21.00' and [002] = '100' and [003] = 'W'"_s;
    QCOMPARE(value(*nomenclature, horse, u"019").toDouble(), 0.5);
    QCOMPARE(value(*nomenclature, horse, u"020").toDouble(), 0.0);
    QVERIFY(!value(*nomenclature, horse, u"059").isValid());
    QCOMPARE(value(*nomenclature, u"select [010] from NCM where [001] = '8532.24.20'"_s, u"010").toString(),
             u"Aptos para montaje por insercion (PHP - \"Pin Through Hole\")"_s);

    const auto inputs = folder.connect(Database::Inputs, Access::ReadOnly);
    QCOMPARE(
        value(*inputs, u"select RIPCAN from RIP where PRDNRO = 'BOT-VAC-45' and ARTNRO = 'CUE-VAC-FL14'"_s, u"RIPCAN")
            .toDouble(),
        0.28);
    QCOMPARE(value(*inputs, u"select INTVEN from INTINS where INTDCL = '26001IT14000087H'"_s, u"INTVEN").toDate(),
             QDate(2027, 1, 19));
    QCOMPARE(value(*inputs, u"select INTIOK from INTINS where INTDCL = '26001IT14000087H'"_s, u"INTIOK").toInt(), 1);
}

void tst_FirstStart::theDeclarationsAddUp()
{
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Argentina));
    const QTemporaryDir place;
    const DataFolder folder(place.path());
    QVERIFY(run(folder));
    const auto host = folder.connect(Database::Host, Access::ReadOnly);
    QCOMPARE(rows(*host, u"select interno from item where id = 0"_s), rows(*host, u"select interno from caratula"_s));
    const auto items =
        lists::open(*host, u"select id,FobTotal from item where interno = 'IT260102' and id<>0 order by id"_s);
    QCOMPARE(items->recordCount(), 40);
    for (; !items->atEof(); items->moveNext()) {
        const double fob = value(*host,
                                 u"select sum(FOB) as Suma from groupsubitems where interno = 'IT260102' and id = "_s +
                                     items->value(u"id").toString(),
                                 u"Suma")
                               .toDouble();
        QVERIFY(qAbs(fob - items->value(u"FobTotal").toDouble()) < 0.001);
    }
    QCOMPARE(rows(*host, u"select idsub from groupsubitems where interno = 'IT260103'"_s), 10000);
    QCOMPARE(rows(*host, u"select idsub from groupsubitems where IDARTICULO = 'agrupado!'"_s), 1);
}

void tst_FirstStart::theHostsListsAreRead()
{
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Argentina));
    const QTemporaryDir place;
    const DataFolder folder(place.path());
    QVERIFY(run(folder));
    const auto host = folder.connect(Database::Host, Access::ReadOnly);
    const auto inputs = folder.connect(Database::Inputs, Access::ReadWrite);
    const auto declarations = lists::declarations(*host, *inputs);
    QCOMPARE(declarations.size(), std::size_t{11});
    QCOMPARE(declarations.front().interno, u"IT260015"_s);
    QCOMPARE(declarations.front().imported, u"26001IT14000087H"_s);
    const auto& two = *std::ranges::find(declarations, u"IT260101"_s, &lists::Declaration::interno);
    QCOMPARE(two.items, 2);
    QCOMPARE(two.subitems, 3);
    QCOMPARE(two.fobTotal, 200.0);
    QCOMPARE(two.imported, QString());
    const auto exports = lists::exportSubitems(*inputs);
    QCOMPARE(exports.size(), std::size_t{40});
    QCOMPARE(exports[1].subitem, 77001);
    QCOMPARE(exports[1].inputs, 5);
    QCOMPARE(exports[1].date, QDate(2026, 6, 11));

    bool thrown = false;
    try {
        std::ignore = lists::open(*inputs, u"select nada from INS"_s);
    } catch (const oVELDRA::RuntimeError& error) {
        thrown = true;
        QCOMPARE(error.number(), -2147217904);
    }
    QVERIFY(thrown);
}

void tst_FirstStart::stoppedHalfWayItLeavesNothing_data()
{
    QTest::addColumn<int>("percent");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("in the first database") << 30 << QStringList();
    QTest::newRow("in the second database") << 85 << QStringList{u"nomenclador.sqlite"_s};
}

void tst_FirstStart::stoppedHalfWayItLeavesNothing()
{
    QFETCH(const int, percent);
    QFETCH(const QStringList, left);
    const QTemporaryDir place;
    const DataFolder folder(place.path());
    QVERIFY(
        !FirstStart(folder).run([percent](qsizetype done, qsizetype total) { return done * 100 < total * percent; }));
    QCOMPARE(files(folder), left);
    QVERIFY(FirstStart(folder).needed());
    QVERIFY(run(folder));
    QCOMPARE(files(folder).size(), 3);
}

void tst_FirstStart::leftoversOfABrokenStartAreClearedAway()
{
    const QTemporaryDir place;
    const DataFolder folder(place.path());
    for (const QString& end : {u".parte"_s, u".parte-wal"_s, u".parte-shm"_s, u"-wal"_s}) {
        QFile file(folder.file(Database::Inputs) + end);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("half a database");
    }
    QVERIFY(run(folder));
    QCOMPARE(files(folder), (QStringList{u"insumos.sqlite"_s, u"nomenclador.sqlite"_s, u"tornel.sqlite"_s}));
    QCOMPARE(rows(*folder.connect(Database::Inputs, Access::ReadOnly), u"select CATNRO from CAT"_s), 4);
}

void tst_FirstStart::onlyWhatIsMissingIsMade()
{
    const QTemporaryDir place;
    const DataFolder folder(place.path());
    QVERIFY(run(folder));
    {
        const auto inputs = folder.connect(Database::Inputs, Access::ReadWrite);
        inputs->setSql(u"insert into CAT (CATNRO,CATDES) values ('MIO','Catálogo propio')"_s);
        QCOMPARE(inputs->execute(), 1);
    }
    QVERIFY(QFile::remove(folder.file(Database::Host)));
    QVERIFY(FirstStart(folder).needed());
    QVERIFY(run(folder));
    QCOMPARE(
        rows(*folder.connect(Database::Inputs, Access::ReadOnly), u"select CATNRO from CAT where CATNRO = 'MIO'"_s), 1);
    QCOMPARE(rows(*folder.connect(Database::Host, Access::ReadOnly), u"select interno from caratula"_s), 11);
}

void tst_FirstStart::aFolderThatCannotBeMadeIsReported()
{
    const QTemporaryDir place;
    QFile file(place.filePath(u"archivo"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    const DataFolder folder(place.filePath(u"archivo/carpeta"_s));
    QVERIFY_THROWS_EXCEPTION(oVELDRA::RuntimeError, run(folder));
}

QTEST_GUILESS_MAIN(tst_FirstStart)
#include "tst_FirstStart.moc"
