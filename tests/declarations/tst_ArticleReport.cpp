#include "declarations/ArticlesStore.h"
#include "declarations/PdfText.h"
#include "doubles/FakeConexionDB.h"
#include "doubles/ThrownError.h"

#include <declarations/ArticleReport.h>
#include <declarations/ReportOutput.h>

#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QTemporaryDir>

#include <algorithm>
#include <csignal>
#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::declarations;
using namespace oVELDRA::doubles;

namespace {

constexpr int rowsOnFirstPage = 61;
constexpr int rowsOnOtherPages = 63;
const QString titles = u"Item SubIt Nro Articulo Unid Cantidad Unitario Disponible Disp % Posición Nro CTC"_s;
const QStringList fields{u"pARTITM"_s, u"pARTSBT"_s, u"ARTNRO"_s,  u"ARTNCM"_s,  u"ARTCTC"_s,
                         u"ARTUNI"_s,  u"pARTCAT"_s, u"pARTPRE"_s, u"pARTDSC"_s, u"pPROC"_s};

/// The report over a store, and where its files go.
struct Fixture
{
    [[nodiscard]] BandedReport report() const { return {articleReport(QDate(2024, 3, 15)), store.printed()}; }

    [[nodiscard]] QString path(const QString& name = u"informe.pdf"_s) const { return folder.filePath(name); }

    /// The report's PDF.
    [[nodiscard]] QString saved() const
    {
        savePdf(report(), path(), u"DIT"_s);
        return path();
    }

    ArticlesStore store;
    QTemporaryDir folder;
};

/// A printer that is a PDF file.
class FilePrinter
{
public:
    explicit FilePrinter(const QString& fileName) : m_printer(QPrinter::HighResolution)
    {
        m_printer.setOutputFormat(QPrinter::PdfFormat);
        m_printer.setOutputFileName(fileName);
        m_printer.setPageSize(QPageSize(QPageSize::A4));
    }

    [[nodiscard]] QPrinter& operator*() { return m_printer; }
    [[nodiscard]] QPrinter* operator->() { return &m_printer; }

private:
    QPrinter m_printer;
};

/// The words of the first page's row of that number (from 0), from left to right.
QList<PdfWord> wordsOfRow(const QString& fileName, int row)
{
    const ReportDesign design = articleReport({});
    const auto height = [&design](Band band) { return design.bands.at(band).height; };
    const double top =
        design.margins.top() + height(Band::ReportHeader) + height(Band::PageHeader) + row * height(Band::Detail);
    QList<PdfWord> words = pdfWords(fileName);
    words.removeIf([top, bottom = top + height(Band::Detail)](const PdfWord& word) {
        const double middle = word.box.center().y();
        return word.page != 0 || middle < top || middle > bottom;
    });
    std::sort(words.begin(), words.end(),
              [](const PdfWord& a, const PdfWord& b) { return a.box.left() < b.box.left(); });
    return words;
}

/// A page as a picture, four pixels a point.
QImage picture(const BandedReport& report, int page, const QRectF& exposed = {})
{
    QImage image((report.sheet() * 4).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(4, 4);
    report.paintPage(painter, page, exposed);
    return image;
}

} // namespace

class tst_ArticleReport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void onePageHasAllBands();
    void rowsBreakIntoPages_data();
    void rowsBreakIntoPages();
    void everyPageRepeatsTitlesAndFooter();
    void emptyDeclarationIsAPageWithoutRows();
    void rowsComeInTheirOrderAcrossPages();
    void numbersFollowTheLocaleWithTwoDecimals_data();
    void numbersFollowTheLocaleWithTwoDecimals();
    void numbersStandToTheRightTextsToTheLeft();
    void textsThatAreTooWideStayInTheirColumns();
    void codeOfTwentyCharactersIsWhole_data();
    void codeOfTwentyCharactersIsWhole();
    void nullFieldsAreEmpty();
    void controlCharactersAreBlanks();
    void captionOfTheLabelIsReplaced();
    void unknownLabelIsAnError();
    void unknownFieldIsAnError();
    void recordsetThatIsNotInMemoryIsCopied();
    void pagesMayBePaintedInAnyOrder();
    void exposedPartIsPaintedLikeTheWhole();
    void titlesStandBetweenTwoRulesTheFooterUnderOne();

