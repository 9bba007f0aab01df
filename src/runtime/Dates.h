#pragma once

#include <QDate>
#include <QString>
#include <QStringView>

#include <optional>

namespace oVELDRA::runtime {

/// The date that a text spells, or nothing.
///
/// Day-month-year with `/`, `-`, `.` or blanks between; years of four digits, or of two (00–29 are 20xx, 30–99 are
/// 19xx); months as numbers or by Spanish or English name, whole or the first three letters; a swapped day and month
/// when that is the only valid reading; ISO `yyyy-mm-dd`. Impossible dates are none.
[[nodiscard]] std::optional<QDate> parseDate(QStringView text);

/// Whether a text is a date in the sense of parseDate(). Screens and store ask the same function.
[[nodiscard]] bool IsDate(QStringView text);

/// parseDate() with an error: RuntimeError 13 for a text that is no date.
[[nodiscard]] QDate DateValue(QStringView text);

/// Whether a mask is one of FormatDate()'s, in any letter case.
[[nodiscard]] bool isDateMask(QStringView mask);

/// "dd/mm/yyyy" (always with slashes) or "Long Date" (the locale's long form, in Spanish or whatever it speaks); an
/// invalid date gives "". Any other mask throws RuntimeError 5.
[[nodiscard]] QString FormatDate(QDate date, QStringView mask);

} // namespace oVELDRA::runtime
