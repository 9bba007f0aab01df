#include "ListingColumns.h"
#include "doubles/FakeConexionDB.h"
#include "doubles/ThrownError.h"

#include <listings/Pagination.h>

#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::doubles;
using namespace oVELDRA::listings;

namespace {

const ListingLayout narrow{false, u"00.000000"_s, u"00.000000"_s};
const ListingLayout wide{true, u"00.00000000"_s, u"00.00000000"_s};

DischargeLine lineOf(const QVariantList& row, LossAndWaste shown)
{
    FakeConexionDB connection;
    connection.willGiveRows(u""_s, listingColumns, {row});
    bool ok = false;
    connection.setSql(u"select"_s);
    return dischargeLine(*connection.openRecordset(ok), shown);
}

} // namespace

/// The listing of discharges from the rows to the pages' texts, without a window.
class tst_ListingPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QLocale::setDefault(QLocale(u"es_AR"_s)); }
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void onlyACapitalSMeansQuantities_data();
    void onlyACapitalSMeansQuantities();
    void lossAndWaste_data();
    void lossAndWaste();
    void valuesAreRoundedThroughTheirFormats();
    void nullFieldsAreEmptyAndZero();
    void missingFieldIsAnError();
    void titlesAndRule_data();
    void titlesAndRule();
    void goldenLines_data();
    void goldenLines();
    void longTextsAreCut();
    void pagesOfRecords_data();
    void pagesOfRecords();
    void linesPerPageThatMakeNoPage_data();
    void linesPerPageThatMakeNoPage();
    void recordsOfAPage_data();
    void recordsOfAPage();
    void headingOfTheFirstPageHoldsTheDeclaration();
    void headingOfALaterPageHoldsTheTitlesOnly();
    void recordLinesFollowEachOther();
};

void tst_ListingPages::onlyACapitalSMeansQuantities_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<bool>("quantities");
    QTest::newRow("S") << u"S"_s << true;
    QTest::newRow("blanks around") << u"  S "_s << true;
    QTest::newRow("N") << u"N"_s << false;
    QTest::newRow("absent") << QString() << false;
    QTest::newRow("lower case") << u"s"_s << false;
    QTest::newRow("any other text") << u"SI"_s << false;
    QTest::newRow("a tab is no blank") << u"S\t"_s << false;
}

void tst_ListingPages::onlyACapitalSMeansQuantities()
{
    QFETCH(const QString, setting);
    QFETCH(const bool, quantities);
    QCOMPARE(lossAndWasteOf(setting) == LossAndWaste::Quantities, quantities);
}

void tst_ListingPages::lossAndWaste_data()
{
    QTest::addColumn<LossAndWaste>("shown");
    QTest::addColumn<QVariantList>("row");
    QTest::addColumn<double>("waste");
    QTest::addColumn<double>("loss");
    const auto row = [](const QVariant& wasteFlag, const QVariant& lossFlag) {
        return listingRow(1000.0, 2.5, wasteFlag, 1.25, lossFlag);
    };
    QTest::newRow("quantities, flags off") << LossAndWaste::Quantities << row(0, 0) << 25.0 << 12.5;
    QTest::newRow("quantities, flags on") << LossAndWaste::Quantities << row(-1, -1) << 2.5 << 1.25;
    QTest::newRow("quantities, waste off, loss on") << LossAndWaste::Quantities << row(0, -1) << 25.0 << 1.25;
    QTest::newRow("quantities, Null flags") << LossAndWaste::Quantities << row({}, {}) << 25.0 << 12.5;
    QTest::newRow("as kept, flags off") << LossAndWaste::AsKept << row(0, 0) << 2.5 << 1.25;
    QTest::newRow("as kept, flags on") << LossAndWaste::AsKept << row(-1, -1) << 2.5 << 1.25;
    QTest::newRow("rounded at five decimals, half away from zero")
        << LossAndWaste::AsKept << listingRow(1.0, 0.000005, 0, -0.000015, 0) << 0.00001 << -0.00002;
    QTest::newRow("quantity rounded") << LossAndWaste::Quantities << listingRow(333.0, 0.12345678, 0, 0, 0) << 0.41111
                                      << 0.0;
}

void tst_ListingPages::lossAndWaste()
{
    QFETCH(const LossAndWaste, shown);
    QFETCH(const QVariantList, row);
    QFETCH(const double, waste);
    QFETCH(const double, loss);
    const DischargeLine line = lineOf(row, shown);
    QCOMPARE(line.waste, waste);
    QCOMPARE(line.loss, loss);
}

void tst_ListingPages::valuesAreRoundedThroughTheirFormats()
{
    const DischargeLine line = lineOf(listingRow(1234.5), LossAndWaste::AsKept);
    QCOMPARE(line.exportNumber, u"26001EC01004521K"_s);
    QCOMPARE(line.input, u"CUE-VAC-FL14"_s);
    QCOMPARE(line.relation, 0.28);
    QCOMPARE(line.conversion, 1.0);
    QCOMPARE(line.quantity, u"1234,5"_s);
    QCOMPARE(line.cifUnit, 21.123457);
    // Of the discharged quantity, 672.005, and not of the exported one.
    QCOMPARE(line.cifTotal, 14195.07);
    QCOMPARE(line.invoice, u"0003-1245"_s);
}

