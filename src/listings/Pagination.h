#pragma once

#include <listings/ListingLayout.h>

#include <QDate>
#include <QString>

#include <span>

namespace oVELDRA::listings {

/// The declaration that a listing is about, as its first page says it.
struct ListedDeclaration
{
    QString number;
    QString officialDate;
    QString expiryDate;
};

/// How many pages `records` lines make with so many lines to a page. RuntimeError 11 for none to a page, 5 for fewer.
[[nodiscard]] int pageCount(qsizetype records, int linesPerPage);

/// How many records stand on a page (from 1): always the first ones, whatever the pages before it held, and at least
/// one. The lines about the declaration take five of the first page's.
[[nodiscard]] qsizetype recordsOnPage(int page, qsizetype records, int linesPerPage);

/// What stands over the records of a page: its number and date, on the first page the declaration, then the titles.
[[nodiscard]] QString pageHeading(int page, int pages, QDate printed, const ListedDeclaration& declaration,
                                  const ListingLayout& layout);

/// The lines of some discharges, one after the other.
[[nodiscard]] QString recordLines(std::span<const DischargeLine> discharges, const ListingLayout& layout);

} // namespace oVELDRA::listings
