#include "BandedReport.h"

#include <oVELDRA/RuntimeError.h>

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::declarations {

namespace {

/// Letters are drawn in twentieths of a point, with fonts twenty times as large: whole-pixel widths of small fonts
/// would add up differently on every device.
constexpr double unitsPerPoint = 20;

/// How narrow letters may become (as a part of their width) before a text is cut instead.
constexpr double narrowest = 0.6;

constexpr double ruleWidth = 0.6;

/// Tahoma, or what is like it.
QFont fontOf(double size, bool bold)
{
    QFont font;
    font.setFamilies({u"Tahoma"_s, u"Liberation Sans"_s, u"Arial"_s, u"Helvetica"_s});
    font.setStyleHint(QFont::SansSerif);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setPixelSize(qRound(size * unitsPerPoint));
    font.setBold(bold);
    return font;
}

/// Draws the texts of a page into their boxes. The painter's unit is a twentieth of a point.
class TextPainter
{
public:
    explicit TextPainter(QPainter& painter) : m_painter(painter) {}

    void draw(const BandText& box, QString text, QPointF bandCorner)
    {
        if (text.isEmpty()) {
            return;
        }
        // One line each, whatever a field holds.
        std::replace_if(
            text.begin(), text.end(), [](QChar c) { return c.category() == QChar::Other_Control; }, u' ');
        const Face& face = faceOf(box);
        const double room = box.width * unitsPerPoint;
        double width = face.metrics.horizontalAdvance(text);
        double squeeze = 1;
        if (width > room) {
            squeeze = std::max(room / width, narrowest);
            if (width * squeeze > room) {
                text = face.metrics.elidedText(text, Qt::ElideRight, room / squeeze);
                width = face.metrics.horizontalAdvance(text);
            }
        }
        double left = (bandCorner.x() + box.left) * unitsPerPoint;
        if (box.alignment != Qt::AlignLeft) {
            const double rest = room - width * squeeze;
            left += box.alignment == Qt::AlignRight ? rest : rest / 2;
        }
        const double baseline = (bandCorner.y() + box.top) * unitsPerPoint + face.metrics.ascent();
        m_painter.setFont(face.font);
        if (squeeze == 1) {
            m_painter.drawText(QPointF(left, baseline), text);
            return;
        }
        m_painter.save();
        m_painter.translate(left, baseline);
        m_painter.scale(squeeze, 1);
        m_painter.drawText(QPointF(), text);
        m_painter.restore();
    }

private:
    struct Face
    {
        QFont font;
        QFontMetricsF metrics;
    };

    const Face& faceOf(const BandText& box)
    {
        const auto key = std::pair(box.size, box.bold);
        const auto known = m_faces.find(key);
        if (known != m_faces.end()) {
            return known->second;
        }
        const QFont font = fontOf(box.size, box.bold);
        return m_faces.emplace(key, Face{font, QFontMetricsF(font)}).first->second;
    }

    QPainter& m_painter;
    std::map<std::pair<double, bool>, Face> m_faces;
};

} // namespace

BandedReport::BandedReport(ReportDesign design, std::unique_ptr<Recordset> records)
    : m_design(std::move(design)), m_rows(std::move(records), boundFields()),
      m_breaks(m_design.margins.top(), m_design.sheet.height() - m_design.margins.bottom(), heights(), m_rows.count())
{}

void BandedReport::setCaption(QStringView name, const QString& text)
{
    for (auto& [band, design] : m_design.bands) {
        for (BandText& box : design.texts) {
            auto* caption = std::get_if<Caption>(&box.content);
            if (caption != nullptr && box.name == name) {
                caption->text = text;
                return;
            }
        }
    }
    throw RuntimeError(9);
}

void BandedReport::paintPage(QPainter& painter, int page, const QRectF& exposed) const
{
    const std::vector<PlacedBand> bands = m_breaks.bands(page);
    const double left = m_design.margins.left();
    const double right = m_design.sheet.width() - m_design.margins.right();
    painter.save();
    painter.setPen(Qt::black);
    painter.scale(1 / unitsPerPoint, 1 / unitsPerPoint);
    TextPainter texts(painter);
    for (const PlacedBand& placed : bands) {
        const BandDesign& band = design(placed.band);
        if (!exposed.isEmpty() && (placed.top > exposed.bottom() || placed.top + band.height < exposed.top())) {
            continue;
        }
        const QStringList fields = placed.row < 0 ? QStringList() : m_rows.row(placed.row);
        auto field = fields.cbegin();
        for (const BandText& box : band.texts) {
            QString text;
            if (const auto* caption = std::get_if<Caption>(&box.content)) {
                text = caption->text;
            } else if (std::holds_alternative<PageNumber>(box.content)) {
                text = u"Página %1 de %2"_s.arg(page + 1).arg(pageCount());
            } else {
                text = *field++;
            }
            texts.draw(box, std::move(text), {left, placed.top});
        }
        for (const double rule : band.rules) {
            painter.fillRect(QRectF(left * unitsPerPoint, (placed.top + rule) * unitsPerPoint,
                                    (right - left) * unitsPerPoint, ruleWidth * unitsPerPoint),
                             Qt::black);
        }
    }
    painter.restore();
}

const BandDesign& BandedReport::design(Band band) const
{
    static const BandDesign empty;
    const auto known = m_design.bands.find(band);
    return known == m_design.bands.end() ? empty : known->second;
}

QStringList BandedReport::boundFields() const
{
    QStringList names;
    for (const BandText& box : design(Band::Detail).texts) {
        if (const auto* field = std::get_if<Field>(&box.content)) {
            names.append(field->name);
        }
    }
    return names;
}

BandHeights BandedReport::heights() const
{
    return {design(Band::ReportHeader).height, design(Band::PageHeader).height, design(Band::Detail).height,
            design(Band::ReportFooter).height, design(Band::PageFooter).height};
}

} // namespace oVELDRA::declarations
