#include "StoreCalls.h"

#include <store/sqlite/SqliteEngine.h>

#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;

namespace {

sqlite3* handleOf(const Connection& connection)
{
    return dynamic_cast<store::SqliteEngine&>(engineOf(connection)).handle();
}

Connection freshInputs()
{
    return createStore(u"sqlite::memory:"_s, Database::Inputs);
}

} // namespace

/// What is so of the embedded engine only.
class tst_SqliteStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
    }

    void plainTextsAreFoundThroughTheIndex_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("index");
        QTest::newRow("key")
            << u"SELECT 1 FROM PRD WHERE rtrim(\"CATNRO\") COLLATE NOCASE = ?1 AND rtrim(\"PRDNRO\") COLLATE NOCASE = ?2"_s
            << u"PRD_KEY (<expr>=? AND <expr>=?)"_s;
        QTest::newRow("declaration of an article")
            << u"SELECT 1 FROM INS WHERE rtrim(\"INTDCL\") COLLATE NOCASE = ?1 ORDER BY rowid"_s
            << u"INS_IDX1 (<expr>=?)"_s;
    }

    void plainTextsAreFoundThroughTheIndex()
    {
        QFETCH(QString, query);
        QFETCH(QString, index);
        const Connection db = freshInputs();
        store::RecordData plan(std::make_shared<store::ColumnKinds>(4, dialect::ColumnKind::Text));
        engineOf(db).prepare("EXPLAIN QUERY PLAN " + query.toUtf8())->query({}, plan);
        QCOMPARE(plan.rows(), 1); // and no sorting step
        const QString step = plan.variant(0, 3).toString();
        QVERIFY2(step.contains(index), qPrintable(step));
    }

    void missingFile()
    {
        const QString file = m_folder->filePath(u"no está.sqlite"_s);
        const RuntimeError error = errorOf([&] { static_cast<void>(connectStore(u"sqlite:"_s + file)); });
        QCOMPARE(error.number(), -2147467259);
        QCOMPARE(error.nativeNumber(), 3024);
        QVERIFY(error.description().contains(file));
        QVERIFY(!QFile::exists(file));
    }

    void fileThatIsNoDatabase()
    {
        const RuntimeError error = errorOf([&] { static_cast<void>(connectStore(fileWith(QByteArray(5000, 'x')))); });
        QCOMPARE(error.nativeNumber(), 3343);
    }

    void damagedFile()
    {
        const QString file = m_folder->filePath(u"d.sqlite"_s);
        {
            const Connection db = createStore(u"sqlite:"_s + file, Database::Inputs);
            for (int i = 0; i < 500; ++i) {
                run(db, insertHeader(QString::number(i)));
            }
            engineOf(db).run("PRAGMA wal_checkpoint(TRUNCATE)");
        }
        QFile raw(file);
        QVERIFY(raw.open(QIODevice::ReadWrite));
        const qint64 size = raw.size();
        for (qint64 page = 4096; page < size; page += 4096) {
            raw.seek(page);
            raw.write(QByteArray(2000, '\x5a'));
        }
        raw.close();
        const RuntimeError error = errorOf([&] {
            const Connection db = connectStore(u"sqlite:"_s + file);
            static_cast<void>(open(db, u"select * from INTINS"_s));
        });
        QCOMPARE(error.nativeNumber(), 3049);
    }

    void networkFoldersAreKnownByTheirFileSystem()
    {
        for (const char* const name : {"nfs", "nfs4", "cifs", "smb3", "fuse.sshfs"}) {
            QVERIFY2(store::isNetworkFileSystem(name), name);
        }
        for (const char* const name : {"ext4", "xfs", "btrfs", "tmpfs", "NTFS", "overlay", ""}) {
            QVERIFY2(!store::isNetworkFileSystem(name), name);
        }
    }

    void diskFullLeavesNothingOfTheStatement()
    {
        const Connection db = connectStore(newUrl());
        engineOf(db).run("PRAGMA max_page_count = 30");
        RuntimeError error(0, {});
        int written = 0;
        for (; written < 10000 && error.number() == 0; ++written) {
            error = errorOf([&] { run(db, insertHeader(QString::number(written))); });
        }
        QCOMPARE(error.number(), -2147467259);
        QCOMPARE(error.nativeNumber(), 3026);
        QCOMPARE(countOf(db, u"INTINS"_s), written - 1);
    }

    void aCommitThatFailsSaysSoAndLeavesNothing()
    {
        const QString url = newUrl();
        const Connection db = connectStore(url);
        const auto burst = db->beginBurst();
        run(db, insertHeader(u"1"_s));
        sqlite3_commit_hook(
            handleOf(db), [](void*) { return 1; }, nullptr);
        QCOMPARE(errorOf([&] { burst->commit(); }).number(), -2147467259);
        sqlite3_commit_hook(handleOf(db), nullptr, nullptr);
        QCOMPARE(countOf(db, u"INTINS"_s), 0);
        QCOMPARE(run(db, insertHeader(u"2"_s)), 1); // and the connection goes on
    }

private:
    [[nodiscard]] QString fileWith(const QByteArray& content) const
    {
        QFile file(m_folder->filePath(u"otro.sqlite"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("cannot write %s", qPrintable(file.fileName()));
        }
        return u"sqlite:"_s + file.fileName();
    }

    /// An empty inputs database in a file.
    [[nodiscard]] QString newUrl() const
    {
        QString url = u"sqlite:"_s + m_folder->filePath(u"insumos.sqlite"_s);
        static_cast<void>(createStore(url, Database::Inputs));
        return url;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_SqliteStore)
#include "tst_SqliteStore.moc"
