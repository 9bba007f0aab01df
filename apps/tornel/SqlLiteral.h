#pragma once

#include <QDate>
#include <QString>
#include <QStringView>

/// How values are written into the statements of the demonstration's own databases.
namespace tornel::sql {

/// A quoted text, apostrophes doubled.
[[nodiscard]] QString text(QStringView value);

/// A quoted text, or Null when it is empty.
[[nodiscard]] QString textOrNull(QStringView value);

/// A quoted number with the decimal separator of the user's locale, at most eight decimals.
[[nodiscard]] QString number(double value);

/// As number(), from a text with a decimal point; Null when it is empty.
[[nodiscard]] QString decimal(QStringView pointed);

/// datevalue('dd/mm/yyyy')
[[nodiscard]] QString date(QDate value);

/// -1 or 0
[[nodiscard]] QString flag(bool value);

} // namespace tornel::sql
