#include "AccessCopy.h"
#include "DatabasePlaces.h"
#include "FileSizeLimit.h"
#include "RecordedConsole.h"
#include "doubles/ThrownError.h"

#include <store/StoreError.h>

#include <QJsonArray>
#include <QtTest>

#include <limits>
#include <oveldra-datos/AccessError.h>
#include <oveldra-datos/Command.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::data;

namespace {

using Options = QMap<QString, QString>;

QString sample(const QString& name)
{
    return QStringLiteral(OVELDRA_TEST_DATA "/access/") + name;
}

int run(const QString& origin, const QString& destination, Console& console, const Options& options = {})
{
    return migrar().run({{origin, destination}, options}, console);
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The line of a report that begins with a name, its figures parted by single blanks.
QString lineOf(const RecordedConsole& console, const QString& name)
{
    for (const QString& line : console.lines()) {
        if (line.startsWith(name)) {
            return line.simplified();
        }
    }
    return {};
}

QJsonObject tableOf(const QJsonObject& result, const QString& name)
{
    for (const QJsonValue table : result.value(u"tables"_s).toArray()) {
        if (table[u"table"_s] == name) {
            return table.toObject();
        }
    }
    return {};
}

/// The second product of the first catalog gets the first one's code, in small letters.
void repeatAProduct(AccessCopy& copy)
{
    copy.replaceText(insumos::prd, u"PM002"_s, u"pm001"_s);
}

const QString& repeatedProduct()
{
    static const QString reason =
        u"clave repetida: es la de la fila 1 (no se distinguen mayúsculas ni blancos finales)"_s;
    return reason;
}

} // namespace

class tst_Migrar : public QObject
{
    Q_OBJECT

private:
    /// Whether the destination is as it was before: a file that is not there, a server's schema without rows.
    [[nodiscard]] bool nothingIsLeft(const QString& url) const
    {
        if (url.startsWith(u"sqlite:"_s)) {
            return m_places.files().isEmpty();
        }
        return DatabasePlaces::countOf(url, u"CAT"_s) + DatabasePlaces::countOf(url, u"INS"_s) == 0;
    }

