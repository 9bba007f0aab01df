#include "HelpText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace oVELDRA::data {

namespace {

constexpr qsizetype lineWidth = 80;
constexpr qsizetype widestLeft = 26; ///< a longer left column has its text begin on the next line

constexpr QStringView beginning = uR"(oveldra-datos: las bases de datos de oVELDRA, desde la línea de comandos.
Las crea, las trae de Access, las pasa de un archivo al servidor y de vuelta,
revisa el stock de insumos, avisa qué vence y hace copias de respaldo.

Uso: oveldra-datos COMANDO OPERANDOS [OPCIONES]

Comandos:
)";

constexpr QStringView ending = uR"(
oveldra-datos COMANDO --ayuda explica cada comando.

Las bases de datos se nombran con una dirección:
  sqlite:ARCHIVO
      un archivo, por ejemplo sqlite:insumos.sqlite o sqlite:/datos/ncm.sqlite
  postgresql://USUARIO@HOST:PUERTO/BASE?schema=NOMBRE
      un esquema de una base del servidor PostgreSQL
  postgresql:///BASE?host=/CARPETA&port=N&user=USUARIO&schema=NOMBRE
      lo mismo por el socket de este equipo, por ejemplo host=/run/postgresql
Las del servidor van entre comillas simples: & y ? son signos del intérprete
de comandos.

La contraseña del servidor no se escribe en la línea de comandos, donde todos
los usuarios del equipo la pueden leer. Póngala en el archivo ~/.pgpass (con
permisos 0600, una línea HOST:PUERTO:BASE:USUARIO:CONTRASEÑA) o en la variable
de entorno PGPASSWORD.

Opciones de todos los comandos:
  --json            El resultado es un objeto JSON en la salida estándar; los
                    errores, también: {"error": {"number", "text", …}}.
  --ayuda, --help   Muestra la ayuda del programa o del comando.
  --version         Muestra la versión (sin comando).

El informe va a la salida estándar; los errores y el avance, a la salida de
errores. Códigos de salida:
  0   se hizo, y no hay nada que señalar
  1   se hizo, y se encontró algo: la ayuda de cada comando dice qué
  2   la línea de comandos está mal escrita
  3   no se pudo hacer; nada quedó a medias

Los trabajos de siempre:
  Crear la base de insumos de una oficina nueva:
    oveldra-datos crear sqlite:insumos.sqlite
  Traer los insumos de una base de Access:
    oveldra-datos migrar insumos.mdb sqlite:insumos.sqlite
  Pasar del archivo al servidor:
    oveldra-datos copiar sqlite:insumos.sqlite \
      'postgresql://oveldra@servidor/oveldra?schema=insumos'
  Revisar el stock:
    oveldra-datos verificar sqlite:insumos.sqlite
  Qué vence en los próximos 30 días:
    oveldra-datos vencimientos sqlite:insumos.sqlite --dias 30
  La copia de cada noche:
    oveldra-datos respaldar sqlite:insumos.sqlite /respaldos/insumos.sqlite \
      --reemplazar
)";

/// Words in lines behind that many blanks; the first line's are left out.
QString wrapped(const QStringList& words, qsizetype indent)
{
    QString result;
    qsizetype column = indent;
    for (const QString& word : words) {
        const bool first = column == indent;
        if (!first && column + 1 + word.size() > lineWidth) {
            result += u'\n' + QString(indent, u' ') + word;
            column = indent + word.size();
        } else {
            result += first ? word : QString(u' ' + word);
            column += word.size() + (first ? 0 : 1);
        }
    }
    return result;
}

QString wrapped(const QString& text, qsizetype indent)
{
    return wrapped(text.split(u' ', Qt::SkipEmptyParts), indent);
}

QString nameOf(const Option& option)
{
    return u"--"_s + option.name + (option.value.isEmpty() ? QString() : QString(u' ' + option.value));
}

/// How a command is called, in parts that stay on one line.
QStringList usageParts(const Command& command)
{
    QStringList parts{u"oveldra-datos"_s, command.name};
    parts += command.operands;
    for (const Option& option : command.options) {
        parts.append(u'[' + nameOf(option) + u']');
    }
    return parts << u"[--json]"_s;
}

struct Entry
{
    QString left;
    QString text;
};

QString columns(const std::vector<Entry>& entries)
{
    qsizetype left = 0;
    for (const Entry& entry : entries) {
        left = std::max(left, std::min(entry.left.size(), widestLeft));
    }
    const qsizetype indent = 2 + left + 2;
    QString result;
    for (const Entry& entry : entries) {
        result += u"  "_s + entry.left.leftJustified(left);
        result += entry.left.size() > left ? QString(u'\n' + QString(indent, u' ')) : u"  "_s;
        result += wrapped(entry.text, indent) + u'\n';
    }
    return result;
}

} // namespace

QString programHelp(const std::vector<Command>& commands)
{
    std::vector<Entry> entries;
    entries.reserve(commands.size());
    for (const Command& command : commands) {
        entries.push_back({command.name, command.summary});
    }
    return beginning.toString() + columns(entries) + ending;
}

QString commandHelp(const Command& command)
{
    std::vector<Entry> entries;
    for (const Option& option : command.options) {
        entries.push_back({nameOf(option), option.help});
    }
    entries.push_back({u"--json"_s, u"El resultado, o el error, como objeto JSON en la salida estándar."_s});
    entries.push_back({u"--ayuda, --help"_s, u"Muestra esta ayuda."_s});
    QString text = command.help;
    if (!text.endsWith(u'\n')) {
        text += u'\n';
    }
    return u"Uso: "_s + wrapped(usageParts(command), 9) + u"\n\n" + wrapped(command.summary, 0) + u"\n\n" + text +
           u"\nOpciones:\n" + columns(entries) + u"\noveldra-datos --ayuda dice cómo se nombran las bases de datos.\n";
}

QString usageOf(const Command& command)
{
    return usageParts(command).join(u' ');
}

} // namespace oVELDRA::data
