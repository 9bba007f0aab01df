#include "ListView.h"

#include <oVELDRA/RuntimeError.h>

#include <QFontMetrics>
#include <QHeaderView>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace oVELDRA::controls {

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
    int section = 0;
    for (const ListColumn& column : m_rows.columns()) {
        // Cells have a margin at both ends, for which two characters are enough in every style.
        const int width = (column.characters + 2) * characterWidth();
        header()->resizeSection(section, std::max(width, header()->sectionSizeHint(section)));
        ++section;
    }
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
    return sizeFor(std::min(header()->length(), 60 * characterWidth()), 5);
}

int ListView::characterWidth() const
{
    return fontMetrics().horizontalAdvance(u'0');
}

QSize ListView::sizeFor(int width, int rows) const
{
    const int frame = 2 * frameWidth();
    return {width + verticalScrollBar()->sizeHint().width() + frame,
            header()->sizeHint().height() + rows * fontMetrics().lineSpacing() + frame};
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
