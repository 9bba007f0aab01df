#include "StoreError.h"

#include <dialect/StatementError.h>

namespace oVELDRA::store {

using namespace Qt::StringLiterals;

namespace {

QString textOf(Trouble trouble)
{
    switch (trouble) {
    case Trouble::AlreadyThere:
        return u"La base de datos ya contiene esa tabla; no se modificó nada."_s;
    case Trouble::DuplicateKey:
        return u"Los cambios solicitados en la tabla no se realizaron correctamente porque crearían valores duplicados "
               u"en el "
               "índice, clave principal o relación."_s;
    case Trouble::NoFile:
        return u"No se encuentra el archivo de la base de datos."_s;
    case Trouble::DiskFull:
        return u"No hay espacio suficiente en el disco para guardar los cambios; no se guardó nada de la operación."_s;
    case Trouble::ReadOnly:
        return u"La operación debe usar una consulta actualizable."_s;
    case Trouble::Damaged:
        return u"La base de datos está dañada. Recupere una copia de respaldo."_s;
    case Trouble::Broken:
        return u"El disco no pudo leer o escribir la base de datos."_s;
    case Trouble::NoPermission:
        return u"No hay permiso para abrir la base de datos."_s;
    case Trouble::Locked:
        return u"La base de datos está ocupada por otro puesto de trabajo. Vuelva a intentarlo en unos segundos."_s;
    case Trouble::NoDatabase:
        return u"El archivo no es una base de datos o su formato no se reconoce."_s;
    case Trouble::NetworkFolder:
        return u"La base de datos está en una carpeta de red, donde varios puestos podrían dañarla. Use el servidor de "
               u"base de "
               "datos."_s;
    case Trouble::ServerGone:
        return u"No hay conexión con el servidor de base de datos; lo que no estaba confirmado no se guardó."_s;
    case Trouble::NoSchema:
        return u"El servidor no tiene ese esquema."_s;
    case Trouble::Other:
        break;
    }
    return u"El motor de base de datos informó un error."_s;
}

} // namespace

RuntimeError storeError(Trouble trouble, const QString& detail)
{
    const QString text = textOf(trouble);
    return {dialect::databaseErrorNumber, detail.isEmpty() ? text : QString(text + u" (" + detail + u')'),
            u"oVELDRA.store"_s, static_cast<int>(trouble)};
}

} // namespace oVELDRA::store
