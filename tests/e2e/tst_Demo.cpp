#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int programTimeout = 200'000;

/// A window with its texts and frames has many colours; a picture of nothing has one.
bool isBlank(const QImage& image)
{
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            colours.insert(image.pixel(x, y));
            if (colours.size() > 8) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

/// The demonstration program as ./run starts it.
class tst_Demo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDemonstrationPlays_data();
    void theDemonstrationPlays();
    void theHostsWindowIsUsedWithTheKeyboard();
    void aKilledFirstStartIsMadeGood();
    void aFailedStepEndsWithItsLine();
    void aDialogThatComesBackDoesNotHoldUpTheEnd();
    void aScriptThatCannotBeReadIsNotPlayed();
    void theStartCanBeMeasured();
    void helpAndVersionNeedNoDisplay();

private:
    struct Result
    {
        int exitCode = -1;
        QString output;
        QString errors;
    };

    /// Runs the program with settings of its own, so that those of the machine's user do not matter.
    static Result run(const QStringList& arguments, const QTemporaryDir& place,
                      const QMap<QString, QString>& variables = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_CONFIG_HOME"_s, place.filePath(u"config"_s));
        for (auto variable = variables.begin(); variable != variables.end(); ++variable) {
            environment.insert(variable.key(), variable.value());
        }
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(QString::fromUtf8(TORNEL_PROGRAM), arguments);
        if (!program.waitForFinished(programTimeout)) {
            program.kill();
            program.waitForFinished();
            return {-1, QString(), u"did not finish"_s};
        }
        return {program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1,
                QString::fromUtf8(program.readAllStandardOutput()), QString::fromUtf8(program.readAllStandardError())};
    }

    static QString script(const QTemporaryDir& place, const QByteArray& text)
    {
        QFile file(place.filePath(u"prueba.script"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
            qFatal("cannot write the script");
        }
        return file.fileName();
    }
};

void tst_Demo::theDemonstrationPlays_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("scale");
    QTest::addColumn<int>("pictures");
    QTest::newRow("demo, 100 %") << u"demo.script"_s << u"1"_s << 9;
    QTest::newRow("demo, 150 %") << u"demo.script"_s << u"1.5"_s << 9;
    QTest::newRow("catalogs, 100 %") << u"catalogs.script"_s << u"1"_s << 9;
    QTest::newRow("catalogs, 150 %") << u"catalogs.script"_s << u"1.5"_s << 9;
    QTest::newRow("levels, 100 %") << u"levels.script"_s << u"1"_s << 6;
    QTest::newRow("levels, 150 %") << u"levels.script"_s << u"1.5"_s << 6;
    QTest::newRow("declarations, 100 %") << u"declarations.script"_s << u"1"_s << 7;
    QTest::newRow("declarations, 150 %") << u"declarations.script"_s << u"1.5"_s << 7;
}

void tst_Demo::theDemonstrationPlays()
{
    QFETCH(const QString, script);
    QFETCH(const QString, scale);
    QFETCH(const int, pictures);
    const QTemporaryDir place;
    // The platform's own screen is so small that the window would have to be narrower at 150 %.
    QFile screen(place.filePath(u"screen.json"_s));
    QVERIFY(screen.open(QIODevice::WriteOnly));
    screen.write(R"({"screens": [{"name": "test", "x": 0, "y": 0, "width": 1920, "height": 1200, "logicalDpi": 96,
                     "logicalBaseDpi": 96, "dpr": 1}]})");
    screen.close();
    const Result result = run(
        {u"--script"_s, QString(QStringLiteral(TORNEL_SCRIPTS "/") + script), u"--datos"_s, place.filePath(u"datos"_s),
         u"--salida"_s, place.filePath(u"out"_s)},
        place, {{u"QT_SCALE_FACTOR"_s, scale}, {u"QT_QPA_PLATFORM"_s, u"offscreen:configfile="_s + screen.fileName()}});
    QVERIFY2(result.exitCode == 0, qPrintable(result.errors));

    const QDir shots(place.filePath(u"out"_s));
    const QStringList names = shots.entryList({u"*.png"_s}, QDir::Files, QDir::Name);
    QCOMPARE(names.size(), pictures);
    for (const QString& name : names) {
        const QImage image(shots.filePath(name));
        QVERIFY2(!image.isNull() && !isBlank(image), qPrintable(name));
    }
    if (script == u"declarations.script") {
        QFile report(shots.filePath(u"articulos.pdf"_s));
        QVERIFY(report.open(QIODevice::ReadOnly) && report.readAll().startsWith("%PDF-"));
    }
    if (script != u"demo.script") {
        return;
    }
    // The pictures have the resolution of the screen: the window has the same size at every scale.
    const QImage window(shots.filePath(u"01-tornel.png"_s));
    QVERIFY2(window.width() >= 700 * scale.toDouble() && window.width() <= 1200 * scale.toDouble(),
             qPrintable(QString::number(window.width())));
    QVERIFY(QImage(shots.filePath(u"02-importar.png"_s)) != QImage(shots.filePath(u"05-resultado.png"_s)));
}

void tst_Demo::theHostsWindowIsUsedWithTheKeyboard()
{
    const QTemporaryDir place;
    const Result result =
        run({u"--script"_s, QString::fromUtf8(HOST_SCRIPT), u"--datos"_s, place.filePath(u"datos"_s)}, place);
    QVERIFY2(result.exitCode == 0, qPrintable(result.errors));
}