    void fileNeedsNoPrinterAndIsA4();
    void savedFileReplacesAnOlderOne();
    void fileThatCannotBeWrittenIsAnError_data();
    void fileThatCannotBeWrittenIsAnError();
    void diskThatFillsUpLeavesTheOlderFile();
    void printedPagesAreTheSavedOnes();
    void printsTheRangeThatWasChosen_data();
    void printsTheRangeThatWasChosen();
    void printsCopiesThatThePrinterDoesNotMake();
    void otherPaperGetsTheWholePageScaled();
    void printerThatTakesNoPagesIsAnError();
};

void tst_ArticleReport::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_ArticleReport::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

// --- what stands on the pages ---

void tst_ArticleReport::onePageHasAllBands()
{
    Fixture fixture;
    fixture.store.add({2, 1, u"BR-7"_s, u"1234,5"_s, u"370,35"_s, u"0,5"_s, u"01"_s, u"7208.90.00.110H"_s, u"C9"_s});
    fixture.store.add({1, 0, u"AC-1"_s, u"40"_s, u"12"_s});
    QCOMPARE(pdfPages(fixture.saved()),
             (QList<QStringList>{QStringList{u"DIT:"_s, titles,
                                             u"001 000 AC-1 07 40,00 01,500000 12,00 30,00 8471.30.12.000A CTC-1"_s,
                                             u"002 001 BR-7 01 1234,50 00,500000 370,35 30,00 7208.90.00.110H C9"_s,
                                             u"oVELDRA Página 1 de 1 Impreso el 15/03/2024"_s}}));
}

void tst_ArticleReport::rowsBreakIntoPages_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("one row") << 1 << QList{1};
    QTest::newRow("first page exactly full") << rowsOnFirstPage << QList{rowsOnFirstPage};
    QTest::newRow("one row more") << rowsOnFirstPage + 1 << QList{rowsOnFirstPage, 1};
    QTest::newRow("second page exactly full")
        << rowsOnFirstPage + rowsOnOtherPages << QList{rowsOnFirstPage, rowsOnOtherPages};
    QTest::newRow("many pages") << 300
                                << QList{rowsOnFirstPage, rowsOnOtherPages, rowsOnOtherPages, rowsOnOtherPages, 50};
}

void tst_ArticleReport::rowsBreakIntoPages()
{
    QFETCH(const int, rows);
    QFETCH(const QList<int>, expected);
    Fixture fixture;
    fixture.store.addMany(rows);
    QList<int> counts;
    const auto pages = pdfPages(fixture.saved());
    for (const QStringList& lines : pages) {
        counts.append(static_cast<int>(lines.filter(u"AC-"_s).size()));
    }
    QCOMPARE(counts, expected);
}

void tst_ArticleReport::everyPageRepeatsTitlesAndFooter()
{
    Fixture fixture;
    fixture.store.addMany(300);
    const auto pages = pdfPages(fixture.saved());
    QCOMPARE(pages.size(), 5);
    for (int page = 0; page < pages.size(); ++page) {
        QCOMPARE(pages.at(page).count(titles), 1);
        QCOMPARE(pages.at(page).constLast(), u"oVELDRA Página %1 de 5 Impreso el 15/03/2024"_s.arg(page + 1));
        QCOMPARE(pages.at(page).constFirst(), page == 0 ? u"DIT:"_s : titles);
    }
}

void tst_ArticleReport::emptyDeclarationIsAPageWithoutRows()
{
    const Fixture fixture;
    QCOMPARE(pdfPages(fixture.saved()),
             (QList<QStringList>{QStringList{u"DIT:"_s, titles, u"oVELDRA Página 1 de 1 Impreso el 15/03/2024"_s}}));
}

