#include "doubles/PrivateCups.h"

#include <oVELDRA/RuntimeError.h>

#include <listings/PrintQueue.h>
#include <listings/SystemPrinters.h>

#include <QRegularExpression>
#include <QTemporaryFile>
#include <QTest>

#include <functional>
#include <optional>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::listings;
using oVELDRA::doubles::PrivateCups;

namespace {

constexpr int patience = 20'000; // milliseconds
constexpr int printerError = 482;
const QString lineEnd = u"\r\n"_s;

/// What a poppler tool says of a document. The arguments stand before the name of its file.
QString inspect(const QByteArray& pdf, const QString& tool, const QStringList& arguments, const QStringList& last = {})
{
    QTemporaryFile file;
    QProcess process;
    if (!file.open() || file.write(pdf) != pdf.size() || !file.flush()) {
        qFatal("cannot write a temporary file");
    }
    process.start(tool, arguments + QStringList(file.fileName()) + last);
    if (!process.waitForFinished() || process.exitCode() != 0) {
        qWarning().noquote() << tool << process.errorString() << process.readAllStandardError();
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// The lines of every sheet that are not blank, without the blanks around them.
QList<QStringList> sheetsOf(const QByteArray& pdf)
{
    QStringList texts = inspect(pdf, u"pdftotext"_s, {u"-layout"_s}, {u"-"_s}).split(u'\f');
    texts.removeLast(); // each sheet ends in a form feed
    QList<QStringList> sheets;
    for (const QString& text : texts) {
        QStringList lines;
        for (const QString& line : text.split(u'\n')) {
            if (!line.trimmed().isEmpty()) {
                lines.append(line.trimmed());
            }
        }
        sheets.append(lines);
    }
    return sheets;
}

struct Box
{
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    QString text;
};

/// The words of a document and where they stand on their sheet, in points.
QList<Box> wordsOf(const QByteArray& pdf)
{
    static const QRegularExpression word(
        uR"re(<word xMin="([^"]+)" yMin="([^"]+)" xMax="([^"]+)" yMax="([^"]+)">([^<]*)</word>)re"_s);
    QList<Box> boxes;
    const QString sheets = inspect(pdf, u"pdftotext"_s, {u"-bbox"_s}, {u"-"_s});
    for (auto matches = word.globalMatch(sheets); matches.hasNext();) {
        const QRegularExpressionMatch found = matches.next();
        boxes.append({found.captured(1).toDouble(), found.captured(2).toDouble(), found.captured(3).toDouble(),
                      found.captured(4).toDouble(), found.captured(5)});
    }
    return boxes;
}

/// The size of the sheets in points.
QSizeF sheetSizeOf(const QByteArray& pdf)
{
    static const QRegularExpression size(uR"(Page size:\s+([\d.]+) x ([\d.]+))"_s);
    const QRegularExpressionMatch found = size.match(inspect(pdf, u"pdfinfo"_s, {}));
    return {found.captured(1).toDouble(), found.captured(2).toDouble()};
}

QStringList numberedLines(int count)
{
    QStringList lines;
    for (int line = 1; line <= count; ++line) {
        lines.append(u"Renglon-%1"_s.arg(line));
    }
    return lines;
}

void printOneLine(const QString& deviceName, const QString& text)
{
    const auto document = SystemPrinters().begin(deviceName, u"Listado"_s);
    document->print(text);
    document->end();
}

/// What the user is told when printing does not go; nothing when it goes, or goes wrong with another number.
std::optional<QString> refusalOf(const std::function<void()>& printing)
{
    try {
        printing();
    } catch (const RuntimeError& error) {
        if (error.number() == printerError) {
            return error.description();
        }
        qWarning() << error.number() << error.description();
    }
    return std::nullopt;
}

} // namespace

class tst_SystemPrinters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void deviceNamesComeInTheOrderOfTheSystem();
    void noPrintersInTheSystem();

    void documentOfTwoPagesReachesAnIppPrinter();
    void pickedPrinterPrintsLandscape();
    void paperIsTheOneThatThePrinterIsSetUpWith();
    void emptyNamePrintsOnTheDefaultPrinterAsItIsSetUp();
    void emptyNameWithoutDefaultPrinterIsRefused();
    void textHigherThanThePageGoesOnOnAnotherSheet();
    void blankLineAfterAFullSheetTakesNoSheet();
    void lineOf150CharactersIsWholeOnTheSheet_data();
    void lineOf150CharactersIsWholeOnTheSheet();
    void fontIsOfFixedPitch();
    void blanksKeepTheColumns();
    void documentThatIsNotEndedNeverArrives();

    void bytesArriveUnchangedInCodePage850();
    void everyCallIsAJobOfItsOwn();
    void everyCharacterOfTheCodePageHasItsByte();
    void charactersOutsideTheCodePageAreQuestionMarks_data();
    void charactersOutsideTheCodePageAreQuestionMarks();

    void refusals_data();
    void refusals();
    void queueThatRejectsAtTheEndIsReported();
    void emptyNameIsRefusedByTheSpooler();
    void stoppedServerIsReportedAndItsReturnIsNoticed();

private:
    [[nodiscard]] bool addQueue(const QString& name, const QString& device = {});
    /// The only document that a queue was sent; waits for it.
    [[nodiscard]] QByteArray onlyDocument(const QString& queue);
    [[nodiscard]] QByteArray printed(const QString& deviceName, const QString& text);

    PrivateCups m_cups;
    QStringList m_queues;
};

bool tst_SystemPrinters::addQueue(const QString& name, const QString& device)
{
    m_queues.append(name);
    return m_cups.addQueue(name, device);
}

QByteArray tst_SystemPrinters::onlyDocument(const QString& queue)
{
    if (!QTest::qWaitFor([&] { return !m_cups.arrived(queue).isEmpty(); }, patience)) {
        return {};
    }
    const QByteArrayList documents = m_cups.arrived(queue);
    return documents.size() == 1 ? documents.first() : QByteArray();
}

QByteArray tst_SystemPrinters::printed(const QString& deviceName, const QString& text)
{
    printOneLine(deviceName, text);
    return onlyDocument(deviceName);
}

void tst_SystemPrinters::initTestCase()
{
    m_cups.adopt();
    QVERIFY(m_cups.start());
}

void tst_SystemPrinters::init()
{
    QVERIFY(addQueue(u"Laser"_s));
}

void tst_SystemPrinters::cleanup()
{
    for (const QString& queue : std::exchange(m_queues, {})) {
        QVERIFY(m_cups.removeQueue(queue));
    }
}

void tst_SystemPrinters::cleanupTestCase()
{
    m_cups.stop();
}

void tst_SystemPrinters::deviceNamesComeInTheOrderOfTheSystem()
{
    QVERIFY(addQueue(u"Zonda"_s));
    QVERIFY(addQueue(u"Matriz_9"_s));
    QVERIFY(addQueue(u"Aduana"_s));
    QCOMPARE(SystemPrinters().deviceNames(), (QStringList{u"Aduana"_s, u"Laser"_s, u"Matriz_9"_s, u"Zonda"_s}));
}

void tst_SystemPrinters::noPrintersInTheSystem()
{
    cleanup();
    QCOMPARE(SystemPrinters().deviceNames(), QStringList());
}

void tst_SystemPrinters::documentOfTwoPagesReachesAnIppPrinter()
{
    PrivateCups printer;
    QVERIFY(printer.start());
    QVERIFY(printer.addQueue(u"Bandeja"_s));
    QVERIFY(addQueue(u"Remota"_s, printer.address(u"Bandeja"_s)));

    const auto document = SystemPrinters().begin(u"Remota"_s, u"Listado de descargas"_s);
    document->print(u"Pagina 1 de 2"_s + lineEnd + u"DIT NÚMERO: 24001"_s + lineEnd);
    document->print(u"EXPO-1"_s + lineEnd + u"EXPO-2"_s);
    document->newPage();
    document->print(u"Pagina 2 de 2"_s);
    document->print(u"EXPO-1 otra vez"_s);
    document->end();

    QTRY_COMPARE_WITH_TIMEOUT(printer.arrived(u"Bandeja"_s).size(), 1, patience);
    const QByteArray pdf = printer.arrived(u"Bandeja"_s).first();
    QVERIFY(pdf.startsWith("%PDF-"));
    QCOMPARE(sheetsOf(pdf), (QList<QStringList>{{u"Pagina 1 de 2"_s, u"DIT NÚMERO: 24001"_s, u"EXPO-1"_s, u"EXPO-2"_s},
                                                {u"Pagina 2 de 2"_s, u"EXPO-1 otra vez"_s}}));
    QCOMPARE(m_cups.arrived(u"Laser"_s).size(), 0);
}

void tst_SystemPrinters::pickedPrinterPrintsLandscape()
{
    const QSizeF sheet = sheetSizeOf(printed(u"Laser"_s, u"Apaisado"_s));
    QVERIFY(sheet.height() > 0);
    QVERIFY(sheet.width() > sheet.height());
}

void tst_SystemPrinters::paperIsTheOneThatThePrinterIsSetUpWith()
{
    // A printer with a description of its own: two papers, the second one loaded; it takes PDF as it comes.
    QTemporaryFile description;
    QVERIFY(description.open());
    description.write("*PPD-Adobe: \"4.3\"\n"
                      "*FormatVersion: \"4.3\"\n"
                      "*FileVersion: \"1.0\"\n"
                      "*LanguageVersion: English\n"
                      "*LanguageEncoding: ISOLatin1\n"
                      "*PCFileName: \"CARTA.PPD\"\n"
                      "*Manufacturer: \"Prueba\"\n"
                      "*ModelName: \"Carta\"\n"
                      "*ShortNickName: \"Carta\"\n"
                      "*NickName: \"Carta\"\n"
                      "*Product: \"(Carta)\"\n"
                      "*PSVersion: \"(3010.0) 0\"\n"
                      "*cupsFilter2: \"application/pdf application/pdf 0 -\"\n"
                      "*OpenUI *PageSize/Papel: PickOne\n"
                      "*DefaultPageSize: Letter\n"
                      "*PageSize A4/A4: \"\"\n"
                      "*PageSize Letter/Carta: \"\"\n"
                      "*CloseUI: *PageSize\n"
                      "*OpenUI *PageRegion/Papel: PickOne\n"
                      "*DefaultPageRegion: Letter\n"
                      "*PageRegion A4/A4: \"\"\n"
                      "*PageRegion Letter/Carta: \"\"\n"
                      "*CloseUI: *PageRegion\n"
                      "*DefaultImageableArea: Letter\n"
                      "*ImageableArea A4: \"18 18 577 824\"\n"
                      "*ImageableArea Letter: \"18 18 594 774\"\n"
                      "*DefaultPaperDimension: Letter\n"
                      "*PaperDimension A4: \"595 842\"\n"
                      "*PaperDimension Letter: \"612 792\"\n");
    QVERIFY(description.flush());
    QVERIFY(addQueue(u"Carta"_s));
    QVERIFY(m_cups.run(u"lpadmin"_s, {u"-p"_s, u"Carta"_s, u"-P"_s, description.fileName()}));

    const QString line = u"1234567890"_s.repeated(15);
    const QByteArray pdf = printed(u"Carta"_s, line);
    QCOMPARE(sheetSizeOf(pdf), QSizeF(792, 612));
    const QList<Box> words = wordsOf(pdf);
    QCOMPARE(words.size(), 1);
    QCOMPARE(words.first().text, line);
    QVERIFY(words.first().right <= 792 - 18);
}

void tst_SystemPrinters::emptyNamePrintsOnTheDefaultPrinterAsItIsSetUp()
{
    QVERIFY(addQueue(u"Comun"_s));
    QVERIFY(m_cups.run(u"lpadmin"_s, {u"-d"_s, u"Comun"_s}));
    printOneLine(QString(), u"En la impresora predeterminada"_s);

    const QByteArray pdf = onlyDocument(u"Comun"_s);
    QCOMPARE(sheetsOf(pdf), QList<QStringList>{{u"En la impresora predeterminada"_s}});
    const QSizeF sheet = sheetSizeOf(pdf);
    QVERIFY(sheet.width() > 0);
    QVERIFY(sheet.height() > sheet.width());
    QCOMPARE(m_cups.arrived(u"Laser"_s).size(), 0);
}

void tst_SystemPrinters::emptyNameWithoutDefaultPrinterIsRefused()
{
    cleanup();
    QCOMPARE(refusalOf([] { printOneLine(QString(), u"Nadie"_s); }),
             u"El sistema no tiene una impresora predeterminada."_s);
}

void tst_SystemPrinters::textHigherThanThePageGoesOnOnAnotherSheet()
{
    const QStringList lines = numberedLines(200);
    const QByteArray pdf = printed(u"Laser"_s, lines.join(lineEnd));

    const QList<QStringList> sheets = sheetsOf(pdf);
    QVERIFY(sheets.size() > 1);
    QStringList all;
    for (const QStringList& sheet : sheets) {
        all += sheet;
    }
    QCOMPARE(all, lines);

    const double height = sheetSizeOf(pdf).height();
    const QList<Box> words = wordsOf(pdf);
    QCOMPARE(words.size(), lines.size());
    for (const Box& word : words) {
        QVERIFY(word.top >= 0);
        QVERIFY2(word.bottom <= height, qUtf8Printable(word.text));
    }
}

void tst_SystemPrinters::blankLineAfterAFullSheetTakesNoSheet()
{
    QVERIFY(addQueue(u"Medida"_s));
    const QList<QStringList> sheets = sheetsOf(printed(u"Medida"_s, numberedLines(200).join(lineEnd)));
    QVERIFY(sheets.size() > 1);

    const QStringList& full = sheets.first();
    QCOMPARE(sheetsOf(printed(u"Laser"_s, full.join(lineEnd) + lineEnd)), QList<QStringList>{full});
}

void tst_SystemPrinters::lineOf150CharactersIsWholeOnTheSheet_data()
{
    QTest::addColumn<QString>("deviceName");
    QTest::newRow("picked printer, landscape") << u"Laser"_s;
    QTest::newRow("default printer, upright") << QString();
}

void tst_SystemPrinters::lineOf150CharactersIsWholeOnTheSheet()
{
    QFETCH(const QString, deviceName);
    QVERIFY(m_cups.run(u"lpadmin"_s, {u"-d"_s, u"Laser"_s}));
    const QString line = u"1234567890"_s.repeated(15);
    printOneLine(deviceName, line);

    const QByteArray pdf = onlyDocument(u"Laser"_s);
    QCOMPARE(sheetsOf(pdf), QList<QStringList>{{line}});
    const QList<Box> words = wordsOf(pdf);
    QCOMPARE(words.size(), 1);
    QCOMPARE(words.first().text, line);
    QVERIFY(words.first().left >= 0);
    QVERIFY(words.first().right <= sheetSizeOf(pdf).width());
}

void tst_SystemPrinters::fontIsOfFixedPitch()
{
    const QByteArray pdf = printed(u"Laser"_s, u"iiiiiiiiii"_s + lineEnd + u"MMMMMMMMMM"_s);

    const QList<Box> words = wordsOf(pdf);
    QCOMPARE(words.size(), 2);
    QVERIFY(qAbs((words[0].right - words[0].left) - (words[1].right - words[1].left)) < 0.1);

    const QStringList fonts = inspect(pdf, u"pdffonts"_s, {}).split(u'\n', Qt::SkipEmptyParts).mid(2); // below its head
    QCOMPARE(fonts.size(), 1);
    static const QRegularExpression fixedPitch(u"Courier|Mono"_s);
    QVERIFY2(fonts.first().contains(fixedPitch), qUtf8Printable(fonts.first()));
}

void tst_SystemPrinters::blanksKeepTheColumns()
{
    const QList<Box> words = wordsOf(printed(u"Laser"_s, u"AAAAAAAA B"_s + lineEnd + u"         C"_s));
    QCOMPARE(words.size(), 3);
    QCOMPARE(words[2].text, u"C"_s);
    QVERIFY(qAbs(words[1].left - words[2].left) < 0.1);
}

void tst_SystemPrinters::documentThatIsNotEndedNeverArrives()
{
    {
        const auto givenUp = SystemPrinters().begin(u"Laser"_s, u"A medias"_s);
        givenUp->print(u"A medias"_s);
        givenUp->newPage();
        givenUp->print(u"Tampoco"_s);
    }
    // The queue prints in the order of its jobs: what comes alone had nothing before it.
    QCOMPARE(sheetsOf(printed(u"Laser"_s, u"Entero"_s)), QList<QStringList>{{u"Entero"_s}});
}

void tst_SystemPrinters::bytesArriveUnchangedInCodePage850()
{
    SystemSpooler().send(u"Laser"_s, u"EXPO  Año Nº  ÁÉÍÓÚ ñÑ ü\r\n\f\t2ª línea \r\n"_s);
    QCOMPARE(onlyDocument(u"Laser"_s), QByteArray("EXPO  A\xA4o N\xA7  \xB5\x90\xD6\xE0\xE9 \xA4\xA5 \x81\r\n"
                                                  "\f\t2\xA6 l\xA1nea \r\n"));
}

void tst_SystemPrinters::everyCallIsAJobOfItsOwn()
{
    SystemSpooler spooler;
    const QByteArrayList pages{"primera\r\n", "segunda\r\n", "tercera\r\n"};
    for (const QByteArray& page : pages) {
        spooler.send(u"Laser"_s, QString::fromLatin1(page));
    }
    QTRY_COMPARE_WITH_TIMEOUT(m_cups.arrived(u"Laser"_s).size(), pages.size(), patience);
    QCOMPARE(m_cups.arrived(u"Laser"_s), pages);
}

void tst_SystemPrinters::everyCharacterOfTheCodePageHasItsByte()
{
    const QString upperHalf = u"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜø£Ø×ƒáíóúñÑªº¿®¬½¼¡«»░▒▓│┤ÁÂÀ©╣║╗╝¢¥┐└┴┬├─┼ãÃ╚╔╩╦╠═╬¤"
                              "ðÐÊËÈıÍÎÏ┘┌█▄¦Ì▀ÓßÔÒõÕµþÞÚÛÙýÝ¯´\u00AD±‗¾¶§÷¸°¨·¹³²■\u00A0"_s;
    QByteArray expected;
    QString text;
    for (int byte = ' '; byte < 0x7F; ++byte) {
        expected.append(static_cast<char>(byte));
        text.append(QLatin1Char(static_cast<char>(byte)));
    }
    for (int byte = 0x80; byte <= 0xFF; ++byte) {
        expected.append(static_cast<char>(byte));
    }
    QCOMPARE(upperHalf.size(), 128);
    QCOMPARE(queue::toCodePage850(text + upperHalf), expected);
}

void tst_SystemPrinters::charactersOutsideTheCodePageAreQuestionMarks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("euro") << u"10 € ñ"_s << QByteArray("10 ? \xA4");
    QTest::newRow("typographic quotes") << u"“a”"_s << QByteArray("?a?");
    QTest::newRow("Greek and Chinese") << u"aΩ中b"_s << QByteArray("a??b");
    QTest::newRow("outside the basic plane") << u"a\U0001F600b"_s << QByteArray("a?b");
    QTest::newRow("question marks of its own") << u"¿?"_s << QByteArray("\xA8?");
    QTest::newRow("nothing") << QString() << QByteArray();
}

