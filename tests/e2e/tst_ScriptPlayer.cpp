#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

#include <memory>
#include <tornel/ScriptPlayer.h>

using namespace Qt::StringLiterals;
using namespace tornel;

namespace {

/// A screen of the kind that entry operations show: F11 asks or tells, Esc closes.
class FakeScreen : public QDialog
{
    Q_OBJECT

public:
    explicit FakeScreen(QStringList& log) : m_log(log)
    {
        setObjectName(u"frmPrueba"_s);
        setWindowTitle(u"Pantalla de prueba"_s);
        auto* const layout = new QVBoxLayout(this);
        auto* const name = new QLineEdit;
        name->setObjectName(u"txtNombre"_s);
        auto* const flag = new QCheckBox(u"Marca"_s);
        flag->setObjectName(u"chMarca"_s);
        auto* const status = new QLabel(u"listo"_s);
        status->setObjectName(u"lbTexto"_s);
        auto* const rows = new QTableWidget(2, 2);
        rows->setObjectName(u"lstFilas"_s);
        rows->setItem(1, 0, new QTableWidgetItem(u"celda"_s));
        for (QWidget* const widget : std::initializer_list<QWidget*>{name, flag, status, rows}) {
            layout->addWidget(widget);
        }
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        m_log.append(u"press %1"_s.arg(event->key() - Qt::Key_F1 + 1));
        if (event->key() == Qt::Key_F11) {
            QMessageBox box(QMessageBox::Information, u"oVELDRA"_s, u"Procesado: "_s + text(), QMessageBox::Ok, this);
            box.exec();
            m_log.append(u"told"_s);
        } else if (event->key() == Qt::Key_F12) {
            QMessageBox box(QMessageBox::Question, u"oVELDRA"_s, u"¿Borrar?"_s, QMessageBox::Yes | QMessageBox::No,
                            this);
            m_log.append(box.exec() == QMessageBox::Yes ? u"yes"_s : u"no"_s);
        } else if (event->key() == Qt::Key_F6) {
            QInputDialog dialog(this);
            dialog.setLabelText(u"Nuevo número"_s);
            m_log.append(dialog.exec() == QDialog::Accepted ? dialog.textValue() : u"cancelled"_s);
        } else {
            QDialog::keyPressEvent(event);
        }
    }
    void keyReleaseEvent(QKeyEvent* event) override
    {
        m_log.append(u"release %1"_s.arg(event->key() - Qt::Key_F1 + 1));
    }

private:
    [[nodiscard]] QString text() const { return findChild<QLineEdit*>(u"txtNombre"_s)->text(); }

    QStringList& m_log;
};

class FakeHost : public ScriptHost
{
public:
    FakeHost()
    {
        m_window.setObjectName(u"winPrueba"_s);
        auto* const central = new QWidget;
        auto* const layout = new QVBoxLayout(central);
        auto* const field = new QLineEdit;
        field->setObjectName(u"txtInterno"_s);
        auto* const button = new QPushButton(u"Abrir"_s);
        button->setObjectName(u"btnAbrir"_s);
        layout->addWidget(field);
        layout->addWidget(button);
        m_window.setCentralWidget(central);
        QObject::connect(button, &QPushButton::clicked, &m_window, [this] {
            FakeScreen screen(log);
            screen.exec();
            log.append(u"closed"_s);
        });
        m_window.show();
    }

    QWidget& window() override { return m_window; }
    ScriptAnswer ask(ScriptDatabase database, const QString& statement, const QString& column) override
    {
        if (database != ScriptDatabase::Inputs) {
            return {u"3709 - cerrada"_s, 0, {}};
        }
        return {{}, statement.size(), column.isEmpty() ? QString() : u"38,333333"_s};
    }

    QStringList log;

private:
    QMainWindow m_window;
};

} // namespace

/// Scripts played on windows of the kind that they are for.
class tst_ScriptPlayer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void playsThroughModalLoops();
    void theReleaseGoesToTheWindowThatThePressOpened();
    void questionsAreAnswered();
    void promptsAreAnswered();
    void expectationsLookAtTheActiveWindow();
    void databasesAreAsked();
    void screenshotsAreWritten();
    void aWrongTextFailsAtItsDeadline();
    void aBoxThatNobodyExpectsFailsAtOnce();
    void aBoxWithAnotherIconFails();
    void aMissingScreenSaysWhatIsActive();
    void aRefusedQueryFailsAtOnce();
    void anOpenScreenAtTheEndFails();
    void everyDialogIsClosedAfterAFailure();