void tst_ArticleReport::rowsComeInTheirOrderAcrossPages()
{
    Fixture fixture;
    fixture.store.addMany(150);
    QStringList items;
    const auto pages = pdfPages(fixture.saved());
    for (const QStringList& lines : pages) {
        for (const QString& line : lines.filter(u"AC-"_s)) {
            items.append(line.section(u' ', 0, 0) + u' ' + line.section(u' ', 2, 2));
        }
    }
    QCOMPARE(items.size(), 150);
    for (int row = 0; row < items.size(); ++row) {
        QCOMPARE(items.at(row), u"%1 AC-%2"_s.arg(row + 1, 3, 10, QChar(u'0')).arg(row + 1));
    }
}

void tst_ArticleReport::numbersFollowTheLocaleWithTwoDecimals_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("line");
    QTest::newRow("comma") << u"es_AR"_s << u"001 000 AC-1 07 40,13 01,500000 11,60 28,91 8471.30.12.000A CTC-1"_s;
    QTest::newRow("period") << u"en_US"_s << u"001 000 AC-1 07 40.13 01.500000 11.60 28.91 8471.30.12.000A CTC-1"_s;
}

void tst_ArticleReport::numbersFollowTheLocaleWithTwoDecimals()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, line);
    Fixture fixture;
    fixture.store.add({1, 0, u"AC-1"_s, u"40,125"_s, u"11,6"_s});
    QLocale::setDefault(QLocale(locale));
    QCOMPARE(pdfPages(fixture.saved()).constFirst().at(2), line);
}

void tst_ArticleReport::numbersStandToTheRightTextsToTheLeft()
{
    Fixture fixture;
    fixture.store.add({1, 0, u"A"_s, u"1"_s, u"1"_s, u"1"_s, u"1"_s, u"1"_s, u"1"_s});
    fixture.store.add({2, 0, u"ABCDEF"_s, u"12345,5"_s, u"12345,5"_s, u"12345,5"_s, u"123"_s, u"123456"_s, u"12345"_s});
    const QString file = fixture.saved();
    const QList<PdfWord> narrow = wordsOfRow(file, 0);
    const QList<PdfWord> wide = wordsOfRow(file, 1);
    QCOMPARE(narrow.size(), fields.size());
    QCOMPARE(wide.size(), fields.size());
    for (int column = 0; column < fields.size(); ++column) {
        const bool isNumber = QList{0, 1, 4, 5, 6, 7}.contains(column);
        const QRectF& a = narrow.at(column).box;
        const QRectF& b = wide.at(column).box;
        const double between = isNumber ? a.right() - b.right() : a.left() - b.left();
        QVERIFY2(qAbs(between) < 0.2, qPrintable(u"column %1 is off by %2"_s.arg(column).arg(between)));
    }
}

void tst_ArticleReport::textsThatAreTooWideStayInTheirColumns()
{
    Fixture fixture;
    const QString longest(50, u'W');
    fixture.store.add({12345, 12345, longest, u"1E14"_s, u"1E14"_s, u"1E14"_s, QString(10, u'W'), longest, longest});
    const ReportDesign design = articleReport({});
    const std::vector<BandText>& columns = design.bands.at(Band::Detail).texts;
    const QList<PdfWord> words = wordsOfRow(fixture.saved(), 0);
    QCOMPARE(words.size(), fields.size());
    for (int index = 0; index < words.size(); ++index) {
        const BandText& column = columns.at(static_cast<std::size_t>(index));
        const QRectF& box = words.at(index).box;
        const double left = design.margins.left() + column.left;
        QVERIFY2(box.left() > left - 0.5 && box.right() < left + column.width + 0.5,
                 qPrintable(u"%1: %2, from %3 to %4"_s.arg(column.name, words.at(index).text)
                                .arg(box.left() - left)
                                .arg(box.right() - left)));
    }
    QVERIFY(words.at(2).text.endsWith(u'…'));
    QCOMPARE(words.at(4).text, u"100000000000000,00"_s);
}

void tst_ArticleReport::codeOfTwentyCharactersIsWhole_data()
{
    QTest::addColumn<QString>("code");
    QTest::newRow("digits") << u"01234567890123456789"_s;
    QTest::newRow("mixed") << u"ART-00012345/ABCDEFG"_s;
    QTest::newRow("the widest letters") << QString(20, u'W');
}

