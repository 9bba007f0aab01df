#include "AccessCopy.h"

#include <QtTest>

#include <cmath>
#include <limits>
#include <oveldra-datos/AccessCells.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::data;
using dialect::Value;

namespace {

template <size_t size>
std::optional<QString> textOf(const unsigned char (&bytes)[size])
{
    return accessText(Bytes(bytes, size));
}

/// The cell that the bytes of a number mean.
template <typename Number>
QString readNumber(AccessKind kind, Number number, Value& value)
{
    const QByteArray bytes = AccessCopy::littleEndian(number);
    return readAccessCell(kind, {reinterpret_cast<const unsigned char*>(bytes.constData()), sizeof number}, 0, value);
}

QString readDate(double moment, Value& value)
{
    return readNumber(AccessKind::Date, moment, value);
}

} // namespace

class tst_AccessCells : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void compressedTexts()
    {
        QCOMPARE(textOf({0xFF, 0xFE, 'C', 'o', 0xD1, 0xFA}), u"CoÑú"_s);
        QCOMPARE(textOf({0xFF, 0xFE, 'a', 0, 0x13, 0x20, 0, 'b'}), u"a–b"_s); // a dash between two runs of bytes
        QCOMPARE(textOf({0xFF, 0xFE}), QString());
        QCOMPARE(textOf({'a', 0, 0, 0, 'b', 0}), QString(u"a"_s + QChar(QChar::Null) + u'b'));
        QVERIFY(!textOf({'a', 0, 'b'}));
        QVERIFY(!textOf({0xFF, 0xFE, 0, 0x13}));
    }

    void numbersOfEveryKind()
    {
        Value value;
        QVERIFY(readNumber(AccessKind::Byte, quint8{200}, value).isNull());
        QCOMPARE(value.number, 200.0);
        QVERIFY(readNumber(AccessKind::Short, qint16{-32768}, value).isNull());
        QCOMPARE(value.number, -32768.0);
        QVERIFY(readNumber(AccessKind::Long, qint32{-2147483647}, value).isNull());
        QCOMPARE(value.number, -2147483647.0);
        QVERIFY(readNumber(AccessKind::Single, 0.1F, value).isNull());
        QVERIFY(value.number == double{0.1F});
        QVERIFY(readNumber(AccessKind::Currency, qint64{-12345678}, value).isNull());
        QVERIFY(value.number == -1234.5678);
        QVERIFY(readNumber(AccessKind::Currency, std::numeric_limits<qint64>::min(), value).isNull());
        QVERIFY(value.number == -922337203685477.5808);
        // Dividing would round twice here: the number itself has more digits than a double.
        QVERIFY(readNumber(AccessKind::Currency, qint64{9007199254740993}, value).isNull());
        QVERIFY(value.number == 900719925474.0993);
    }

    void decimals()
    {
        QByteArray bytes(17, '\0');
        bytes.replace(13, 4, AccessCopy::littleEndian(quint32{1234567}));
        Value value;
        const auto read = [&](int scale) {
            return readAccessCell(AccessKind::Decimal, {reinterpret_cast<const unsigned char*>(bytes.constData()), 17},
                                  scale, value);
        };
        QVERIFY(read(3).isNull());
        QVERIFY(value.number == 1234.567);
        bytes[0] = '\x80';
        bytes.replace(9, 4, AccessCopy::littleEndian(quint32{1}));
        QVERIFY(read(0).isNull());
        QVERIFY(value.number == -4296201863.0);
    }

    void numbersThatAreNone()
    {
        Value value;
        QCOMPARE(readNumber(AccessKind::Double, std::numeric_limits<double>::quiet_NaN(), value),
                 u"el número no es finito"_s);
        QCOMPARE(readNumber(AccessKind::Single, std::numeric_limits<float>::infinity(), value),
                 u"el número no es finito"_s);
        QCOMPARE(readNumber(AccessKind::Double, qint32{1}, value), u"el dato está dañado"_s);
    }

    void datesAreDays()
    {
        Value value;
        QVERIFY(readDate(0, value).isNull());
        QCOMPARE(value.date, QDate(1899, 12, 30));
        QVERIFY(readDate(-657434, value).isNull());
        QCOMPARE(value.date, QDate(100, 1, 1));
        QVERIFY(readDate(2958465, value).isNull());
        QCOMPARE(value.date, QDate(9999, 12, 31));
        QVERIFY(readDate(45423.000001, value).isNull()); // a tenth of a second
        QCOMPARE(value.date, QDate(2024, 5, 11));
        QVERIFY(readDate(45422.999999, value).isNull());
        QCOMPARE(value.date, QDate(2024, 5, 11));
        QCOMPARE(readDate(45423.5, value), u"la fecha tiene hora: 11/05/2024 12:00:00"_s);
        QCOMPARE(readDate(-1.25, value), u"la fecha tiene hora: 29/12/1899 06:00:00"_s);
        QCOMPARE(readDate(2958466, value), u"la fecha es imposible"_s);
        QCOMPARE(readDate(std::numeric_limits<double>::quiet_NaN(), value), u"la fecha es imposible"_s);
    }
};

QTEST_GUILESS_MAIN(tst_AccessCells)
#include "tst_AccessCells.moc"
