#include "XDisplay.h"

#include <oVELDRA/Store.h>

#include <QDir>
#include <QLocale>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <tornel/DataFolder.h>
#include <tornel/HostLists.h>

using namespace Qt::StringLiterals;
using namespace tornel;
using oVELDRA::Access;
using oVELDRA::Database;

namespace {

constexpr int windowTimeout = 60'000;

const QString& windowTitle()
{
    static const QString title = u"Tornel: declaraciones del despachante"_s;
    return title;
}

const QString& importTitle()
{
    static const QString title = u"Exportar a Stock de Insumos"_s;
    return title;
}

} // namespace

/// An import on a real screen: a window manager gives the windows the keyboard, and every key goes through the server.
class tst_ImportJourney : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aDeclarationIsImportedWithTheKeyboard();

private:
    /// Waits until the window of that title has the keyboard.
    [[nodiscard]] bool active(const QString& title) const
    {
        return QTest::qWaitFor([this, &title] { return m_display.activeTitle() == title; }, windowTimeout);
    }

    e2e::XDisplay m_display;
};

void tst_ImportJourney::initTestCase()
{
    if (const QStringList missing = e2e::XDisplay::missingPrograms(); !missing.isEmpty()) {
        QSKIP(qPrintable(u"not installed: %1"_s.arg(missing.join(u", "_s))));
    }
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Argentina));
    QVERIFY(m_display.start());
}

void tst_ImportJourney::aDeclarationIsImportedWithTheKeyboard()
{
    const QTemporaryDir place;
    const DataFolder folder(place.path());
    QProcess program;
    program.setProcessEnvironment(m_display.environment());
    program.setProcessChannelMode(QProcess::ForwardedChannels);
    program.start(QString::fromUtf8(TORNEL_PROGRAM), {u"--datos"_s, folder.path()});
    QVERIFY(program.waitForStarted());
    QVERIFY2(active(windowTitle()), qPrintable(m_display.activeTitle()));

    // The fifth declaration of the list is the one of two items.
    QVERIFY(m_display.keys({u"Home"_s, u"Down"_s, u"Down"_s, u"Down"_s, u"Down"_s, u"F3"_s}));
    QVERIFY2(active(importTitle()), qPrintable(m_display.activeTitle()));
    for (const QString& text : {u"26001IT14000655K"_s, u"16/11/2026"_s, u"Repuestos"_s}) {
        QVERIFY(m_display.type(text));
        QVERIFY(m_display.keys({u"Return"_s}));
    }
    QVERIFY(m_display.keys({u"Return"_s})); // the customs office stays
    QVERIFY(m_display.type(u"16/11/2027"_s));
    QVERIFY(m_display.keys({u"F11"_s}));
    QVERIFY2(active(u"oVELDRA"_s), qPrintable(m_display.activeTitle()));

    const QImage screen = m_display.grab();
    QCOMPARE(screen.size(), QSize(1280, 900));
    const QString shot = QDir(QString::fromUtf8(JOURNEY_SHOTS)).filePath(u"importacion.png"_s);
    QVERIFY(QDir().mkpath(QString::fromUtf8(JOURNEY_SHOTS)));
    QVERIFY(screen.save(shot));

    QVERIFY(m_display.keys({u"Return"_s}));
    QVERIFY2(active(importTitle()), qPrintable(m_display.activeTitle()));
    QVERIFY(m_display.keys({u"Escape"_s}));
    QVERIFY2(active(windowTitle()), qPrintable(m_display.activeTitle()));
    QVERIFY(m_display.keys({u"ctrl+q"_s}));
    QVERIFY(program.state() == QProcess::NotRunning || program.waitForFinished(windowTimeout));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);

    const auto inputs = folder.connect(Database::Inputs, Access::ReadOnly);
    const auto header = lists::open(*inputs, u"select * from INTINS where INTDCL = '26001IT14000655K'"_s);
    QCOMPARE(header->recordCount(), 1);
    QCOMPARE(header->value(u"INTNRO").toString(), u"IT260101"_s);
    QCOMPARE(header->value(u"INTDES").toString(), u"Repuestos"_s);
    QCOMPARE(header->value(u"INTFOF").toDate(), QDate(2026, 11, 16));
    QCOMPARE(header->value(u"INTVEN").toDate(), QDate(2027, 11, 16));
    const auto articles = lists::open(
        *inputs, u"select ARTNRO,ARTPRE from INS where INTDCL = '26001IT14000655K' order by ARTITM,ARTSBT"_s);
    QCOMPARE(articles->recordCount(), 3);
    QCOMPARE(articles->value(u"ARTNRO").toString(), u"COM-HER-170"_s);
    QCOMPARE(articles->value(u"ARTPRE").toDouble(), 38.333333);
}

QTEST_GUILESS_MAIN(tst_ImportJourney)
#include "tst_ImportJourney.moc"
