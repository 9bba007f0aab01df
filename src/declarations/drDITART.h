#pragma once

#include <controls/Form.h>
#include <declarations/BandedReport.h>
#include <declarations/ReportDialogs.h>

#include <QString>

#include <memory>

namespace oVELDRA::declarations {

class PageView;

/// The report of a declaration's articles, in its preview window: to be leafed through, printed and saved as PDF.
///
/// It shows its own pages and not a library's preview, which would record all of them before it shows the first.
class drDITART final : public controls::Form
{
public:
    /// `articles` is the data source; it stands on its first row, or has none. RuntimeError 3265 for a field that the
    /// report is bound to and that is not there.
    drDITART(core::Component& component, std::unique_ptr<Recordset> articles, ReportDialogs dialogs = {});

    /// Replaces the caption of a label of the report ("lbDIT"). RuntimeError 9 for a name that is not there.
    void setCaption(QStringView label, const QString& text) { m_report.setCaption(label, text); }
    /// The name proposed for a PDF file, without its ending. It need not be fit for a file's name.
    void setDocumentName(const QString& name) { m_documentName = name; }

private:
    void designState() override;
    void showPosition();
    void print();
    void savePdf();
    [[nodiscard]] QString proposedFile() const;
    [[nodiscard]] bool mayReplace(const QString& fileName) const;

    BandedReport m_report;
    ReportDialogs m_dialogs;
    QString m_documentName;

    QLabel* lbPagina;
    PageView* vwPagina;
};

} // namespace oVELDRA::declarations
