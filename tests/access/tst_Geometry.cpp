#include "EveryScreen.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QLocale>
#include <QTest>
#include <QTreeView>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::access;

namespace {

/// Shows values of any length in a room of its own; the whole text is its tool tip.
const QString cutOnPurpose = u"lbSufijos"_s;

QRect placeOf(const QWidget& control)
{
    return {control.mapTo(control.window(), QPoint()), control.size()};
}

/// Fails when a text of a control is cut off.
void checkText(const QWidget& control)
{
    const QByteArray name = (control.objectName() + u": "_s + control.accessibleName()).toUtf8();
    if (const auto* label = qobject_cast<const QLabel*>(&control)) {
        if (label->wordWrap()) {
            QVERIFY2(label->heightForWidth(label->width()) <= label->height(), name.constData());
            QVERIFY2(label->minimumSizeHint().width() <= label->width(), name.constData());
        } else {
            QVERIFY2(label->sizeHint().width() <= label->width() && label->sizeHint().height() <= label->height(),
                     name.constData());
        }
    }
    if (qobject_cast<const QAbstractButton*>(&control) != nullptr ||
        qobject_cast<const QGroupBox*>(&control) != nullptr) {
        QVERIFY2(control.sizeHint().width() <= control.width() || control.minimumSizeHint().width() <= control.width(),
                 name.constData());
        QVERIFY2(control.minimumSizeHint().height() <= control.height(), name.constData());
    }
    if (qobject_cast<const QLineEdit*>(&control) != nullptr || qobject_cast<const QComboBox*>(&control) != nullptr) {
        QVERIFY2(control.minimumSizeHint().height() <= control.height(), name.constData());
    }
}

/// The controls of a form that a user can tell apart: no frames around others, no insides.
QList<const QWidget*> controlsOf(const controls::Form& form)
{
    QList<const QWidget*> found;
    const auto widgets = form.findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        const QWidget* owner = widget->parentWidget();
        const bool isInside = owner != &form && qobject_cast<const QGroupBox*>(owner) == nullptr;
        const bool isFrame = qobject_cast<const QGroupBox*>(widget) != nullptr || widget->inherits("QFocusFrame");
        if (widget->isVisible() && !isInside && !isFrame) {
            found.append(widget);
        }
    }
    return found;
}

} // namespace

/// Every screen at its smallest, with the font of the system and with larger ones: what a scale of 150 or 200 % makes
/// of the same window.
class tst_Geometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QLocale::setDefault(QLocale(u"es_AR"_s)); }
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void nothingIsCutAtTheSmallest_data();
    void nothingIsCutAtTheSmallest();
    void titlesOfColumnsAreWhole_data() { nothingIsCutAtTheSmallest_data(); }
    void titlesOfColumnsAreWhole();
    void fitsASmallScreen_data() { addScreens(); }
    void fitsASmallScreen();
};

void tst_Geometry::nothingIsCutAtTheSmallest_data()
{
    QTest::addColumn<QString>("screen");
    QTest::addColumn<double>("factor");
    for (const ScreenCase& screen : everyScreen()) {
        for (const double factor : {1.0, 1.5, 2.0}) {
            QTest::addRow("%s, %g", qPrintable(screen.name), factor) << screen.name << factor;
        }
    }
}

void tst_Geometry::nothingIsCutAtTheSmallest()
{
    QFETCH(const QString, screen);
    QFETCH(const double, factor);
    const FontSize font(factor);
    ScreenUnderTest tested(screenCase(screen).make);
    tested.whileOpen([&] {
        controls::Form& form = tested.form();
        const QSize least = form.minimumSizeHint();
        form.setMinimumSize(least); // also where the screen is smaller
        form.resize(least);
        QTRY_COMPARE(form.size(), least);
        QTest::qWait(0);
        const QList<const QWidget*> controls = controlsOf(form);
        QVERIFY(controls.size() >= 3);
        for (const QWidget* control : controls) {
            QVERIFY2(form.rect().contains(placeOf(*control)), qPrintable(control->objectName()));
            if (control->objectName() != cutOnPurpose) {
                checkText(*control);
            }
            for (const QWidget* other : controls) {
                QVERIFY2(other == control || !placeOf(*other).intersects(placeOf(*control)),
                         qPrintable(control->objectName() + u" and "_s + other->objectName()));
            }
        }
    });
}

void tst_Geometry::titlesOfColumnsAreWhole()
{
    QFETCH(const QString, screen);
    QFETCH(const double, factor);
    const FontSize font(factor);
    ScreenUnderTest tested(screenCase(screen).make);
    tested.whileOpen([&] {
        const auto lists = tested.form().findChildren<QTreeView*>();
        for (const QTreeView* list : lists) {
            for (int column = 0; column < list->model()->columnCount(); ++column) {
                const auto& header = static_cast<const QHeaderView&>(*list->header());
                QVERIFY2(header.sectionSize(column) >= header.sectionSizeHint(column), qPrintable(list->objectName()));
            }
        }
    });
}

/// 1024 x 768 at 150 %, less a title bar and the system's own bar.
void tst_Geometry::fitsASmallScreen()
{
    QFETCH(const QString, screen);
    const ScreenUnderTest tested(screenCase(screen).make);
    constexpr QSize room(683, 512 - 60);
    const int width = tested.form().minimumSizeHint().width();
    const int height = tested.form().layout()->totalMinimumHeightForWidth(room.width());
    QVERIFY2(width <= room.width() && height <= room.height(), qPrintable(u"%1 x %2"_s.arg(width).arg(height)));
}

QTEST_MAIN(tst_Geometry)
#include "tst_Geometry.moc"
