#include "Corpus.h"
#include "doubles/TestStores.h"

#include <oVELDRA/Store.h>

#include <dialect/JetPrinter.h>
#include <dialect/Parser.h>

#include <QtTest>

using namespace Qt::StringLiterals;
using oVELDRA::doubles::TestStores;

/// Runs the statement files: each file on fresh sample databases, its records in order.
class tst_Statements : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(u"es_AR"_s)); }

    void files_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("the screens' statements") << u"screens.txt"_s;
        QTest::newRow("what the words mean") << u"dialect.txt"_s;
        QTest::newRow("what is refused") << u"errors.txt"_s;
        QTest::newRow("where engines could differ") << u"engines.txt"_s;
    }

    void files()
    {
        QFETCH(QString, file);
        Databases databases;
        databases[u"inputs"_s] = oVELDRA::createStore(TestStores::newUrl(), oVELDRA::Database::Inputs);
        databases[u"nomenclature"_s] = oVELDRA::createStore(TestStores::newUrl(), oVELDRA::Database::Nomenclature);
        databases[u"host"_s] = oVELDRA::createStore(TestStores::newUrl(), oVELDRA::Database::Host);
        loadSample(databases);
        int wrong = 0;
        const std::vector<Record> records = readCorpus(file);
        QVERIFY(!records.empty());
        for (const Record& record : records) {
            const QStringList actual = runStatement(*databases.at(record.database), record.statement);
            if (!sameResult(actual, record.expected)) {
                ++wrong;
                qWarning().noquote() << record.place << record.statement << "\nexpected:\n"
                                     << record.expected.join(u'\n') << "\nactual:\n"
                                     << actual.join(u'\n');
            }
        }
        QCOMPARE(wrong, 0);
    }

    /// Twice the same statement goes through the kept plan; the result must not change.
    void repeatedStatementsGiveTheSame()
    {
        Databases databases;
        databases[u"nomenclature"_s] = oVELDRA::createStore(TestStores::newUrl(), oVELDRA::Database::Nomenclature);
        databases[u"inputs"_s] = oVELDRA::createStore(TestStores::newUrl(), oVELDRA::Database::Inputs);
        databases[u"host"_s] = oVELDRA::createStore(TestStores::newUrl(), oVELDRA::Database::Host);
        loadSample(databases);
        for (const Record& record : readCorpus(u"screens.txt"_s)) {
            if (!record.statement.startsWith(u"select"_s)) {
                continue;
            }
            oVELDRA::ConexionDB& database = *databases.at(record.database);
            const QStringList first = runStatement(database, record.statement);
            QCOMPARE(runStatement(database, record.statement), first);
        }
    }

    /// Printing a statement's tree and reading that back gives the same tree.
    void printedTreesReadBack()
    {
        for (const QString& file : {u"screens.txt"_s, u"dialect.txt"_s, u"engines.txt"_s}) {
            for (const Record& record : readCorpus(file)) {
                const oVELDRA::dialect::ParsedStatement tree = oVELDRA::dialect::parse(record.statement);
                const QString printed = oVELDRA::dialect::printJet(tree);
                const oVELDRA::dialect::ParsedStatement again = oVELDRA::dialect::parse(printed);
                QVERIFY2(oVELDRA::dialect::sameTree(tree, again), qPrintable(printed));
            }
        }
    }
};

QTEST_GUILESS_MAIN(tst_Statements)
#include "tst_Statements.moc"