void tst_Demo::aKilledFirstStartIsMadeGood()
{
    const QTemporaryDir place;
    const QString folder = place.filePath(u"datos"_s);
    QProcess program;
    program.start(QString::fromUtf8(TORNEL_PROGRAM), {u"--datos"_s, folder});
    QVERIFY(program.waitForStarted());
    const QString part = folder + u"/nomenclador.sqlite.parte"_s;
    const QString whole = folder + u"/nomenclador.sqlite"_s;
    QVERIFY(QTest::qWaitFor([&] { return QFile::exists(part) || QFile::exists(whole); }, programTimeout));
    program.kill();
    QVERIFY(program.waitForFinished());

    // Whatever it came to, the next start finds nothing half made.
    const QString file = script(place, "expect count nomenclature \"select [001] from NCM\" 33110\n"
                                       "expect count nomenclature \"select sim from sufidos\" 4607\n"
                                       "expect count host \"select interno from caratula\" 11\n"
                                       "expect count inputs \"select CATNRO from CAT\" 4\n");
    const Result result = run({u"--script"_s, file, u"--datos"_s, folder}, place);
    QVERIFY2(result.exitCode == 0, qPrintable(result.errors));
    QCOMPARE(QDir(folder).entryList({u"*.parte*"_s}, QDir::Files), QStringList());
}

void tst_Demo::aFailedStepEndsWithItsLine()
{
    const QTemporaryDir place;
    const QString file = script(place, "press btnImportar\nscreen frmImportar\nkey F11\nscreen winTornel\n");
    const Result result = run({u"--script"_s, file, u"--datos"_s, place.filePath(u"datos"_s)}, place);
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains(u"línea 4: se esperaba la pantalla winTornel"_s) &&
                 result.errors.contains(u"un cuadro exclamation «Falta Numero de Declaración Maria.»"_s),
             qPrintable(result.errors));
}

void tst_Demo::aDialogThatComesBackDoesNotHoldUpTheEnd()
{
    // Closed, the question goes back to the prompt, and the prompt, closed, to the question: ordinary leaving, which
    // waits for the dialogs' own event loops, would never come to its end.
    const QTemporaryDir place;
    const QString folder = place.filePath(u"datos"_s);
    const QString file = script(place, "press btnMostrar\n"
                                       "screen frmCatalogo\n"
                                       "key Return\n"
                                       "screen frmProducto\n"
                                       "key Ins\n"
                                       "screen frmAgregarProducto\n"
                                       "type TAL-IMP-13\nkey Return\nkey Return\n"
                                       "type 8467.21.00.000P\nkey Return\n"
                                       "type 1\nkey Return\n"
                                       "type 07\nkey F11\n"
                                       "box exclamation contains \"Se encontro diferencias\"\n"
                                       "key Return\n"
                                       "input MARCA\n"
                                       "key Esc\n"
                                       "screen winTornel\n");
    const Result result = run({u"--script"_s, file, u"--datos"_s, folder}, place);
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains(u"línea 20: se esperaba la pantalla winTornel, pero hay otra ventana; "
                                    "está activo: un cuadro question «Desea cancelar la operación»\n"_s),
             qPrintable(result.errors));
    QVERIFY2(!result.output.contains(u"bien"_s), qPrintable(result.output));

    // The product that was being saved has not been, and the data serves the next start.
    const QString after = script(place, "expect count inputs \"select * from PRD\" 6\n");
    const Result next = run({u"--script"_s, after, u"--datos"_s, folder}, place);
    QVERIFY2(next.exitCode == 0, qPrintable(next.errors));
}

void tst_Demo::aScriptThatCannotBeReadIsNotPlayed()
{
    const QTemporaryDir place;
    const QString file = script(place, "press btnImportar\njump\n");
    const Result result = run({u"--script"_s, file, u"--datos"_s, place.filePath(u"datos"_s)}, place);
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains(u"prueba.script:2: "_s), qPrintable(result.errors));
    QVERIFY(!QDir(place.filePath(u"datos"_s)).exists());
}

void tst_Demo::theStartCanBeMeasured()
{
    const QTemporaryDir place;
    const Result result = run({u"--salir-al-mostrar"_s, u"--datos"_s, place.filePath(u"datos"_s)}, place);
    QVERIFY2(result.exitCode == 0, qPrintable(result.errors));
    QCOMPARE(result.output, u"mostrada\n"_s);
}

void tst_Demo::helpAndVersionNeedNoDisplay()
{
    const QTemporaryDir place;
    const QMap<QString, QString> noDisplay{{u"QT_QPA_PLATFORM"_s, u"no such platform"_s}};
    const Result version = run({u"--version"_s}, place, noDisplay);
    QCOMPARE(version.exitCode, 0);
    QVERIFY(version.output.startsWith(u"tornel "_s));
    const Result help = run({u"--help"_s}, place, noDisplay);
    QCOMPARE(help.exitCode, 0);
    QVERIFY(help.output.contains(u"--datos"_s));
    const Result refused = run({u"--rapido"_s}, place, noDisplay);
    QCOMPARE(refused.exitCode, 2);
    QVERIFY(refused.errors.contains(u"Opción desconocida: rapido"_s));
}

QTEST_GUILESS_MAIN(tst_Demo)
#include "tst_Demo.moc"
