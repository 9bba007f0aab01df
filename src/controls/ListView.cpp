#include "ListView.h"

#include <oVELDRA/RuntimeError.h>

#include <controls/ColumnWidths.h>
#include <controls/Contrast.h>

#include <QFontMetrics>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace oVELDRA::controls {

namespace {

/// Between the lines of a list, so that the eye keeps to a row.
int airOf(const QFontMetrics& font)
{
    return font.height() / 4;
}

/// Rows as the theme draws them, but with air, and with colours of their own that can be read on the theme's ground:
/// the model's are fixed, and pure red is too pale for white as well as for black.
class RowDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        size.setHeight(std::max(size.height(), option.fontMetrics.lineSpacing() + airOf(option.fontMetrics)));
        return size;
    }

    /// The style lays every text out several times over, and most of a list's time goes there. Here a line is laid out
    /// once. The selected row stays the style's: some have colours of their own for it, which no palette tells.
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyleOptionViewItem cell = option;
        initStyleOption(&cell, index);
        if (cell.features.testFlag(QStyleOptionViewItem::HasDecoration) || cell.text.contains(u'\n') ||
            cell.state.testFlag(QStyle::State_Selected)) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        const QString text = std::exchange(cell.text, QString());
        const QStyle& style = *cell.widget->style();
        constexpr auto marks = QStyle::State_MouseOver | QStyle::State_HasFocus;
        if ((cell.state & marks) != QStyle::State_None) {
            style.drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
        }
        if (text.isEmpty()) {
            return;
        }
        const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, &cell, cell.widget) + 1;
        drawLine(*painter, cell, text, cell.rect.adjusted(margin, 0, -margin, 0));
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.data(Qt::ForegroundRole).isValid()) {
            QPalette& colors = option->palette;
            colors.setColor(QPalette::Text, readableOn(colors.color(QPalette::Text), colors.color(QPalette::Base)));
        }
    }

private:
    static void drawLine(QPainter& painter, const QStyleOptionViewItem& cell, const QString& text, const QRect& place)
    {
        QTextLayout layout(text, cell.font, painter.device());
        layOut(layout);
        if (layout.lineAt(0).naturalTextWidth() > place.width()) {
            layout.setText(cell.fontMetrics.elidedText(text, cell.textElideMode, place.width()));
            layOut(layout);
        }
        const QTextLine line = layout.lineAt(0);
        const bool right = cell.displayAlignment.testFlag(Qt::AlignRight);
        const QPointF corner(right ? place.right() + 1 - line.naturalTextWidth() : place.left(),
                             place.top() + std::floor((place.height() - line.height()) / 2));
        const bool active = cell.state.testFlag(QStyle::State_Active);
        painter.setPen(cell.palette.color(active ? QPalette::Active : QPalette::Inactive, QPalette::Text));
        layout.draw(&painter, corner);
    }

    static void layOut(QTextLayout& layout)
    {
        layout.beginLayout();
        layout.createLine();
        layout.endLayout();
    }
};

/// Cells have a margin at both ends, for which two characters are enough in every style.
std::vector<double> designedWidths(const std::vector<ListColumn>& columns)
{
    std::vector<double> widths;
    widths.reserve(columns.size());
    for (const ListColumn& column : columns) {
        widths.push_back(column.characters + 2);
    }
    return widths;
}

} // namespace

ListView::ListView(std::vector<ListColumn> columns, QWidget* parent) : QTreeView(parent), m_rows(std::move(columns))
{
    setModel(&m_rows);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setHorizontalScrollMode(ScrollPerPixel);

    header()->setSectionsMovable(false);
    header()->setSectionsClickable(false);
    header()->setHighlightSections(false);
    m_widths = new ColumnWidths(*header(), designedWidths(m_rows.columns()));
    setItemDelegate(new RowDelegate(this));
    connect(header(), &QHeaderView::sectionClicked, this, [this](int clicked) {
        m_rows.sort(clicked);
        header()->setSortIndicator(clicked, Qt::AscendingOrder);
        header()->setSortIndicatorShown(true);
        scrollTo(currentIndex());
    });
}

void ListView::selectRow(int row)
{
    if (row < 0 || row >= rowCount()) {
        throw RuntimeError(9);
    }
    setCurrentIndex(m_rows.index(row, 0));
}

void ListView::setSortedByHeader(bool sorted)
{
    header()->setSectionsClickable(sorted);
}

void ListView::unsort()
{
    m_rows.unsort();
    header()->setSortIndicatorShown(false);
}

QSize ListView::sizeHint() const
{
    return sizeFor(header()->length(), 15);
}

QSize ListView::minimumSizeHint() const
{
    return sizeFor(std::min(header()->length(), 40 * characterWidth()), 3);
}

void ListView::keyPressEvent(QKeyEvent* event)
{
    if (event->modifiers().testFlag(Qt::ControlModifier) && event->key() == Qt::Key_Plus) {
        m_widths->fitToContents();
    } else if (event->modifiers().testFlag(Qt::ControlModifier) && event->key() == Qt::Key_Minus) {
        m_widths->reset();
    } else {
        QTreeView::keyPressEvent(event);
    }
}

int ListView::characterWidth() const
{
    return fontMetrics().horizontalAdvance(u'0');
}

int ListView::rowHeight() const
{
    return fontMetrics().lineSpacing() + airOf(fontMetrics());
}

QSize ListView::sizeFor(int width, int rows) const
{
    const int frame = 2 * frameWidth();
    return {width + verticalScrollBar()->sizeHint().width() + frame,
            header()->sizeHint().height() + rows * rowHeight() + frame};
}

FillScope::FillScope(ListView& list)
    : m_list(list), m_hadFocus(list.window()->focusWidget() == &list), m_wasHidden(list.isHidden())
{
    if (m_hadFocus) {
        m_list.clearFocus(); // else hiding hands it to the next control, which would show that
    }
    m_list.hide();
    m_list.m_rows.beginFill();
}

FillScope::~FillScope()
{
    m_list.m_rows.endFill();
    if (m_list.rowCount() > 0 && m_list.currentRow() < 0) {
        m_list.setCurrentIndex(m_list.m_rows.index(0, 0));
    }
    m_list.setHidden(m_wasHidden);
    if (m_hadFocus) {
        m_list.setFocus();
    }
}

} // namespace oVELDRA::controls
