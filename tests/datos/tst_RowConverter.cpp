#include "doubles/ThrownError.h"

#include <store/Schema.h>

#include <QtTest>

#include <cmath>
#include <limits>
#include <oveldra-datos/RowConverter.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::data;
using dialect::Value;

namespace {

dialect::Table tableOf(QStringView name)
{
    for (const store::TableSchema& schema : store::schemaOf(Database::Inputs)) {
        if (schema.table.name == name) {
            return schema.table;
        }
    }
    return {};
}

Value text(const QString& value)
{
    return Value::ofText(value);
}

Value number(double value)
{
    return Value::ofNumber(value);
}

/// Why a row with just that cell cannot be kept; null when it can.
QString refusalOf(QStringView table, const QString& column, const Value& cell)
{
    RowConverter converter(tableOf(table), {column}, {});
    std::vector<Value> values;
    return converter.convert({{cell}, {}}, 1, values);
}

} // namespace

class tst_RowConverter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Argentina)); }

    void textsThatCannotBeKept()
    {
        const QString longest(17, u'Ñ');
        QCOMPARE(refusalOf(u"INS", u"INTDCL"_s, text(longest)), QString());
        QCOMPARE(refusalOf(u"INS", u"INTDCL"_s, text(longest + u'x')),
                 u"INTDCL: el texto tiene más de 17 caracteres: «%1x»"_s.arg(longest));
        QCOMPARE(refusalOf(u"CAT", u"CATNRO"_s, text(u"a"_s + QChar(QChar::Null) + u'b')),
                 u"CATNRO: el texto tiene un carácter nulo"_s);
        QCOMPARE(refusalOf(u"CAT", u"CATNRO"_s, text(QString(QChar(0xD83D)))),
                 u"CATNRO: el texto tiene caracteres que no existen"_s);
        QCOMPARE(refusalOf(u"CAT", u"CATNRO"_s, text(u"– Ø 😀"_s)), QString());
    }

    void numbersThatCannotBeKept()
    {
        QCOMPARE(refusalOf(u"INS", u"ARTITM"_s, number(2147483647)), QString());
        QCOMPARE(refusalOf(u"INS", u"ARTITM"_s, number(2147483648)), u"ARTITM: el número no cabe: «2147483648»"_s);
        QCOMPARE(refusalOf(u"INS", u"ARTITM"_s, number(1.5)), u"ARTITM: el número no es entero: «1,5»"_s);
        QCOMPARE(refusalOf(u"INS", u"ARTITM"_s, text(u"007"_s)), QString());
        QCOMPARE(refusalOf(u"INS", u"ARTCAT"_s, text(u"siete"_s)), u"ARTCAT: no es un número: «siete»"_s);
        QCOMPARE(refusalOf(u"INS", u"ARTCAT"_s, number(std::numeric_limits<double>::infinity())),
                 u"ARTCAT: el número no es finito"_s);
        QCOMPARE(refusalOf(u"INS", u"ARTCAT"_s, number(std::nan(""))), u"ARTCAT: el número no es finito"_s);
    }

    void datesThatCannotBeKept()
    {
        QCOMPARE(refusalOf(u"DIP", u"EXTFOF"_s, text(u"31/12/2024"_s)), QString());
        QCOMPARE(refusalOf(u"DIP", u"EXTFOF"_s, text(u"31/02/2024"_s)),
                 u"EXTFOF: la fecha es imposible: «31/02/2024»"_s);
        QCOMPARE(refusalOf(u"DIP", u"EXTFOF"_s, number(45423)), QString());
        QCOMPARE(refusalOf(u"DIP", u"EXTFOF"_s, number(45423.5)), u"EXTFOF: la fecha tiene hora: «45423,5»"_s);
        QCOMPARE(refusalOf(u"DIP", u"EXTFOF"_s, number(3e6)), u"EXTFOF: la fecha es imposible: «3000000»"_s);
    }

    void aTableWithoutItsKeyIsRefused()
    {
        const auto error = doubles::thrownBy([] {
            static_cast<void>(RowConverter(tableOf(u"PRD"), {u"CATNRO"_s, u"PRDDES"_s}, {0}));
        });
        QVERIFY(error);
        QCOMPARE(error->description(), u"La tabla PRD del origen no tiene la columna PRDNRO, que es de su clave."_s);
    }
};

QTEST_GUILESS_MAIN(tst_RowConverter)
#include "tst_RowConverter.moc"
