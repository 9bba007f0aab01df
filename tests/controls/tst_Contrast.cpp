#include <controls/Contrast.h>

#include <QTest>

#include <array>

using namespace oVELDRA::controls;

class tst_Contrast : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ratios_data();
    void ratios();
    void readableColorsStay();
    void othersComeAsNearAsTheyMay_data();
    void othersComeAsNearAsTheyMay();
};

void tst_Contrast::ratios_data()
{
    QTest::addColumn<QColor>("one");
    QTest::addColumn<QColor>("other");
    QTest::addColumn<double>("ratio");
    QTest::newRow("black and white") << QColor(Qt::black) << QColor(Qt::white) << 21.0;
    QTest::newRow("equal") << QColor(Qt::blue) << QColor(Qt::blue) << 1.0;
    QTest::newRow("red on white") << QColor(Qt::red) << QColor(Qt::white) << 3.998;
    QTest::newRow("blue on white") << QColor(Qt::blue) << QColor(Qt::white) << 8.592;
    QTest::newRow("a gray that is just enough") << QColor(118, 118, 118) << QColor(Qt::white) << 4.542;
    QTest::newRow("dark ones, by the straight part of the curve") << QColor(10, 10, 10) << QColor(Qt::black) << 1.061;
}

void tst_Contrast::ratios()
{
    QFETCH(const QColor, one);
    QFETCH(const QColor, other);
    QFETCH(const double, ratio);
    QVERIFY(qAbs(contrastRatio(one, other) - ratio) < 0.001);
    const std::array turned{other, one};
    QCOMPARE(contrastRatio(turned[0], turned[1]), contrastRatio(one, other));
}

void tst_Contrast::readableColorsStay()
{
    QCOMPARE(readableOn(Qt::blue, Qt::white), QColor(Qt::blue));
    QCOMPARE(readableOn(Qt::yellow, Qt::black), QColor(Qt::yellow));
}

void tst_Contrast::othersComeAsNearAsTheyMay_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QColor>("ground");
    QTest::newRow("red on white") << QColor(Qt::red) << QColor(Qt::white);
    QTest::newRow("red on a dark theme") << QColor(Qt::red) << QColor(35, 38, 41);
    QTest::newRow("blue on black") << QColor(Qt::blue) << QColor(Qt::black);
    QTest::newRow("gray on gray") << QColor(Qt::gray) << QColor(Qt::gray);
}

void tst_Contrast::othersComeAsNearAsTheyMay()
{
    QFETCH(const QColor, color);
    QFETCH(const QColor, ground);
    const QColor found = readableOn(color, ground);
    const double ratio = contrastRatio(found, ground);
    QVERIFY2(ratio >= ReadableContrast && ratio < ReadableContrast + 0.5, qPrintable(QString::number(ratio)));
    QVERIFY(contrastRatio(readableOn(color, ground, 7), ground) >= 7 ||
            ground == QColor(Qt::gray)); // on which nothing is so clear
}

QTEST_MAIN(tst_Contrast)
#include "tst_Contrast.moc"
