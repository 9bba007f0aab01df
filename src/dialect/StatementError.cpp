#include "StatementError.h"

namespace oVELDRA::dialect {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype shownCharacters = 40;

/// What a message shows of a statement: one line, without control characters, cut.
QString excerpt(QStringView text)
{
    QString shown = text.left(shownCharacters).toString();
    for (QChar& c : shown) {
        if (c.category() == QChar::Other_Control) {
            c = u' ';
        }
    }
    if (text.size() > shownCharacters) {
        shown += u'…';
    }
    return shown;
}

} // namespace

RuntimeError syntaxError(QStringView place, QStringView statement, qsizetype position)
{
    const QStringView rest = statement.mid(position).trimmed();
    if (rest.isEmpty()) {
        return {syntaxErrorNumber, u"Error de sintaxis en %1, al final de la instrucción."_s.arg(place)};
    }
    return {syntaxErrorNumber, u"Error de sintaxis en %1, cerca de '%2'."_s.arg(place, excerpt(rest))};
}

RuntimeError syntaxReason(QStringView place, const QString& reason)
{
    return {syntaxErrorNumber, u"Error de sintaxis en %1: %2."_s.arg(place, reason)};
}

RuntimeError unknownColumn(QStringView name)
{
    return {
        unknownColumnNumber,
        u"No se han especificado valores para algunos de los parámetros requeridos. (Columna desconocida: '%1'.)"_s.arg(
            excerpt(name))};
}

RuntimeError unknownTable(QStringView name)
{
    return {unknownTableNumber,
            u"El motor de base de datos no puede encontrar la tabla o consulta de entrada '%1'. "
            "Asegúrese de que existe y que su nombre está escrito correctamente."_s.arg(excerpt(name))};
}

RuntimeError typeMismatch()
{
    return {typeMismatchNumber, u"No coinciden los tipos de datos en la expresión de criterios."_s};
}

RuntimeError textTooLong(QStringView column, int width)
{
    return {databaseErrorNumber,
            u"El texto es demasiado largo para el campo '%1': admite %2 caracteres."_s.arg(column).arg(width),
            {},
            textTooLongNative};
}

} // namespace oVELDRA::dialect
