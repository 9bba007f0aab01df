#include "AccessError.h"

#include <dialect/StatementError.h>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

namespace {

QString textOf(AccessTrouble trouble)
{
    switch (trouble) {
    case AccessTrouble::NoFile:
        return u"No se encuentra el archivo de Access."_s;
    case AccessTrouble::Password:
        return u"El archivo de Access está protegido con contraseña o cifrado. Ábralo con Access, quite la contraseña "
               u"y "
               "vuelva a intentarlo."_s;
    case AccessTrouble::Damaged:
        return u"El archivo de Access está dañado. Repárelo con Access («Compactar y reparar») o recupere una copia de "
               "respaldo."_s;
    case AccessTrouble::NoPermission:
        return u"No hay permiso para leer el archivo de Access."_s;
    case AccessTrouble::Unsupported:
        return u"La versión del archivo de Access no se admite. Guárdelo con Access en el formato 2002-2003 y vuelva a "
               "intentarlo."_s;
    case AccessTrouble::NoAccessFile:
        break;
    }
    return u"El archivo no es una base de datos de Access."_s;
}

} // namespace

RuntimeError accessError(AccessTrouble trouble, const QString& detail)
{
    return {dialect::databaseErrorNumber, QString(textOf(trouble) + u" (" + detail + u')'), u"oVELDRA.datos"_s,
            static_cast<int>(trouble)};
}

} // namespace oVELDRA::data
