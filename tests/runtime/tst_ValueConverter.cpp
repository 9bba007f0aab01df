#include <runtime/ValueConverter.h>

#include <QDate>
#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA::runtime;

class tst_ValueConverter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void number_data();
    void number();
    void text_data();
    void text();
};

void tst_ValueConverter::number_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<double>("number");

    QTest::newRow("Null") << u"es_AR"_s << QVariant() << 0.0;
    QTest::newRow("Null object") << u"es_AR"_s << QVariant::fromValue(nullptr) << 0.0;
    QTest::newRow("empty text") << u"es_AR"_s << QVariant(u""_s) << 0.0;
    QTest::newRow("blanks") << u"es_AR"_s << QVariant(u"  "_s) << 0.0;
    QTest::newRow("non-numeric text") << u"es_AR"_s << QVariant(u"12 kg"_s) << 0.0;
    QTest::newRow("number too large") << u"es_AR"_s << QVariant(u"1E+400"_s) << 0.0;
    QTest::newRow("comma text") << u"es_AR"_s << QVariant(u"38,333333"_s) << 38.333333;
    QTest::newRow("comma text with point") << u"es_AR"_s << QVariant(u"38.333333"_s) << 38.333333;
    QTest::newRow("grouped comma text") << u"es_AR"_s << QVariant(u"1.234,5"_s) << 1234.5;
    QTest::newRow("point text") << u"en_US"_s << QVariant(u"38.333333"_s) << 38.333333;
    QTest::newRow("grouped point text") << u"en_US"_s << QVariant(u"1,234.5"_s) << 1234.5;
    QTest::newRow("no-break blanks around") << u"es_AR"_s << QVariant(u"\u00A012,5\u202F"_s) << 12.5;
    QTest::newRow("no-break blank inside") << u"es_AR"_s << QVariant(u"1\u00A0234,5"_s) << 0.0;
    QTest::newRow("no-break blank that groups") << u"fr_FR"_s << QVariant(u"1\u00A0234,5"_s) << 1234.5;
    QTest::newRow("negative text") << u"es_AR"_s << QVariant(u"12,5-"_s) << -12.5;
    QTest::newRow("int") << u"es_AR"_s << QVariant(-7) << -7.0;
    QTest::newRow("qlonglong") << u"es_AR"_s << QVariant(Q_INT64_C(5'000'000'000)) << 5e9;
    QTest::newRow("double") << u"es_AR"_s << QVariant(0.1) << 0.1;
    QTest::newRow("True") << u"es_AR"_s << QVariant(true) << -1.0;
    QTest::newRow("False") << u"es_AR"_s << QVariant(false) << 0.0;
    QTest::newRow("date") << u"es_AR"_s << QVariant(QDate(2026, 3, 5)) << 0.0;
}

void tst_ValueConverter::number()
{
    QFETCH(const QString, locale);
    QFETCH(const QVariant, value);
    QFETCH(const double, number);
    QLocale::setDefault(QLocale(locale));
    const double converted = toNumber(value);
    QVERIFY2(converted == number, qPrintable(QString::number(converted, 'g', 17)));
}

void tst_ValueConverter::text_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("Null") << u"es_AR"_s << QVariant() << u""_s;
    QTest::newRow("Null object") << u"es_AR"_s << QVariant::fromValue(nullptr) << u""_s;
    QTest::newRow("text as it is") << u"es_AR"_s << QVariant(u" 1.5 ñ "_s) << u" 1.5 ñ "_s;
    QTest::newRow("double, comma") << u"es_AR"_s << QVariant(38.333333) << u"38,333333"_s;
    QTest::newRow("double, point") << u"en_US"_s << QVariant(38.333333) << u"38.333333"_s;
    QTest::newRow("whole double") << u"es_AR"_s << QVariant(1234567.0) << u"1234567"_s;
    QTest::newRow("int") << u"es_AR"_s << QVariant(-1) << u"-1"_s;
    QTest::newRow("long integer keeps every digit")
        << u"es_AR"_s << QVariant(Q_INT64_C(1234567890123456789)) << u"1234567890123456789"_s;
    QTest::newRow("True") << u"es_AR"_s << QVariant(true) << u"-1"_s;
    QTest::newRow("False") << u"es_AR"_s << QVariant(false) << u"0"_s;
    QTest::newRow("date") << u"en_US"_s << QVariant(QDate(2026, 3, 5)) << u"05/03/2026"_s;
    QTest::newRow("date and time") << u"es_AR"_s << QVariant(QDate(2026, 3, 5).startOfDay(Qt::UTC)) << u"05/03/2026"_s;
}

void tst_ValueConverter::text()
{
    QFETCH(const QString, locale);
    QFETCH(const QVariant, value);
    QLocale::setDefault(QLocale(locale));
    QTEST(toText(value), "text");
}

QTEST_GUILESS_MAIN(tst_ValueConverter)
#include "tst_ValueConverter.moc"
