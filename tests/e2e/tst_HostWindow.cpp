#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <tornel/DataFolder.h>
#include <tornel/FirstStart.h>
#include <tornel/HostSession.h>
#include <tornel/HostWindow.h>

using namespace Qt::StringLiterals;
using namespace tornel;

/// What the host's window offers to the keyboard and to assistive technology.
class tst_HostWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyControlHasItsNames();
    void everyOperationHasAKeyThatItsButtonShows();
    void tabReachesEveryControl();
    void anEmptyResultIsShownAsOne();

private:
    QTemporaryDir m_place;
    std::unique_ptr<DataFolder> m_folder;
    std::unique_ptr<HostSession> m_session;
    std::unique_ptr<HostWindow> m_window;
};

void tst_HostWindow::initTestCase()
{
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Argentina));
    m_folder = std::make_unique<DataFolder>(m_place.path());
    QVERIFY(FirstStart(*m_folder).run([](qsizetype, qsizetype) { return true; }));
    m_session = std::make_unique<HostSession>(*m_folder);
    m_window = std::make_unique<HostWindow>(*m_session, m_folder->path());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_HostWindow::everyControlHasItsNames()
{
    const QStringList names{u"txtInterno"_s,       u"txtAduana"_s,        u"txtSubitem"_s,    u"btnMostrar"_s,
                            u"btnImportar"_s,      u"btnMostrarDIT"_s,    u"btnVerINSxSBT"_s, u"tabListas"_s,
                            u"tblDeclaraciones"_s, u"tblExportaciones"_s, u"resOK"_s,         u"resCATNRO"_s,
                            u"resPRDNRO"_s,        u"resPRDDES"_s,        u"resPRDNCM"_s,     u"resPRDPAI"_s,
                            u"resPRDPRE"_s,        u"resPRDSUF"_s,        u"resPRDUNI"_s};
    for (const QString& name : names) {
        const auto* const control = m_window->findChild<QWidget*>(name);
        QVERIFY2(control && !control->accessibleName().isEmpty(), qPrintable(name));
    }
}

void tst_HostWindow::everyOperationHasAKeyThatItsButtonShows()
{
    QStringList keys;
    for (const QString& name : {u"btnMostrar"_s, u"btnImportar"_s, u"btnMostrarDIT"_s, u"btnVerINSxSBT"_s}) {
        const auto* const button = m_window->findChild<QPushButton*>(name);
        const QString text = button ? button->text() : QString();
        QVERIFY2(text.contains(u'&'), qPrintable(text));
        keys.append(text.section(u'(', -1).chopped(1));
    }
    QCOMPARE(keys, (QStringList{u"F2"_s, u"F3"_s, u"F4"_s, u"F5"_s}));
    QStringList shortcuts;
    for (const QAction* const action : m_window->findChildren<QAction*>()) {
        if (!action->shortcut().isEmpty()) {
            shortcuts.append(action->shortcut().toString());
        }
    }
    shortcuts.sort();
    QCOMPARE(shortcuts, (QStringList{u"Ctrl+Q"_s, u"F2"_s, u"F3"_s, u"F4"_s, u"F5"_s}));
}

void tst_HostWindow::tabReachesEveryControl()
{
    m_window->findChild<QLineEdit*>(u"txtInterno"_s)->setFocus();
    QStringList reached;
    while (!reached.contains(QApplication::focusWidget()->objectName())) {
        reached.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    for (const QString& name : {u"txtInterno"_s, u"txtAduana"_s, u"txtSubitem"_s, u"btnMostrar"_s, u"btnImportar"_s,
                                u"btnMostrarDIT"_s, u"btnVerINSxSBT"_s, u"tblDeclaraciones"_s}) {
        QVERIFY2(reached.contains(name), qPrintable(name));
    }
}

void tst_HostWindow::anEmptyResultIsShownAsOne()
{
    QCOMPARE(m_window->findChild<QLabel*>(u"resOK"_s)->text(), u"No"_s);
    QCOMPARE(m_window->findChild<QLabel*>(u"resCATNRO"_s)->text(), QString());
    QCOMPARE(m_window->findChild<QLabel*>(u"resPRDPRE"_s)->text(), u"0,00"_s);
}

QTEST_MAIN(tst_HostWindow)
#include "tst_HostWindow.moc"
