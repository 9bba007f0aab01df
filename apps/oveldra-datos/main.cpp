#include "CommandLine.h"
#include "Commands.h"
#include "Program.h"
#include "TerminalConsole.h"

#include <QCoreApplication>
#include <QLocale>

#ifdef Q_OS_UNIX
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

using namespace oVELDRA::data;

namespace {

#ifdef Q_OS_UNIX
void prepareStreams()
{
    // A stream that the caller closed would have its number given to the next file opened, a database perhaps.
    for (int stream = open("/dev/null", O_RDWR); stream >= 0; stream = dup(stream)) {
        if (stream > STDERR_FILENO) {
            close(stream);
            break;
        }
    }
    // A reader who goes away is met when writing, not in the middle of the work.
    std::signal(SIGPIPE, SIG_IGN);
}

bool errorsAreTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}
#else
void prepareStreams() {}

bool errorsAreTerminal()
{
    return false;
}
#endif

/// The user's own settings where they are Spanish; numbers and dates are Argentine otherwise.
QLocale usersLocale()
{
    const QLocale system = QLocale::system();
    return system.language() == QLocale::Spanish ? system : QLocale(QLocale::Spanish, QLocale::Argentina);
}

} // namespace

int main(int argc, char** argv)
{
    prepareStreams();
    const QCoreApplication application(argc, argv);
    QLocale::setDefault(usersLocale());

    const std::vector<Command> commands = allCommands();
    const CommandLine line = CommandLine::parse(QCoreApplication::arguments().mid(1), commands);
    TerminalConsole console(line.json ? TerminalConsole::Format::Json : TerminalConsole::Format::Text,
                            {stdout, stderr, errorsAreTerminal()});
    const int code = runProgram(line, commands, console);
    return console.finish() ? code : static_cast<int>(Failed);
}
