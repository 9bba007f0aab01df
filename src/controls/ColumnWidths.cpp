#include "ColumnWidths.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QHeaderView>
#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <utility>

namespace oVELDRA::controls {

namespace {

constexpr QChar separator = u';';
constexpr double narrowest = 1;
constexpr double widest = 400;

/// In tenths of a character, which no eye tells apart from the pixels that the user chose.
double rounded(double characters)
{
    constexpr double parts = 10;
    return std::clamp(std::round(characters * parts) / parts, narrowest, widest);
}

} // namespace

ColumnWidths::ColumnWidths(QHeaderView& header, std::vector<double> designed)
    : QObject(&header), m_header(header), m_designed(std::move(designed)), m_given(m_designed.size())
{
    for (int column = 0; column <= lastColumn(); ++column) {
        apply(column);
    }
    header.viewport()->installEventFilter(this);
    connect(&header, &QHeaderView::sectionResized, this,
            [this](int column, int, int width) { noteResized(column, width); });
}

QString ColumnWidths::text() const
{
    QStringList widths;
    for (const std::optional<double>& given : m_given) {
        widths.append(given ? QString::number(*given) : QString());
    }
    const bool asDesigned = std::none_of(m_given.begin(), m_given.end(), [](const auto& given) { return given; });
    return asDesigned ? QString() : widths.join(separator);
}

void ColumnWidths::setText(const QString& text)
{
    std::optional<Widths> widths = parsed(text, m_designed.size());
    if (!widths) {
        return;
    }
    m_given = std::move(*widths);
    m_changed = false;
    for (int column = 0; column <= lastColumn(); ++column) {
        apply(column);
    }
}

void ColumnWidths::fitToContents()
{
    m_header.resizeSections(QHeaderView::ResizeToContents);
    for (int column = 0; column <= lastColumn(); ++column) {
        if (column != lastColumn() || !m_header.stretchLastSection()) {
            m_given[static_cast<std::size_t>(column)] = rounded(m_header.sectionSize(column) / characterWidth());
        }
    }
    m_changed = true;
}

void ColumnWidths::reset()
{
    m_changed = m_changed || !text().isEmpty();
    m_given.assign(m_designed.size(), std::nullopt);
    for (int column = 0; column <= lastColumn(); ++column) {
        apply(column);
    }
}

bool ColumnWidths::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        m_mouseDown = true;
        m_otherMoved = false;
        break;
    case QEvent::MouseButtonRelease:
        m_mouseDown = false;
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void ColumnWidths::noteResized(int column, int width)
{
    if (!m_mouseDown) {
        return;
    }
    if (column != lastColumn()) {
        m_otherMoved = true;
    } else if (m_otherMoved) {
        return; // it only takes up the room that the other one left
    }
    m_given[static_cast<std::size_t>(column)] = rounded(width / characterWidth());
    m_changed = true;
}

void ColumnWidths::apply(int column)
{
    const auto place = static_cast<std::size_t>(column);
    const int designed = std::max(qRound(m_designed[place] * characterWidth()), m_header.sectionSizeHint(column));
    m_header.resizeSection(column, m_given[place] ? qRound(*m_given[place] * characterWidth()) : designed);
}

double ColumnWidths::characterWidth() const
{
    return QFontMetricsF(m_header.parentWidget()->font()).horizontalAdvance(u'0');
}

std::optional<ColumnWidths::Widths> ColumnWidths::parsed(const QString& text, std::size_t columns)
{
    const QStringList parts = text.split(separator);
    if (static_cast<std::size_t>(parts.size()) != columns) {
        return std::nullopt;
    }
    Widths widths;
    for (const QString& part : parts) {
        if (part.isEmpty()) {
            widths.emplace_back();
            continue;
        }
        bool isNumber = false;
        const double width = QLocale::c().toDouble(part, &isNumber);
        const bool isWidth = isNumber && width >= narrowest && width <= widest; // no NaN either
        if (!isWidth) {
            return std::nullopt;
        }
        widths.emplace_back(width);
    }
    return widths;
}

} // namespace oVELDRA::controls