    DatabasePlaces m_places;

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Argentina)); }

    void cleanup()
    {
        for (const QString& file : m_places.files()) {
            QFile::remove(m_places.file(file));
        }
    }

    void countsAndSumsOfTheInputs_data() { DatabasePlaces::addEngines(); }
    void countsAndSumsOfTheInputs()
    {
        QFETCH(QString, engine);
        const QString url = m_places.fresh(engine);
        RecordedConsole console;
        QCOMPARE(run(sample(u"insumos.mdb"_s), url, console), static_cast<int>(Success));
        QCOMPARE(lineOf(console, u"CAT"_s), u"CAT 5 0 5"_s);
        QCOMPARE(lineOf(console, u"PRD"_s), u"PRD 240 0 240"_s);
        QCOMPARE(lineOf(console, u"RIP"_s), u"RIP 1.086 0 1.086"_s);
        QCOMPARE(lineOf(console, u"INTINS"_s), u"INTINS 36 0 36"_s);
        QCOMPARE(lineOf(console, u"INS "_s), u"INS 914 0 914"_s);
        QCOMPARE(lineOf(console, u"DIP"_s), u"DIP 1.582 0 1.582"_s);
        QCOMPARE(lineOf(console, u"Cantidad declarada"_s), u"Cantidad declarada 2.326.268,60 0,00 2.326.268,60"_s);
        QCOMPARE(lineOf(console, u"Saldo"_s), u"Saldo 1.621.653,13 0,00 1.621.653,13"_s);
        QCOMPARE(lineOf(console, u"Valor CIF"_s), u"Valor CIF 347.787.970,77 0,00 347.787.970,77"_s);
        QCOMPARE(lineOf(console, u"Cantidad descargada"_s), u"Cantidad descargada 704.615,47 0,00 704.615,47"_s);
        QCOMPARE(lineOf(console, u"Declaraciones"_s), u"Declaraciones comparadas una por una: 36."_s);
        QCOMPARE(console.lines().last(), u"La prueba cierra: el destino tiene todo lo que se leyó."_s);
        QVERIFY(console.complaints().isEmpty());
        QVERIFY(!console.progressReports().isEmpty());
        const Rows headers = DatabasePlaces::rowsOf(url, u"INTINS"_s);
        QCOMPARE(std::count_if(headers.begin(), headers.end(), [](const auto& row) { return row[7].number == 1; }), 26);
        QCOMPARE(headers[0][2].date, QDate(2024, 5, 11));
        QCOMPARE(DatabasePlaces::rowsOf(url, u"CAT"_s)[2][1].text, u"Tableros eléctricos – año 2025"_s);
        QVERIFY(DatabasePlaces::rowsOf(url, u"CAT"_s)[4][1].isNull());
    }

    void theResultHasEverything()
    {
        RecordedConsole console(RecordedConsole::Format::Json);
        const QString url = m_places.fresh(u"sqlite"_s);
        QCOMPARE(run(sample(u"insumos.mdb"_s), url, console), static_cast<int>(Success));
        QCOMPARE(console.results().size(), 1);
        const QJsonObject& result = console.results().first();
        QCOMPARE(result[u"database"_s].toString(), u"insumos"_s);
        QCOMPARE(result[u"source"_s].toString(), sample(u"insumos.mdb"_s));
        QCOMPARE(result[u"destination"_s].toString(), url);
        QCOMPARE(result[u"committed"_s].toBool(), true);
        QCOMPARE(result[u"rejectionCount"_s].toInt(-1), 0);
        QCOMPARE(result[u"failures"_s].toArray().size(), 0);
        const QJsonObject articles = tableOf(result, u"INS"_s);
        QCOMPARE(articles[u"announced"_s].toInt(), 914);
        QCOMPARE(articles[u"read"_s].toInt(), 914);
        QCOMPARE(articles[u"written"_s].toInt(), 914);
        const QJsonArray declarations = result[u"declarations"_s].toArray();
        QCOMPARE(declarations.size(), 36);
        double discharged = 0;
        for (const QJsonValue declaration : declarations) {
            QCOMPARE(declaration[u"equal"_s].toBool(), true);
            QCOMPARE(declaration[u"source"_s], declaration[u"destination"_s]);
            discharged += declaration[u"destination"_s][u"discharged"_s].toDouble();
        }
        QCOMPARE(discharged, 704615.47);
        QCOMPARE(result[u"totals"_s][u"destination"_s][u"cif"_s].toDouble(), 347787970.774705);
    }

    void theBaseIsKnownByItsTables()
    {
        const QString tariff = m_places.fresh(u"sqlite"_s);
        RecordedConsole console;
        QCOMPARE(run(sample(u"ncm.mdb"_s), tariff, console), static_cast<int>(Success));
        QCOMPARE(DatabasePlaces::countOf(tariff, u"NCM"_s), size_t{7204});
        QCOMPARE(DatabasePlaces::countOf(tariff, u"sufidos"_s), size_t{2623});
        QVERIFY(lineOf(console, u"Sumas"_s).isNull());
        const QString host = m_places.fresh(u"sqlite"_s);
        QCOMPARE(run(sample(u"tornel.mdb"_s), host, console), static_cast<int>(Success));
        QCOMPARE(DatabasePlaces::countOf(host, u"caratula"_s), size_t{12});
        QCOMPARE(DatabasePlaces::countOf(host, u"item"_s), size_t{168});
        QCOMPARE(DatabasePlaces::countOf(host, u"groupsubitems"_s), size_t{468});
    }

    void anotherBaseThanAskedForHasNothingToMove()
    {
        RecordedConsole console;
        const QString url = m_places.fresh(u"sqlite"_s);
        QCOMPARE(run(sample(u"tornel.mdb"_s), url, console, {{u"base"_s, u"insumos"_s}}), static_cast<int>(Success));
        QVERIFY(lineOf(console, u"El origen no tiene estas tablas"_s).endsWith(u"CAT, PRD, RIP, INTINS, INS, DIP."_s));
        QCOMPARE(lineOf(console, u"ATENCIÓN: no se copió la tabla item"_s),
                 u"ATENCIÓN: no se copió la tabla item (168 filas)."_s);
        QVERIFY_THROWS_EXCEPTION(BadUsageError, run(sample(u"tornel.mdb"_s), url, console, {{u"base"_s, u"otra"_s}}));
    }

    void aSecondRunRefuses_data() { DatabasePlaces::addEngines(); }
    void aSecondRunRefuses()
    {
        QFETCH(QString, engine);
        const QString url = m_places.fresh(engine);
        RecordedConsole console;
        QCOMPARE(run(sample(u"insumos.mdb"_s), url, console), static_cast<int>(Success));
        const auto error = doubles::thrownBy([&] { run(sample(u"insumos.mdb"_s), url, console); });
        QVERIFY(error);
        QCOMPARE(error->nativeNumber(), static_cast<int>(store::Trouble::AlreadyThere));
        QCOMPARE(DatabasePlaces::countOf(url, u"INS"_s), size_t{914});
    }

    void emptyTablesAreFilled()
    {
        const QString url = m_places.fresh(u"sqlite"_s);
        store::createTables(*store::openEngine(url, Access::ReadWrite, store::Opening::Create), Database::Inputs);
        RecordedConsole console;
        QCOMPARE(run(sample(u"insumos.mdb"_s), url, console), static_cast<int>(Success));
        QCOMPARE(DatabasePlaces::countOf(url, u"INS"_s), size_t{914});
    }

    void aRejectedRowStopsIt_data() { DatabasePlaces::addEngines(); }
    void aRejectedRowStopsIt()
    {
        QFETCH(QString, engine);
        AccessCopy copy(u"insumos.mdb"_s);
        repeatAProduct(copy);
        const QString url = m_places.fresh(engine);
        RecordedConsole console;
        QCOMPARE(run(copy.path(), url, console), static_cast<int>(Findings));
        QVERIFY(nothingIsLeft(url));
        QCOMPARE(lineOf(console, u"Filas rechazadas"_s), u"Filas rechazadas: 1."_s);
        QCOMPARE(lineOf(console, u"  PRD"_s), u"PRD, fila 2 (CATNRO=MOTORES, PRDNRO=pm001): "_s + repeatedProduct());
        QVERIFY(console.lines().last().startsWith(u"No se guardó nada: hay filas rechazadas."_s));

        RecordedConsole accepting;
        QCOMPARE(run(copy.path(), url, accepting, {{u"aceptar-rechazos"_s, {}}}), static_cast<int>(Success));
        QCOMPARE(DatabasePlaces::countOf(url, u"PRD"_s), size_t{239});
        QCOMPARE(lineOf(accepting, u"PRD"_s), u"PRD 240 1 239"_s);
        QCOMPARE(accepting.lines().last(),
                 u"La prueba cierra: el destino tiene todo lo que se leyó, menos lo rechazado."_s);
    }

    void rejectedRowsOfAllKinds()
    {
        AccessCopy copy(u"insumos.mdb"_s);
        repeatAProduct(copy);
        QByteArray withNul = AccessCopy::utf16(u"Cobre"_s);
        withNul[4] = '\0';
        copy.replace(insumos::intins, AccessCopy::utf16(u"Cobre"_s), withNul);
        copy.replace(insumos::intins, AccessCopy::littleEndian(45423.0), AccessCopy::littleEndian(45423.75));
        copy.replace(insumos::ins, AccessCopy::littleEndian(4501.15),
                     AccessCopy::littleEndian(std::numeric_limits<double>::quiet_NaN()));
        copy.replace(insumos::dip, AccessCopy::littleEndian(45736.0), AccessCopy::littleEndian(9e9));
        const QString list = m_places.file(u"rechazos.csv"_s);
        RecordedConsole console(RecordedConsole::Format::Json);
        const Options options{{u"aceptar-rechazos"_s, {}}, {u"rechazos"_s, list}};
        QCOMPARE(run(copy.path(), m_places.fresh(u"sqlite"_s), console, options), static_cast<int>(Success));
        const QString expected =
            u"tabla,fila,clave,motivo\r\n"
            "PRD,2,\"CATNRO=MOTORES, PRDNRO=pm001\",%1\r\n"
            "INTINS,1,INTDCL=24073IT14084580G,INTFOF: la fecha tiene hora: 11/05/2024 18:00:00\r\n"
            "INTINS,2,INTDCL=26073IT16039649L,INTDES: el texto tiene un carácter nulo\r\n"
            "INS,1,\"INTDCL=24073IT14084580G, ARTITM=1, ARTSBT=1\",ARTCAT: el número no es finito\r\n"
            "DIP,1,\"ARTDCL=24073IT14084580G, ARTITM=1, ARTSBT=1, EXTINT=EXP00234, EXTSBT=14\","
            "EXTFOF: la fecha es imposible\r\n"_s.arg(repeatedProduct());
        QCOMPARE(QString::fromUtf8(contentOf(list)), expected);
        const QJsonObject& result = console.results().first();
        QCOMPARE(result[u"rejectionCount"_s].toInt(), 5);
        QCOMPARE(result[u"rejections"_s][3][u"reason"_s].toString(), u"ARTCAT: el número no es finito"_s);
        const QJsonObject totals = result[u"totals"_s].toObject();
        QCOMPARE(totals[u"source"_s][u"articles"_s].toInt(), 914);
        QCOMPARE(totals[u"rejected"_s][u"articles"_s].toInt(), 1);
        QCOMPARE(totals[u"destination"_s][u"articles"_s].toInt(), 913);
        QCOMPARE(totals[u"rejected"_s][u"discharged"_s].toDouble(), 1550.67);
        QCOMPARE(totals[u"destination"_s][u"discharged"_s].toDouble(), 704615.47 - 1550.67);
    }

    void anOldListOfRejectionsIsKept()
    {
        QFile old(m_places.file(u"rechazos.csv"_s));
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("mine");
        old.close();
        RecordedConsole console;
        const QString url = m_places.fresh(u"sqlite"_s);
        QVERIFY(doubles::thrownBy([&] {
            run(sample(u"insumos.mdb"_s), url, console, {{u"rechazos"_s, old.fileName()}});
        }));
        QCOMPARE(contentOf(old.fileName()), QByteArray("mine"));
        QCOMPARE(m_places.files(), QStringList{u"rechazos.csv"_s});
    }

    void aBadFileLeavesNothing_data()
    {
        QTest::addColumn<QString>("engine");
        QTest::addColumn<qsizetype>("size");
        QTest::addColumn<int>("trouble");
        for (const QString& engine : {u"sqlite"_s, u"postgresql"_s}) {
            const auto row = [&engine](const char* what) -> QTestData& {
                return QTest::addRow("%s, %s", what, qPrintable(engine)) << engine;
            };
            row("cut off in its rows") << qsizetype{900000} << static_cast<int>(AccessTrouble::Damaged);
            row("cut off in its catalog") << qsizetype{60000} << static_cast<int>(AccessTrouble::Damaged);
            row("no Access file") << qsizetype{10} << static_cast<int>(AccessTrouble::NoAccessFile);
        }
    }

    void aBadFileLeavesNothing()
    {
        QFETCH(QString, engine);
        QFETCH(qsizetype, size);
        QFETCH(int, trouble);
        AccessCopy copy(u"insumos.mdb"_s);
        copy.bytes().truncate(size);
        const QString url = m_places.fresh(engine);
        RecordedConsole console;
        const auto error = doubles::thrownBy([&] { run(copy.path(), url, console); });
        QVERIFY(error);
        QCOMPARE(error->nativeNumber(), trouble);
        QVERIFY(console.lines().isEmpty());
        if (engine == u"sqlite"_s) {
            QVERIFY(nothingIsLeft(url));
        } else {
            // What cannot even be opened has not come as far as the server.
            QVERIFY(doubles::thrownBy([&] { static_cast<void>(DatabasePlaces::countOf(url, u"CAT"_s)); }) ||
                    nothingIsLeft(url));
        }
    }

    void lessRowsThanTheFileAnnouncesProveNothing()
    {
        AccessCopy copy(u"insumos.mdb"_s);
        constexpr qsizetype rowCount = 16;
        copy.bytes().replace(insumos::dip * AccessCopy::pageSize + rowCount, 4, AccessCopy::littleEndian(1583));
        RecordedConsole console;
        const QString url = m_places.fresh(u"sqlite"_s);
        QCOMPARE(run(copy.path(), url, console, {{u"aceptar-rechazos"_s, {}}}), static_cast<int>(Failed));
        QVERIFY(nothingIsLeft(url));
        QCOMPARE(lineOf(console, u"La prueba no cierra"_s),
                 u"La prueba no cierra: tabla DIP: el origen anuncia 1583 filas y se pudieron leer 1582."_s);
        QCOMPARE(console.lines().last(), u"No se guardó nada."_s);
        QCOMPARE(console.complaints(),
                 QStringList{u"La prueba no cierra: lo escrito no es lo leído. No se guardó nada."_s});
    }

    void linkedTablesAreInAnotherFile()
    {
        AccessCopy copy(u"insumos.mdb"_s);
        constexpr quint16 catalogColumns = 17;
        for (const quint32 table :
             {insumos::cat, insumos::prd, insumos::rip, insumos::intins, insumos::ins, insumos::dip}) {
            QByteArray start = AccessCopy::littleEndian(catalogColumns);
            start += AccessCopy::littleEndian(table);
            const qsizetype row = copy.bytes().indexOf(start);
            QVERIFY(row > 0);
            constexpr qsizetype kind = 2 + 4 + 4;
            copy.bytes()[row + kind] = 6;
        }
        RecordedConsole console;
        const auto error = doubles::thrownBy([&] { run(copy.path(), m_places.fresh(u"sqlite"_s), console); });
        QVERIFY(error);
        QCOMPARE(error->description(), u"El archivo solo tiene tablas vinculadas (CAT, PRD, RIP, INTINS, INS, DIP): "
                                       "migre el archivo que las contiene."_s);
    }

    void aFullDiskLeavesNothing()
    {
        const QString url = m_places.fresh(u"sqlite"_s);
        RecordedConsole console;
        std::optional<RuntimeError> error;
        {
            const FileSizeLimit limit(200000);
            error = doubles::thrownBy([&] { run(sample(u"insumos.mdb"_s), url, console); });
        }
        QVERIFY(error);
        QVERIFY2(error->nativeNumber() == static_cast<int>(store::Trouble::DiskFull) ||
                     error->nativeNumber() == static_cast<int>(store::Trouble::Broken),
                 qPrintable(error->description()));
        QVERIFY(nothingIsLeft(url));
    }

    void aDatabaseInMemoryWouldBeLost()
    {
        RecordedConsole console;
        QVERIFY_THROWS_EXCEPTION(BadUsageError, run(sample(u"insumos.mdb"_s), u"sqlite::memory:"_s, console));
    }
};

QTEST_GUILESS_MAIN(tst_Migrar)
#include "tst_Migrar.moc"
