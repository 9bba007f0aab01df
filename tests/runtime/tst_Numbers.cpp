#include "doubles/ThrownError.h"

#include <runtime/Numbers.h>

#include <QDate>
#include <QLocale>
#include <QTest>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;
using namespace oVELDRA::runtime;
using oVELDRA::doubles::numberThrownBy;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const QStringList& bothLocales()
{
    static const QStringList locales{u"es_AR"_s, u"en_US"_s};
    return locales;
}

} // namespace

class tst_Numbers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void separatorsFollowTheLocale_data();
    void separatorsFollowTheLocale();

    void formatRoundsHalfAwayFromZero_data();
    void formatRoundsHalfAwayFromZero();
    void formatPads_data();
    void formatPads();
    void formatOfHugeValues();
    void formatOfLongMasks();
    void formatRefusesOtherMasks();
    void formatOfFields_data();
    void formatOfFields();
    void formatRefusesOtherKinds();
    void roundThroughMask_data();
    void roundThroughMask();

    void plainTextOfNumber_data();
    void plainTextOfNumber();
    void infinityIsOverflow();

    void textThatIsANumber_data();
    void textThatIsANumber();
    void textThatIsNone_data();
    void textThatIsNone();
    void numberTooLarge_data();
    void numberTooLarge();
    void numberTooSmallIsZero_data();
    void numberTooSmallIsZero();
    void minusZeroIsZero();
    void longTexts();

    void numbersOfSixAndEightDecimalsSurvive_data();
    void numbersOfSixAndEightDecimalsSurvive();
    void anyTextOfANumberIsReadBackToTheSameText();

    void intIsTheFloor();
    void integerOfText_data();
    void integerOfText();
    void integerErrors_data();
    void integerErrors();
};

void tst_Numbers::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_Numbers::separatorsFollowTheLocale_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QChar>("decimal");
    QTest::addColumn<QChar>("group");

    QTest::newRow("es_AR") << u"es_AR"_s << QChar(u',') << QChar(u'.');
    QTest::newRow("en_US") << u"en_US"_s << QChar(u'.') << QChar(u',');
    QTest::newRow("fr_FR") << u"fr_FR"_s << QChar(u',') << QChar(u'\u202F');
    QTest::newRow("pl_PL") << u"pl_PL"_s << QChar(u',') << QChar(u'\u00A0');
}

void tst_Numbers::separatorsFollowTheLocale()
{
    QFETCH(const QString, locale);
    QLocale::setDefault(QLocale(locale));
    const Separators separators = Separators::current();
    QTEST(separators.decimal, "decimal");
    QTEST(separators.group, "group");
}

void tst_Numbers::formatRoundsHalfAwayFromZero_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QString>("text"); // with a point

    QTest::newRow("1.005") << 1.005 << u"0.00"_s << u"1.01"_s;
    QTest::newRow("1.0049") << 1.0049 << u"0.00"_s << u"1.00"_s;
    QTest::newRow("2.5") << 2.5 << u"0"_s << u"3"_s;
    QTest::newRow("3.5") << 3.5 << u"0"_s << u"4"_s;
    QTest::newRow("0.5") << 0.5 << u"0"_s << u"1"_s;
    QTest::newRow("-0.5") << -0.5 << u"0"_s << u"-1"_s;
    QTest::newRow("0.49999") << 0.49999 << u"0"_s << u"0"_s;
    QTest::newRow("-0.125") << -0.125 << u"0.00"_s << u"-0.13"_s;
    QTest::newRow("0.285") << 0.285 << u"0.00"_s << u"0.29"_s;
    QTest::newRow("1.115") << 1.115 << u"0.00"_s << u"1.12"_s;
    QTest::newRow("1.5E-7, too small to be seen") << 1.5e-7 << u"00.000000"_s << u"00.000000"_s;
    QTest::newRow("5E-7, the smallest that is seen") << 5e-7 << u"00.000000"_s << u"00.000001"_s;
    QTest::newRow("4.99999999999999E-7") << 4.99999999999999e-7 << u"00.000000"_s << u"00.000000"_s;
    QTest::newRow("1.5E-7 at eight decimals") << 1.5e-7 << u"00.00000000"_s << u"00.00000015"_s;
    QTest::newRow("999999.9999995 carries through") << 999999.9999995 << u"00.000000"_s << u"1000000.000000"_s;
    QTest::newRow("999999.9999994 does not") << 999999.9999994 << u"00.000000"_s << u"999999.999999"_s;
    QTest::newRow("9.5 carries into a new digit") << 9.5 << u"0"_s << u"10"_s;
    QTest::newRow("0.1 + 0.2") << 0.1 + 0.2 << u"0.00000000"_s << u"0.30000000"_s;
    QTest::newRow("the fifteenth digit rounds") << 12345678.1234565 << u"00.000000"_s << u"12345678.123457"_s;
    QTest::newRow("the sixteenth digit does not count") << 0.4999999999999999 << u"0"_s << u"1"_s;
    QTest::newRow("-0.001 has no minus sign") << -0.001 << u"00.00"_s << u"00.00"_s;
    QTest::newRow("-0.005 has one") << -0.005 << u"00.00"_s << u"-00.01"_s;
    QTest::newRow("minus zero has none") << -0.0 << u"00.00"_s << u"00.00"_s;
    QTest::newRow("-1E-300") << -1e-300 << u"0.00"_s << u"0.00"_s;
}

