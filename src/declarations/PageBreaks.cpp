#include "PageBreaks.h"

#include <oVELDRA/RuntimeError.h>

#include <algorithm>
#include <cmath>

namespace oVELDRA::declarations {

namespace {

// Sums of heights come out a hair off; nobody sees a thousandth of a point.
constexpr double hair = 0.001;

} // namespace

PageBreaks::PageBreaks(double top, double bottom, const BandHeights& heights, qsizetype rows)
    : m_top(top), m_bottom(bottom), m_heights(heights), m_rows(rows), m_mostOnFirstPage(mostRows(roomForRows(0))),
      m_mostOnOtherPages(std::max(mostRows(roomForRows(1)), qsizetype{1}))
{
    if (rows > m_mostOnFirstPage) {
        const qsizetype left = rows - m_mostOnFirstPage;
        m_pageCount += static_cast<int>((left + m_mostOnOtherPages - 1) / m_mostOnOtherPages);
    }
    const int last = m_pageCount - 1;
    const double used = static_cast<double>(rows - firstRow(last)) * heights.detail;
    if (used + heights.reportFooter > roomForRows(last) + hair && heights.reportFooter > 0) {
        ++m_pageCount;
    }
}

std::vector<PlacedBand> PageBreaks::bands(int page) const
{
    if (page < 0 || page >= m_pageCount) {
        throw RuntimeError(9);
    }
    std::vector<PlacedBand> bands;
    double top = m_top;
    const auto place = [&bands, &top](Band band, double height, qsizetype row = -1) {
        bands.push_back({band, top, row});
        top += height;
    };
    if (page == 0) {
        place(Band::ReportHeader, m_heights.reportHeader);
    }
    place(Band::PageHeader, m_heights.pageHeader);
    const qsizetype end = firstRow(page + 1);
    for (qsizetype row = firstRow(page); row < end; ++row) {
        place(Band::Detail, m_heights.detail, row);
    }
    if (page == m_pageCount - 1) {
        place(Band::ReportFooter, m_heights.reportFooter);
    }
    bands.push_back({Band::PageFooter, m_bottom - m_heights.pageFooter});
    return bands;
}

qsizetype PageBreaks::firstRow(int page) const
{
    return page == 0 ? 0 : std::min(m_mostOnFirstPage + (page - 1) * m_mostOnOtherPages, m_rows);
}

double PageBreaks::roomForRows(int page) const
{
    const double room = m_bottom - m_top - m_heights.pageHeader - m_heights.pageFooter;
    return page == 0 ? room - m_heights.reportHeader : room;
}

qsizetype PageBreaks::mostRows(double room) const
{
    return room < m_heights.detail - hair ? 0 : static_cast<qsizetype>((room + hair) / m_heights.detail);
}

} // namespace oVELDRA::declarations
