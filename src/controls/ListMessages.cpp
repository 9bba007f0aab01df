#include "ListMessages.h"

#include <QAbstractItemModel>
#include <QListView>

#include <algorithm>
#include <limits>

namespace oVELDRA::controls {

namespace {

/// The row whose rectangle is vertically nearest to `y`, for points that no row covers.
int nearestRow(const QListView& list, int y)
{
    int nearest = -1;
    int nearestDistance = std::numeric_limits<int>::max();
    for (int row = 0; row < list.model()->rowCount(list.rootIndex()); ++row) {
        const QRect rect = list.visualRect(list.model()->index(row, list.modelColumn(), list.rootIndex()));
        const int distance = std::max({rect.top() - y, y - rect.bottom(), 0});
        if (distance < nearestDistance) {
            nearest = row;
            nearestDistance = distance;
        }
    }
    return nearest;
}

} // namespace

int findString(const QAbstractItemModel& model, QStringView text, int startAfter, int column)
{
    const int rows = model.rowCount();
    if (text.isEmpty() || rows == 0) {
        return -1;
    }
    const int first = startAfter < -1 || startAfter >= rows ? 0 : startAfter + 1;
    for (int step = 0; step < rows; ++step) {
        const int row = (first + step) % rows;
        if (model.index(row, column).data().toString().startsWith(text, Qt::CaseInsensitive)) {
            return row;
        }
    }
    return -1;
}

int itemFromPoint(const QListView& list, quint32 packedPoint)
{
    if (list.model() == nullptr || list.model()->rowCount(list.rootIndex()) == 0) {
        return -1;
    }
    const QPoint point(static_cast<qint16>(packedPoint & 0xFFFFU), static_cast<qint16>(packedPoint >> 16U));
    const QRect client = list.viewport()->rect();
    const QPoint inside(std::clamp(point.x(), client.left(), client.right()),
                        std::clamp(point.y(), client.top(), client.bottom()));
    const QModelIndex index = list.indexAt(inside);
    const int row = index.isValid() ? index.row() : nearestRow(list, inside.y());
    return client.contains(point) ? row : row + OutsideClientArea;
}

} // namespace oVELDRA::controls
