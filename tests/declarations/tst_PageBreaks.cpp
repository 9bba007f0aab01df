#include "doubles/ThrownError.h"

#include <declarations/PageBreaks.h>

#include <QList>
#include <QTest>

using namespace oVELDRA;
using namespace oVELDRA::declarations;
using namespace oVELDRA::doubles;

namespace {

/// A body of 100 points, from 20 to 120, with bands of 10 each: seven rows on the first page, eight on every other.
constexpr double top = 20;
constexpr double bottom = 120;
constexpr BandHeights tens{10, 10, 10, 0, 10};

/// How many rows each page has.
QList<int> rowsOfPages(const PageBreaks& pages)
{
    QList<int> counts;
    for (int page = 0; page < pages.pageCount(); ++page) {
        const std::vector<PlacedBand> bands = pages.bands(page);
        counts.append(static_cast<int>(std::count_if(
            bands.begin(), bands.end(), [](const PlacedBand& placed) { return placed.band == Band::Detail; })));
    }
    return counts;
}

} // namespace

class tst_PageBreaks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsPerPage_data();
    void rowsPerPage();
    void bandsOfTheOnlyPage();
    void bandsOfTheFirstOfSeveralPages();
    void bandsOfAPageBetween();
    void bandsOfTheLastPage();
    void reportWithoutRowsIsOnePage();
    void reportFooterStandsUnderTheLastRow_data();
    void reportFooterStandsUnderTheLastRow();
    void heightsThatAddUpOnlyByRoundingStillFit();
    void everyRowStandsOnceInItsOrderAboveThePageFooter_data();
    void everyRowStandsOnceInItsOrderAboveThePageFooter();
    void pagesThatAreNotThereAreErrors();
};

void tst_PageBreaks::rowsPerPage_data()
{
    QTest::addColumn<BandHeights>("heights");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("no rows") << tens << 0 << QList{0};
    QTest::newRow("one row") << tens << 1 << QList{1};
    QTest::newRow("first page exactly full") << tens << 7 << QList{7};
    QTest::newRow("one row too many for it") << tens << 8 << QList{7, 1};
    QTest::newRow("second page exactly full") << tens << 15 << QList{7, 8};
    QTest::newRow("one row on the third") << tens << 16 << QList{7, 8, 1};
    QTest::newRow("no report header") << BandHeights{0, 10, 10, 0, 10} << 16 << QList{8, 8};
    QTest::newRow("a row that does not fit by a little") << BandHeights{10, 10, 10, 0, 10.1} << 8 << QList{6, 2};
    QTest::newRow("report header takes the first page") << BandHeights{75, 10, 10, 0, 10} << 9 << QList{0, 8, 1};
    QTest::newRow("report header is larger than a page") << BandHeights{500, 10, 10, 0, 10} << 8 << QList{0, 8};
    QTest::newRow("rows are larger than a page") << BandHeights{10, 10, 90, 0, 10} << 2 << QList{0, 1, 1};
    QTest::newRow("headers leave no room at all") << BandHeights{10, 90, 10, 0, 90} << 2 << QList{0, 1, 1};
}

void tst_PageBreaks::rowsPerPage()
{
    QFETCH(const BandHeights, heights);
    QFETCH(const int, rows);
    QFETCH(const QList<int>, expected);
    QCOMPARE(rowsOfPages(PageBreaks(top, bottom, heights, rows)), expected);
}

void tst_PageBreaks::bandsOfTheOnlyPage()
{
    const PageBreaks pages(top, bottom, tens, 2);
    QCOMPARE(pages.pageCount(), 1);
    QCOMPARE(pages.bands(0), (std::vector<PlacedBand>{{Band::ReportHeader, 20},
                                                      {Band::PageHeader, 30},
                                                      {Band::Detail, 40, 0},
                                                      {Band::Detail, 50, 1},
                                                      {Band::ReportFooter, 60},
                                                      {Band::PageFooter, 110}}));
}

void tst_PageBreaks::bandsOfTheFirstOfSeveralPages()
{
    const std::vector<PlacedBand> bands = PageBreaks(top, bottom, tens, 8).bands(0);
    QCOMPARE(bands.size(), std::size_t{10});
    QCOMPARE(bands[0], (PlacedBand{Band::ReportHeader, 20}));
    QCOMPARE(bands[1], (PlacedBand{Band::PageHeader, 30}));
    QCOMPARE(bands[8], (PlacedBand{Band::Detail, 100, 6}));
    QCOMPARE(bands[9], (PlacedBand{Band::PageFooter, 110}));
}

