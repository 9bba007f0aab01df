#include <controls/OleColor.h>

#include <QLineEdit>
#include <QTest>

using namespace oVELDRA::controls;

class tst_OleColor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bytesAreBlueGreenRedFromHighToLow_data();
    void bytesAreBlueGreenRedFromHighToLow();
    void fieldTextIsDarkUnderADarkTheme();
};

void tst_OleColor::bytesAreBlueGreenRedFromHighToLow_data()
{
    QTest::addColumn<quint32>("packed");
    QTest::addColumn<QColor>("color");
    QTest::newRow("light orange") << 14083326U << QColor(254, 228, 214);
    QTest::newRow("light green") << 12648384U << QColor(192, 255, 192);
    QTest::newRow("white") << 16777215U << QColor(255, 255, 255);
    QTest::newRow("red") << 255U << QColor(255, 0, 0);
    QTest::newRow("blue") << 16711680U << QColor(0, 0, 255);
    QTest::newRow("black") << 0U << QColor(0, 0, 0);
}

void tst_OleColor::bytesAreBlueGreenRedFromHighToLow()
{
    QFETCH(const quint32, packed);
    QFETCH(const QColor, color);
    QCOMPARE(colorFromOle(packed), color);
}

void tst_OleColor::fieldTextIsDarkUnderADarkTheme()
{
    QPalette dark;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    QLineEdit box;
    box.setPalette(dark);
    setFieldColor(box, 12648384);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QCOMPARE(box.palette().color(group, QPalette::Base), QColor(192, 255, 192));
        QVERIFY(box.palette().color(group, QPalette::Text).lightness() < 64);
    }
}

QTEST_MAIN(tst_OleColor)
#include "tst_OleColor.moc"