void tst_SystemPrinters::charactersOutsideTheCodePageAreQuestionMarks()
{
    QFETCH(const QString, text);
    QFETCH(const QByteArray, bytes);
    QCOMPARE(queue::toCodePage850(text), bytes);
}

void tst_SystemPrinters::refusals_data()
{
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("reason");
    QTest::newRow("paused queue") << u"cupsdisable"_s << QStringList{u"Central"_s} << u"está detenida."_s;
    QTest::newRow("rejecting queue") << u"cupsreject"_s << QStringList{u"Central"_s} << u"no acepta trabajos."_s;
    QTest::newRow("vanished queue") << u"lpadmin"_s << QStringList{u"-x"_s, u"Central"_s}
                                    << u"ya no está en el sistema."_s;
}

void tst_SystemPrinters::refusals()
{
    QFETCH(const QString, tool);
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, reason);
    const QString central = u"Central"_s;
    QVERIFY(m_cups.addQueue(central));
    QVERIFY(SystemPrinters().deviceNames().contains(central));
    QVERIFY(m_cups.run(tool, arguments));

    const QString message = u"La impresora Central no puede imprimir: "_s + reason;
    QCOMPARE(refusalOf([&] { printOneLine(central, u"Windows"_s); }), message);
    QCOMPARE(refusalOf([&] { SystemSpooler().send(central, u"DOS\r\n"_s); }), message);

    // Nothing of it comes out when the queue is back in order.
    QVERIFY(m_cups.addQueue(central));
    m_queues.append(central);
    SystemSpooler().send(central, u"DOS\r\n"_s);
    QCOMPARE(onlyDocument(central), QByteArray("DOS\r\n"));
}

