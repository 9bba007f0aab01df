#include "Numbers.h"

#include "Dates.h"
#include "ValueConverter.h"

#include <oVELDRA/RuntimeError.h>

#include <QLocale>
#include <QMetaType>
#include <QVarLengthArray>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <system_error>

namespace oVELDRA::runtime {

namespace {

constexpr int invalidCall = 5;
constexpr int overflow = 6;
constexpr int typeMismatch = 13;

/// The decimal text of a number: digits with the decimal point behind the first one, times ten to an exponent.
///
/// Everything that is printed starts from these 15 digits and not from the binary value; that makes 1.005 a tie.
class Decimal
{
public:
    explicit Decimal(double value);

    /// Rounds half away from zero at so many decimals.
    void roundAt(qsizetype decimals);

    [[nodiscard]] bool isZero() const { return m_digits.front() == '0'; }
    [[nodiscard]] bool isNegative() const { return m_negative && !isZero(); }
    [[nodiscard]] int exponent() const { return m_exponent; }
    [[nodiscard]] int significantDigits() const;
    /// Digits in front of the decimal point, without padding.
    [[nodiscard]] qsizetype wholeWidth() const { return isZero() ? 0 : std::max(m_exponent + 1, 0); }
    /// The digit of the given weight (0 units, 1 tens, -1 tenths); beyond the digits that are kept there are zeros.
    [[nodiscard]] char16_t digitOfWeight(qsizetype weight) const;

private:
    static constexpr int precision = 15;

    std::array<char, precision> m_digits{};
    int m_exponent = 0;
    bool m_negative = false;
};

Decimal::Decimal(double value) : m_negative(std::signbit(value))
{
    if (!std::isfinite(value)) {
        throw RuntimeError(overflow);
    }
    std::array<char, 32> text{}; // "d.dddddddddddddde+xx"
    const std::to_chars_result written = std::to_chars(text.data(), text.data() + text.size(), std::abs(value),
                                                       std::chars_format::scientific, precision - 1);
    const char* const fraction = text.data() + 2;
    const char* const exponent = fraction + precision;
    m_digits.front() = text.front();
    std::copy_n(fraction, precision - 1, m_digits.begin() + 1);
    std::from_chars(exponent + 1, written.ptr, m_exponent);
    if (*exponent == '-') {
        m_exponent = -m_exponent;
    }
}

void Decimal::roundAt(qsizetype decimals)
{
    const qsizetype kept = m_exponent + 1 + decimals;
    if (kept >= precision) {
        return;
    }
    if (kept < 0) {
        m_digits.fill('0');
        return;
    }
    auto index = static_cast<std::size_t>(kept);
    const bool up = m_digits[index] >= '5';
    std::fill(m_digits.begin() + kept, m_digits.end(), '0');
    if (!up) {
        return;
    }
    while (index > 0) {
        --index;
        if (m_digits[index] != '9') {
            ++m_digits[index];
            return;
        }
        m_digits[index] = '0';
    }
    m_digits.front() = '1';
    ++m_exponent;
}

int Decimal::significantDigits() const
{
    int count = precision;
    while (count > 1 && m_digits[static_cast<std::size_t>(count - 1)] == '0') {
        --count;
    }
    return count;
}

char16_t Decimal::digitOfWeight(qsizetype weight) const
{
    const qsizetype index = m_exponent - weight;
    return index >= 0 && index < precision ? static_cast<char16_t>(m_digits[static_cast<std::size_t>(index)]) : u'0';
}

/// Plain notation with at least `wholeWidth` digits in front of the point and exactly `decimals` behind it.
QString plainText(const Decimal& number, qsizetype wholeWidth, bool withPoint, qsizetype decimals, QChar point)
{
    const qsizetype width = std::max(wholeWidth, number.wholeWidth());
    const qsizetype sign = number.isNegative() ? 1 : 0;
    QString text(sign + width + (withPoint ? 1 : 0) + decimals, Qt::Uninitialized);
    QChar* next = text.data();
    if (number.isNegative()) {
        *next++ = u'-';
    }
    for (qsizetype weight = width - 1; weight >= 0; --weight) {
        *next++ = number.digitOfWeight(weight);
    }
    if (withPoint) {
        *next++ = point;
    }
    for (qsizetype weight = -1; weight >= -decimals; --weight) {
        *next++ = number.digitOfWeight(weight);
    }
    return text;
}

QString exponentText(const Decimal& number, QChar point)
{
    const int digits = number.significantDigits();
    QString text;
    text.reserve(24);
    if (number.isNegative()) {
        text += u'-';
    }
    text += number.digitOfWeight(number.exponent());
    if (digits > 1) {
        text += point;
    }
    for (int index = 1; index < digits; ++index) {
        text += number.digitOfWeight(number.exponent() - index);
    }
    text += u'E';
    text += number.exponent() < 0 ? u'-' : u'+';
    const int exponent = std::abs(number.exponent());
    if (exponent < 10) {
        text += u'0';
    }
    text += QString::number(exponent);
    return text;
}

struct NumberMask
{
    qsizetype whole = 0;
    qsizetype decimals = 0;
    bool withPoint = false;

