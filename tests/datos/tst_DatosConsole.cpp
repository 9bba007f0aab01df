#include <QFile>
#include <QJsonObject>
#include <QLocale>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>
#include <oveldra-datos/ProgressLine.h>
#include <oveldra-datos/TerminalConsole.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA::data;
using namespace std::chrono_literals;
using Format = TerminalConsole::Format;

namespace {

struct CloseFile
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

/// Two files in place of the program's streams.
class Streams
{
public:
    [[nodiscard]] TerminalConsole::Streams streams(bool terminal) const
    {
        return {m_output.get(), m_errors.get(), terminal};
    }
    [[nodiscard]] QByteArray output() const { return textOf(u"output"_s); }
    [[nodiscard]] QByteArray errors() const { return textOf(u"errors"_s); }

private:
    [[nodiscard]] FileHandle open(const QString& name) const
    {
        return FileHandle(std::fopen(m_folder.filePath(name).toUtf8().constData(), "w"));
    }
    [[nodiscard]] QByteArray textOf(const QString& name) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
    }

    QTemporaryDir m_folder;
    FileHandle m_output = open(u"output"_s);
    FileHandle m_errors = open(u"errors"_s);
};

/// The writing end of a pipe that nobody reads.
FileHandle abandonedPipe()
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        return nullptr;
    }
    close(ends[0]);
    return FileHandle(fdopen(ends[1], "w"));
}

} // namespace

/// Where the program's words go.
class tst_DatosConsole : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void progressTellsPercentAndRest();
    void progressWithoutTotalCounts();
    void progressIsShownTenTimesASecondAtMost();
    void otherWorkBeginsAnew();
    void textGoesToOutputAndComplaintsToErrors();
    void jsonIsAllThatOutputGets();
    void progressIsErasedBeforeAnyOtherWord();
    void withoutATerminalThereIsNoProgress();
    void longProgressStaysOnItsLine();
    void aReaderWhoGoesAwayIsNoError();
    void aFullDiskIsReported();
};

void tst_DatosConsole::initTestCase()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
    std::signal(SIGPIPE, SIG_IGN); // as the program does
}

void tst_DatosConsole::progressTellsPercentAndRest()
{
    ProgressLine line;
    const ProgressLine::Clock::time_point start{};
    QCOMPARE(line.next(u"Copiando"_s, 0, 300, start), u"Copiando: 0 %"_s);
    QCOMPARE(line.next(u"Copiando"_s, 1, 300, start + 900ms), u"Copiando: 0 %"_s);
    QCOMPARE(line.next(u"Copiando"_s, 100, 300, start + 10s), u"Copiando: 33 %, faltan 20 s"_s);
    QCOMPARE(line.next(u"Copiando"_s, 150, 300, start + 100s), u"Copiando: 50 %, faltan 1 min 40 s"_s);
    QCOMPARE(line.next(u"Copiando"_s, 3, 300, start + 110s), u"Copiando: 1 %, faltan 3 h 1 min"_s);
    QCOMPARE(line.next(u"Copiando"_s, 300, 300, start + 120s), u"Copiando: 100 %, faltan 0 s"_s);
    QCOMPARE(line.next(u"Copiando"_s, 301, 300, start + 130s), u"Copiando: 100 %, faltan 0 s"_s);
}

void tst_DatosConsole::progressWithoutTotalCounts()
{
    ProgressLine line;
    QCOMPARE(line.next(u"Leyendo"_s, 12345, 0, ProgressLine::Clock::time_point{}), u"Leyendo: 12.345"_s);
}

void tst_DatosConsole::progressIsShownTenTimesASecondAtMost()
{
    ProgressLine line;
    const ProgressLine::Clock::time_point start{};
    int shown = 0;
    for (int millisecond = 0; millisecond < 1000; ++millisecond) {
        shown += line.next(u"Copiando"_s, millisecond, 1000, start + std::chrono::milliseconds(millisecond)) ? 1 : 0;
    }
    QCOMPARE(shown, 10);
}