void tst_ListingPages::nullFieldsAreEmptyAndZero()
{
    QVariantList row(listingColumns.size());
    QCOMPARE(lineOf(row, LossAndWaste::Quantities), DischargeLine());
    QCOMPARE(narrow.line(DischargeLine()).size(), narrow.titleLine().size());
}

void tst_ListingPages::missingFieldIsAnError()
{
    FakeConexionDB connection;
    connection.willGiveRows(u""_s, {u"EXTNOF"_s}, {{u"x"_s}});
    bool ok = false;
    connection.setSql(u"select"_s);
    const auto record = connection.openRecordset(ok);
    QCOMPARE(numberThrownBy([&] { static_cast<void>(dischargeLine(*record, LossAndWaste::AsKept)); }), 3265);
}

void tst_ListingPages::titlesAndRule_data()
{
    QTest::addColumn<bool>("isWide");
    QTest::addColumn<QString>("titles");
    QTest::addColumn<QString>("rule");
    QTest::newRow("six decimals")
        << false
        << u"EXPO             Insumo               Rel Ins-Prod Conv Unid  Cant Ins       Perdida         Merma "
           "CIF Unitario    CIF Total    Factura\r\n"_s
        << u"---------------- -------------------- ------------ --------- --------- ------------- ------------- "
           "------------ ------------ ---------- "_s;
    QTest::newRow("eight decimals")
        << true
        << u"EXPO             Insumo                  Rel Ins-Prod Conv Unid        Cant Ins          Perdida "
           "           Merma CIF Unitario    CIF Total    Factura\r\n"_s
        << u"---------------- -------------------- --------------- --------- --------------- ---------------- "
           "---------------- ------------ ------------ ---------- "_s;
}

void tst_ListingPages::titlesAndRule()
{
    QFETCH(const bool, isWide);
    QFETCH(const QString, titles);
    QFETCH(const QString, rule);
    const ListingLayout& layout = isWide ? wide : narrow;
    QCOMPARE(layout.titleLine(), titles);
    QCOMPARE(layout.ruleLine(), rule);
}

void tst_ListingPages::goldenLines_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<bool>("isWide");
    QTest::addColumn<LossAndWaste>("shown");
    QTest::addColumn<QString>("line");
    QTest::newRow("six decimals, as kept")
        << u"es_AR"_s << false << LossAndWaste::AsKept
        << u"26001EC01004521K CUE-VAC-FL14            00,280000     01,00 1000,0000     01,250000     02,500000 "
           "   21,123457     14195,07  0003-1245\r\n"_s;
    QTest::newRow("six decimals, quantities")
        << u"es_AR"_s << false << LossAndWaste::Quantities
        << u"26001EC01004521K CUE-VAC-FL14            00,280000     01,00 1000,0000     01,250000     25,000000 "
           "   21,123457     14195,07  0003-1245\r\n"_s;
    QTest::newRow("eight decimals, as kept")
        << u"es_AR"_s << true << LossAndWaste::AsKept
        << u"26001EC01004521K CUE-VAC-FL14             00,28000000     01,00   1000,00000000      01,25000000 "
           "     02,50000000    21,123457     14195,07  0003-1245\r\n"_s;
    QTest::newRow("eight decimals, quantities, point")
        << u"en_US"_s << true << LossAndWaste::Quantities
        << u"26001EC01004521K CUE-VAC-FL14             00.28000000     01.00   1000.00000000      01.25000000 "
           "     25.00000000    21.123457     14195.07  0003-1245\r\n"_s;
}

void tst_ListingPages::goldenLines()
{
    QFETCH(const QString, locale);
    QFETCH(const bool, isWide);
    QFETCH(const LossAndWaste, shown);
    QFETCH(const QString, line);
    QLocale::setDefault(QLocale(locale));
    const ListingLayout& layout = isWide ? wide : narrow;
    QCOMPARE(layout.line(lineOf(listingRow(), shown)), line);
}

void tst_ListingPages::longTextsAreCut()
{
    DischargeLine line = lineOf(listingRow(123456789.0), LossAndWaste::AsKept);
    line.exportNumber = u"26001EC01004521KXY"_s; // 18 characters
    line.input = u"CODIGO-DE-VEINTIUN-CA"_s;
    line.invoice = u"0003-00001245"_s;
    const QString text = narrow.line(line);
    QCOMPARE(text.size(), narrow.titleLine().size());
    QCOMPARE(text.left(17), u"26001EC01004521K "_s);
    QCOMPARE(text.mid(17, 21), u"CODIGO-DE-VEINTIUN-C "_s);
    QCOMPARE(text.mid(61, 10), u"123456789 "_s); // the quantity, cut on its right as every text is
    QVERIFY(text.endsWith(u" 0003-00001\r\n"_s));
}

