#include "CommandLine.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace oVELDRA::data {

namespace {

constexpr QStringView jsonName = u"json";

QString namesOf(const std::vector<Command>& commands)
{
    QStringList names;
    for (const Command& command : commands) {
        names.append(command.name);
    }
    return names.join(u", "_s);
}

/// The command of that name, or null.
const Command* commandOf(const QString& name, const std::vector<Command>& commands)
{
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [&name](const Command& command) { return command.name == name; });
    return found == commands.end() ? nullptr : &*found;
}

/// Takes the arguments one by one; the first mistake ends it.
class Reader
{
public:
    Reader(const QStringList& arguments, const std::vector<Command>& commands)
        : m_arguments(arguments), m_commands(commands)
    {}

    void read(CommandLine& line)
    {
        while (m_at < m_arguments.size()) {
            const QString& argument = m_arguments[m_at++];
            if (!m_onlyOperands && argument == u"--") {
                m_onlyOperands = true;
            } else if (!m_onlyOperands && argument.size() > 1 && argument.startsWith(u'-')) {
                readOption(argument, line);
            } else if (!line.command) {
                readCommand(argument, line);
            } else {
                readOperand(argument, line);
            }
        }
        checkCount(line);
    }

private:
    void readCommand(const QString& name, CommandLine& line)
    {
        line.command = commandOf(name, m_commands);
        if (!line.command) {
            throw BadUsageError(u"No existe el comando '%1'. Los comandos son: %2."_s.arg(name, namesOf(m_commands)));
        }
    }

    static void readOperand(const QString& operand, CommandLine& line)
    {
        const QStringList& wanted = line.command->operands;
        if (line.arguments.operands.size() == wanted.size()) {
            throw BadUsageError(
                wanted.isEmpty() ? u"Argumento de más: '%1'."_s.arg(operand)
                                 : u"Argumento de más: '%1' (va solamente %2)."_s.arg(operand, wanted.join(u" y "_s)));
        }
        if (operand.isEmpty()) {
            throw BadUsageError(u"%1 está en blanco."_s.arg(wanted[line.arguments.operands.size()]));
        }
        line.arguments.operands.append(operand);
    }

    void readOption(const QString& argument, CommandLine& line)
    {
        const qsizetype equals = argument.indexOf(u'=');
        const QString written = argument.left(equals);
        const Option option = optionOf(written, line);
        const bool taken = option.name == jsonName ? std::exchange(m_json, true) : line.arguments.has(option.name);
        if (taken) {
            throw BadUsageError(u"La opción %1 está repetida."_s.arg(written));
        }
        if (option.value.isEmpty() && equals >= 0) {
            throw BadUsageError(u"La opción %1 no lleva valor."_s.arg(written));
        }
        if (option.name == jsonName) {
            return;
        }
        QString value;
        if (!option.value.isEmpty()) {
            value = equals >= 0 ? argument.mid(equals + 1) : followingValue();
            if (value.isEmpty()) {
                throw BadUsageError(u"Falta el valor de la opción %1: %1 %2."_s.arg(written, option.value));
            }
        }
        line.arguments.options.insert(option.name, value);
    }

    [[nodiscard]] QString followingValue()
    {
        const bool there = m_at < m_arguments.size() && !m_arguments[m_at].startsWith(u"--"_s);
        return there ? m_arguments[m_at++] : QString();
    }

    [[nodiscard]] static Option optionOf(const QString& written, const CommandLine& line)
    {
        const QString name = written.startsWith(u"--"_s) ? written.mid(2) : QString();
        if (name == jsonName) {
            return {name, {}, {}};
        }
        if (!line.command) {
            throw BadUsageError(
                u"Opción desconocida: %1 (las opciones de un comando van detrás de su nombre)."_s.arg(written));
        }
        const std::vector<Option>& options = line.command->options;
        const auto found =
            std::find_if(options.begin(), options.end(), [&name](const Option& option) { return option.name == name; });
        if (found == options.end()) {
            throw BadUsageError(u"Opción desconocida: %1."_s.arg(written));
        }
        return *found;
    }

    void checkCount(const CommandLine& line) const
    {
        if (!line.command) {
            throw BadUsageError(u"Falta el comando. Los comandos son: %1."_s.arg(namesOf(m_commands)));
        }
        const QStringList missing = line.command->operands.mid(line.arguments.operands.size());
        if (!missing.isEmpty()) {
            const QString verb = missing.size() == 1 ? u"Falta "_s : u"Faltan "_s;
            throw BadUsageError(verb + missing.join(u" y "_s) + u'.');
        }
    }

    const QStringList& m_arguments;
    const std::vector<Command>& m_commands;
    qsizetype m_at = 0;
    bool m_onlyOperands = false;
    bool m_json = false;
};

/// The arguments in which options are looked for.
QStringList beforeDashes(const QStringList& arguments)
{
    return arguments.mid(0, arguments.indexOf(u"--"_s));
}

} // namespace

CommandLine CommandLine::parse(const QStringList& arguments, const std::vector<Command>& commands)
{
    const QStringList asked = beforeDashes(arguments);
    CommandLine line;
    line.json = asked.contains(u"--"_s + jsonName);
    const bool help = asked.contains(u"--ayuda"_s) || asked.contains(u"--help"_s) || asked.contains(u"-h"_s);
    if (help) {
        line.wish = Wish::Help;
        const auto first = std::find_if(asked.begin(), asked.end(),
                                        [](const QString& argument) { return !argument.startsWith(u'-'); });
        line.command = first == asked.end() ? nullptr : commandOf(*first, commands);
        return line;
    }
    if (asked.value(0) == u"--version") {
        line.wish = Wish::Version;
        return line;
    }
    try {
        Reader(arguments, commands).read(line);
        line.wish = Wish::Run;
    } catch (const BadUsageError& error) {
        line.message = error.text();
    }
    return line;
}

} // namespace oVELDRA::data
