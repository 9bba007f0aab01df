#include "Program.h"

#include "HelpText.h"

#include <oVELDRA/RuntimeError.h>

#include <QJsonObject>
#include <QUrl>

#include <exception>

using namespace Qt::StringLiterals;

namespace oVELDRA::data {

namespace {

constexpr int wrongArgument = 5;
constexpr int internalError = 51;

int fail(Console& console, const RuntimeError& error, ExitCode code)
{
    console.complain(u"oveldra-datos: "_s + error.description());
    QJsonObject described{
        {u"number"_s, error.number()}, {u"text"_s, error.description()}, {u"exitCode"_s, static_cast<int>(code)}};
    if (error.nativeNumber() != 0) {
        described.insert(u"native"_s, error.nativeNumber());
    }
    console.result({{u"error"_s, described}});
    return code;
}

int refuse(Console& console, const QString& why, const Command* command)
{
    const int code = fail(console, RuntimeError(wrongArgument, why), BadUsage);
    console.complain(u"Uso: "_s + (command ? usageOf(*command) : u"oveldra-datos COMANDO OPERANDOS [OPCIONES]"_s));
    console.complain(u"Ayuda: oveldra-datos "_s + (command ? QString(command->name + u' ') : QString()) + u"--ayuda");
    return code;
}

/// Everybody on the machine can read the command lines of running programs.
void refusePasswords(const QStringList& addresses)
{
    for (const QString& address : addresses) {
        if (address.startsWith(u"postgres"_s, Qt::CaseInsensitive) && !QUrl(address).password().isEmpty()) {
            throw BadUsageError(u"La contraseña no va en la dirección, donde otros usuarios del equipo la pueden leer: "
                                "póngala en ~/.pgpass o en la variable PGPASSWORD."_s);
        }
    }
}

int runCommand(const CommandLine& line, Console& console)
{
    try {
        refusePasswords(line.arguments.operands + line.arguments.options.values());
        return line.command->run(line.arguments, console);
    } catch (const BadUsageError& error) {
        return refuse(console, error.text(), line.command);
    } catch (const RuntimeError& error) {
        return fail(console, error, Failed);
    } catch (const std::bad_alloc&) {
        return fail(console, RuntimeError(7), Failed);
    } catch (const std::exception& error) {
        const QString text = u"Error interno: "_s + QString::fromUtf8(error.what());
        return fail(console, RuntimeError(internalError, text), Failed);
    }
}

} // namespace

int runProgram(const CommandLine& line, const std::vector<Command>& commands, Console& console)
{
    switch (line.wish) {
    case CommandLine::Wish::Help:
        console.write(line.command ? commandHelp(*line.command) : programHelp(commands));
        return Success;
    case CommandLine::Wish::Version:
        console.write(u"oveldra-datos "_s + QStringLiteral(OVELDRA_VERSION) + u'\n');
        return Success;
    case CommandLine::Wish::Refuse:
        return refuse(console, line.message, line.command);
    case CommandLine::Wish::Run:
        break;
    }
    return runCommand(line, console);
}

} // namespace oVELDRA::data
