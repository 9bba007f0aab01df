#pragma once

#include <declarations/PageBreaks.h>
#include <declarations/ReportRows.h>

#include <QMarginsF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>
#include <variant>
#include <vector>

class QPainter;

namespace oVELDRA::declarations {

/// A text that is the same on every page.
struct Caption
{
    QString text;
};

/// A text from the row: the field of that name.
struct Field
{
    QString name;
};

/// "Página x de y".
struct PageNumber
{};

/// A text of a band. Lengths are points.
struct BandText
{
    QString name; ///< may be empty
    std::variant<Caption, Field, PageNumber> content;
    double left = 0;  ///< from the left margin
    double width = 0; ///< what does not fit is squeezed, and cut only then
    Qt::AlignmentFlag alignment = Qt::AlignLeft;
    double top = 0;  ///< of the letters, from the band's top
    double size = 8; ///< of the font
    bool bold = false;
};

struct BandDesign
{
    double height = 0;
    std::vector<BandText> texts{};
    std::vector<double> rules{}; ///< from margin to margin, at these distances from the band's top
};

/// A report without its data. Lengths are points (1/72 inch). Fields stand in the detail band only.
struct ReportDesign
{
    QSizeF sheet;
    QMarginsF margins;
    std::map<Band, BandDesign> bands; ///< those that are missing are empty
};

/// A report of bands over the rows of a recordset, painted page by page.
///
/// Screen, printer and PDF get the same drawing, so they break lines and pages alike. A page is worked out when it is
/// painted; nothing is kept of it.
class BandedReport
{
public:
    /// `records` stands on its first row, or has none; errors as those of ReportRows.
    BandedReport(ReportDesign design, std::unique_ptr<Recordset> records);

    /// Replaces what the design says in a text. RuntimeError 9 for a name that no caption has.
    void setCaption(QStringView name, const QString& text);

    [[nodiscard]] int pageCount() const { return m_breaks.pageCount(); }
    /// The size of a page, in points.
    [[nodiscard]] QSizeF sheet() const { return m_design.sheet; }

    /// Paints a page (from 0) in black. The painter's unit is the point, its origin the sheet's top left corner. Bands
    /// outside of `exposed` (in points on the sheet; empty means the whole sheet) are left out.
    void paintPage(QPainter& painter, int page, const QRectF& exposed = {}) const;

private:
    [[nodiscard]] const BandDesign& design(Band band) const;
    [[nodiscard]] QStringList boundFields() const;
    [[nodiscard]] BandHeights heights() const;

    ReportDesign m_design;
    ReportRows m_rows;
    PageBreaks m_breaks;
};

} // namespace oVELDRA::declarations
