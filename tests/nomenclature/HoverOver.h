#pragma once

#include <QListView>
#include <QTest>
#include <QWindow>

namespace oVELDRA::nomenclature {

/// Moves the pointer over the beginning of a list's row.
inline void hoverOver(const QListView& list, int row)
{
    const QRect rect = list.visualRect(list.model()->index(row, 0));
    for (const QPoint next : {QPoint(0, 0), QPoint(rect.left() + 60, rect.top() + 2)}) { // one that is there stays
        QTest::mouseMove(list.window()->windowHandle(), list.viewport()->mapTo(list.window(), next));
    }
}

} // namespace oVELDRA::nomenclature
