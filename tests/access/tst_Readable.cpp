#include "EveryScreen.h"

#include <controls/Contrast.h>
#include <controls/OleColor.h>

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QTreeView>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::access;
using controls::contrastRatio;
using controls::ReadableContrast;

namespace {

/// Fails unless what is written in one role can be read on the other, whether or not the window is in front.
void checkRoles(const QWidget& control, QPalette::ColorRole text, QPalette::ColorRole ground)
{
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        const QColor ink = control.palette().color(group, text);
        const QColor paper = control.palette().color(group, ground);
        QVERIFY2(contrastRatio(ink, paper) >= ReadableContrast,
                 qPrintable(u"%1: %2 on %3"_s.arg(control.objectName(), ink.name(), paper.name())));
    }
}

/// The best contrast of a picture's pixels with its ground, which is the pixel of its corner: that of the strokes'
/// middles, where they are not blended with the ground.
double drawnContrast(const QImage& picture, QPoint corner)
{
    const QColor ground = picture.pixelColor(corner);
    double best = 1;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            best = std::max(best, contrastRatio(picture.pixelColor(x, y), ground));
        }
    }
    return best;
}

/// A cell as it is drawn, without its edges.
QImage pictureOf(const QTreeView& list, int row, int column)
{
    const QRect cell = list.visualRect(list.model()->index(row, column));
    constexpr int edge = 2;
    return const_cast<QTreeView&>(list).viewport()->grab(cell.adjusted(edge, edge, -edge, -edge)).toImage();
}

} // namespace

/// Texts can be read on what lies behind them: at a ratio of 4.5 to 1, in both themes.
class tst_Readable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rolesOfControls_data() { addScreensAndThemes(); }
    void rolesOfControls();
    void rowsAsTheyAreDrawn_data();
    void rowsAsTheyAreDrawn();
    void fixedColorsOfTextBoxes_data();
    void fixedColorsOfTextBoxes();
    void statusOfTheImport_data();
    void statusOfTheImport();
    void changeOfThemeWhileOpen();

private:
    static void addThemes();
};

void tst_Readable::addThemes()
{
    QTest::addColumn<bool>("dark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void tst_Readable::rolesOfControls()
{
    QFETCH(const QString, screen);
    QFETCH(const bool, dark);
    const Theme theme(dark);
    ScreenUnderTest tested(screenCase(screen).make);
    tested.whileOpen([&] {
        const QPalette& form = tested.form().palette();
        QVERIFY(contrastRatio(form.color(QPalette::WindowText), form.color(QPalette::Window)) >= ReadableContrast);
        const auto controls = tested.form().findChildren<QWidget*>();
        for (const QWidget* control : controls) {
            if (qobject_cast<const QLabel*>(control) != nullptr) {
                checkRoles(*control, QPalette::WindowText, QPalette::Window);
            }
            const bool isText = qobject_cast<const QLineEdit*>(control) != nullptr ||
                                qobject_cast<const QPlainTextEdit*>(control) != nullptr;
            if (isText || qobject_cast<const QAbstractItemView*>(control) != nullptr) {
                checkRoles(*control, QPalette::Text, QPalette::Base);
                checkRoles(*control, QPalette::HighlightedText, QPalette::Highlight);
            }
            if (qobject_cast<const QAbstractItemView*>(control) != nullptr) {
                checkRoles(*control, QPalette::Text, QPalette::AlternateBase);
                checkRoles(*control, QPalette::ButtonText, QPalette::Button);
            }
        }
    });
}

void tst_Readable::rowsAsTheyAreDrawn_data()
{
    QTest::addColumn<QString>("screen");
    QTest::addColumn<bool>("dark");
    for (const ScreenCase& screen : everyScreen()) {
        if (!screen.list.isEmpty() && screen.stops.last().role == QAccessible::Tree) {
            QTest::addRow("%s, light", qPrintable(screen.name)) << screen.name << false;
            QTest::addRow("%s, dark", qPrintable(screen.name)) << screen.name << true;
        }
    }
}

void tst_Readable::rowsAsTheyAreDrawn()
{
    QFETCH(const QString, screen);
    QFETCH(const bool, dark);
    const Theme theme(dark);
    const ScreenCase& expected = screenCase(screen);
    ScreenUnderTest tested(expected.make);
    tested.whileOpen([&] {
        auto& list = static_cast<QTreeView&>(tested.control(expected.list));
        // The second row is the red one, where there are red ones; then it is the selected one.
        for (const bool selected : {false, true}) {
            list.setCurrentIndex(list.model()->index(selected ? 1 : 0, 0));
            const double contrast = drawnContrast(pictureOf(list, 1, 1), {0, 0});
            QVERIFY2(contrast >= ReadableContrast, qPrintable(QString::number(contrast)));
        }
    });
}

void tst_Readable::fixedColorsOfTextBoxes_data()
{
    QTest::addColumn<quint32>("ground");
    QTest::newRow("focus") << quint32(12648384);
    QTest::newRow("marked focus") << quint32(14083326);
    QTest::newRow("rest") << quint32(16777215);
}

void tst_Readable::fixedColorsOfTextBoxes()
{
    QFETCH(const quint32, ground);
    for (const bool dark : {false, true}) {
        const Theme theme(dark);
        QLineEdit box;
        controls::setFieldColor(box, ground);
        QCOMPARE(box.palette().color(QPalette::Base), controls::colorFromOle(ground));
        checkRoles(box, QPalette::Text, QPalette::Base);
    }
}

void tst_Readable::statusOfTheImport_data()
{
    addThemes();
}

void tst_Readable::statusOfTheImport()
{
    QFETCH(const bool, dark);
    const Theme theme(dark);
    ScreenUnderTest tested(screenCase(u"frmImportar"_s).make);
    tested.whileOpen([&] {
        static_cast<QLineEdit&>(tested.control(u"txtINTDCL"_s)).setText(u"26001IT14000655K"_s);
        static_cast<QLineEdit&>(tested.control(u"txtVEN"_s)).setText(u"16/11/2027"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F11);
        QWidget& status = tested.control(u"lbTexto"_s);
        QCOMPARE(status.palette().color(QPalette::WindowText), QColor(255, 0, 0));
        constexpr QPoint insideTheFrame(4, 4);
        const QImage picture = status.grab().toImage();
        const QImage text = picture.copy(picture.rect().adjusted(4, 4, -4, -4));
        QVERIFY(text.pixelColor(0, 0) == QColor(Qt::white));
        const double contrast = drawnContrast(text, insideTheFrame - QPoint(4, 4));
        QVERIFY2(contrast >= ReadableContrast, qPrintable(QString::number(contrast)));
        QVERIFY2(contrast < 7, "it is still red"); // black would be 21
    });
}

void tst_Readable::changeOfThemeWhileOpen()
{
    ScreenUnderTest tested(screenCase(u"frmCatalogo"_s).make);
    tested.whileOpen([&] {
        const Theme theme(true);
        QTest::qWait(0);
        const QWidget& list = tested.control(u"LstvCat"_s);
        QVERIFY(list.palette().color(QPalette::Base).lightness() < 100);
        checkRoles(list, QPalette::HighlightedText, QPalette::Highlight);
        checkRoles(list, QPalette::Text, QPalette::Base);
    });
}

QTEST_MAIN(tst_Readable)
#include "tst_Readable.moc"