void tst_Numbers::formatRoundsHalfAwayFromZero()
{
    QFETCH(const double, value);
    QFETCH(const QString, mask);
    QFETCH(QString, text);
    QLocale::setDefault(QLocale(u"en_US"_s));
    QCOMPARE(Format(value, mask), text);
    QLocale::setDefault(QLocale(u"es_AR"_s));
    QCOMPARE(Format(value, mask), text.replace(u'.', u','));
}

void tst_Numbers::formatPads_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QString>("text"); // es_AR

    QTest::newRow("item number") << 7.0 << u"000"_s << u"007"_s;
    QTest::newRow("item number of four digits is not cut") << 1234.0 << u"000"_s << u"1234"_s;
    QTest::newRow("zero") << 0.0 << u"00.0000"_s << u"00,0000"_s;
    QTest::newRow("quantity") << 38.333333 << u"00.000000"_s << u"38,333333"_s;
    QTest::newRow("quantity of one digit") << 1.5 << u"00.00000000"_s << u"01,50000000"_s;
    QTest::newRow("never grouped") << 1234567.891 << u"00.00"_s << u"1234567,89"_s;
    QTest::newRow("negative") << -5.0 << u"00.00"_s << u"-05,00"_s;
    QTest::newRow("no whole digits in the mask, a fraction") << 0.5 << u".00"_s << u",50"_s;
    QTest::newRow("no whole digits in the mask, a whole number") << 12.5 << u".00"_s << u"12,50"_s;
    QTest::newRow("point at the end of the mask") << 12.5 << u"0."_s << u"13,"_s;
    QTest::newRow("small number") << 0.00012 << u"0.0000"_s << u"0,0001"_s;
}

void tst_Numbers::formatPads()
{
    QFETCH(const double, value);
    QFETCH(const QString, mask);
    QTEST(Format(value, mask), "text");
}

void tst_Numbers::formatOfHugeValues()
{
    QCOMPARE(Format(1e20, u"00.00"), u"100000000000000000000,00"_s);
    QCOMPARE(Format(-1e20, u"00.00"), u"-100000000000000000000,00"_s);
    QCOMPARE(Format(123456789012345678.0, u"0.00"), u"123456789012346000,00"_s);
    QCOMPARE(Format(999999999999999.9, u"0.0"), u"1000000000000000,0"_s);
    const QString greatest = Format(std::numeric_limits<double>::max(), u"0.0");
    QCOMPARE(greatest.size(), 309 + 2);
    QVERIFY(greatest.startsWith(u"179769313486232000"_s));
    QCOMPARE(numberThrownBy([] { return Format(infinity, u"0.00"); }), 6);
    QCOMPARE(numberThrownBy([] { return Format(notANumber, u"0.00"); }), 6);
}

