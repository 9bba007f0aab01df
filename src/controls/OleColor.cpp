#include "OleColor.h"

#include <QPalette>
#include <QWidget>

namespace oVELDRA::controls {

QColor colorFromOle(quint32 packed)
{
    const auto byte = [packed](unsigned shift) { return static_cast<int>((packed >> shift) & 0xFFU); };
    return {byte(0), byte(8), byte(16)};
}

void setFieldColor(QWidget& field, quint32 packed)
{
    QPalette palette = field.palette();
    palette.setColor(QPalette::Base, colorFromOle(packed));
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::PlaceholderText, Qt::darkGray);
    field.setPalette(palette);
}

} // namespace oVELDRA::controls
