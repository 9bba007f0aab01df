#pragma once

#include <declarations/BandedReport.h>

#include <QDate>

namespace oVELDRA::declarations {

/// The article report as it is designed, for a sheet A4 upright: its bands with the fields that it is bound to and with
/// their design captions. The page footer carries the component's name, the page and the date.
[[nodiscard]] ReportDesign articleReport(QDate printed);

} // namespace oVELDRA::declarations