private:
    QString play(const QString& text)
    {
        ScriptFile script = ScriptFile::parse(text);
        if (!script.problems.empty()) {
            return script.describeProblems(u"guion"_s);
        }
        ScriptPlayer player(std::move(script), m_folder.filePath(u"out"_s), *m_host);
        const QSignalSpy over(&player, &ScriptPlayer::finished);
        QEventLoop loop;
        connect(&player, &ScriptPlayer::finished, &loop, &QEventLoop::quit);
        player.start();
        loop.exec();
        return over.isEmpty() ? u"not finished"_s : over.first().first().toString();
    }

    QTemporaryDir m_folder;
    std::unique_ptr<FakeHost> m_host;
};

void tst_ScriptPlayer::init()
{
    m_host = std::make_unique<FakeHost>();
    QVERIFY(QTest::qWaitForWindowActive(&m_host->window()));
}

void tst_ScriptPlayer::cleanup()
{
    QVERIFY(!QApplication::activeModalWidget());
    m_host.reset();
}

void tst_ScriptPlayer::playsThroughModalLoops()
{
    const QString failure = play(u"host txtInterno \"IT 7\"\n"
                                 "expect text txtInterno \"IT 7\"\n"
                                 "press btnAbrir\n"
                                 "screen frmPrueba\n"
                                 "focus txtNombre\n"
                                 "type \"Ñandú 5\"\n"
                                 "expect text txtNombre \"Ñandú 5\"\n"
                                 "key F11\n"
                                 "box information \"Procesado: Ñandú 5\"\n"
                                 "key Return\n"
                                 "screen frmPrueba\n"
                                 "clear\n"
                                 "expect text txtNombre \"\"\n"
                                 "key Esc\n"
                                 "screen winPrueba\n"_s);
    QCOMPARE(failure, QString());
    QCOMPARE(m_host->log.last(), u"closed"_s);
    QVERIFY(m_host->log.contains(u"told"_s));
}

void tst_ScriptPlayer::theReleaseGoesToTheWindowThatThePressOpened()
{
    QCOMPARE(play(u"press btnAbrir\nscreen frmPrueba\nfocus chMarca\nkey F11\n"
                  "box information contains Procesado\nanswer ok\nscreen frmPrueba\nkey F2\nkey Esc\n"_s),
             QString());
    QVERIFY(m_host->log.contains(u"press 11"_s));
    QVERIFY(!m_host->log.contains(u"release 11"_s));
    QVERIFY(m_host->log.contains(u"release 2"_s));
}

void tst_ScriptPlayer::questionsAreAnswered()
{
    QCOMPARE(play(u"press btnAbrir\nscreen frmPrueba\n"
                  "key F12\nbox question \"¿Borrar?\"\nanswer no\nscreen frmPrueba\n"
                  "key F12\nbox question contains Borrar\nanswer yes\nscreen frmPrueba\nkey Esc\n"_s),
             QString());
    QVERIFY(m_host->log.indexOf(u"no"_s) < m_host->log.indexOf(u"yes"_s));
    QVERIFY(m_host->log.contains(u"no"_s));
}

void tst_ScriptPlayer::promptsAreAnswered()
{
    QCOMPARE(play(u"press btnAbrir\nscreen frmPrueba\n"
                  "key F6\ninput \"Nuevo número\"\ntype 42\nkey Return\nscreen frmPrueba\n"
                  "key F6\ninput contains número\nanswer cancel\nscreen frmPrueba\nkey Esc\n"_s),
             QString());
    QVERIFY(m_host->log.contains(u"42"_s));
    QVERIFY(m_host->log.contains(u"cancelled"_s));
}

