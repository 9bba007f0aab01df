#pragma once

#include <QFocusFrame>
#include <QList>
#include <QPointer>

namespace oVELDRA::controls {

/// A line around the control of a window that has the focus, in every style: some styles show the focus of some
/// controls by a colour alone, or not at all (that of an empty list).
///
/// It is as thick as the eye needs, stands outside the control, takes neither clicks nor focus, and is no part of what
/// assistive technology reads. Controls need as much room around them as `reach()` says.
class FocusFrame final : public QFocusFrame
{
public:
    /// `window` owns the frame; it need not have its controls yet.
    explicit FocusFrame(QWidget& window);

    /// How far the frame reaches beyond the control, in pixels.
    [[nodiscard]] int reach() const;

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    /// Goes to the control with the focus, nowhere when it is none of the window's.
    void follow(QWidget* control);
    void place();
    [[nodiscard]] int thickness() const;

    QPointer<QWidget> m_control;
    QList<QPointer<QWidget>> m_watched; ///< the control and what it stands in: the frame moves when one of them does
};

} // namespace oVELDRA::controls