void tst_SystemPrinters::queueThatRejectsAtTheEndIsReported()
{
    const auto document = SystemPrinters().begin(u"Laser"_s, u"Listado"_s);
    document->print(u"Llega tarde"_s);
    QVERIFY(m_cups.run(u"cupsreject"_s, {u"Laser"_s}));
    const auto refusal = refusalOf([&] { document->end(); });
    QVERIFY(refusal);
    QVERIFY2(refusal->startsWith(u"La impresora Laser no aceptó el documento. "_s), qUtf8Printable(*refusal));

    QVERIFY(m_cups.run(u"cupsaccept"_s, {u"Laser"_s}));
    QCOMPARE(sheetsOf(printed(u"Laser"_s, u"Llega"_s)), QList<QStringList>{{u"Llega"_s}});
}

void tst_SystemPrinters::emptyNameIsRefusedByTheSpooler()
{
    QVERIFY(m_cups.run(u"lpadmin"_s, {u"-d"_s, u"Laser"_s}));
    QCOMPARE(refusalOf([] { SystemSpooler().send(QString(), u"DOS\r\n"_s); }),
             u"El modo DOS necesita una impresora elegida de la lista."_s);
}

void tst_SystemPrinters::stoppedServerIsReportedAndItsReturnIsNoticed()
{
    const auto begun = SystemPrinters().begin(u"Laser"_s, u"Listado"_s);
    begun->print(u"Llega tarde"_s);
    m_cups.stop();

    const QString message =
        u"La impresora Laser no puede imprimir: el servicio de impresión del sistema no responde."_s;
    const auto windows = refusalOf([] { printOneLine(u"Laser"_s, u"Windows"_s); });
    const auto dos = refusalOf([] { SystemSpooler().send(u"Laser"_s, u"DOS\r\n"_s); });
    const auto late = refusalOf([&] { begun->end(); });
    QVERIFY(m_cups.start());

    QCOMPARE(windows, message);
    QCOMPARE(dos, message);
    QVERIFY(late);
    QVERIFY2(late->startsWith(u"La impresora Laser no aceptó el documento. "_s), qUtf8Printable(*late));
    SystemSpooler().send(u"Laser"_s, u"De vuelta\r\n"_s);
    QCOMPARE(onlyDocument(u"Laser"_s), QByteArray("De vuelta\r\n"));
}

QTEST_MAIN(tst_SystemPrinters)
#include "tst_SystemPrinters.moc"
