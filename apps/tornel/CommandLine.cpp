#include "CommandLine.h"

#include "DataFolder.h"

#include <QCommandLineParser>

using namespace Qt::StringLiterals;

namespace tornel {

namespace {

/// The parser's own help is in English where Qt's translations are not installed.
QString helpText(const QList<QCommandLineOption>& options)
{
    QString text =
        u"Uso: tornel [opciones]\n"
        "Aplicación de demostración: un despachante de aduana con sus declaraciones de importación temporaria.\n\n"
        "Opciones:\n"_s;
    for (const QCommandLineOption& option : options) {
        QStringList names;
        for (const QString& name : option.names()) {
            names.append((name.size() == 1 ? u"-"_s : u"--"_s) + name);
        }
        QString left = names.join(u", "_s);
        if (!option.valueName().isEmpty()) {
            left += u' ' + option.valueName();
        }
        text += u"  "_s + left.leftJustified(24) + option.description() + u'\n';
    }
    return text;
}

/// The user's own settings where they are Spanish; the demonstration's numbers and dates are Argentine otherwise.
QLocale localeOf(const QString& name, const QLocale& system)
{
    if (!name.isEmpty()) {
        return QLocale(name);
    }
    return system.language() == QLocale::Spanish ? system : QLocale(QLocale::Spanish, QLocale::Argentina);
}

QString refusal(const QCommandLineParser& parser, bool parsed, const QString& locale)
{
    if (!parsed) {
        const QStringList unknown = parser.unknownOptionNames();
        return unknown.isEmpty() ? u"Falta el valor de una opción."_s
                                 : u"Opción desconocida: %1"_s.arg(unknown.first());
    }
    if (!parser.positionalArguments().isEmpty()) {
        return u"Argumento de más: %1"_s.arg(parser.positionalArguments().first());
    }
    if (!locale.isEmpty() && QLocale(locale).language() == QLocale::C) {
        return u"Configuración regional desconocida: %1"_s.arg(locale);
    }
    return {};
}

} // namespace

CommandLine CommandLine::parse(const QStringList& arguments, const QString& version, const QLocale& system)
{
    const QCommandLineOption data(u"datos"_s, u"Carpeta de las bases de datos (se crean si faltan)."_s, u"CARPETA"_s,
                                  DataFolder::standardPath());
    const QCommandLineOption script(u"script"_s, u"Guion que se ejecuta sobre las pantallas; al terminar, sale."_s,
                                    u"ARCHIVO"_s);
    const QCommandLineOption output(u"salida"_s, u"Carpeta de las capturas del guion (por omisión, out)."_s,
                                    u"CARPETA"_s, u"out"_s);
    const QCommandLineOption locale(u"locale"_s, u"Configuración regional, por ejemplo es_AR o en_US."_s, u"NOMBRE"_s);
    const QCommandLineOption quitWhenPainted(
        u"salir-al-mostrar"_s, u"Sale en cuanto la primera pantalla está dibujada (para medir el arranque)."_s);
    const QCommandLineOption help({u"h"_s, u"help"_s, u"ayuda"_s}, u"Muestra esta ayuda."_s);
    const QCommandLineOption showVersion({u"v"_s, u"version"_s}, u"Muestra la versión."_s);
    const QList<QCommandLineOption> options{data, script, output, locale, quitWhenPainted, help, showVersion};

    QCommandLineParser parser;
    parser.addOptions(options);
    const bool parsed = parser.parse(arguments);

    CommandLine line;
    line.message = refusal(parser, parsed, parser.value(locale));
    line.quitWhenPainted = parser.isSet(quitWhenPainted);
    if (line.message.isEmpty() && line.quitWhenPainted && parser.isSet(script)) {
        line.message = u"--salir-al-mostrar no va con --script."_s;
    }
    if (!line.message.isEmpty()) {
        line.wish = Wish::Refuse;
    } else if (parser.isSet(help)) {
        line.wish = Wish::Help;
        line.message = helpText(options);
    } else if (parser.isSet(showVersion)) {
        line.wish = Wish::Version;
        line.message = u"tornel %1\n"_s.arg(version);
    }
    line.dataFolder = parser.value(data);
    line.script = parser.value(script);
    line.outputFolder = parser.value(output);
    line.locale = localeOf(parser.value(locale), system);
    return line;
}

} // namespace tornel
