#include "Command.h"
#include "Interruption.h"
#include "PartFile.h"
#include "ServerBackup.h"
#include "SqliteBackup.h"

#include <store/Engines.h>

#include <QFileInfo>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace oVELDRA::data {

namespace {

constexpr QStringView replaceOption = u"reemplazar";

/// Answers what kind of file it made.
QString copyInto(const QString& origin, const QString& file, Console& console)
{
    // Opened first in either case: it says best what is wrong with an address, a server or a schema.
    const auto engine = store::openEngine(origin, Access::ReadOnly, store::Opening::Existing);
    if (auto* const sqlite = dynamic_cast<store::SqliteEngine*>(engine.get())) {
        backUpSqlite(*sqlite, file, console);
        return u"sqlite"_s;
    }
    backUpServer(store::PostgresAddress::of(origin), file, console);
    return u"pg_dump"_s;
}

int runRespaldar(const Arguments& arguments, Console& console)
{
    const QString& origin = arguments.operands[0];
    const QString& file = arguments.operands[1];
    if (file.startsWith(u"sqlite:"_s) || file.startsWith(u"postgresql:"_s)) {
        throw BadUsageError(u"ARCHIVO es el nombre de un archivo, no una dirección: '%1'."_s.arg(file));
    }
    const bool same =
        origin.startsWith(u"sqlite:"_s, Qt::CaseInsensitive) && QFileInfo(origin.section(u':', 1)) == QFileInfo(file);
    if (same && QFileInfo::exists(file)) {
        throw BadUsageError(u"La copia no puede ir en el archivo que se copia: '%1'."_s.arg(file));
    }
    const Interruption interruption;
    PartFile part(file, arguments.has(replaceOption.toString()) ? ExistingFile::Replace : ExistingFile::Keep);
    const QString format = copyInto(origin, part.path(), console);
    const qint64 bytes = QFileInfo(part.path()).size();
    part.complete();
    console.say(u"Se respaldó %1 en %2 (%3 bytes)"_s.arg(origin, file, QLocale().toString(bytes)));
    console.result({{u"source"_s, origin}, {u"file"_s, file}, {u"format"_s, format}, {u"bytes"_s, bytes}});
    return Success;
}

constexpr QStringView help = uR"(La copia es el estado de la base en el momento de empezar, completo, aunque
otros puestos sigan trabajando; no los detiene. Se escribe con otro nombre al
lado (ARCHIVO.NÚMERO.parte) y toma el suyo cuando está entera: si algo falla,
o si se interrumpe con Ctrl+C, no queda media copia, y la anterior sigue como
estaba. Un corte de luz puede dejar el archivo .parte; bórrelo.

Con sqlite: la copia es una base de datos de SQLite, en un solo archivo, ya
comprobada de punta a punta. Para recuperarla, nadie debe tener abierta la
base; borre los archivos -wal y -shm de la base dañada y copie encima:
  rm -f insumos.sqlite-wal insumos.sqlite-shm
  cp /respaldos/insumos.sqlite insumos.sqlite

Con postgresql: la copia es del esquema de la dirección, hecha con pg_dump en
su formato propio (-Fc). Para recuperarla en una base sin ese esquema:
  pg_restore --no-owner -h servidor -U oveldra -d oveldra insumos.dump
y si el esquema dañado sigue ahí, bórrelo antes, con el permiso de su dueño:
  psql -h servidor -U oveldra -d oveldra -c 'drop schema insumos cascade'

Después de recuperar, revise con oveldra-datos verificar.

No copie a mano el archivo de una base en uso: lo último que se escribió está
en el archivo -wal de al lado, y la copia saldría vieja o dañada.

Códigos de salida: 0 la copia está hecha; 2 línea de comandos mal escrita;
3 no se pudo, y no quedó nada.

Ejemplos:
  oveldra-datos respaldar sqlite:insumos.sqlite /respaldos/lunes.sqlite
  oveldra-datos respaldar sqlite:insumos.sqlite /respaldos/insumos.sqlite \
    --reemplazar
  oveldra-datos respaldar \
    'postgresql://oveldra@servidor/oveldra?schema=insumos' \
    /respaldos/insumos.dump
)";

} // namespace

Command respaldar()
{
    return {
        u"respaldar"_s,
        u"Hace una copia de respaldo mientras los demás trabajan."_s,
        {u"ORIGEN"_s, u"ARCHIVO"_s},
        help.toString(),
        {{replaceOption.toString(), {}, u"Si ARCHIVO ya existe, lo reemplaza cuando la copia nueva está entera."_s}},
        runRespaldar};
}

} // namespace oVELDRA::data
