#include "ListBox.h"

#include <QScrollBar>

namespace oVELDRA::nomenclature {

ListBox::ListBox(const QString& name, const QString& accessibleName, LineLayout layout, QSize charactersAndLines)
    : m_charactersAndLines(charactersAndLines)
{
    setObjectName(name);
    setAccessibleName(accessibleName);
    setModel(&m_lines);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    if (layout == LineLayout::OneHeight) {
        setUniformItemSizes(true);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding); // no line needs more, none may be cut off
    } else {
        setWordWrap(true);
        setAlternatingRowColors(true); // tells where a line begins
        setResizeMode(Adjust);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
}

void ListBox::selectFirstLine()
{
    setCurrentIndex(m_lines.index(0));
}

QSize ListBox::sizeHint() const
{
    return sizeFor(m_charactersAndLines);
}

QSize ListBox::minimumSizeHint() const
{
    return sizeFor(m_charactersAndLines.boundedTo({40, 4}));
}

QSize ListBox::sizeFor(QSize charactersAndLines) const
{
    const int frame = 2 * frameWidth();
    const int line = fontMetrics().lineSpacing() + fontMetrics().height() / 4;
    return {charactersAndLines.width() * fontMetrics().horizontalAdvance(u'0') + frame +
                verticalScrollBar()->sizeHint().width(),
            charactersAndLines.height() * line + frame};
}

} // namespace oVELDRA::nomenclature
