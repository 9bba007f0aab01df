#pragma once

#include <QString>

#include <functional>

class QPrinter;
class QWidget;

namespace oVELDRA::declarations {

/// The system's print dialog over a window, for a document of so many pages. True with the printer set as the user
/// wants it, false when the user gave it up.
[[nodiscard]] bool askForPrinter(QWidget& owner, QPrinter& printer, int pages);

/// The file dialog over a window. The name that the user chose, with ".pdf" at its end unless another ending was typed;
/// empty when the user gave it up. Whether a file of that name may be replaced is not asked.
/// `proposal` is a path.
[[nodiscard]] QString askForPdfFile(QWidget& owner, const QString& proposal);

/// How a preview asks where its pages go.
struct ReportDialogs
{
    std::function<decltype(askForPrinter)> printer = askForPrinter;
    std::function<decltype(askForPdfFile)> pdfFile = askForPdfFile;
};

} // namespace oVELDRA::declarations
