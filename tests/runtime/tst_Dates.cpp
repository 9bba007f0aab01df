#include "doubles/ThrownError.h"

#include <runtime/Dates.h>

#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA::runtime;
using oVELDRA::doubles::numberThrownBy;

class tst_Dates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void textThatSpellsADate_data();
    void textThatSpellsADate();
    void textThatSpellsNone_data();
    void textThatSpellsNone();
    void monthNames_data();
    void monthNames();
    void policyDoesNotFollowTheLocale();
    void everyDayComesBackFromItsShortForm();
    void longTexts();
    void formatDate_data();
    void formatDate();
    void formatDateRefusesOtherMasks();
};

void tst_Dates::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_Dates::textThatSpellsADate_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDate>("date");

    const QDate march15(2026, 3, 15);
    QTest::newRow("slashes") << u"15/03/2026"_s << march15;
    QTest::newRow("hyphens") << u"15-03-2026"_s << march15;
    QTest::newRow("points") << u"15.03.2026"_s << march15;
    QTest::newRow("blanks") << u"15 03 2026"_s << march15;
    QTest::newRow("separators with blanks around") << u"15 / 03 /  2026"_s << march15;
    QTest::newRow("blanks around") << u"  15/03/2026 "_s << march15;
    QTest::newRow("single digits") << u"5/3/2026"_s << QDate(2026, 3, 5);
    QTest::newRow("day before month when both fit") << u"03/04/2026"_s << QDate(2026, 4, 3);
    QTest::newRow("swapped when that is the only reading") << u"02/25/2026"_s << QDate(2026, 2, 25);
    QTest::newRow("swapped with a short year") << u"12/31/99"_s << QDate(1999, 12, 31);
    QTest::newRow("year 00") << u"15/03/00"_s << QDate(2000, 3, 15);
    QTest::newRow("year 29") << u"15/03/29"_s << QDate(2029, 3, 15);
    QTest::newRow("year 30") << u"15/03/30"_s << QDate(1930, 3, 15);
    QTest::newRow("year 99") << u"15/03/99"_s << QDate(1999, 3, 15);
    QTest::newRow("day first even when it could be a short year") << u"26-03-15"_s << QDate(2015, 3, 26);
    QTest::newRow("leap day") << u"29/02/2024"_s << QDate(2024, 2, 29);
    QTest::newRow("leap day of a century") << u"29/02/2000"_s << QDate(2000, 2, 29);
    QTest::newRow("first year") << u"01/01/0100"_s << QDate(100, 1, 1);
    QTest::newRow("last day") << u"31/12/9999"_s << QDate(9999, 12, 31);
    QTest::newRow("ISO") << u"2026-03-15"_s << march15;
    QTest::newRow("ISO with single digits") << u"2026-3-5"_s << QDate(2026, 3, 5);
    QTest::newRow("year first with slashes") << u"2026/03/15"_s << march15;
    QTest::newRow("Spanish month") << u"15 marzo 2026"_s << march15;
    QTest::newRow("Spanish month with de") << u"15 de marzo de 2026"_s << march15;
    QTest::newRow("Spanish month with del") << u"15 DE Marzo del 2026"_s << march15;
    QTest::newRow("three letters") << u"15-mar-26"_s << march15;
    QTest::newRow("three letters and a point") << u"15 ene. 2026"_s << QDate(2026, 1, 15);
    QTest::newRow("English month first") << u"March 15 2026"_s << march15;
    QTest::newRow("any letter case") << u"15-DiC-2026"_s << QDate(2026, 12, 15);
}

void tst_Dates::textThatSpellsADate()
{
    QFETCH(const QString, text);
    QFETCH(const QDate, date);
    QCOMPARE(parseDate(text), std::optional(date));
    QVERIFY(IsDate(text));
    QCOMPARE(DateValue(text), date);
}

