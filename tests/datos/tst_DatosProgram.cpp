#include <oVELDRA/Store.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <oveldra-datos/Commands.h>
#include <oveldra-datos/HelpText.h>
#include <poll.h>
#include <sqlite3.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::data;

namespace {

struct Outcome
{
    int code = -1; ///< -1: the program did not end by itself
    QByteArray output;
    QByteArray errors;
};

using Modifier = std::function<void()>;

/// Runs the program to its end; `modifier` runs in its process before it.
Outcome run(const QStringList& arguments, const QProcessEnvironment& environment = {}, const Modifier& modifier = {})
{
    QProcess process;
    process.setProcessEnvironment(environment);
    if (modifier) {
        process.setChildProcessModifier(modifier);
    }
    process.start(QStringLiteral(DATOS_PROGRAM), arguments);
    process.waitForFinished();
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAllStandardOutput(),
            process.readAllStandardError()};
}

/// A terminal, with the end that a program is given and the end that shows what it wrote.
class Terminal
{
public:
    Terminal() : m_screen(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
    {
        if (grantpt(m_screen) != 0 || unlockpt(m_screen) != 0) {
            qFatal("the system gives no terminal");
        }
        m_line = open(ptsname(m_screen), O_RDWR | O_NOCTTY | O_CLOEXEC);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal()
    {
        close(m_line);
        close(m_screen);
    }

    /// Makes it the standard error of the process that this is called in.
    void becomeErrors() const { dup2(m_line, STDERR_FILENO); }

    /// What was written up to now.
    [[nodiscard]] QByteArray shown()
    {
        for (pollfd ready{m_screen, POLLIN, 0}; poll(&ready, 1, 0) == 1;) {
            std::array<char, 4096> bytes{};
            const ssize_t size = read(m_screen, bytes.data(), bytes.size());
            if (size <= 0) {
                break;
            }
            m_shown.append(bytes.data(), size);
        }
        return m_shown;
    }

private:
    int m_screen;
    int m_line = -1;
    QByteArray m_shown;
};

} // namespace

/// The program as its users start it.
class tst_DatosProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void helpIsSpanishWhateverTheLocale_data();
    void helpIsSpanishWhateverTheLocale();
    void fileNamesAreUtf8WhateverTheLocale();
    void everyCommandHasItsHelp_data();
    void everyCommandHasItsHelp();
    void version();
    void reportsGoToOutput();
    void errorsGoToErrors();
    void exitCodes();
    void jsonParses();
    void aClosedPipeIsNoError();
    void closedStreamsHurtNoDatabase();
    void progressIsShownOnATerminalAndErased();
    void anInterruptionTakesBackWhatWasBegun();

private:
    [[nodiscard]] QString file(const QString& name) const { return m_folder->filePath(name); }
    [[nodiscard]] QString url() const { return u"sqlite:"_s + file(u"base.sqlite"_s); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_DatosProgram::helpIsSpanishWhateverTheLocale_data()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("UTF-8") << u"C.UTF-8"_s;
    QTest::newRow("C") << u"C"_s;
    QTest::newRow("one that is not installed") << u"zz_ZZ.ISO-8859-1"_s;
}

void tst_DatosProgram::helpIsSpanishWhateverTheLocale()
{
    QFETCH(const QString, locale);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, locale);
    const Outcome outcome = run({u"--ayuda"_s}, environment);
    QCOMPARE(outcome.code, 0);
    QCOMPARE(outcome.output, programHelp(allCommands()).toUtf8());
    QVERIFY(outcome.output.contains("Códigos de salida"));
    QCOMPARE(outcome.errors, QByteArray());
}

void tst_DatosProgram::fileNamesAreUtf8WhateverTheLocale()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, u"C"_s);
    const Outcome outcome = run({u"crear"_s, u"sqlite:"_s + file(u"ñandú.sqlite"_s)}, environment);
    QCOMPARE(outcome.code, 0);
    QVERIFY(outcome.output.contains("ñandú.sqlite"));
    QVERIFY(QFile::exists(file(u"ñandú.sqlite"_s)));
}

