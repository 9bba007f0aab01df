#pragma once

#include <QtGlobal>

#include <vector>

namespace oVELDRA::declarations {

/// The bands of a report, in the order in which they come down the sheets.
enum class Band {
    ReportHeader, ///< once, on top of the first page
    PageHeader,   ///< on every page
    Detail,       ///< once for each row
    ReportFooter, ///< once, under the last row
    PageFooter    ///< on every page, at its bottom
};

/// Heights of the bands, in points (1/72 inch). A height of 0 is an empty band; the detail band has one.
struct BandHeights
{
    double reportHeader = 0;
    double pageHeader = 0;
    double detail = 0;
    double reportFooter = 0;
    double pageFooter = 0;
};

/// A band on a page.
struct PlacedBand
{
    Band band = Band::Detail;
    double top = 0;     ///< of the band, in points from the sheet's top edge
    qsizetype row = -1; ///< of a detail band: which row, from 0

    bool operator==(const PlacedBand&) const = default;
};

/// Where the bands of a report stand on its pages. Every row has the same height, so any page can be worked out by
/// itself. A page has at least one row where rows are left, however little room there is (the first one may be all
/// header); a report without rows is one page, too.
class PageBreaks
{
public:
    /// The bands stand between `top` and `bottom`, in points from the sheet's top edge.
    PageBreaks(double top, double bottom, const BandHeights& heights, qsizetype rows);

    [[nodiscard]] int pageCount() const { return m_pageCount; }
    /// The bands of a page (from 0), from top to bottom. RuntimeError 9 for a page that is not there.
    [[nodiscard]] std::vector<PlacedBand> bands(int page) const;

private:
    /// The first row of a page, or the number of rows when none is left for it.
    [[nodiscard]] qsizetype firstRow(int page) const;
    [[nodiscard]] double roomForRows(int page) const;
    [[nodiscard]] qsizetype mostRows(double room) const;

    double m_top;
    double m_bottom;
    BandHeights m_heights;
    qsizetype m_rows;
    qsizetype m_mostOnFirstPage;
    qsizetype m_mostOnOtherPages;
    int m_pageCount = 1;
};

} // namespace oVELDRA::declarations
