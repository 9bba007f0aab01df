#include "EngineSource.h"
#include "Moving.h"

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView help = uR"(Copia una base del archivo al servidor, del servidor al archivo, o entre dos
iguales. El origen solo se lee, tal como está en el momento de empezar, aunque
otros lo sigan usando; lo que escriban después no se copia. DESTINO se crea si
no está; si está, sus tablas tienen que estar vacías: nunca se mezcla con lo
que ya hay.

Al final vuelve a leer el destino y compara con el origen las filas de cada
tabla y, por declaración, cantidad, saldo y CIF de INS y lo descargado en DIP.
Si algo no coincide, no se guarda nada. Las filas que el destino no puede
guardar se rechazan con su motivo; si hay alguna, no se guarda nada, salvo con
--aceptar-rechazos.

Códigos de salida: 0 quedó guardado y la prueba cierra; 1 hay filas rechazadas
y no se guardó nada; 2 línea de comandos mal escrita; 3 no se pudo, y no quedó
nada.

Ejemplos:
  oveldra-datos copiar sqlite:insumos.sqlite \
      'postgresql://oveldra@servidor/oveldra?schema=insumos'
  oveldra-datos copiar 'postgresql://oveldra@servidor/oveldra?schema=insumos' \
      sqlite:copia.sqlite
)";

int runCopiar(const Arguments& arguments, Console& console)
{
    EngineSource source(arguments.operands[0]);
    return moveBase(source, arguments, console);
}

} // namespace

Command copiar()
{
    return {u"copiar"_s,
            u"Copia una base entre el archivo y el servidor, y prueba que llegó entera."_s,
            {u"ORIGEN"_s, u"DESTINO"_s},
            help.toString(),
            movingOptions(),
            runCopiar};
}

} // namespace oVELDRA::data