void tst_ListingPages::pagesOfRecords_data()
{
    QTest::addColumn<qsizetype>("records");
    QTest::addColumn<int>("linesPerPage");
    QTest::addColumn<int>("pages");
    QTest::newRow("75 of 30") << qsizetype{75} << 30 << 3;
    QTest::newRow("60 of 30") << qsizetype{60} << 30 << 2;
    QTest::newRow("20 of 30") << qsizetype{20} << 30 << 1;
    QTest::newRow("30 of 30") << qsizetype{30} << 30 << 1;
    QTest::newRow("31 of 30") << qsizetype{31} << 30 << 2;
    QTest::newRow("none") << qsizetype{0} << 30 << 1;
    QTest::newRow("one line a page") << qsizetype{3} << 1 << 3;
    QTest::newRow("more lines than an integer's half") << qsizetype{200000} << 2147483647 << 1;
}

void tst_ListingPages::pagesOfRecords()
{
    QFETCH(const qsizetype, records);
    QFETCH(const int, linesPerPage);
    QFETCH(const int, pages);
    QCOMPARE(pageCount(records, linesPerPage), pages);
}

void tst_ListingPages::linesPerPageThatMakeNoPage_data()
{
    QTest::addColumn<int>("linesPerPage");
    QTest::addColumn<int>("error");
    QTest::newRow("none") << 0 << 11;
    QTest::newRow("fewer than none") << -30 << 5;
}

void tst_ListingPages::linesPerPageThatMakeNoPage()
{
    QFETCH(const int, linesPerPage);
    QFETCH(const int, error);
    QCOMPARE(numberThrownBy([linesPerPage] { static_cast<void>(pageCount(75, linesPerPage)); }), error);
}

void tst_ListingPages::recordsOfAPage_data()
{
    QTest::addColumn<int>("page");
    QTest::addColumn<qsizetype>("records");
    QTest::addColumn<int>("linesPerPage");
    QTest::addColumn<qsizetype>("onPage");
    QTest::newRow("60 of 30, first page") << 1 << qsizetype{60} << 30 << qsizetype{25};
    QTest::newRow("60 of 30, second page") << 2 << qsizetype{60} << 30 << qsizetype{30};
    QTest::newRow("3 of 30") << 1 << qsizetype{3} << 30 << qsizetype{3};
    QTest::newRow("28 of 30") << 1 << qsizetype{28} << 30 << qsizetype{25};
    QTest::newRow("75 of 30, last page") << 3 << qsizetype{75} << 30 << qsizetype{30};
    QTest::newRow("a record on every page, however few lines") << 1 << qsizetype{9} << 4 << qsizetype{1};
    QTest::newRow("five lines, first page") << 1 << qsizetype{9} << 5 << qsizetype{1};
    QTest::newRow("six lines, first page") << 1 << qsizetype{9} << 6 << qsizetype{1};
    QTest::newRow("seven lines, first page") << 1 << qsizetype{9} << 7 << qsizetype{2};
}

void tst_ListingPages::recordsOfAPage()
{
    QFETCH(const int, page);
    QFETCH(const qsizetype, records);
    QFETCH(const int, linesPerPage);
    QFETCH(const qsizetype, onPage);
    QCOMPARE(recordsOnPage(page, records, linesPerPage), onPage);
}

void tst_ListingPages::headingOfTheFirstPageHoldsTheDeclaration()
{
    QCOMPARE(pageHeading(1, 2, QDate(2026, 11, 20), {u"26001IT14000533F"_s, u"10/03/2026"_s, u"10/03/2027"_s}, narrow),
             u"Pagina 1 de 2 - Fecha de Impresión viernes, 20 de noviembre de 2026\r\n"
             "\r\n"
             "          DIT NÚMERO: 26001IT14000533F\r\n"
             "FECHA OFICIALIZACIÓN: 10/03/2026\r\n"
             "   FECHA VENCIMIENTO: 10/03/2027\r\n"
             "\r\n"_s +
                 narrow.titleLine() + narrow.ruleLine());
}

void tst_ListingPages::headingOfALaterPageHoldsTheTitlesOnly()
{
    QLocale::setDefault(QLocale(u"en_US"_s));
    QCOMPARE(pageHeading(2, 12, QDate(2026, 3, 5), {u"26001IT14000533F"_s, u"a"_s, u"b"_s}, wide),
             u"Pagina 2 de 12 - Fecha de Impresión Thursday, March 5, 2026\r\n"_s + wide.titleLine() + wide.ruleLine());
}

void tst_ListingPages::recordLinesFollowEachOther()
{
    const std::vector lines{lineOf(listingRow(1.0), LossAndWaste::AsKept),
                            lineOf(listingRow(2.0), LossAndWaste::AsKept)};
    QCOMPARE(recordLines(lines, narrow), narrow.line(lines[0]) + narrow.line(lines[1]));
    QCOMPARE(recordLines({}, narrow), QString());
}

QTEST_GUILESS_MAIN(tst_ListingPages)
#include "tst_ListingPages.moc"
