#pragma once

#include <core/SharedState.h>

#include <QString>

namespace oVELDRA::core {

/// Fits a text into a column of fixed width: padded with blanks (behind the text when `padRight`, else in front of it)
/// or cut to its first `width` characters. A negative width gives "Err_FrmSytr ", the error's description, ": " and
/// the first 50 characters of the text.
[[nodiscard]] QString FormatoCampo(const QString& text, bool padRight, int width);

/// Empties the article being edited, before an editor is opened.
void LimpiarEdicion(SharedState& state);

/// Opens a query. True only when there is a row; `recordset` is then on it. False with an empty recordset means that
/// nothing was found, False with a null one that the query cannot be opened (the connection's lastError() says why).
[[nodiscard]] bool AbrirRecordset(ConexionDB& connection, const QString& text, std::unique_ptr<Recordset>& recordset);

/// The rows of a query, perhaps none. Throws the connection's own reason when it cannot be opened.
[[nodiscard]] std::unique_ptr<Recordset> rowsOf(ConexionDB& connection, const QString& statement);

/// Runs a command and answers the number of records affected.
qint64 run(ConexionDB& connection, const QString& statement);

/// A text as a quoted literal of a statement. Statements are put together without doubling quotes, so a text with an
/// apostrophe would end its literal early and the rest would be read as SQL. Such a text is refused here with the
/// syntax error (-2147217900) that it amounts to, before it can turn into another statement.
[[nodiscard]] QString quoted(const QString& text);

} // namespace oVELDRA::core
