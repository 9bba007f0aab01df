#pragma once

#include <QGuiApplication>

namespace oVELDRA::controls {

/// Shows the hourglass for as long as it lives. End it before a box opens: the pointer of a box is the arrow.
class BusyPointer
{
public:
    BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
};

} // namespace oVELDRA::controls
