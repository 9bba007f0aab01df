#pragma once

#include <QString>

class QPrinter;

namespace oVELDRA::declarations {

class BandedReport;

/// Writes a report into a PDF file, fonts included, its pages one after the other. Needs no printer. A file of that
/// name is replaced once the new one is whole. `title` is the document's. RuntimeError 75 when the file cannot be
/// written; what was there then stays.
void savePdf(const BandedReport& report, const QString& fileName, const QString& title);

/// Prints a report, or the range of its pages that the printer is set to, as often as it is set to. On paper of another
/// size than the report's sheet a page is scaled to fit. RuntimeError 482 when the printer takes no (more) pages.
void printReport(const BandedReport& report, QPrinter& printer);

} // namespace oVELDRA::declarations