void tst_ArticleReport::codeOfTwentyCharactersIsWhole()
{
    QFETCH(const QString, code);
    Fixture fixture;
    fixture.store.add({1, 0, code});
    QVERIFY(pdfPages(fixture.saved()).constFirst().at(2).startsWith(u"001 000 "_s + code + u" 07 "_s));
}

void tst_ArticleReport::nullFieldsAreEmpty()
{
    Fixture fixture;
    run(*fixture.store.connection(),
        u"insert into INS (INTDCL,ARTITM) values ('"_s + ArticlesStore::number + u"','5')"_s);
    QCOMPARE(pdfPages(fixture.saved()).constFirst().at(2), u"005"_s);
}

void tst_ArticleReport::controlCharactersAreBlanks()
{
    FakeConexionDB connection;
    connection.willGiveRows(u"select"_s, fields,
                            {{u"001"_s, u"000"_s, u"A\nB\tC\u0085D"_s, {}, {}, {}, {}, {}, {}, {}}});
    bool ok = false;
    connection.setSql(u"select"_s);
    const Fixture fixture;
    savePdf({articleReport({}), connection.openRecordset(ok)}, fixture.path(), {});
    QCOMPARE(pdfPages(fixture.path()).constFirst().at(2), u"001 000 A B C D"_s);
}

void tst_ArticleReport::captionOfTheLabelIsReplaced()
{
    Fixture fixture;
    fixture.store.addMany(100);
    BandedReport report = fixture.report();
    report.setCaption(u"lbDIT", u"Declaración nro.: "_s + ArticlesStore::number);
    savePdf(report, fixture.path(), {});
    const auto pages = pdfPages(fixture.path());
    QCOMPARE(pages.size(), 2);
    QCOMPARE(pages.at(0).constFirst(), u"Declaración nro.: 24073IT14000123A"_s);
    QCOMPARE(pages.at(1).constFirst(), titles);
}

void tst_ArticleReport::unknownLabelIsAnError()
{
    const Fixture fixture;
    BandedReport report = fixture.report();
    for (const QString& name : {u"lbdit"_s, u"ARTNRO"_s, u"lbPagina"_s}) {
        QCOMPARE(numberThrownBy([&] { report.setCaption(name, u"x"_s); }), 9);
    }
}

void tst_ArticleReport::unknownFieldIsAnError()
{
    Fixture fixture;
    fixture.store.addMany(1);
    ConexionDB& db = *fixture.store.connection();
    db.setSql(u"select ARTNRO from INS"_s);
    bool ok = false;
    auto rows = db.openRecordset(ok);
    QVERIFY(ok);
    QCOMPARE(numberThrownBy([&] { BandedReport(articleReport({}), std::move(rows)); }), 3265);
}

void tst_ArticleReport::recordsetThatIsNotInMemoryIsCopied()
{
    FakeConexionDB connection;
    const auto row = [](const QString& item) -> FakeConexionDB::Row {
        return {item, u"000"_s, u"AC"_s, u"N"_s, u"C"_s, u"07"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s};
    };
    connection.willGiveRows(u"select"_s, fields, {row(u"001"_s), row(u"002"_s)});
    connection.setSql(u"select"_s);
    bool ok = false;
    auto rows = connection.openRecordset(ok);
    QVERIFY(!rows->isInMemory());
    const Fixture fixture;
    savePdf({articleReport({}), std::move(rows)}, fixture.path(), {});
    QCOMPARE(pdfPages(fixture.path()).constFirst().mid(2, 2),
             (QStringList{u"001 000 AC 07 1 2 3 4 N C"_s, u"002 000 AC 07 1 2 3 4 N C"_s}));
}

