#pragma once

#include <QColor>

class QPalette;
class QWidget;

namespace tornel {

/// From now on a line stands around the control of a window that has the focus: the style's own marks are colours, or
/// missing where a table is empty.
void surroundFocus(QWidget& window);

/// The theme's colour of selected rows, darker or lighter as far as it takes for their text to stand out.
[[nodiscard]] QColor clearSelection(const QPalette& theme);

} // namespace tornel
