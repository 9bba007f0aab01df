#include "HostIcon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <array>

namespace tornel {

namespace {

/// An arrow of 100 x 100 units pointing up.
QPainterPath arrow()
{
    QPainterPath path;
    path.moveTo(50, 0);
    path.lineTo(100, 52);
    path.lineTo(68, 52);
    path.lineTo(68, 100);
    path.lineTo(32, 100);
    path.lineTo(32, 52);
    path.lineTo(0, 52);
    path.closeSubpath();
    return path;
}

} // namespace

QImage hostPicture(int size)
{
    QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 256.0, size / 256.0);
    painter.setPen(Qt::NoPen);

    painter.setBrush(QColor(0x1f, 0x5f, 0x8b));
    painter.drawRoundedRect(QRectF(8, 8, 240, 240), 44, 44);

    painter.setBrush(QColor(0xf2, 0xb1, 0x34));
    painter.drawRoundedRect(QRectF(44, 132, 168, 88), 10, 10);
    painter.setBrush(QColor(0xc9, 0x86, 0x12));
    painter.drawRect(QRectF(44, 154, 168, 10));
    painter.drawRect(QRectF(118, 132, 20, 88));

    painter.setBrush(Qt::white);
    painter.save();
    painter.translate(140, 34);
    painter.scale(0.72, 0.84);
    painter.drawPath(arrow());
    painter.restore();
    painter.translate(116, 118);
    painter.rotate(180);
    painter.scale(0.72, 0.84);
    painter.drawPath(arrow());
    return picture;
}

QIcon hostIcon()
{
    QIcon icon;
    for (const int size : std::array{16, 24, 32, 48, 64}) {
        icon.addPixmap(QPixmap::fromImage(hostPicture(size)));
    }
    return icon;
}

} // namespace tornel
