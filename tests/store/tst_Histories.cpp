// The same random histories on a file, on a server and on a plain model of the store's rules: what comes of each step
// and every table after it must be the same.
//
// A failure says its seed. OVELDRA_HISTORY_SEED plays that one instead of the usual ones, OVELDRA_HISTORY_STEPS makes
// histories longer or shorter.

#include "HistoryStore.h"
#include "doubles/PostgresServer.h"

#include <QLocale>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::histories;

namespace {

constexpr int usualSteps = 400;

/// Where lists of texts differ first; empty when they do not.
QString difference(const QStringList& file, const QStringList& server, const QStringList& model)
{
    for (qsizetype i = 0; i < std::max({file.size(), server.size(), model.size()}); ++i) {
        const auto row = [i](const QStringList& rows) { return rows.value(i, u"(none)"_s); };
        if (row(file) != row(model) || row(server) != row(model)) {
            return u"row %1\n  file:   %2\n  server: %3\n  model:  %4"_s.arg(i).arg(row(file), row(server), row(model));
        }
    }
    return {};
}

/// The status text of an import without what an engine adds in brackets.
QString withoutDetail(const QString& status)
{
    return status.section(u" ("_s, 0, 0);
}

} // namespace

class tst_Histories : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_server.start(); }

    void sameOnEveryStore_data()
    {
        QTest::addColumn<quint64>("seed");
        QTest::addColumn<QString>("locale");
        if (const quint64 seed = qEnvironmentVariable("OVELDRA_HISTORY_SEED").toULongLong()) {
            QTest::newRow("the seed of the environment") << seed << u"es_AR"_s;
            return;
        }
        QTest::newRow("one") << quint64{1} << u"es_AR"_s;
        QTest::newRow("another") << quint64{2} << u"es_AR"_s;
        QTest::newRow("a third") << quint64{45} << u"es_AR"_s;
        QTest::newRow("a fourth") << quint64{108} << u"es_AR"_s;
        QTest::newRow("with decimal points") << quint64{3} << u"en_US"_s;
    }

    void sameOnEveryStore()
    {
        QFETCH(const quint64, seed);
        QFETCH(const QString, locale);
        QLocale::setDefault(QLocale(locale));
        History history(seed);
        ReferenceModel model;
        const QTemporaryDir folder;
        const QString file = u"sqlite:"_s + folder.filePath(u"insumos.sqlite"_s);
        HistoryStore onFile(file, u"sqlite:"_s + folder.filePath(u"tornel.sqlite"_s), history.hostFiles());
        HistoryStore onServer(m_server.url(u"insumos%1"_s.arg(seed)), m_server.url(u"tornel%1"_s.arg(seed)),
                              history.hostFiles());
        const int steps = qEnvironmentVariable("OVELDRA_HISTORY_STEPS", QString::number(usualSteps)).toInt();
        for (int number = 1; number <= steps; ++number) {
            const Step step = history.next(model);
            const QString fault = played(step, history, model, onFile, onServer);
            if (!fault.isEmpty()) {
                QFAIL(qUtf8Printable(u"seed %1, step %2: %3\n%4"_s.arg(seed).arg(number).arg(describe(step), fault)));
            }
        }
    }

private:
    /// Plays a step everywhere; answers what went wrong.
    static QString played(const Step& step, const History& history, ReferenceModel& model, HistoryStore& onFile,
                          HistoryStore& onServer)
    {
        try {
            return playedApart(step, history, model, onFile, onServer);
        } catch (const RuntimeError& error) {
            return QString::fromUtf8(error.what());
        }
    }

    /// The same, but for an error that no step can meet.
    static QString playedApart(const Step& step, const History& history, ReferenceModel& model, HistoryStore& onFile,
                               HistoryStore& onServer)
    {
        QString file = onFile.play(step, model);
        QString server = onServer.play(step, model);
        QString expected = playedOn(model, step, history);
        if (std::holds_alternative<ImportRequest>(step)) {
            file = withoutDetail(file);
            server = withoutDetail(server);
            expected = file.startsWith(expected) ? file : expected; // the model does not know the error's own words
        }
        QString fault = difference(file.split(u'\n'), server.split(u'\n'), expected.split(u'\n'));
        if (!fault.isEmpty()) {
            return u"outcome, "_s + fault;
        }
        for (const ModelTable& table : model.tables()) {
            fault = difference(onFile.content(table), onServer.content(table), contentOf(table));
            if (!fault.isEmpty()) {
                return u"table %1, "_s.arg(table.definition.name) + fault;
            }
        }
        return {};
    }

    doubles::PostgresServer m_server;
};

QTEST_MAIN(tst_Histories)
#include "tst_Histories.moc"