void tst_Dates::textThatSpellsNone_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << u""_s;
    QTest::newRow("null") << QString();
    QTest::newRow("blanks") << u"   "_s;
    QTest::newRow("word") << u"hoy"_s;
    QTest::newRow("31 February") << u"31/02/2026"_s;
    QTest::newRow("30 February swapped") << u"02/30/2026"_s;
    QTest::newRow("29 February of a common year") << u"29/02/2025"_s;
    QTest::newRow("29 February of a common century") << u"29/02/1900"_s;
    QTest::newRow("29 February of a common year swapped") << u"02/29/2025"_s;
    QTest::newRow("31 April") << u"31/04/2026"_s;
    QTest::newRow("neither is a month") << u"13/13/2026"_s;
    QTest::newRow("day 0") << u"00/03/2026"_s;
    QTest::newRow("month 0") << u"15/00/2026"_s;
    QTest::newRow("ISO with month 13") << u"2026-13-01"_s;
    QTest::newRow("ISO is never swapped") << u"2026-25-02"_s;
    QTest::newRow("no year") << u"1/2"_s;
    QTest::newRow("year of one digit") << u"1/2/6"_s;
    QTest::newRow("year of three digits") << u"1/2/026"_s;
    QTest::newRow("year of five digits") << u"1/2/02026"_s;
    QTest::newRow("year before 100") << u"15/03/0026"_s;
    QTest::newRow("day of three digits") << u"015/03/2026"_s;
    QTest::newRow("a time behind") << u"15/03/2026 10:30"_s;
    QTest::newRow("an hour behind") << u"15/03/2026 10"_s;
    QTest::newRow("ISO with a time") << u"2026-03-15T10:30:00"_s;
    QTest::newRow("a time alone") << u"10:30:00"_s;
    QTest::newRow("digits alone") << u"15032026"_s;
    QTest::newRow("a number") << u"46000"_s;
    QTest::newRow("doubled separator") << u"15//03/2026"_s;
    QTest::newRow("trailing separator") << u"15/03/2026/"_s;
    QTest::newRow("leading separator") << u"/15/03/2026"_s;
    QTest::newRow("negative") << u"-15/03/2026"_s;
    QTest::newRow("other separator") << u"15_03_2026"_s;
    QTest::newRow("comma") << u"15,03,2026"_s;
    QTest::newRow("no separator before the name") << u"15marzo2026"_s;
    QTest::newRow("misspelt month") << u"15 mrzo 2026"_s;
    QTest::newRow("two letters") << u"15 ma 2026"_s;
    QTest::newRow("part of a name") << u"15 setiem 2026"_s;
    QTest::newRow("two names") << u"marzo abril 2026"_s;
    QTest::newRow("name as year") << u"15/03/marzo"_s;
    QTest::newRow("de without a month") << u"15 de 2026"_s;
    QTest::newRow("de without blanks") << u"15 de/marzo/2026"_s;
    QTest::newRow("impossible day of a named month") << u"31 de abril de 2026"_s;
    QTest::newRow("digits of another script") << u"\u0661\u0665/\u0660\u0663/\u0662\u0660\u0662\u0666"_s;
}

void tst_Dates::textThatSpellsNone()
{
    QFETCH(const QString, text);
    QCOMPARE(parseDate(text), std::nullopt);
    QVERIFY(!IsDate(text));
    QCOMPARE(numberThrownBy([&] { return DateValue(text); }), 13);
}

void tst_Dates::monthNames_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<int>("month");

    QTest::newRow("January") << QStringList{u"enero"_s, u"ene"_s, u"january"_s, u"jan"_s} << 1;
    QTest::newRow("February") << QStringList{u"febrero"_s, u"feb"_s, u"february"_s} << 2;
    QTest::newRow("March") << QStringList{u"marzo"_s, u"mar"_s, u"march"_s} << 3;
    QTest::newRow("April") << QStringList{u"abril"_s, u"abr"_s, u"april"_s, u"apr"_s} << 4;
    QTest::newRow("May") << QStringList{u"mayo"_s, u"may"_s} << 5;
    QTest::newRow("June") << QStringList{u"junio"_s, u"jun"_s, u"june"_s} << 6;
    QTest::newRow("July") << QStringList{u"julio"_s, u"jul"_s, u"july"_s} << 7;
    QTest::newRow("August") << QStringList{u"agosto"_s, u"ago"_s, u"august"_s, u"aug"_s} << 8;
    QTest::newRow("September") << QStringList{u"septiembre"_s, u"setiembre"_s, u"sep"_s,
                                              u"set"_s,        u"sept"_s,      u"september"_s}
                               << 9;
    QTest::newRow("October") << QStringList{u"octubre"_s, u"oct"_s, u"october"_s} << 10;
    QTest::newRow("November") << QStringList{u"noviembre"_s, u"nov"_s, u"november"_s} << 11;
    QTest::newRow("December") << QStringList{u"diciembre"_s, u"dic"_s, u"december"_s, u"dec"_s} << 12;
}