void tst_ScriptPlayer::expectationsLookAtTheActiveWindow()
{
    QCOMPARE(play(u"press btnAbrir\nscreen frmPrueba\n"
                  "expect title \"Pantalla de prueba\"\n"
                  "expect text lbTexto contains lis\n"
                  "expect checked chMarca false\n"
                  "focus chMarca\nexpect focus chMarca\nkey Space\nexpect checked chMarca true\n"
                  "expect rows lstFilas 2\n"
                  "expect cell lstFilas 2 1 \"celda\"\n"
                  "key Esc\n"_s),
             QString());
}

void tst_ScriptPlayer::databasesAreAsked()
{
    QCOMPARE(play(u"expect count inputs \"12345\" 5\nexpect value inputs x ARTPRE \"38,333333\"\n"_s), QString());
}

void tst_ScriptPlayer::screenshotsAreWritten()
{
    QCOMPARE(play(u"shot uno.png\npress btnAbrir\nscreen frmPrueba\nshot dos.png\nkey Esc\n"_s), QString());
    const QImage first(m_folder.filePath(u"out/uno.png"_s));
    const QImage second(m_folder.filePath(u"out/dos.png"_s));
    QVERIFY(!first.isNull());
    QVERIFY(!second.isNull());
    QVERIFY(first != second);
}

void tst_ScriptPlayer::aWrongTextFailsAtItsDeadline()
{
    const QString failure = play(u"deadline 1\npress btnAbrir\nscreen frmPrueba\nexpect text lbTexto \"OK\"\n"_s);
    QCOMPARE(failure, u"línea 4: se esperaba en lbTexto el texto «OK», pero lbTexto dice «listo»; "
                      "está activo: la ventana frmPrueba «Pantalla de prueba», con el foco en txtNombre"_s);
}

void tst_ScriptPlayer::aBoxThatNobodyExpectsFailsAtOnce()
{
    // The deadline is far away: the test would time out if the box were waited with.
    const QString failure =
        play(u"deadline 3600\npress btnAbrir\nscreen frmPrueba\nkey F11\nexpect text lbTexto \"OK\"\n"_s);
    QCOMPARE(failure, u"línea 5: se esperaba en lbTexto el texto «OK», pero no hay lbTexto; "
                      "está activo: un cuadro information «Procesado: »"_s);
    QCOMPARE(m_host->log.last(), u"closed"_s);
}

void tst_ScriptPlayer::aBoxWithAnotherIconFails()
{
    const QString failure =
        play(u"deadline 3600\npress btnAbrir\nscreen frmPrueba\nkey F11\nbox critical \"Procesado: \"\n"_s);
    QVERIFY2(failure.startsWith(u"línea 5: se esperaba un cuadro critical «Procesado: », pero es otro cuadro"_s),
             qPrintable(failure));
}

void tst_ScriptPlayer::aMissingScreenSaysWhatIsActive()
{
    const QString failure = play(u"deadline 1\nscreen frmOtra\n"_s);
    QVERIFY2(failure.startsWith(u"línea 2: se esperaba la pantalla frmOtra, pero hay otra ventana; está activo: "
                                "la ventana winPrueba"_s),
             qPrintable(failure));
}

void tst_ScriptPlayer::aRefusedQueryFailsAtOnce()
{
    const QString failure = play(u"deadline 3600\nexpect count host \"select\" 1\n"_s);
    QVERIFY2(failure.startsWith(u"línea 2: se esperaba 1 filas de «select», pero 3709 - cerrada"_s),
             qPrintable(failure));
}

void tst_ScriptPlayer::anOpenScreenAtTheEndFails()
{
    const QString failure = play(u"deadline 1\npress btnAbrir\nscreen frmPrueba\n"_s);
    QVERIFY2(failure.startsWith(u"línea 3: se esperaba el fin del guion sin ventanas abiertas"_s), qPrintable(failure));
}

void tst_ScriptPlayer::everyDialogIsClosedAfterAFailure()
{
    // The question has no cancel button, so merely closing it would not do.
    const QString failure = play(u"deadline 3600\npress btnAbrir\nscreen frmPrueba\nkey F12\nscreen frmPrueba\n"_s);
    QVERIFY(failure.startsWith(u"línea 5: "_s));
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(m_host->log.last(), u"closed"_s);
}

QTEST_MAIN(tst_ScriptPlayer)
#include "tst_ScriptPlayer.moc"