void tst_Numbers::formatOfLongMasks()
{
    const QString zeros(10'000, u'0');
    QCOMPARE(Format(1.5, zeros), QString(QString(9'999, u'0') + u"2"_s));
    QCOMPARE(Format(1.5, QString(u"0."_s + zeros)), QString(u"1,5"_s + QString(9'999, u'0')));
}

void tst_Numbers::formatRefusesOtherMasks()
{
    for (const QString& mask : {u""_s, u"."_s, u"0.0.0"_s, u"#.00"_s, u"0,00"_s, u"dd/mm/yyyy"_s, u"Long Date"_s}) {
        QCOMPARE(numberThrownBy([&] { return Format(1.5, mask); }), 5);
    }
}

void tst_Numbers::formatOfFields_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QString>("text"); // es_AR

    QTest::newRow("Null") << QVariant() << u"00.00"_s << u""_s;
    QTest::newRow("Null object") << QVariant::fromValue(nullptr) << u"00.00"_s << u""_s;
    QTest::newRow("empty text") << QVariant(u""_s) << u"00.00"_s << u""_s;
    QTest::newRow("int") << QVariant(7) << u"000"_s << u"007"_s;
    QTest::newRow("qlonglong") << QVariant(Q_INT64_C(12)) << u"00.00"_s << u"12,00"_s;
    QTest::newRow("double") << QVariant(1.005) << u"00.00"_s << u"01,01"_s;
    QTest::newRow("True") << QVariant(true) << u"0"_s << u"-1"_s;
    QTest::newRow("False") << QVariant(false) << u"0"_s << u"0"_s;
    QTest::newRow("numeric text, comma") << QVariant(u" 1.234,5 "_s) << u"00.00"_s << u"1234,50"_s;
    QTest::newRow("numeric text, point") << QVariant(u"1.5"_s) << u"00.00"_s << u"01,50"_s;
    QTest::newRow("digits of an item") << QVariant(u"7"_s) << u"000"_s << u"007"_s;
    QTest::newRow("other text as it is") << QVariant(u" abc "_s) << u"00.00"_s << u" abc "_s;
    QTest::newRow("date text under a number mask") << QVariant(u"5/3/2026"_s) << u"00.00"_s << u"5/3/2026"_s;
    QTest::newRow("date") << QVariant(QDate(2026, 3, 5)) << u"dd/mm/yyyy"_s << u"05/03/2026"_s;
    QTest::newRow("date, long") << QVariant(QDate(2026, 3, 5)) << u"Long Date"_s << u"jueves, 5 de marzo de 2026"_s;
    QTest::newRow("date and time") << QVariant(QDate(2026, 3, 5).startOfDay(Qt::UTC)) << u"dd/mm/yyyy"_s
                                   << u"05/03/2026"_s;
    QTest::newRow("invalid date") << QVariant(QDate()) << u"dd/mm/yyyy"_s << u""_s;
    QTest::newRow("date text") << QVariant(u"5-3-26"_s) << u"dd/mm/yyyy"_s << u"05/03/2026"_s;
    QTest::newRow("other text under a date mask") << QVariant(u"hoy"_s) << u"dd/mm/yyyy"_s << u"hoy"_s;
    QTest::newRow("numeric text under a date mask") << QVariant(u"46000"_s) << u"dd/mm/yyyy"_s << u"46000"_s;
}

void tst_Numbers::formatOfFields()
{
    QFETCH(const QVariant, value);
    QFETCH(const QString, mask);
    QTEST(Format(value, mask), "text");
}

void tst_Numbers::formatRefusesOtherKinds()
{
    QCOMPARE(numberThrownBy([] { return Format(QVariant(QStringList{u"1"_s, u"2"_s}), u"0"); }), 13);
    QCOMPARE(numberThrownBy([] { return Format(QVariant(7), u"dd/mm/yyyy"); }), 5);
    QCOMPARE(numberThrownBy([] { return Format(QVariant(QDate(2026, 3, 5)), u"00.00"); }), 5);
}

void tst_Numbers::roundThroughMask_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("mask");
    QTest::addColumn<double>("rounded");

    QTest::newRow("half up") << 1.005 << u"00.00"_s << 1.01;
    QTest::newRow("negative half") << -2.5 << u"0"_s << -3.0;
    QTest::newRow("third") << 1.0 / 3.0 << u"00.000000"_s << 0.333333;
    QTest::newRow("three decimals are never taken for grouping") << 1.5 << u"0.000"_s << 1.5;
    QTest::newRow("padded three decimals") << 123.4567 << u"00.000"_s << 123.457;
    QTest::newRow("to zero") << -0.001 << u"00.00"_s << 0.0;
    QTest::newRow("huge") << 1e20 << u"00.00"_s << 1e20;
}

void tst_Numbers::roundThroughMask()
{
    QFETCH(const double, value);
    QFETCH(const QString, mask);
    QFETCH(const double, rounded);
    for (const QString& locale : bothLocales()) {
        QLocale::setDefault(QLocale(locale));
        QVERIFY(roundThrough(value, mask) == rounded);
        QVERIFY(!std::signbit(roundThrough(value, mask)) || rounded < 0.0);
    }
}

void tst_Numbers::plainTextOfNumber_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text"); // with a point

    QTest::newRow("zero") << 0.0 << u"0"_s;
    QTest::newRow("minus zero") << -0.0 << u"0"_s;
    QTest::newRow("whole") << 1234567.0 << u"1234567"_s;
    QTest::newRow("negative") << -12.5 << u"-12.5"_s;
    QTest::newRow("fraction") << 38.333333 << u"38.333333"_s;
    QTest::newRow("third") << 1.0 / 3.0 << u"0.333333333333333"_s;
    QTest::newRow("two thirds") << 2.0 / 3.0 << u"0.666666666666667"_s;
    QTest::newRow("0.1 + 0.2") << 0.1 + 0.2 << u"0.3"_s;
    QTest::newRow("thirtieth") << 1.0 / 30.0 << u"3.33333333333333E-02"_s;
    QTest::newRow("0.00001 stays") << 0.00001 << u"0.00001"_s;
    QTest::newRow("fifteen decimals fit") << 1e-15 << u"0.000000000000001"_s;
    QTest::newRow("sixteen do not") << 1e-16 << u"1E-16"_s;
    QTest::newRow("0.000000000000123") << 1.23e-13 << u"0.000000000000123"_s;
    QTest::newRow("5.6789E-12") << 5.6789e-12 << u"5.6789E-12"_s;
    QTest::newRow("largest plain number") << 999999999999999.0 << u"999999999999999"_s;
    QTest::newRow("1E+15") << 1e15 << u"1E+15"_s;
    QTest::newRow("rounds up to 1E+15") << 999999999999999.9 << u"1E+15"_s;
    QTest::newRow("1.5E+15") << 1.5e15 << u"1.5E+15"_s;
    QTest::newRow("trailing zeros of a whole number") << 1e14 << u"100000000000000"_s;
    QTest::newRow("fifteen digits") << 123456789.012345 << u"123456789.012345"_s;
    QTest::newRow("sixteenth digit rounds") << 1234567890.1234567 << u"1234567890.12346"_s;
    QTest::newRow("three-digit exponent") << -1.25e-300 << u"-1.25E-300"_s;
    QTest::newRow("greatest") << std::numeric_limits<double>::max() << u"1.79769313486232E+308"_s;
    QTest::newRow("smallest") << std::numeric_limits<double>::denorm_min() << u"4.94065645841247E-324"_s;
}

void tst_Numbers::plainTextOfNumber()
{
    QFETCH(const double, value);
    QFETCH(QString, text);
    QLocale::setDefault(QLocale(u"en_US"_s));
    QCOMPARE(CStr(value), text);
    QLocale::setDefault(QLocale(u"es_AR"_s));
    QCOMPARE(CStr(value), text.replace(u'.', u','));
}

void tst_Numbers::infinityIsOverflow()
{
    QCOMPARE(numberThrownBy([] { return CStr(infinity); }), 6);
    QCOMPARE(numberThrownBy([] { return CStr(notANumber); }), 6);
    QCOMPARE(numberThrownBy([] { return roundThrough(infinity, u"0.00"); }), 6);
}

void tst_Numbers::textThatIsANumber_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");

    const QString comma = u"es_AR"_s;
    const QString point = u"en_US"_s;
    const QString blank = u"fr_FR"_s;

    QTest::newRow("comma: whole") << comma << u"123"_s << 123.0;
    QTest::newRow("comma: decimals") << comma << u"38,333333"_s << 38.333333;
    QTest::newRow("comma: grouped") << comma << u"1.234,5"_s << 1234.5;
    QTest::newRow("comma: grouped thousand") << comma << u"1.500"_s << 1500.0;
    QTest::newRow("comma: grouped twice") << comma << u"12.345.678,25"_s << 12345678.25;
    QTest::newRow("comma: 1.5 is not 15") << comma << u"1.5"_s << 1.5;
    QTest::newRow("comma: 0.500 is no thousand") << comma << u"0.500"_s << 0.5;
    QTest::newRow("comma: 00.500 is no thousand") << comma << u"00.500"_s << 0.5;
    QTest::newRow("comma: 01.500, as a mask with a point writes it") << comma << u"01.500"_s << 1.5;
    QTest::newRow("comma: 38.333333") << comma << u"38.333333"_s << 38.333333;
    QTest::newRow("comma: 1234.567, first group too long") << comma << u"1234.567"_s << 1234.567;
    QTest::newRow("comma: 1.2345, last group too long") << comma << u"1.2345"_s << 1.2345;
    QTest::newRow("comma: .5") << comma << u".5"_s << 0.5;
    QTest::newRow("comma: .500") << comma << u".500"_s << 0.5;
    QTest::newRow("comma: ,5") << comma << u",5"_s << 0.5;
    QTest::newRow("comma: 5,") << comma << u"5,"_s << 5.0;
    QTest::newRow("comma: 5.") << comma << u"5."_s << 5.0;
    QTest::newRow("comma: -1.500") << comma << u"-1.500"_s << -1500.0;
    QTest::newRow("comma: leading zeros") << comma << u"007,50"_s << 7.5;
    QTest::newRow("point: decimals") << point << u"38.333333"_s << 38.333333;
    QTest::newRow("point: grouped") << point << u"1,234.5"_s << 1234.5;
    QTest::newRow("point: grouped thousand") << point << u"1,500"_s << 1500.0;
    QTest::newRow("point: 1,5 is not 15") << point << u"1,5"_s << 1.5;
    QTest::newRow("point: 0,500 is no thousand") << point << u"0,500"_s << 0.5;
    QTest::newRow("point: 1.500 has decimals") << point << u"1.500"_s << 1.5;
    QTest::newRow("blank: narrow no-break") << blank << u"1\u202F234\u202F567,5"_s << 1234567.5;
    QTest::newRow("blank: no-break") << blank << u"1\u00A0234,5"_s << 1234.5;
    QTest::newRow("blank: plain") << blank << u"1 234,5"_s << 1234.5;
    QTest::newRow("blank: around") << blank << u" 12,5\u202F"_s << 12.5;
    QTest::newRow("wide no-break group") << u"pl_PL"_s << u"1\u00A0234,5"_s << 1234.5;
    QTest::newRow("apostrophe group") << u"de_CH"_s << u"1’234.5"_s << 1234.5;

    QTest::newRow("blanks around") << comma << u"  12,5  "_s << 12.5;
    QTest::newRow("tab and line end around") << comma << u"\t12,5\r\n"_s << 12.5;
    QTest::newRow("no-break blanks around") << comma << u"\u00A012,5\u00A0"_s << 12.5;
    QTest::newRow("minus in front") << comma << u"-12,5"_s << -12.5;
    QTest::newRow("minus in front and a blank") << comma << u"- 12,5"_s << -12.5;
    QTest::newRow("minus behind") << comma << u"12,5-"_s << -12.5;
    QTest::newRow("minus behind and a blank") << comma << u"12,5 -"_s << -12.5;
    QTest::newRow("plus in front") << comma << u"+12,5"_s << 12.5;
    QTest::newRow("plus behind") << comma << u"12,5+"_s << 12.5;
    QTest::newRow("brackets") << comma << u"(12,5)"_s << -12.5;
    QTest::newRow("brackets and blanks") << comma << u" ( 1.234,5 ) "_s << -1234.5;
    QTest::newRow("exponent") << comma << u"1,5E+15"_s << 1.5e15;
    QTest::newRow("exponent, small letter") << comma << u"1,5e3"_s << 1500.0;
    QTest::newRow("negative exponent") << comma << u"3,33333333333333E-02"_s << 0.0333333333333333;
    QTest::newRow("exponent and minus behind") << comma << u"1E2-"_s << -100.0;
    QTest::newRow("exponent behind a lone point") << comma << u"1.5E2"_s << 150.0;
    QTest::newRow("zero with a huge exponent") << comma << u"0E999999999999"_s << 0.0;
    QTest::newRow("long exponent of zeros") << comma << u"1E00000000000000000000000000002"_s << 100.0;
    QTest::newRow("greatest") << point << u"1.7976931348623157E+308"_s << std::numeric_limits<double>::max();
    QTest::newRow("seventeen digits") << point << u"0.30000000000000004"_s << 0.1 + 0.2;
}

void tst_Numbers::textThatIsANumber()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, text);
    QFETCH(const double, number);
    QLocale::setDefault(QLocale(locale));
    const double read = CDbl(text);
    QVERIFY2(read == number, qPrintable(QString::number(read, 'g', 17)));
    QVERIFY(parseNumber(text) == std::optional(number));
    QVERIFY(IsNumeric(text));
}

void tst_Numbers::textThatIsNone_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");

    const QString comma = u"es_AR"_s;
    const QString point = u"en_US"_s;
    const QString blank = u"fr_FR"_s;

    QTest::newRow("empty") << comma << u""_s;
    QTest::newRow("null") << comma << QString();
    QTest::newRow("blanks") << comma << u"   "_s;
    QTest::newRow("letters") << comma << u"abc"_s;
    QTest::newRow("unit behind") << comma << u"12 kg"_s;
    QTest::newRow("sign alone") << comma << u"-"_s;
    QTest::newRow("comma alone") << comma << u","_s;
    QTest::newRow("point alone") << comma << u"."_s;
    QTest::newRow("exponent alone") << comma << u"E5"_s;
    QTest::newRow("exponent without digits") << comma << u"1E"_s;
    QTest::newRow("exponent with a sign only") << comma << u"1E-"_s;
    QTest::newRow("exponent with decimals") << comma << u"1E2,5"_s;
    QTest::newRow("two signs") << comma << u"--5"_s;
    QTest::newRow("sign at both ends") << comma << u"-5-"_s;
    QTest::newRow("sign inside") << comma << u"5-5"_s;
    QTest::newRow("brackets and sign") << comma << u"(-5)"_s;
    QTest::newRow("sign before brackets") << comma << u"-(5)"_s;
    QTest::newRow("open bracket") << comma << u"(5"_s;
    QTest::newRow("open bracket alone") << comma << u"("_s;
    QTest::newRow("closing bracket") << comma << u"5)"_s;
    QTest::newRow("empty brackets") << comma << u"()"_s;
    QTest::newRow("doubled brackets") << comma << u"((5))"_s;
    QTest::newRow("two commas") << comma << u"1,5,3"_s;
    QTest::newRow("comma: malformed groups") << comma << u"1.23.456"_s;
    QTest::newRow("comma: short last group") << comma << u"1.234.56"_s;
    QTest::newRow("comma: long first group") << comma << u"1234.567.890"_s;
    QTest::newRow("comma: groups behind a zero") << comma << u"0.123.456"_s;
    QTest::newRow("comma: malformed group and decimals") << comma << u"1.5,25"_s;
    QTest::newRow("comma: zero group and decimals") << comma << u"0.500,25"_s;
    QTest::newRow("comma: group in the decimals") << comma << u"1,234.5"_s;
    QTest::newRow("comma: doubled group separator") << comma << u"1..500"_s;
    QTest::newRow("comma: a blank does not group") << comma << u"1 500"_s;
    QTest::newRow("point: malformed groups") << point << u"1,23,456"_s;
    QTest::newRow("point: group in the decimals") << point << u"1.234,5"_s;
    QTest::newRow("blank: malformed plain") << blank << u"1 5"_s;
    QTest::newRow("blank: malformed no-break") << blank << u"1\u202F5"_s;
    QTest::newRow("blank: doubled") << blank << u"1  234"_s;
    QTest::newRow("blank: group behind a zero") << blank << u"0 500"_s;
    QTest::newRow("currency") << comma << u"$5"_s;
    QTest::newRow("percent") << comma << u"5%"_s;
    QTest::newRow("hexadecimal") << comma << u"0x1F"_s;
    QTest::newRow("hexadecimal of the dialect") << comma << u"&H1F"_s;
    QTest::newRow("infinity") << comma << u"inf"_s;
    QTest::newRow("not a number") << comma << u"nan"_s;
    QTest::newRow("digits of another script") << comma << u"\u0661\u0662"_s;
    QTest::newRow("full-width digits") << comma << u"\uFF11"_s;
    QTest::newRow("zero character") << comma << u"1\0"_s;
    QTest::newRow("date") << comma << u"15/03/2026"_s;
    QTest::newRow("dotted date") << comma << u"15.03.2026"_s;
}