void tst_ArticleReport::pagesMayBePaintedInAnyOrder()
{
    Fixture fixture;
    fixture.store.addMany(200);
    const BandedReport report = fixture.report();
    QList<QImage> inOrder;
    for (int page = 0; page < report.pageCount(); ++page) {
        inOrder.append(picture(report, page));
    }
    QCOMPARE(inOrder.size(), 4);
    for (const int page : {3, 0, 2, 1, 1, 3}) {
        QCOMPARE(picture(report, page), inOrder.at(page));
    }
    QVERIFY(inOrder.at(1) != inOrder.at(2));
    QCOMPARE(numberThrownBy([&] { picture(report, 4); }), 9);
}

void tst_ArticleReport::exposedPartIsPaintedLikeTheWhole()
{
    Fixture fixture;
    fixture.store.addMany(61);
    const BandedReport report = fixture.report();
    const QImage whole = picture(report, 0);
    const QRect part(100, 800, 1500, 400);
    const QImage exposed = picture(report, 0, QRectF(25, 200, 375, 100));
    QCOMPARE(exposed.copy(part), whole.copy(part));
    QVERIFY(exposed != whole);
}

void tst_ArticleReport::titlesStandBetweenTwoRulesTheFooterUnderOne()
{
    const Fixture fixture;
    const QImage page = picture(fixture.report(), 0);
    // Rules are what is black from margin to margin.
    QList<int> rules;
    for (int y = 1; y < page.height(); ++y) {
        const auto isBlack = [&page, y](int x) { return qGray(page.pixel(x, y)) < 128; };
        const bool isRule = isBlack(148) && isBlack(1200) && isBlack(2230) && !isBlack(140) && !isBlack(2245);
        if (isRule && (rules.isEmpty() || y > rules.constLast() + 4)) {
            rules.append(y);
        }
    }
    QCOMPARE(rules.size(), 3);
    const QList<PdfWord> words = pdfWords(fixture.saved());
    const auto topOf = [&words](const QString& text) {
        const auto found =
            std::find_if(words.begin(), words.end(), [&text](const PdfWord& w) { return w.text == text; });
        return found == words.end() ? -1 : 4 * found->box.center().y();
    };
    QVERIFY(topOf(u"DIT:"_s) > 0 && topOf(u"DIT:"_s) < rules.at(0));
    QVERIFY(topOf(u"Unitario"_s) > rules.at(0) && topOf(u"Unitario"_s) < rules.at(1));
    QVERIFY(topOf(u"Página"_s) > rules.at(2));
}

// --- where the pages go ---

void tst_ArticleReport::fileNeedsNoPrinterAndIsA4()
{
    Fixture fixture;
    fixture.store.addMany(1);
    QFile file(fixture.saved());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.read(5).startsWith("%PDF-"));
    QVERIFY(pdftotext(fixture.path(), u"-bbox"_s).contains(u"<page width=\"595.000000\" height=\"842.000000\">"_s));
}

void tst_ArticleReport::savedFileReplacesAnOlderOne()
{
    Fixture fixture;
    fixture.store.addMany(100);
    QCOMPARE(pdfPages(fixture.saved()).size(), 2);
    run(*fixture.store.connection(), u"delete from INS"_s);
    QCOMPARE(pdfPages(fixture.saved()).size(), 1);
    QCOMPARE(QDir(fixture.folder.path()).entryList(QDir::Files), QStringList{u"informe.pdf"_s});
}

void tst_ArticleReport::fileThatCannotBeWrittenIsAnError_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("folder that is not there") << u"no/hay/informe.pdf"_s;
    QTest::newRow("a folder's own name") << u"."_s;
}

void tst_ArticleReport::fileThatCannotBeWrittenIsAnError()
{
    QFETCH(const QString, name);
    Fixture fixture;
    fixture.store.addMany(1);
    const auto error = thrownBy([&] { savePdf(fixture.report(), fixture.path(name), {}); });
    QVERIFY(error);
    QCOMPARE(error->number(), 75);
    QVERIFY(error->description().startsWith(u"No se pudo guardar el archivo "_s));
    QVERIFY(QDir(fixture.folder.path()).isEmpty());
}

