#pragma once

#include <QStringView>

class QAbstractItemModel;
class QListView;

namespace oVELDRA::controls {

/// What itemFromPoint() adds to its answer for a point outside the list.
inline constexpr int OutsideClientArea = 65536;

/// The first row of column `column` that begins with `text`, in any letter case. The search starts behind the row
/// `startAfter` (-1: at the first row) and wraps around, so that row itself is looked at last. -1 when there is none or
/// the text is empty.
[[nodiscard]] int findString(const QAbstractItemModel& model, QStringView text, int startAfter, int column = 0);

/// The row nearest to a point of the list's client area, plus OutsideClientArea when the point is not in it; -1 for an
/// empty list. The point is packed into two signed 16-bit words of pixels, x in the low one and y in the high one.
[[nodiscard]] int itemFromPoint(const QListView& list, quint32 packedPoint);

} // namespace oVELDRA::controls
