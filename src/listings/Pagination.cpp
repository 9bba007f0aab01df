#include "Pagination.h"

#include <oVELDRA/RuntimeError.h>

#include <runtime/Dates.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace oVELDRA::listings {

int pageCount(qsizetype records, int linesPerPage)
{
    constexpr int divisionByZero = 11;
    constexpr int wrongArgument = 5;
    if (linesPerPage < 1) {
        throw RuntimeError(linesPerPage == 0 ? divisionByZero : wrongArgument);
    }
    return records > linesPerPage ? static_cast<int>((records + linesPerPage - 1) / linesPerPage) : 1;
}

qsizetype recordsOnPage(int page, qsizetype records, int linesPerPage)
{
    constexpr qsizetype declarationLines = 5;
    // Meant so: every page begins again at the first record, so none after a full page's is ever printed.
    const qsizetype limit = page == 1 ? linesPerPage - declarationLines : linesPerPage;
    return std::min(records, std::max(limit, qsizetype{1})); // the limit is looked at after a record only
}

QString pageHeading(int page, int pages, QDate printed, const ListedDeclaration& declaration,
                    const ListingLayout& layout)
{
    QString text = u"Pagina "_s + QString::number(page) + u" de "_s + QString::number(pages) +
                   u" - Fecha de Impresión "_s + runtime::FormatDate(printed, u"Long Date") + u"\r\n"_s;
    if (page == 1) {
        text += u"\r\n          DIT NÚMERO: "_s + declaration.number + u"\r\nFECHA OFICIALIZACIÓN: "_s +
                declaration.officialDate + u"\r\n   FECHA VENCIMIENTO: "_s + declaration.expiryDate + u"\r\n\r\n"_s;
    }
    return text + layout.titleLine() + layout.ruleLine();
}

QString recordLines(std::span<const DischargeLine> discharges, const ListingLayout& layout)
{
    QString text;
    for (const DischargeLine& discharge : discharges) {
        text += layout.line(discharge);
    }
    return text;
}

} // namespace oVELDRA::listings
