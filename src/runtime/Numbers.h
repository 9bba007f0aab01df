#pragma once

#include <QString>
#include <QStringView>
#include <QVariant>

#include <optional>

namespace oVELDRA::runtime {

/// The characters that the user's locale writes numbers with.
struct Separators
{
    QChar decimal;
    QChar group;

    /// Of the default locale (`QLocale()`), read anew at each call.
    [[nodiscard]] static Separators current();
};

/// A number as text under a mask of `0` and at most one `.` ("00.0000", "000").
///
/// The value's decimal text of 15 significant digits is rounded half away from zero at the mask's decimals, so 1.005
/// under "0.00" is 1.01. The whole part is padded with zeros to the mask's, never cut. A minus sign stands in front,
/// but not before a result of only zeros. The decimal separator is the locale's; there is never any grouping.
/// RuntimeError 5 for any other mask, 6 for an infinite value.
[[nodiscard]] QString Format(double value, QStringView mask, const Separators& separators = Separators::current());

/// The same for a field or a typed text: Null gives "", a text that is a number is converted first, any other text
/// comes back as it is. Dates go by the masks "dd/mm/yyyy" and "Long Date" (see Dates.h), and so does a text that
/// spells one; a number never does. RuntimeError 13 for a value of another kind.
[[nodiscard]] QString Format(const QVariant& value, QStringView mask,
                             const Separators& separators = Separators::current());

/// A value rounded by formatting it under `mask` and reading the text back, as the program rounds everywhere.
[[nodiscard]] double roundThrough(double value, QStringView mask);

/// The plain text of a number: 15 significant digits; exponent form ("1.5E+15") from 1E+15 up, and for small numbers
/// only when the digits no longer fit 15 decimal places (1/30 is 3.33333333333333E-02, 0.00001 stays). Locale's
/// separator, no grouping; minus zero is "0".
[[nodiscard]] QString CStr(double value, const Separators& separators = Separators::current());

/// The number that a text spells, or nothing when it spells none: blanks around, a sign in front or behind, brackets
/// for a negative, grouping, an exponent (E).
///
/// Grouping must be well-formed to be taken as grouping (one to three digits, the first not a zero, then groups of
/// three); otherwise a single group separator is read as the decimal separator: under a comma locale "1.234,5" is
/// 1234.5 and "1.500" is 1500, but "1.5" is 1.5 and "0.500" is 0.5. A wrong quantity is worse than a tolerant reader.
/// Where the locale groups with a no-break blank any blank inside the number groups, but none is ever a decimal
/// separator. A number too large for a double counts as none here; one too small for a double is 0.
[[nodiscard]] std::optional<double> parseNumber(QStringView text, const Separators& separators = Separators::current());

/// parseNumber() with errors: RuntimeError 13 for a text that is no number, 6 for one too large for a double.
[[nodiscard]] double CDbl(QStringView text, const Separators& separators = Separators::current());

/// Whether a text is a number in the sense of CDbl().
[[nodiscard]] bool IsNumeric(QStringView text);

/// The greatest whole number that is not greater than `value`.
[[nodiscard]] double Int(double value);

/// The 32-bit integer that a text spells, halves rounded to even. RuntimeError 13 for a text that is no number, 6 for
/// one out of range.
[[nodiscard]] qint32 CLng(QStringView text);

} // namespace oVELDRA::runtime
