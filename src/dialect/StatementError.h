#pragma once

#include <oVELDRA/RuntimeError.h>

#include <QString>
#include <QStringView>

namespace oVELDRA::dialect {

inline constexpr int syntaxErrorNumber = -2147217900;
inline constexpr int unknownColumnNumber = -2147217904;
inline constexpr int typeMismatchNumber = -2147217913;
inline constexpr int unknownTableNumber = -2147217865;
inline constexpr int databaseErrorNumber = -2147467259; ///< told apart by the native number
inline constexpr int textTooLongNative = 3163;

/// "Error de sintaxis en <place>, cerca de '<text from position on, cut>'."; at the end of the statement it says so.
[[nodiscard]] RuntimeError syntaxError(QStringView place, QStringView statement, qsizetype position);

/// The same for what is wrong with a name or count: "Error de sintaxis en <place>: <reason>."
[[nodiscard]] RuntimeError syntaxReason(QStringView place, const QString& reason);

[[nodiscard]] RuntimeError unknownColumn(QStringView name);
[[nodiscard]] RuntimeError unknownTable(QStringView name);
[[nodiscard]] RuntimeError typeMismatch();
[[nodiscard]] RuntimeError textTooLong(QStringView column, int width);

} // namespace oVELDRA::dialect