void tst_DatosProgram::everyCommandHasItsHelp_data()
{
    QTest::addColumn<QString>("name");
    for (const QString& name :
         {u"crear"_s, u"migrar"_s, u"copiar"_s, u"verificar"_s, u"vencimientos"_s, u"respaldar"_s}) {
        QTest::newRow(qPrintable(name)) << name;
    }
    QCOMPARE(allCommands().size(), size_t{6});
}

void tst_DatosProgram::everyCommandHasItsHelp()
{
    QFETCH(const QString, name);
    const Outcome outcome = run({name, u"--ayuda"_s});
    QCOMPARE(outcome.code, 0);
    QCOMPARE(outcome.errors, QByteArray());
    const QString help = QString::fromUtf8(outcome.output);
    const QStringList lines = help.split(u'\n');
    for (const QString& line : lines) {
        QVERIFY2(line.size() <= 80, qPrintable(line));
    }
    const std::vector<Command> commands = allCommands();
    const auto command = std::find_if(commands.begin(), commands.end(),
                                      [&name](const Command& candidate) { return candidate.name == name; });
    QVERIFY(command != commands.end());
    QCOMPARE(help, commandHelp(*command));
    for (const Option& option : command->options) {
        QVERIFY2(help.contains(u"\n  --"_s + option.name), qPrintable(option.name));
    }
    QVERIFY(help.contains(u"Ejemplo"_s));
    QVERIFY(help.contains(u"salida"_s)); // its exit codes
    QVERIFY(programHelp(commands).simplified().contains(u"%1 %2"_s.arg(name, command->summary)));
}

void tst_DatosProgram::version()
{
    const Outcome outcome = run({u"--version"_s});
    QCOMPARE(outcome.code, 0);
    QCOMPARE(outcome.output, QByteArray("oveldra-datos " DATOS_VERSION "\n"));
}

void tst_DatosProgram::reportsGoToOutput()
{
    const Outcome outcome = run({u"crear"_s, url()});
    QCOMPARE(outcome.code, 0);
    QVERIFY2(outcome.output.startsWith("Se creó la base insumos en sqlite:"), outcome.output.constData());
    QCOMPARE(outcome.errors, QByteArray());
}

void tst_DatosProgram::errorsGoToErrors()
{
    const Outcome outcome = run({u"respaldar"_s, url(), file(u"copia.sqlite"_s)});
    QCOMPARE(outcome.code, 3);
    QCOMPARE(outcome.output, QByteArray());
    QVERIFY2(outcome.errors.startsWith("oveldra-datos: No se encuentra el archivo"), outcome.errors.constData());
}

void tst_DatosProgram::exitCodes()
{
    QCOMPARE(run({}).code, 2);
    QCOMPARE(run({u"crear"_s}).code, 2);
    QCOMPARE(run({u"crear"_s, url(), u"--base"_s, u"otra"_s}).code, 2);
    QCOMPARE(run({u"crear"_s, u"oracle:base"_s}).code, 3);
    QCOMPARE(run({u"crear"_s, url()}).code, 0);
    QCOMPARE(run({u"crear"_s, url()}).code, 3);
    QCOMPARE(run({u"verificar"_s, url()}).code, 0);
    const auto connection = connectStore(url());
    connection->setSql(u"insert into INS (INTDCL,ARTNRO,ARTCAT,ARTDSC) values ('D','A','10','10')"_s);
    connection->execute();
    QCOMPARE(run({u"verificar"_s, url()}).code, 1);
}

