#pragma once

#include <QColor>

class QWidget;

namespace oVELDRA::controls {

/// A colour from its packed value 0x00BBGGRR: blue, green and red bytes from high to low.
[[nodiscard]] QColor colorFromOle(quint32 packed);

/// Gives an entry box a fixed light background. The text becomes black with it: a dark theme's own light text could not
/// be read there.
void setFieldColor(QWidget& field, quint32 packed);

} // namespace oVELDRA::controls
