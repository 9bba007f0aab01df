#include "Module1.h"

using namespace Qt::StringLiterals;

namespace oVELDRA::core {

QString FormatoCampo(const QString& text, bool padRight, int width)
{
    if (width < 0) {
        return u"Err_FrmSytr "_s + RuntimeError(5).description() + u": "_s + text.left(50);
    }
    return padRight ? text.leftJustified(width, u' ', true) : text.left(width).rightJustified(width, u' ');
}

void LimpiarEdicion(SharedState& state)
{
    state.currentProduct.clear();
    state.currentInput.clear();
    state.productModify = false;
    state.productSaved = false;
    state.inputModify = false;
    state.inputSaved = false;
}

bool AbrirRecordset(ConexionDB& connection, const QString& text, std::unique_ptr<Recordset>& recordset)
{
    bool ok = false;
    connection.setSql(text);
    recordset = connection.openRecordset(ok);
    if (!ok) {
        recordset.reset();
    }
    return recordset && !recordset->atEof();
}

std::unique_ptr<Recordset> rowsOf(ConexionDB& connection, const QString& statement)
{
    std::unique_ptr<Recordset> rows;
    if (!AbrirRecordset(connection, statement, rows) && !rows) {
        throw RuntimeError(connection.lastError());
    }
    return rows;
}

qint64 run(ConexionDB& connection, const QString& statement)
{
    connection.setSql(statement);
    return connection.execute();
}

QString quoted(const QString& text)
{
    constexpr int syntaxError = -2147217900;
    if (text.contains(u'\'')) {
        throw RuntimeError(
            syntaxError,
            u"Error de sintaxis en un literal de texto: el apóstrofo no se admite, cerca de \"%1\"."_s.arg(text));
    }
    return u'\'' + text + u'\'';
}

} // namespace oVELDRA::core