void tst_DatosProgram::jsonParses()
{
    const auto parsed = [](const QByteArray& output) { return QJsonDocument::fromJson(output).object(); };
    const Outcome made = run({u"crear"_s, url(), u"--json"_s});
    QCOMPARE(made.code, 0);
    QCOMPARE(parsed(made.output)[u"database"_s].toString(), u"insumos"_s);

    const Outcome again = run({u"--json"_s, u"crear"_s, url()});
    QCOMPARE(again.code, 3);
    QCOMPARE(parsed(again.output)[u"error"_s][u"native"_s].toInt(), 3010);
    QCOMPARE(parsed(again.output)[u"error"_s][u"exitCode"_s].toInt(), 3);
    QVERIFY(!again.errors.isEmpty());

    const Outcome misspelt = run({u"crear"_s, u"--jsn"_s, u"--json"_s});
    QCOMPARE(misspelt.code, 2);
    QVERIFY(parsed(misspelt.output)[u"error"_s][u"text"_s].toString().contains(u"--jsn"_s));
}

void tst_DatosProgram::aClosedPipeIsNoError()
{
    std::array<int, 2> ends{};
    QCOMPARE(pipe(ends.data()), 0);
    close(ends[0]);
    const int nobodyReads = ends[1];
    const Outcome outcome = run({u"crear"_s, url()}, {}, [nobodyReads] { dup2(nobodyReads, STDOUT_FILENO); });
    close(nobodyReads);
    QCOMPARE(outcome.code, 0);
    QCOMPARE(outcome.errors, QByteArray());
    QVERIFY(connectStore(url()));
}

void tst_DatosProgram::closedStreamsHurtNoDatabase()
{
    const Outcome outcome = run({u"crear"_s, url(), u"--base"_s, u"ncm"_s, u"--con-arancel"_s}, {}, [] {
        close(STDIN_FILENO);
        close(STDOUT_FILENO);
        close(STDERR_FILENO);
    });
    QCOMPARE(outcome.code, 0);
    QCOMPARE(run({u"respaldar"_s, url(), file(u"copia.sqlite"_s)}).code, 0); // it checks what it copies
}

void tst_DatosProgram::progressIsShownOnATerminalAndErased()
{
    Terminal terminal;
    const Outcome outcome = run({u"crear"_s, url(), u"--base"_s, u"ncm"_s, u"--con-arancel"_s}, {},
                                [&terminal] { terminal.becomeErrors(); });
    QCOMPARE(outcome.code, 0);
    QVERIFY(!outcome.output.contains("Escribiendo"));
    const QByteArray shown = terminal.shown();
    QVERIFY2(shown.contains("\r\x1b[KEscribiendo NCM: 0 %"), shown.constData());
    QVERIFY2(shown.endsWith("\r\x1b[K"), shown.constData());
}

void tst_DatosProgram::anInterruptionTakesBackWhatWasBegun()
{
    QCOMPARE(run({u"crear"_s, url()}).code, 0);
    sqlite3* holder = nullptr;
    QCOMPARE(sqlite3_open(file(u"base.sqlite"_s).toUtf8().constData(), &holder), SQLITE_OK);
    QCOMPARE(sqlite3_exec(holder, "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE", nullptr, nullptr, nullptr),
             SQLITE_OK);
    Terminal terminal;
    QProcess process;
    process.setChildProcessModifier([&terminal] { terminal.becomeErrors(); });
    process.start(QStringLiteral(DATOS_PROGRAM), {u"respaldar"_s, url(), file(u"copia.sqlite"_s)});
    QTRY_VERIFY(terminal.shown().contains("Esperando"));
    QCOMPARE(QDir(m_folder->path()).entryList({u"copia.sqlite.*.parte"_s}).size(), 1);
    process.terminate();
    QVERIFY(process.waitForFinished());
    sqlite3_close(holder);
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 3);
    QVERIFY(terminal.shown().contains("Se interrumpió"));
    QCOMPARE(QDir(m_folder->path()).entryList({u"copia*"_s}), QStringList());
}

QTEST_GUILESS_MAIN(tst_DatosProgram)
#include "tst_DatosProgram.moc"
