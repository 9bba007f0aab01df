#pragma once

#include <QApplication>
#include <QCoreApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QTest>

namespace oVELDRA::controls {

/// The edge of a column's title that the mouse takes to change its width.
inline QPoint edgeOf(const QHeaderView& header, int column)
{
    return {header.sectionViewportPosition(column) + header.sectionSize(column) - 2, header.height() / 2};
}

inline void sendMouse(QHeaderView& header, QEvent::Type type, QPoint place)
{
    const bool isMove = type == QEvent::MouseMove;
    const bool isRelease = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, place, header.viewport()->mapToGlobal(place), isMove ? Qt::NoButton : Qt::LeftButton,
                      isRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(header.viewport(), &event);
}

/// Makes a column wider (or narrower) by some pixels, as a user does: while the button is down, the last column fills
/// up what the window has left.
inline void drag(QHeaderView& header, int column, int pixels)
{
    const QPoint edge = edgeOf(header, column);
    sendMouse(header, QEvent::MouseButtonPress, edge);
    sendMouse(header, QEvent::MouseMove, edge + QPoint(pixels / 2, 0));
    sendMouse(header, QEvent::MouseMove, edge + QPoint(pixels, 0));
    QCoreApplication::processEvents();
    sendMouse(header, QEvent::MouseButtonRelease, edge + QPoint(pixels, 0));
}

} // namespace oVELDRA::controls