void tst_Dates::monthNames()
{
    QFETCH(const QStringList, names);
    QFETCH(const int, month);
    for (const QString& name : names) {
        QCOMPARE(parseDate(QString(u"7 "_s + name + u" 2026"_s)), std::optional(QDate(2026, month, 7)));
        QCOMPARE(parseDate(QString(u"7-"_s + name.toUpper() + u"-26"_s)), std::optional(QDate(2026, month, 7)));
    }
}

void tst_Dates::policyDoesNotFollowTheLocale()
{
    for (const QString& locale : {u"es_AR"_s, u"en_US"_s, u"ja_JP"_s}) {
        QLocale::setDefault(QLocale(locale));
        QCOMPARE(parseDate(u"03/04/2026"), std::optional(QDate(2026, 4, 3)));
        QCOMPARE(parseDate(u"3 enero 2026"), std::optional(QDate(2026, 1, 3)));
        QCOMPARE(parseDate(u"3 january 2026"), std::optional(QDate(2026, 1, 3)));
    }
}

void tst_Dates::everyDayComesBackFromItsShortForm()
{
    for (QDate date(1899, 12, 28); date < QDate(2101, 1, 1); date = date.addDays(1)) {
        QCOMPARE(parseDate(FormatDate(date, u"dd/mm/yyyy")), std::optional(date));
        QCOMPARE(parseDate(date.toString(Qt::ISODate)), std::optional(date));
    }
}

void tst_Dates::longTexts()
{
    const QString blanks(10'000, u' ');
    QCOMPARE(parseDate(QString(blanks + u"15"_s + blanks + u"/03/2026"_s + blanks)), std::optional(QDate(2026, 3, 15)));
    QCOMPARE(parseDate(QString(10'000, u'1')), std::nullopt);
    QCOMPARE(parseDate(QString(QString(10'000, u'1') + u"/03/2026"_s)), std::nullopt);
    QCOMPARE(parseDate(QString(10'000, u'a')), std::nullopt);
}

void tst_Dates::formatDate_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QString>("text");

    const QDate date(2026, 3, 5);
    QTest::newRow("short") << u"es_AR"_s << date << u"dd/mm/yyyy"_s << u"05/03/2026"_s;
    QTest::newRow("short, slashes whatever the locale writes")
        << u"de_DE"_s << date << u"dd/mm/yyyy"_s << u"05/03/2026"_s;
    QTest::newRow("short under en_US") << u"en_US"_s << date << u"dd/mm/yyyy"_s << u"05/03/2026"_s;
    QTest::newRow("short of an early year") << u"es_AR"_s << QDate(987, 12, 31) << u"dd/mm/yyyy"_s << u"31/12/0987"_s;
    QTest::newRow("long") << u"es_AR"_s << date << u"Long Date"_s << u"jueves, 5 de marzo de 2026"_s;
    QTest::newRow("long under en_US") << u"en_US"_s << date << u"Long Date"_s << u"Thursday, March 5, 2026"_s;
    QTest::newRow("masks in any letter case") << u"es_AR"_s << date << u"DD/MM/YYYY"_s << u"05/03/2026"_s;
    QTest::newRow("invalid date, short") << u"es_AR"_s << QDate() << u"dd/mm/yyyy"_s << u""_s;
    QTest::newRow("invalid date, long") << u"es_AR"_s << QDate() << u"Long Date"_s << u""_s;
}

void tst_Dates::formatDate()
{
    QFETCH(const QString, locale);
    QFETCH(const QDate, date);
    QFETCH(const QString, mask);
    QLocale::setDefault(QLocale(locale));
    QTEST(FormatDate(date, mask), "text");
}

void tst_Dates::formatDateRefusesOtherMasks()
{
    for (const QString& mask : {u"00.00"_s, u""_s, u"yyyy-mm-dd"_s, u"dd/mm/yyyy "_s}) {
        QVERIFY(!isDateMask(mask));
        QCOMPARE(numberThrownBy([&] { return FormatDate(QDate(2026, 3, 5), mask); }), 5);
        QCOMPARE(numberThrownBy([&] { return FormatDate(QDate(), mask); }), 5);
    }
}

QTEST_GUILESS_MAIN(tst_Dates)
#include "tst_Dates.moc"
