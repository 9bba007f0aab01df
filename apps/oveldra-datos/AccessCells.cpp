#include "AccessCells.h"

#include <QDateTime>

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Value;

namespace {

constexpr int currencyScale = 4;

// What Access counts days from, and the first and last day that it knows (the years 100 and 9999).
constexpr QDate dayZero()
{
    return QDate::fromJulianDay(2415019);
}
constexpr double firstDay = -657434;
constexpr double lastDay = 2958465;

template <typename Number>
Number littleEndian(Bytes bytes)
{
    std::array<unsigned char, sizeof(Number)> raw{};
    std::copy_n(bytes.begin(), raw.size(), raw.begin());
    if constexpr (Q_BYTE_ORDER == Q_BIG_ENDIAN) {
        std::reverse(raw.begin(), raw.end());
    }
    Number number{};
    std::memcpy(&number, raw.data(), raw.size());
    return number;
}

size_t sizeOf(AccessKind kind)
{
    switch (kind) {
    case AccessKind::Byte:
        return 1;
    case AccessKind::Short:
        return 2;
    case AccessKind::Long:
    case AccessKind::Single:
        return 4;
    case AccessKind::Currency:
    case AccessKind::Double:
    case AccessKind::Date:
        return 8;
    default:
        return 17;
    }
}

/// Whole number of 128 bits in four words, the highest first, to decimal digits.
QByteArray digitsOf(std::array<quint32, 4> words)
{
    QByteArray digits;
    const auto isZero = [&words] { return std::all_of(words.begin(), words.end(), [](quint32 w) { return w == 0; }); };
    do {
        quint64 rest = 0;
        for (quint32& word : words) {
            const quint64 part = (rest << 32) | word;
            word = static_cast<quint32>(part / 10);
            rest = part % 10;
        }
        digits.prepend(static_cast<char>('0' + rest));
    } while (!isZero());
    return digits;
}

/// The double nearest to a decimal number. Reading its text is the one way that rounds only once.
double nearestDouble(bool negative, std::array<quint32, 4> words, int scale)
{
    const QByteArray text = (negative ? "-" : "") + digitsOf(words) + 'e' + QByteArray::number(-scale);
    double number = 0;
    std::from_chars(text.constData(), text.constData() + text.size(), number);
    return number;
}

double currency(Bytes bytes)
{
    const auto whole = littleEndian<qint64>(bytes);
    const bool negative = whole < 0;
    const quint64 size = negative ? quint64{0} - static_cast<quint64>(whole) : static_cast<quint64>(whole);
    return nearestDouble(negative, {0, 0, static_cast<quint32>(size >> 32), static_cast<quint32>(size)}, currencyScale);
}

double decimal(Bytes bytes, int scale)
{
    std::array<quint32, 4> words{};
    for (size_t i = 0; i < words.size(); ++i) {
        words[i] = littleEndian<quint32>(bytes.subspan(1 + 4 * i));
    }
    return nearestDouble((bytes[0] & 0x80U) != 0, words, scale);
}

QString readReal(double number, Value& value)
{
    if (!std::isfinite(number)) {
        return u"el número no es finito"_s;
    }
    value = Value::ofNumber(number);
    return {};
}

QString readDate(double moment, Value& value)
{
    constexpr double secondsOfDay = 86400;
    const double day = std::trunc(moment);
    // Before day zero the time still counts forwards: -1.25 is six in the morning of the day before. Access knows
    // seconds; what is less is the noise of its arithmetic.
    const double seconds = std::round(std::abs(moment - day) * secondsOfDay);
    if (!(day >= firstDay && day <= lastDay)) {
        return u"la fecha es imposible"_s;
    }
    const QDate date = dayZero().addDays(static_cast<qint64>(day));
    if (seconds > 0 && seconds < secondsOfDay) {
        const QTime time = QTime(0, 0).addSecs(static_cast<int>(seconds));
        return u"la fecha tiene hora: %1 %2"_s.arg(date.toString(u"dd/MM/yyyy"_s), time.toString(u"HH:mm:ss"_s));
    }
    value = Value::ofDate(seconds == 0 ? date : date.addDays(1));
    return {};
}

} // namespace

std::optional<QString> accessText(Bytes bytes)
{
    const bool compressed = bytes.size() >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE;
    QString text;
    text.reserve(static_cast<qsizetype>(bytes.size()));
    bool single = compressed;
    size_t at = compressed ? 2 : 0;
    while (at < bytes.size()) {
        if (compressed && bytes[at] == 0) { // from here on, or no longer, one byte a character
            single = !single;
            ++at;
        } else if (single) {
            text.append(QLatin1Char(static_cast<char>(bytes[at++])));
        } else if (at + 1 < bytes.size()) {
            text.append(QChar(bytes[at], bytes[at + 1]));
            at += 2;
        } else {
            return std::nullopt;
        }
    }
    return text;
}

QString readAccessCell(AccessKind kind, Bytes bytes, int scale, Value& value)
{
    if (bytes.size() < sizeOf(kind)) {
        return u"el dato está dañado"_s;
    }
    switch (kind) {
    case AccessKind::Byte:
        value = Value::ofNumber(bytes[0]);
        break;
    case AccessKind::Short:
        value = Value::ofNumber(littleEndian<qint16>(bytes));
        break;
    case AccessKind::Long:
        value = Value::ofNumber(littleEndian<qint32>(bytes));
        break;
    case AccessKind::Currency:
        value = Value::ofNumber(currency(bytes));
        break;
    case AccessKind::Decimal:
        value = Value::ofNumber(decimal(bytes, scale));
        break;
    case AccessKind::Single:
        return readReal(littleEndian<float>(bytes), value);
    case AccessKind::Date:
        return readDate(littleEndian<double>(bytes), value);
    default:
        return readReal(littleEndian<double>(bytes), value);
    }
    return {};
}

} // namespace oVELDRA::data