    explicit NumberMask(QStringView mask);
};

NumberMask::NumberMask(QStringView mask)
{
    for (const QChar character : mask) {
        if (character == u'.' && !withPoint) {
            withPoint = true;
        } else if (character == u'0') {
            ++(withPoint ? decimals : whole);
        } else {
            throw RuntimeError(invalidCall);
        }
    }
    if (whole + decimals == 0) {
        throw RuntimeError(invalidCall);
    }
}

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

bool isNoBreakBlank(QChar character)
{
    return character == QChar::Nbsp || character == u'\u202F';
}

/// What a text turned out to be when read as a number.
enum class Reading { NoNumber, TooLarge, Number };

/// Reads one text. The digits are copied into a plain buffer, with '.' as the decimal point and without grouping, for
/// std::from_chars, which knows no locales.
class NumberReader
{
public:
    NumberReader(QStringView text, const Separators& separators) : m_rest(text.trimmed()), m_separators(separators) {}

    [[nodiscard]] Reading read();
    /// The number, after read() said Number.
    [[nodiscard]] double value() const { return m_value; }

private:
    [[nodiscard]] bool takeSign();
    [[nodiscard]] bool takeWholePart();
    [[nodiscard]] bool takeExponent();
    qsizetype takeDigits();
    [[nodiscard]] bool takeGroupSeparator();
    void takePoint();
    [[nodiscard]] Reading convert();
    [[nodiscard]] bool isTooSmall() const;

    [[nodiscard]] bool startsWith(QChar character) const { return !m_rest.isEmpty() && m_rest.front() == character; }
    [[nodiscard]] bool endsWith(QChar character) const { return !m_rest.isEmpty() && m_rest.back() == character; }
    void dropFirst() { m_rest = m_rest.sliced(1); }