void tst_PageBreaks::bandsOfAPageBetween()
{
    const std::vector<PlacedBand> bands = PageBreaks(top, bottom, tens, 100).bands(1);
    QCOMPARE(bands.size(), std::size_t{10});
    QCOMPARE(bands[0], (PlacedBand{Band::PageHeader, 20}));
    QCOMPARE(bands[1], (PlacedBand{Band::Detail, 30, 7}));
    QCOMPARE(bands[8], (PlacedBand{Band::Detail, 100, 14}));
    QCOMPARE(bands[9], (PlacedBand{Band::PageFooter, 110}));
}

void tst_PageBreaks::bandsOfTheLastPage()
{
    const PageBreaks pages(top, bottom, tens, 16);
    QCOMPARE(pages.bands(2),
             (std::vector<PlacedBand>{
                 {Band::PageHeader, 20}, {Band::Detail, 30, 15}, {Band::ReportFooter, 40}, {Band::PageFooter, 110}}));
}

void tst_PageBreaks::reportWithoutRowsIsOnePage()
{
    const PageBreaks pages(top, bottom, tens, 0);
    QCOMPARE(pages.pageCount(), 1);
    QCOMPARE(pages.bands(0),
             (std::vector<PlacedBand>{
                 {Band::ReportHeader, 20}, {Band::PageHeader, 30}, {Band::ReportFooter, 40}, {Band::PageFooter, 110}}));
}

void tst_PageBreaks::reportFooterStandsUnderTheLastRow_data()
{
    QTest::addColumn<double>("height");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("page");
    QTest::addColumn<double>("footerTop");
    QTest::newRow("room left") << 10.0 << 5 << 0 << 90.0;
    QTest::newRow("exactly the room left") << 20.0 << 5 << 0 << 90.0;
    QTest::newRow("a page of its own") << 20.1 << 5 << 1 << 30.0;
    QTest::newRow("full page, empty footer") << 0.0 << 7 << 0 << 110.0;
    QTest::newRow("full page") << 10.0 << 7 << 1 << 30.0;
    QTest::newRow("full second page") << 10.0 << 15 << 2 << 30.0;
}

void tst_PageBreaks::reportFooterStandsUnderTheLastRow()
{
    QFETCH(const double, height);
    QFETCH(const int, rows);
    QFETCH(const int, page);
    QFETCH(const double, footerTop);
    const PageBreaks pages(top, bottom, {10, 10, 10, height, 10}, rows);
    QCOMPARE(pages.pageCount(), page + 1);
    const std::vector<PlacedBand> last = pages.bands(page);
    QCOMPARE(last[last.size() - 2], (PlacedBand{Band::ReportFooter, footerTop}));
}

void tst_PageBreaks::heightsThatAddUpOnlyByRoundingStillFit()
{
    // Ten tenths are a little less than one.
    QCOMPARE(rowsOfPages(PageBreaks(0, 1, {0, 0, 0.1, 0, 0}, 10)), QList{10});
    QCOMPARE(rowsOfPages(PageBreaks(0.1, 0.8, {0, 0.1, 0.1, 0, 0.3}, 6)), (QList{3, 3}));
}

void tst_PageBreaks::everyRowStandsOnceInItsOrderAboveThePageFooter_data()
{
    QTest::addColumn<int>("rows");
    for (const int rows : {0, 1, 6, 7, 8, 14, 15, 16, 23, 24, 1000}) {
        QTest::addRow("%d rows", rows) << rows;
    }
}

void tst_PageBreaks::everyRowStandsOnceInItsOrderAboveThePageFooter()
{
    QFETCH(const int, rows);
    const PageBreaks pages(top, bottom, tens, rows);
    qsizetype next = 0;
    for (int page = 0; page < pages.pageCount(); ++page) {
        double free = top;
        for (const PlacedBand& placed : pages.bands(page)) {
            QVERIFY(placed.top >= free);
            free = placed.top + (placed.band == Band::ReportFooter ? 0 : 10);
            if (placed.band == Band::Detail) {
                QCOMPARE(placed.row, next++);
            }
        }
        QCOMPARE(free, bottom);
    }
    QCOMPARE(next, qsizetype{rows});
}

void tst_PageBreaks::pagesThatAreNotThereAreErrors()
{
    const PageBreaks pages(top, bottom, tens, 8);
    QCOMPARE(numberThrownBy([&] { static_cast<void>(pages.bands(2)); }), 9);
    QCOMPARE(numberThrownBy([&] { static_cast<void>(pages.bands(-1)); }), 9);
}

QTEST_GUILESS_MAIN(tst_PageBreaks)
#include "tst_PageBreaks.moc"
