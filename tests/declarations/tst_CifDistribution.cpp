#include "doubles/ThrownError.h"

#include <declarations/CifDistribution.h>

#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA::declarations;
using namespace oVELDRA::doubles;

namespace {

constexpr ItemAmounts usual{.fob = 100, .freight = 10, .insurance = 5, .increments = 7, .deductions = 2};
constexpr ExchangeFactors ones{.fob = 1, .freight = 1, .insurance = 1};

} // namespace

class tst_CifDistribution : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void onlySubitem();
    void twoSubitems();
    void adjustmentsCountOnlyWhenAskedFor();
    void eachAmountHasItsFactorAndAdjustmentsThatOfTheFob();
    void itemCifIsRoundedForSharingOnly();
    void unitValueIsRoundedToSixDecimals_data();
    void unitValueIsRoundedToSixDecimals();
    void divisionByZero_data();
    void divisionByZero();
    void overflow();
    void subitemNumbers_data();
    void subitemNumbers();
};

void tst_CifDistribution::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_CifDistribution::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

void tst_CifDistribution::onlySubitem()
{
    for (const auto& locale : {u"es_AR"_s, u"en_US"_s}) {
        QLocale::setDefault(QLocale(locale));
        const ItemValues item = itemValues(usual, ones, false);
        QCOMPARE(item.fob, 100.0);
        QCOMPARE(item.cif, 115.0);
        QCOMPARE(unitValue(item.cif, 3), 38.333333);
    }
}

void tst_CifDistribution::twoSubitems()
{
    for (const auto& locale : {u"es_AR"_s, u"en_US"_s}) {
        QLocale::setDefault(QLocale(locale));
        const ItemValues item = forSharing(itemValues(usual, ones, false));
        QCOMPARE(item.cif, 115.0);
        const double first = sharedCif(60, ones, item);
        const double second = sharedCif(40, ones, item);
        QCOMPARE(first, 69.0);
        QCOMPARE(second, 46.0);
        QCOMPARE(unitValue(first, 3), 23.0);
        QCOMPARE(unitValue(second, 2), 23.0);
    }
}

void tst_CifDistribution::adjustmentsCountOnlyWhenAskedFor()
{
    QCOMPARE(itemValues(usual, ones, true).cif, 120.0);
    QCOMPARE(itemValues(usual, ones, true).fob, 100.0);
    QCOMPARE(itemValues(usual, ones, false).cif, 115.0);
}

void tst_CifDistribution::eachAmountHasItsFactorAndAdjustmentsThatOfTheFob()
{
    constexpr ExchangeFactors factors{.fob = 2, .freight = 3, .insurance = 5};
    const ItemValues plain = itemValues(usual, factors, false);
    QCOMPARE(plain.fob, 200.0);
    QCOMPARE(plain.cif, 200.0 + 30.0 + 25.0);
    QCOMPARE(itemValues(usual, factors, true).cif, 255.0 + 14.0 - 4.0);
    QCOMPARE(sharedCif(50, factors, plain), 50.0 * 2 * 255 / 200);
}

void tst_CifDistribution::itemCifIsRoundedForSharingOnly()
{
    constexpr ItemAmounts amounts{.fob = 100, .freight = 1.005, .insurance = 0, .increments = 0, .deductions = 0};
    const ItemValues item = itemValues(amounts, ones, false);
    QCOMPARE(unitValue(item.cif, 1), 101.005);
    QCOMPARE(forSharing(item).cif, 101.01); // half away from zero
    QCOMPARE(forSharing(item).fob, item.fob);
}

void tst_CifDistribution::unitValueIsRoundedToSixDecimals_data()
{
    QTest::addColumn<double>("cif");
    QTest::addColumn<double>("quantity");
    QTest::addColumn<double>("value");
    QTest::newRow("down") << 1.0 << 3.0 << 0.333333;
    QTest::newRow("up") << 2.0 << 3.0 << 0.666667;
    QTest::newRow("half away from zero") << 0.0000005 << 1.0 << 0.000001;
    QTest::newRow("negative") << -2.0 << 3.0 << -0.666667;
    QTest::newRow("nothing") << 0.0 << 3.0 << 0.0;
    QTest::newRow("large") << 123456789.0 << 1.0 << 123456789.0;
}

void tst_CifDistribution::unitValueIsRoundedToSixDecimals()
{
    QFETCH(const double, cif);
    QFETCH(const double, quantity);
    QFETCH(const double, value);
    QCOMPARE(unitValue(cif, quantity), value);
}

void tst_CifDistribution::divisionByZero_data()
{
    QTest::addColumn<double>("dividend");
    QTest::addColumn<int>("number");
    QTest::newRow("of a value") << 5.0 << 11;
    QTest::newRow("of a negative value") << -5.0 << 11;
    QTest::newRow("of zero") << 0.0 << 6;
}

void tst_CifDistribution::divisionByZero()
{
    QFETCH(const double, dividend);
    QFETCH(const int, number);
    QCOMPARE(numberThrownBy([&] { (void)unitValue(dividend, 0); }), number);
    QCOMPARE(numberThrownBy([&] { (void)sharedCif(dividend, ones, {.fob = 0, .cif = 1}); }), number);
}

void tst_CifDistribution::overflow()
{
    constexpr double huge = 1e308;
    QCOMPARE(numberThrownBy([] { (void)itemValues({.fob = huge}, {.fob = 10}, false); }), 6);
    QCOMPARE(numberThrownBy([] { (void)itemValues({.freight = huge, .insurance = huge}, ones, false); }), 6);
    QCOMPARE(numberThrownBy([] { (void)itemValues({.increments = huge, .deductions = huge}, {.fob = 10}, true); }), 6);
    QCOMPARE(numberThrownBy([] { (void)sharedCif(huge, ones, {.fob = 1, .cif = 10}); }), 6);
    QCOMPARE(numberThrownBy([] { (void)unitValue(huge, 0.001); }), 6);
}

void tst_CifDistribution::subitemNumbers_data()
{
    QTest::addColumn<qsizetype>("position");
    QTest::addColumn<qsizetype>("count");
    QTest::addColumn<QString>("number");
    QTest::newRow("the only one is 000") << qsizetype(1) << qsizetype(1) << u"000"_s;
    QTest::newRow("first of two") << qsizetype(1) << qsizetype(2) << u"001"_s;
    QTest::newRow("second of two") << qsizetype(2) << qsizetype(2) << u"002"_s;
    QTest::newRow("hundredth") << qsizetype(100) << qsizetype(2000) << u"100"_s;
    QTest::newRow("beyond three digits") << qsizetype(1234) << qsizetype(2000) << u"1234"_s;
}

void tst_CifDistribution::subitemNumbers()
{
    QFETCH(const qsizetype, position);
    QFETCH(const qsizetype, count);
    QFETCH(const QString, number);
    QCOMPARE(subitemNumber(position, count), number);
}

QTEST_MAIN(tst_CifDistribution)
#include "tst_CifDistribution.moc"
