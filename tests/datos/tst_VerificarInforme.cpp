#include "FileSizeLimit.h"
#include "StockBase.h"
#include "doubles/ThrownError.h"

#include <store/Schema.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>
#include <QScopeGuard>
#include <QTest>

#include <tariff/CsvReader.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::data;
using doubles::thrownBy;

namespace {

constexpr int unknownTable = -2147217865;
constexpr int unknownColumn = -2147217904;

using Options = QMap<QString, QString>;

QList<QStringList> csvRows(const QString& text)
{
    QList<QStringList> rows;
    tariff::CsvReader reader(text);
    while (const auto row = reader.next()) {
        rows.append(*row);
    }
    return rows;
}

/// The text of what the command complains about when its options make no sense; empty when they do.
QString refusal(const QString& url, const Options& options,
                RecordedConsole::Format format = RecordedConsole::Format::Text)
{
    try {
        static_cast<void>(CommandRun(verificar(), {url}, options, format));
    } catch (const BadUsageError& error) {
        return error.text();
    }
    return {};
}

} // namespace

class tst_VerificarInforme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data() { FreshBases::addEngines(); }

    void initTestCase() { QLocale::setDefault(QLocale(u"es_AR"_s)); }

    // --- formats -------------------------------------------------------------------------------------------------

    void theTableIsGroupedByKindWithCounts()
    {
        const StockBase base = withFindings();
        const CommandRun run(verificar(), {base.url()});
        QCOMPARE(run.exitCode, int(Findings));
        QCOMPARE(run.console.written(), QString());
        QCOMPARE(
            run.console.lines(),
            QStringList(
                {u"Saldos que no son lo declarado menos lo descargado (saldo-incorrecto): 2"_s,
                 u"  Tabla  INTDCL  ARTITM  ARTSBT  ARTNRO     Declarado  Descargado  Esperado  Saldo  Detalle"_s,
                 u"  INS    D,\"1\"        1       1  AC-1             100        30,5      69,5     65  El artículo "
                 u"tiene un saldo de 65; lo declarado (100) menos lo descargado (30,5) es 69,5."_s,
                 u"  INS    D,\"1\"        1      12  con salto        0,3         0,1       0,2      0  El artículo "
                 u"tiene un saldo de 0; lo declarado (0,3) menos lo descargado (0,1) es 0,2."_s,
                 {},
                 u"Relaciones de productos que no existen (relacion-sin-producto): 1"_s,
                 u"  Tabla  ARTNRO  CATNRO  PRDNRO  Detalle"_s,
                 u"  RIP            C       P       No hay producto «P» del catálogo «C» en PRD."_s,
                 {},
                 u"Filas leídas: CAT 0 · DIP 2 · INS 2 · INTINS 1 · PRD 0 · RIP 1"_s,
                 u"No se controlaron las posiciones de los productos: falta --ncm."_s,
                 u"Se encontraron 3 hallazgos."_s}));
    }

    void theTableOfNothingSaysSo()
    {
        const StockBase base(m_bases.url(), Database::Inputs);
        const CommandRun run(verificar(), {base.url()});
        QCOMPARE(run.exitCode, int(Success));
        QCOMPARE(run.console.lines().last(), u"No se encontró nada fuera de lugar."_s);
        QCOMPARE(run.console.lines().size(), 3);
    }

    void csvHasOneHeaderAndPlainNumbers()
    {
        const StockBase base = withFindings();
        const CommandRun run(verificar(), {base.url()}, {{u"formato"_s, u"csv"_s}});
        QCOMPARE(run.exitCode, int(Findings));
        QCOMPARE(run.console.lines(), QStringList());
        QVERIFY(run.console.written().endsWith(u"\r\n"));
        const QList<QStringList> rows = csvRows(run.console.written());
        QCOMPARE(rows.size(), 4);
        QCOMPARE(rows[0].join(u' '),
                 u"tipo titulo tabla INTDCL ARTDCL ARTITM ARTSBT ARTNRO EXTINT EXTSBT EXTNOF CATNRO "
                 u"PRDNRO PRDNCM declarado descargado esperado saldo detalle"_s);
        for (const QStringList& row : rows) {
            QCOMPARE(row.size(), rows[0].size());
        }
        const auto cell = [&rows](int row, const QString& column) { return rows[row][rows[0].indexOf(column)]; };
        QCOMPARE(cell(1, u"INTDCL"_s), u"D,\"1\""_s);
        QCOMPARE(cell(1, u"descargado"_s), u"30.5"_s);
        QCOMPARE(cell(2, u"ARTNRO"_s), u"con\nsalto"_s);
        QCOMPARE(cell(2, u"esperado"_s), u"0.2"_s);
        QCOMPARE(cell(3, u"tipo"_s), u"relacion-sin-producto"_s);
        QCOMPARE(cell(3, u"detalle"_s), u"No hay producto «P» del catálogo «C» en PRD."_s);
    }

    void csvTellsNullFromAnEmptyText()
    {
        StockBase base(m_bases.url(), Database::Inputs);
        base.relation(u"", u"P", {});
        const CommandRun run(verificar(), {base.url()}, {{u"formato"_s, u"csv"_s}});
        QVERIFY(
            run.console.written().contains(u",RIP,,,,,,,,,\"\",P,,,,,,No hay producto «P» del catálogo «» en PRD."));
    }

    void jsonHasFindingsCountsAndRows_data()
    {
        QTest::addColumn<bool>("byFlag");
        QTest::newRow("--formato json") << false;
        QTest::newRow("--json") << true;
    }

    void jsonHasFindingsCountsAndRows()
    {
        QFETCH(bool, byFlag);
        const StockBase base = withFindings();
        const CommandRun run(verificar(), {base.url()}, byFlag ? Options() : Options{{u"formato"_s, u"json"_s}},
                             byFlag ? RecordedConsole::Format::Json : RecordedConsole::Format::Text);
        QCOMPARE(run.exitCode, int(Findings));
        QCOMPARE(run.console.lines(), QStringList());
        QVERIFY(run.console.results().isEmpty());
        QJsonParseError error{};
        const QJsonDocument json = QJsonDocument::fromJson(run.console.written().toUtf8(), &error);
        QCOMPARE(error.errorString(), QJsonParseError().errorString());
        const QJsonArray findings = json[u"hallazgos"].toArray();
        QCOMPARE(findings.size(), 3);
        QCOMPARE(findings[1][u"ARTNRO"].toString(), u"con\nsalto"_s);
        QCOMPARE(findings[1][u"esperado"].toDouble(), 0.2);
        QCOMPARE(findings[1][u"ARTITM"].toDouble(), 1);
        QVERIFY(findings[2].toObject().contains(u"ARTNRO"_s));
        QVERIFY(findings[2][u"ARTNRO"].isNull());
        QVERIFY(!findings[2].toObject().contains(u"INTDCL"_s));
        QCOMPARE(json[u"cantidades"][u"saldo-incorrecto"].toInt(), 2);
        QCOMPARE(json[u"cantidades"][u"saldo-negativo"].toInt(-1), 0);
        QCOMPARE(json[u"cantidades"].toObject().size(), 11);
        QCOMPARE(json[u"total"].toInt(), 3);
        QCOMPARE(json[u"filas"][u"DIP"].toInt(), 2);
        QCOMPARE(json[u"tolerancia"].toDouble(), 0.01);
        QCOMPARE(json[u"omitido"].toArray().size(), 1);
    }

    void jsonOfNothingIsAnObjectToo()
    {
        const StockBase base(m_bases.url(), Database::Inputs);
        const StockBase tariff(m_bases.url(), Database::Nomenclature);
        const CommandRun run(verificar(), {base.url()}, {{u"ncm"_s, tariff.url()}}, RecordedConsole::Format::Json);
        QCOMPARE(run.exitCode, int(Success));
        const QJsonDocument json = QJsonDocument::fromJson(run.console.written().toUtf8());
        QVERIFY(json[u"hallazgos"].isArray());
        QCOMPARE(json[u"total"].toInt(-1), 0);
        QCOMPARE(json[u"filas"][u"NCM"].toInt(-1), 0);
        QVERIFY(json[u"omitido"].toArray().isEmpty());
    }

    void manyFindingsAreAllWritten()
    {
        constexpr int articles = 450;
        StockBase base(m_bases.url(), Database::Inputs);
        base.engine().begin();
        base.header(u"D");
        for (int i = 1; i <= articles; ++i) {
            base.article(u"D", i, 1, 10, i, u"A%1"_s.arg(i));
        }
        base.engine().commit();
        const CommandRun csv(verificar(), {base.url()}, {{u"formato"_s, u"csv"_s}});
        const QList<QStringList> rows = csvRows(csv.console.written());
        QCOMPARE(rows.size(), articles); // the header, and all but the one that is right
        QCOMPARE(rows[9][5], u"9"_s);
        QCOMPARE(rows[10][5], u"11"_s);
        const CommandRun table(verificar(), {base.url()});
        QCOMPARE(table.console.lines().size(), articles + 5);
        QVERIFY(table.console.lines()[articles].startsWith(u"  INS    D          450       1  A450 "));
    }

    // --- options -------------------------------------------------------------------------------------------------

    void optionsThatMakeNoSenseAreRefused()
    {
        const QString url = m_bases.url(); // nothing is opened
        QCOMPARE(refusal(url, {{u"formato"_s, u"xml"_s}}), u"--formato es tabla, csv o json; no 'xml'."_s);
        QCOMPARE(refusal(url, {{u"formato"_s, u"csv"_s}}, RecordedConsole::Format::Json),
                 u"--json y --formato csv se contradicen."_s);
        for (const QString& amount : {u"-0.01"_s, u"mucho"_s, u""_s, u"nan"_s, u"inf"_s, u"1.000,5"_s}) {
            QVERIFY2(refusal(url, {{u"tolerancia"_s, amount}}).contains(u'\'' + amount + u'\''), qPrintable(amount));
        }
    }

    // --- databases that are not what they should be --------------------------------------------------------------

    void aDatabaseWithoutTheTablesIsNoStock()
    {
        const StockBase tariff(m_bases.url(), Database::Nomenclature);
        const auto error = thrownBy([&] { static_cast<void>(CommandRun(verificar(), {tariff.url()})); });
        QVERIFY(error);
        QCOMPARE(error->number(), unknownTable);
        QCOMPARE(error->description(),
                 u"La base de datos no es una base de insumos: no tiene las tablas CAT, PRD, RIP, "
                 u"INTINS, INS, DIP."_s);
        StockBase base(m_bases.url(), Database::Inputs);
        const auto asTariff = thrownBy([&] {
            static_cast<void>(CommandRun(verificar(), {base.url()}, {{u"ncm"_s, base.url()}}));
        });
        QCOMPARE(asTariff.value_or(RuntimeError(0)).description(),
                 u"La base de datos no es una base de nomenclador: no tiene la tabla NCM."_s);
        base.engine().run(R"(DROP TABLE "DIP")");
        const auto oneMissing = thrownBy([&] { static_cast<void>(CommandRun(verificar(), {base.url()})); });
        QCOMPARE(oneMissing.value_or(RuntimeError(0)).description(),
                 u"La base de datos no es una base de insumos: no tiene la tabla DIP."_s);
    }

    void aTableWithoutAColumnIsRefused()
    {
        StockBase base(m_bases.url(), Database::Inputs);
        base.engine().run(R"(ALTER TABLE "INS" DROP COLUMN "ARTDSC")");
        const auto error = thrownBy([&] { static_cast<void>(CommandRun(verificar(), {base.url()})); });
        QVERIFY(error);
        QCOMPARE(error->number(), unknownColumn);
        QCOMPARE(error->description(), u"La tabla INS no tiene la columna ARTDSC."_s);
    }

    void itemsKeptAsTextsOfDigits()
    {
        StockBase base = withItemsAsTexts();
        base.header(u"D");
        base.article(u"D", u"002", 1, 10, 9);
        base.article(u"D", u"010", 1, 10, 8);
        base.discharge(u"D", 2, 1, 1); // DIP has numbers
        base.discharge(u"D", 10, 1, 2);
        QCOMPARE(CommandRun(verificar(), {base.url()}).exitCode, int(Success));
        base.article(u"D", u"9", 1, 10, 10);
        const auto error = thrownBy([&] { static_cast<void>(CommandRun(verificar(), {base.url()})); });
        QVERIFY(error);
        QVERIFY(error->description().startsWith(u"No se puede recorrer la tabla INS en orden"));
    }

    void temporaryFilesThatCannotBeWrittenAreAnError()
    {
        const StockBase base = withFindings();
        const QByteArray folder = qgetenv("TMPDIR");
        const auto restore = qScopeGuard([&] { folder.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", folder); });
        qputenv("TMPDIR", "/no/such/folder");
        const auto error = thrownBy([&] { static_cast<void>(CommandRun(verificar(), {base.url()})); });
        QVERIFY(error);
        QCOMPARE(error->number(), 57);
        QVERIFY(error->description().contains(u"'/no/such/folder' no existe"));
    }

    void aFullTemporaryFolderIsAnError()
    {
        constexpr int articles = 400;
        StockBase base(m_bases.url(), Database::Inputs);
        base.engine().begin();
        for (int i = 1; i <= articles; ++i) {
            base.article(u"D", i, 1, 10, 10);
        }
        base.engine().commit();
        const FileSizeLimit limit(20000); // the findings' files are larger than that
        const auto error = thrownBy([&] { static_cast<void>(CommandRun(verificar(), {base.url()})); });
        QVERIFY(error);
        QCOMPARE(error->number(), 57);
    }

    void nothingIsWritten()
    {
        StockBase base = withFindings();
        const QString before = base.content();
        QFETCH_GLOBAL(QString, engine);
        const bool isFile = engine == u"sqlite"_s;
        const QString path = base.url().mid(QStringView(u"sqlite:").size());
        if (isFile) {
            base.engine().run("PRAGMA wal_checkpoint(TRUNCATE)");
        }
        const auto bytesOf = [&path] {
            QFile file(path);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        const QByteArray bytes = isFile ? bytesOf() : QByteArray();
        const QDateTime written = QFileInfo(path).lastModified();
        QCOMPARE(CommandRun(verificar(), {base.url()}).exitCode, int(Findings));
        QCOMPARE(base.content(), before);
        if (isFile) {
            QVERIFY(!bytes.isEmpty());
            QCOMPARE(bytesOf(), bytes);
            QCOMPARE(QFileInfo(path).lastModified(), written);
        }
    }

    void theRowsAreThoseOfOneMoment()
    {
        StockBase base(m_bases.url(), Database::Inputs);
        constexpr int rows = 5000; // more than are read before progress is told
        base.engine().begin();
        base.header(u"D");
        for (int i = 1; i <= rows; ++i) {
            base.article(u"D", i, 1, 10, 10);
        }
        base.engine().commit();
        const auto writeMeanwhile = [&base] {
            base.discharge(u"D", rows, 1, 3);
            base.relation(u"C", u"P", u"A");
        };
        class MeddlingConsole final : public Console
        {
        public:
            explicit MeddlingConsole(std::function<void()> meddle) : m_meddle(std::move(meddle)) {}
            [[nodiscard]] bool wantsJson() const override { return false; }
            void say(const QString& /*line*/) override {}
            void result(const QJsonObject& /*object*/) override {}
            void write(const QString& /*text*/) override {}
            void complain(const QString& /*line*/) override {}
            void progress(const QString& /*what*/, qint64 /*done*/, qint64 /*total*/) override
            {
                if (m_meddle) {
                    std::exchange(m_meddle, nullptr)();
                }
            }
            [[nodiscard]] bool hasMeddled() const { return !m_meddle; }

        private:
            std::function<void()> m_meddle;
        };
        MeddlingConsole console(writeMeanwhile);
        QCOMPARE(verificar().run({{base.url()}, {}}, console), int(Success));
        QVERIFY(console.hasMeddled());
        QCOMPARE(CommandRun(verificar(), {base.url()}).exitCode, int(Findings));
    }

private:
    StockBase withFindings()
    {
        StockBase base(m_bases.url(), Database::Inputs);
        base.header(u"D,\"1\"");
        base.article(u"D,\"1\"", 1, 1, 100, 65, u"AC-1");
        base.discharge(u"D,\"1\"", 1, 1, 30.5);
        base.article(u"D,\"1\"", 1, 12, 0.3, 0, u"con\nsalto");
        base.discharge(u"D,\"1\"", 1, 12, 0.1);
        base.relation(u"C", u"P", {});
        return base;
    }

    /// INS as other programs may have made it.
    StockBase withItemsAsTexts()
    {
        StockBase base(m_bases.url(), Database::Inputs);
        base.engine().run(R"(DROP TABLE "INS")");
        for (store::TableSchema table : store::schemaOf(Database::Inputs)) {
            if (table.table.name == u"INS"_s) {
                table.table.columns[static_cast<size_t>(table.table.find(u"ARTITM"))].kind = dialect::ColumnKind::Text;
                for (const QByteArray& command : base.engine().printer().createTable(table.table, {})) {
                    base.engine().run(command);
                }
            }
        }
        base.readTables();
        return base;
    }

    FreshBases m_bases;
};

QTEST_GUILESS_MAIN(tst_VerificarInforme)
#include "tst_VerificarInforme.moc"