void tst_Numbers::textThatIsNone()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, text);
    QLocale::setDefault(QLocale(locale));
    QVERIFY(!parseNumber(text).has_value());
    QVERIFY(!IsNumeric(text));
    QCOMPARE(numberThrownBy([&] { return CDbl(text); }), 13);
}

void tst_Numbers::numberTooLarge_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("exponent") << u"1E+309"_s;
    QTest::newRow("negative") << u"-1E309"_s;
    QTest::newRow("huge exponent") << u"1E99999999999999999999999"_s;
    QTest::newRow("digits") << QString(400, u'9');
    QTest::newRow("small mantissa, large exponent") << QString(u"0,"_s + QString(100, u'0') + u"1E500"_s);
    QTest::newRow("just above the greatest") << u"1,7976931348623160E+308"_s;
}

void tst_Numbers::numberTooLarge()
{
    QFETCH(const QString, text);
    QVERIFY(!parseNumber(text).has_value());
    QVERIFY(!IsNumeric(text));
    QCOMPARE(numberThrownBy([&] { return CDbl(text); }), 6);
}

void tst_Numbers::numberTooSmallIsZero_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("exponent") << u"1E-400"_s;
    QTest::newRow("negative") << u"-1E-400"_s;
    QTest::newRow("huge exponent") << u"1E-99999999999999999999999"_s;
    QTest::newRow("decimals") << QString(u"0,"_s + QString(400, u'0') + u"1"_s);
    QTest::newRow("large mantissa, small exponent") << QString(QString(100, u'9') + u"E-500"_s);
    QTest::newRow("point in front") << u",1E-400"_s;
}