    QStringView m_rest;
    Separators m_separators;
    QVarLengthArray<char, 64> m_buffer;
    qsizetype m_digits = 0;
    bool m_negative = false;
    bool m_hasPoint = false;
    double m_value = 0.0;
};

Reading NumberReader::read()
{
    if (!takeSign() || !takeWholePart()) {
        return Reading::NoNumber;
    }
    if (!m_hasPoint && startsWith(m_separators.decimal)) {
        dropFirst();
        takePoint();
        takeDigits();
    }
    if (m_digits == 0 || !takeExponent() || !m_rest.isEmpty()) {
        return Reading::NoNumber;
    }
    return convert();
}

/// One sign in front or behind, or brackets; false for an open bracket.
bool NumberReader::takeSign()
{
    if (startsWith(u'(')) {
        m_negative = true;
        if (!endsWith(u')')) {
            return false;
        }
        m_rest = m_rest.sliced(1).chopped(1).trimmed();
    } else if (startsWith(u'-') || startsWith(u'+')) {
        m_negative = m_rest.front() == u'-';
        m_rest = m_rest.sliced(1).trimmed();
    } else if (endsWith(u'-') || endsWith(u'+')) {
        m_negative = m_rest.back() == u'-';
        m_rest = m_rest.chopped(1).trimmed();
    }
    return true;
}

/// The digits in front of the decimal separator; or the whole number when a lone group separator stands for the decimal
/// separator. False for grouping that makes no sense.
bool NumberReader::takeWholePart()
{
    const bool leadingZero = startsWith(u'0');
    const qsizetype first = takeDigits();
    bool wellFormed = first >= 1 && first <= 3 && !leadingZero;
    qsizetype groups = 0;
    while (takeGroupSeparator()) {
        ++groups;
        wellFormed = takeDigits() == 3 && wellFormed;
    }
    if (groups == 0 || wellFormed) {
        return true;
    }
    if (groups > 1 || isNoBreakBlank(m_separators.group)) {
        return false;
    }
    m_buffer.insert(first, '.');
    m_hasPoint = true;
    return true;
}

bool NumberReader::takeExponent()
{
    if (!startsWith(u'E') && !startsWith(u'e')) {
        return true;
    }
    dropFirst();
    m_buffer.append('e');
    if (startsWith(u'-') || startsWith(u'+')) {
        if (m_rest.front() == u'-') {
            m_buffer.append('-');
        }
        dropFirst();
    }
    return takeDigits() > 0;
}

qsizetype NumberReader::takeDigits()
{
    qsizetype count = 0;
    while (count < m_rest.size() && isDigit(m_rest[count])) {
        m_buffer.append(static_cast<char>(m_rest[count].unicode()));
        ++count;
    }
    m_rest = m_rest.sliced(count);
    m_digits += count;
    return count;
}

/// A blank counts where the locale groups with a no-break one: nobody types those.
bool NumberReader::takeGroupSeparator()
{
    if (m_separators.group.isNull() || m_rest.isEmpty()) {
        return false;
    }
    const QChar character = m_rest.front();
    if (character != m_separators.group &&
        !(isNoBreakBlank(m_separators.group) && (character == u' ' || isNoBreakBlank(character)))) {
        return false;
    }
    dropFirst();
    return true;
}

void NumberReader::takePoint()
{
    m_buffer.append('.');
    m_hasPoint = true;
}

Reading NumberReader::convert()
{
    const char* const end = m_buffer.constData() + m_buffer.size();
    const std::from_chars_result result = std::from_chars(m_buffer.constData(), end, m_value);
    if (result.ec == std::errc::result_out_of_range) {
        if (!isTooSmall()) {
            return Reading::TooLarge;
        }
        m_value = 0.0;
    } else if (result.ec != std::errc{} || result.ptr != end) {
        return Reading::NoNumber;
    }
    if (m_negative && m_value != 0.0) {
        m_value = -m_value;
    }
    return Reading::Number;
}

/// std::from_chars answers "out of range" at both ends; a number next to zero is zero.
bool NumberReader::isTooSmall() const
{
    const std::string_view number(m_buffer.constData(), static_cast<std::size_t>(m_buffer.size()));
    const std::string_view mantissa = number.substr(0, number.find('e'));
    qint64 exponent = 0;
    if (mantissa.size() < number.size()) {
        const std::string_view digits = number.substr(mantissa.size() + 1);
        const std::from_chars_result result = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
        if (result.ec == std::errc::result_out_of_range) {
            return digits.front() == '-';
        }
    }
    const auto point = static_cast<qint64>(std::min(mantissa.find('.'), mantissa.size()));
    const auto firstDigit = static_cast<qint64>(mantissa.find_first_of("123456789"));
    return exponent < firstDigit - point;
}

} // namespace

Separators Separators::current()
{
    const QLocale locale;
    const QString decimal = locale.decimalPoint();
    const QString group = locale.groupSeparator();
    return {decimal.isEmpty() ? QChar(u'.') : decimal.front(), group.isEmpty() ? QChar() : group.front()};
}

QString Format(double value, QStringView mask, const Separators& separators)
{
    const NumberMask shape(mask);
    Decimal number(value);
    number.roundAt(shape.decimals);
    return plainText(number, shape.whole, shape.withPoint, shape.decimals, separators.decimal);
}

QString Format(const QVariant& value, QStringView mask, const Separators& separators)
{
    if (value.isNull()) {
        return {};
    }
    switch (value.typeId()) {
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        return FormatDate(value.toDate(), mask);
    case QMetaType::QString: {
        const QString text = value.toString();
        if (isDateMask(mask)) {
            const std::optional<QDate> date = parseDate(text);
            return date ? FormatDate(*date, mask) : text;
        }
        const std::optional<double> number = parseNumber(text, separators);
        return number ? Format(*number, mask, separators) : text;
    }
    default:
        if (!value.canConvert<double>()) {
            throw RuntimeError(typeMismatch);
        }
        return Format(toNumber(value), mask, separators);
    }
}

double roundThrough(double value, QStringView mask)
{
    // The text is written and read by the same hand, so no locale matters, nor the time to ask for it.
    constexpr Separators point{u'.', u','};
    return CDbl(Format(value, mask, point), point);
}

QString CStr(double value, const Separators& separators)
{
    // Fifteen is both the precision and the number of decimals that the plain notation has room for.
    constexpr int room = 15;
    const Decimal number(value);
    const int decimals = std::max(number.significantDigits() - 1 - number.exponent(), 0);
    if (number.exponent() >= room || decimals > room) {
        return exponentText(number, separators.decimal);
    }
    return plainText(number, 1, decimals > 0, decimals, separators.decimal);
}

std::optional<double> parseNumber(QStringView text, const Separators& separators)
{
    NumberReader reader(text, separators);
    return reader.read() == Reading::Number ? std::optional(reader.value()) : std::nullopt;
}

double CDbl(QStringView text, const Separators& separators)
{
    NumberReader reader(text, separators);
    switch (reader.read()) {
    case Reading::NoNumber:
        throw RuntimeError(typeMismatch);
    case Reading::TooLarge:
        throw RuntimeError(overflow);
    case Reading::Number:
        break;
    }
    return reader.value();
}

bool IsNumeric(QStringView text)
{
    return parseNumber(text).has_value();
}

double Int(double value)
{
    return std::floor(value);
}

qint32 CLng(QStringView text)
{
    const double whole = std::nearbyint(CDbl(text));
    if (whole < std::numeric_limits<qint32>::min() || whole > std::numeric_limits<qint32>::max()) {
        throw RuntimeError(overflow);
    }
    return static_cast<qint32>(whole);
}

} // namespace oVELDRA::runtime