void tst_ArticleReport::diskThatFillsUpLeavesTheOlderFile()
{
    Fixture fixture;
    fixture.store.addMany(1);
    const QByteArray before = [&] {
        QFile file(fixture.saved());
        static_cast<void>(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }();
    QVERIFY(!before.isEmpty());
    fixture.store.addMany(2000);

    // Past a file size of 8 KB the system refuses to write.
    rlimit unlimited{};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limited = unlimited;
    limited.rlim_cur = 8192;
    setrlimit(RLIMIT_FSIZE, &limited);
    const int number = numberThrownBy([&] { static_cast<void>(fixture.saved()); });
    setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, SIG_DFL);

    QCOMPARE(number, 75);
    QFile file(fixture.path());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), before);
    QCOMPARE(QDir(fixture.folder.path()).entryList(QDir::Files), QStringList{u"informe.pdf"_s});
}

void tst_ArticleReport::printedPagesAreTheSavedOnes()
{
    Fixture fixture;
    fixture.store.addMany(130);
    FilePrinter printer(fixture.path(u"impreso.pdf"_s));
    printReport(fixture.report(), *printer);
    QCOMPARE(pdfPages(fixture.path(u"impreso.pdf"_s)), pdfPages(fixture.saved()));
}

void tst_ArticleReport::printsTheRangeThatWasChosen_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QList<int>>("pages");
    QTest::newRow("in the middle") << 2 << 3 << QList{2, 3};
    QTest::newRow("one page") << 5 << 5 << QList{5};
    QTest::newRow("beyond the end") << 4 << 9 << QList{4, 5};
    QTest::newRow("none chosen") << 0 << 0 << QList{1, 2, 3, 4, 5};
}

void tst_ArticleReport::printsTheRangeThatWasChosen()
{
    QFETCH(const int, from);
    QFETCH(const int, to);
    QFETCH(const QList<int>, pages);
    Fixture fixture;
    fixture.store.addMany(300);
    FilePrinter printer(fixture.path());
    printer->setPrintRange(QPrinter::PageRange);
    printer->setFromTo(from, to);
    printReport(fixture.report(), *printer);
    const auto printed = pdfPages(fixture.path());
    QCOMPARE(printed.size(), pages.size());
    for (int sheet = 0; sheet < printed.size(); ++sheet) {
        QVERIFY(printed.at(sheet).constLast().contains(u"Página %1 de 5"_s.arg(pages.at(sheet))));
    }
}

void tst_ArticleReport::printsCopiesThatThePrinterDoesNotMake()
{
    Fixture fixture;
    fixture.store.addMany(100);
    FilePrinter printer(fixture.path());
    printer->setCopyCount(2);
    QVERIFY(!printer->supportsMultipleCopies());
    printReport(fixture.report(), *printer);
    const auto pages = pdfPages(fixture.path());
    QCOMPARE(pages.size(), 4);
    QCOMPARE(pages.mid(0, 2), pages.mid(2));
}

void tst_ArticleReport::otherPaperGetsTheWholePageScaled()
{
    Fixture fixture;
    fixture.store.addMany(100);
    FilePrinter printer(fixture.path(u"carta.pdf"_s));
    printer->setPageSize(QPageSize(QPageSize::Letter));
    printReport(fixture.report(), *printer);
    QCOMPARE(pdfPages(fixture.path(u"carta.pdf"_s)), pdfPages(fixture.saved()));
    const QList<PdfWord> words = pdfWords(fixture.path(u"carta.pdf"_s));
    QVERIFY(!words.isEmpty());
    for (const PdfWord& word : words) {
        QVERIFY(QRectF(30, 30, 552, 732).contains(word.box));
    }
}

void tst_ArticleReport::printerThatTakesNoPagesIsAnError()
{
    Fixture fixture;
    fixture.store.addMany(1);
    FilePrinter printer(fixture.path(u"no/hay/impreso.pdf"_s));
    const auto error = thrownBy([&] { printReport(fixture.report(), *printer); });
    QVERIFY(error);
    QCOMPARE(error->number(), 482);
    QVERIFY(error->description().contains(u"no aceptó la impresión"_s));
}

QTEST_MAIN(tst_ArticleReport)
#include "tst_ArticleReport.moc"