void tst_DatosConsole::otherWorkBeginsAnew()
{
    ProgressLine line;
    const ProgressLine::Clock::time_point start{};
    QVERIFY(line.next(u"Copiando"_s, 50, 100, start));
    QCOMPARE(line.next(u"Comprobando"_s, 1, 2, start + 1ms), u"Comprobando: 50 %"_s);
    QCOMPARE(line.next(u"Comprobando"_s, 1, 2, start + 4001ms), u"Comprobando: 50 %, faltan 4 s"_s);
}

void tst_DatosConsole::textGoesToOutputAndComplaintsToErrors()
{
    const Streams files;
    TerminalConsole console(Format::Text, files.streams(false));
    QVERIFY(!console.wantsJson());
    console.say(u"Oficialización ñ €"_s);
    console.result({{u"n"_s, 1}});
    console.write(u"a;b\r\n"_s);
    console.complain(u"Algo falló: ¿qué?"_s);
    QVERIFY(console.finish());
    QCOMPARE(files.output(), QByteArray("Oficialización ñ €\na;b\r\n"));
    QCOMPARE(files.errors(), QByteArray("Algo falló: ¿qué?\n"));
}

void tst_DatosConsole::jsonIsAllThatOutputGets()
{
    const Streams files;
    TerminalConsole console(Format::Json, files.streams(false));
    QVERIFY(console.wantsJson());
    console.say(u"nada de esto"_s);
    console.result({{u"n"_s, 1}});
    QVERIFY(console.finish());
    QCOMPARE(files.output(), QByteArray("{\n    \"n\": 1\n}\n"));
}

void tst_DatosConsole::progressIsErasedBeforeAnyOtherWord()
{
    const Streams files;
    {
        TerminalConsole console(Format::Text, files.streams(true));
        console.progress(u"Uno"_s, 1, 2);
        console.complain(u"queja"_s);
        console.progress(u"Dos"_s, 1, 2);
        console.say(u"dicho"_s);
        console.progress(u"Tres"_s, 1, 2);
        QVERIFY(console.finish());
        QCOMPARE(files.errors(), QByteArray("\r\x1b[KUno: 50 %\r\x1b[Kqueja\n\r\x1b[KDos: 50 %\r\x1b[K\r\x1b[KTres: 50 "
                                            "%\r\x1b[K"));
        console.progress(u"Cuatro"_s, 1, 2);
    }
    QVERIFY(files.errors().endsWith("Cuatro: 50 %\r\x1b[K"));
    QCOMPARE(files.output(), QByteArray("dicho\n"));
}

void tst_DatosConsole::withoutATerminalThereIsNoProgress()
{
    const Streams files;
    TerminalConsole console(Format::Text, files.streams(false));
    console.progress(u"Uno"_s, 1, 2);
    QVERIFY(console.finish());
    QCOMPARE(files.errors(), QByteArray());
}

void tst_DatosConsole::longProgressStaysOnItsLine()
{
    const Streams files;
    TerminalConsole console(Format::Text, files.streams(true));
    console.progress(QString(200, u'ñ'), 1, 2);
    QVERIFY(console.finish());
    QCOMPARE(QString::fromUtf8(files.errors()).count(u'ñ'), 79);
}

void tst_DatosConsole::aReaderWhoGoesAwayIsNoError()
{
    const Streams files;
    const FileHandle output = abandonedPipe();
    QVERIFY(output);
    TerminalConsole console(Format::Text, {output.get(), files.streams(false).errors, false});
    for (int line = 0; line < 10000; ++line) {
        console.say(u"una línea que nadie lee"_s);
    }
    QVERIFY(console.finish());
    QCOMPARE(files.errors(), QByteArray());
}

void tst_DatosConsole::aFullDiskIsReported()
{
    const Streams files;
    const FileHandle output(std::fopen("/dev/full", "w"));
    if (!output) {
        QSKIP("the system has no /dev/full");
    }
    TerminalConsole console(Format::Text, {output.get(), files.streams(false).errors, false});
    console.say(u"un informe"_s);
    QVERIFY(!console.finish());
    QVERIFY(files.errors().startsWith("oveldra-datos: no se pudo escribir el informe en la salida estándar: "));
}

QTEST_GUILESS_MAIN(tst_DatosConsole)
#include "tst_DatosConsole.moc"
