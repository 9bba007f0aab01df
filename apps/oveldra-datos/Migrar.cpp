#include "AccessFile.h"
#include "Moving.h"

#include <oVELDRA/RuntimeError.h>

#include <dialect/StatementError.h>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView help = uR"(ORIGEN es un archivo de Access (.mdb, .accdb), que solo se lee. DESTINO es la
dirección de una base: se crea si no está; si está, sus tablas tienen que
estar vacías: nunca se mezcla con lo que ya hay. Qué base es (insumos, ncm o
tornel) se reconoce por las tablas del archivo.

Cierre antes Access y los programas que usen el archivo.

Una fila que no se puede guardar tal cual se rechaza con su motivo: texto más
largo que su columna, clave repetida (sin distinguir mayúsculas ni blancos
finales; queda la primera), número o fecha imposible, fecha con hora. Si hay
alguna, no se guarda nada, salvo con --aceptar-rechazos. INTIOK marcado pasa a
ser 1; los demás sí/no, -1. Las tablas y columnas que el destino no conoce no
se copian, y se dice cuáles y cuántas filas tienen.

Al final vuelve a leer el destino y compara con el origen las filas de cada
tabla y, por declaración, cantidad, saldo y CIF de INS y lo descargado en DIP.
Si algo no coincide, no se guarda nada.

Códigos de salida: 0 quedó guardado y la prueba cierra; 1 hay filas rechazadas
y no se guardó nada; 2 línea de comandos mal escrita; 3 no se pudo, y no quedó
nada.

Ejemplos:
  oveldra-datos migrar insumos.mdb sqlite:insumos.sqlite
  oveldra-datos migrar insumos.mdb sqlite:insumos.sqlite --rechazos malas.csv
  oveldra-datos migrar tornel.mdb \
      'postgresql://oveldra@servidor/oveldra?schema=tornel'
)";

int runMigrar(const Arguments& arguments, Console& console)
{
    AccessFile file(arguments.operands[0]);
    if (file.tables().isEmpty() && !file.linkedTables().isEmpty()) {
        throw RuntimeError(dialect::unknownTableNumber,
                           u"El archivo solo tiene tablas vinculadas (%1): migre el archivo que las contiene."_s.arg(
                               file.linkedTables().join(u", "_s)),
                           u"oVELDRA.datos"_s);
    }
    return moveBase(file, arguments, console);
}

} // namespace

Command migrar()
{
    return {u"migrar"_s,
            u"Trae una base de Access a un archivo o al servidor, y prueba que llegó entera."_s,
            {u"ORIGEN"_s, u"DESTINO"_s},
            help.toString(),
            movingOptions(),
            runMigrar};
}

} // namespace oVELDRA::data
