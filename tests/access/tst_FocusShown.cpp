#include "EveryScreen.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::access;

namespace {

/// A picture without colours: what is seen of it by somebody who sees none.
QImage grayOf(controls::Form& form)
{
    return form.grab().toImage().convertToFormat(QImage::Format_Grayscale8);
}

/// The pixels of a picture that differ clearly from another one's.
QRegion changed(const QImage& one, const QImage& other)
{
    constexpr int clearly = 60; // of 255 shades of gray
    QRegion pixels;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            if (std::abs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y))) > clearly) {
                pixels += QRect(x, y, 1, 1);
            }
        }
    }
    return pixels;
}

int area(const QRegion& region)
{
    int pixels = 0;
    for (const QRect& part : region) {
        pixels += part.width() * part.height();
    }
    return pixels;
}

/// A control's place in a picture of its form.
QRect seenAt(const QWidget& control)
{
    const double scale = control.devicePixelRatioF();
    const QRect place(control.mapTo(control.window(), QPoint()), control.size());
    return QRectF(place.x() * scale, place.y() * scale, place.width() * scale, place.height() * scale).toAlignedRect();
}

/// Moves the focus to where it is not seen: no control has it.
void leave(const controls::Form& form)
{
    if (QWidget* focus = form.focusWidget()) {
        focus->clearFocus();
    }
}

} // namespace

/// The focus is seen on every control of every screen, and not by a colour: that of somebody who sees no colours.
class tst_FocusShown : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lineStandsAroundTheControl_data() { addScreensAndThemes(); }
    void lineStandsAroundTheControl();
    void emptyListShowsIt_data() { addScreens(); }
    void emptyListShowsIt();
    void otherOptionShowsIt();

private:
    /// Fails unless the control has a line around it while it has the focus, that is not there otherwise.
    static void checkLine(controls::Form& form, QWidget& control);
};

void tst_FocusShown::checkLine(controls::Form& form, QWidget& control)
{
    leave(form);
    const QImage without = grayOf(form);
    control.setFocus();
    QVERIFY(control.hasFocus());
    const QImage with = grayOf(form);
    QCOMPARE(with.size(), without.size());

    // Outside the control, on three sides at least: a check box is drawn shorter than it is.
    const QRect place = seenAt(control);
    const int around = static_cast<int>(std::ceil(6 * control.devicePixelRatioF()));
    const QRegion outside = changed(with, without).subtracted(place) & place.adjusted(-around, -around, around, around);
    const QRect line = outside.boundingRect();
    QVERIFY2(line.left() < place.left() && line.top() < place.top() && line.bottom() > place.bottom(),
             qPrintable(control.objectName()));
    QVERIFY2(area(outside) >= 2 * place.height(), qPrintable(control.objectName()));
    const QRegion leftSide = outside & QRect(line.left(), line.top(), place.left() - line.left(), line.height());
    QVERIFY2(leftSide.boundingRect().height() >= place.height(), qPrintable(control.objectName()));
}

void tst_FocusShown::lineStandsAroundTheControl()
{
    QFETCH(const QString, screen);
    QFETCH(const bool, dark);
    const Theme theme(dark);
    const ScreenCase& expected = screenCase(screen);
    ScreenUnderTest tested(expected.make);
    tested.whileOpen([&] {
        for (const Stop& stop : expected.stops) {
            checkLine(tested.form(), tested.control(stop.name));
        }
    });
}

void tst_FocusShown::emptyListShowsIt()
{
    QFETCH(const QString, screen);
    const ScreenCase& expected = screenCase(screen);
    ScreenUnderTest tested(expected.make);
    tested.whileOpen([&] {
        for (const Stop& stop : expected.stops) {
            auto* list = qobject_cast<QAbstractItemView*>(&tested.control(stop.name));
            if (list != nullptr) {
                list->model()->removeRows(0, list->model()->rowCount());
                list->setModel(nullptr);
                checkLine(tested.form(), *list);
            }
        }
    });
}

void tst_FocusShown::otherOptionShowsIt()
{
    ScreenUnderTest tested(screenCase(u"frmListados"_s).make);
    tested.whileOpen([&] {
        tested.control(u"opMODWIN"_s).setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QCOMPARE(QApplication::focusWidget()->objectName(), u"opMODDOS"_s);
        checkLine(tested.form(), tested.control(u"opMODDOS"_s));
    });
}

QTEST_MAIN(tst_FocusShown)
#include "tst_FocusShown.moc"