void tst_Numbers::numberTooSmallIsZero()
{
    QFETCH(const QString, text);
    const double read = CDbl(text);
    QVERIFY(read == 0.0);
    QVERIFY(!std::signbit(read));
}

void tst_Numbers::minusZeroIsZero()
{
    for (const QString& text : {u"-0"_s, u"0-"_s, u"(0,00)"_s, u"-0E5"_s}) {
        QVERIFY(!std::signbit(CDbl(text)));
    }
}

void tst_Numbers::longTexts()
{
    const QString blanks(10'000, u' ');
    QCOMPARE(CDbl(QString(blanks + u"5"_s + blanks)), 5.0);
    QCOMPARE(CDbl(QString(u"0,"_s + QString(10'000, u'3'))), 1.0 / 3.0);
    QCOMPARE(CDbl(QString(QString(10'000, u'0') + u"7"_s)), 7.0);
    QCOMPARE(CDbl(QString(QString(10'000, u'1') + u"E-9999"_s)), 10.0 / 9.0);
    QString grouped = u"1"_s;
    for (int group = 0; group < 3'000; ++group) {
        grouped += u".000"_s;
    }
    QCOMPARE(numberThrownBy([&] { return CDbl(grouped); }), 6);
    QCOMPARE(CDbl(QString(grouped + u"E-9000"_s)), 1.0);
    QCOMPARE(numberThrownBy([] { return CDbl(QString(10'000, u'1')); }), 6);
    QCOMPARE(numberThrownBy([] { return CDbl(QString(10'000, u'a')); }), 13);
    QCOMPARE(numberThrownBy([] { return CDbl(QString(10'000, u'(')); }), 13);
    QCOMPARE(numberThrownBy([] { return CDbl(QString(10'000, u'.')); }), 13);
}

void tst_Numbers::numbersOfSixAndEightDecimalsSurvive_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("mask");

    for (const QString& locale : bothLocales()) {
        QTest::addRow("%s, six decimals", qPrintable(locale)) << locale << 6 << u"00.000000"_s;
        QTest::addRow("%s, eight decimals", qPrintable(locale)) << locale << 8 << u"00.00000000"_s;
    }
}

void tst_Numbers::numbersOfSixAndEightDecimalsSurvive()
{
    QFETCH(const QString, locale);
    QFETCH(const int, decimals);
    QFETCH(const QString, mask);
    QLocale::setDefault(QLocale(locale));
    const double scale = std::pow(10.0, decimals);
    std::mt19937_64 random(20260315); // the same numbers at every run
    std::uniform_int_distribution<int> digitCount(1, 15);
    for (int round = 0; round < 20'000; ++round) {
        const auto limit = static_cast<qint64>(std::pow(10.0, digitCount(random))) - 1;
        const qint64 scaled = std::uniform_int_distribution<qint64>(-limit, limit)(random);
        const double value = static_cast<double>(scaled) / scale;
        const QByteArray shown = QByteArray::number(value, 'g', 17);
        QVERIFY2(CDbl(CStr(value)) == value, shown.constData());
        QVERIFY2(CDbl(Format(value, mask)) == value, shown.constData());
        QVERIFY2(roundThrough(value, mask) == value, shown.constData());
    }
}

void tst_Numbers::anyTextOfANumberIsReadBackToTheSameText()
{
    std::mt19937_64 random(7); // the same numbers at every run
    for (const QString& locale : bothLocales()) {
        QLocale::setDefault(QLocale(locale));
        for (int round = 0; round < 20'000; ++round) {
            const auto value = std::bit_cast<double>(random());
            // The greatest numbers may round up beyond the range; denormal ones have fewer than 15 digits.
            if (std::isnormal(value) && std::abs(value) < 1e308) {
                const QString text = CStr(value);
                QCOMPARE(CStr(CDbl(text)), text);
            }
        }
    }
}

void tst_Numbers::intIsTheFloor()
{
    QCOMPARE(Int(2.7), 2.0);
    QCOMPARE(Int(-2.2), -3.0);
    QCOMPARE(Int(-2.0), -2.0);
    QCOMPARE(Int(0.0), 0.0);
    QCOMPARE(Int(1e300), 1e300);
}

void tst_Numbers::integerOfText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint32>("number");

    QTest::newRow("123") << u"123"_s << 123;
    QTest::newRow("blanks around") << u" 123 "_s << 123;
    QTest::newRow("negative") << u"-7"_s << -7;
    QTest::newRow("grouped") << u"1.500"_s << 1500;
    QTest::newRow("half to the even below") << u"2,5"_s << 2;
    QTest::newRow("half to the even above") << u"3,5"_s << 4;
    QTest::newRow("negative half") << u"-2,5"_s << -2;
    QTest::newRow("half of one") << u"0,5"_s << 0;
    QTest::newRow("more than half") << u"2,51"_s << 3;
    QTest::newRow("greatest") << u"2147483647"_s << std::numeric_limits<qint32>::max();
    QTest::newRow("greatest and less than half") << u"2147483647,4"_s << std::numeric_limits<qint32>::max();
    QTest::newRow("least") << u"-2147483648"_s << std::numeric_limits<qint32>::min();
    QTest::newRow("least and a half") << u"-2147483648,5"_s << std::numeric_limits<qint32>::min();
}

void tst_Numbers::integerOfText()
{
    QFETCH(const QString, text);
    QTEST(CLng(text), "number");
}

void tst_Numbers::integerErrors_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("error");

    QTest::newRow("empty") << u""_s << 13;
    QTest::newRow("letters") << u"abc"_s << 13;
    QTest::newRow("above the range") << u"2147483648"_s << 6;
    QTest::newRow("rounds above the range") << u"2147483647,5"_s << 6;
    QTest::newRow("below the range") << u"-2147483649"_s << 6;
    QTest::newRow("too large for a double") << u"1E999"_s << 6;
}

void tst_Numbers::integerErrors()
{
    QFETCH(const QString, text);
    QFETCH(const int, error);
    QCOMPARE(numberThrownBy([&] { return CLng(text); }), error);
}

QTEST_GUILESS_MAIN(tst_Numbers)
#include "tst_Numbers.moc"
