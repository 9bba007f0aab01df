#include "CommandLine.h"
#include "DataFolder.h"
#include "FirstPaint.h"
#include "FirstStart.h"
#include "HostIcon.h"
#include "HostSession.h"
#include "HostWindow.h"
#include "ScriptFile.h"
#include "ScriptPlayer.h"
#include "SessionScriptHost.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QProgressDialog>
#include <QScreen>
#include <QTranslator>

#include <cstdio>
#include <cstdlib>
#include <exception>

using namespace Qt::StringLiterals;
using namespace tornel;

namespace {

void print(std::FILE* stream, const QString& text)
{
    std::fputs(qUtf8Printable(text), stream);
    std::fflush(stream);
}

/// Where a failure of the start is told: nobody answers a box when a script is played.
void tell(const CommandLine& line, const QString& text)
{
    print(stderr, u"tornel: %1\n"_s.arg(text));
    if (line.script.isEmpty()) {
        QMessageBox::critical(nullptr, hostTitle(), text);
    }
}

/// False when the user gave up waiting.
bool prepare(const DataFolder& folder)
{
    FirstStart firstStart(folder);
    if (!firstStart.needed()) {
        return true;
    }
    QProgressDialog dialog(u"Preparando las bases de datos de muestra (todo el arancel)…"_s, u"Cancelar"_s, 0, 1000);
    dialog.setObjectName(u"dlgPrimerInicio"_s);
    dialog.setWindowTitle(hostTitle());
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.setMinimumDuration(0);
    dialog.setAutoClose(false);
    dialog.setValue(0);
    return firstStart.run([&dialog](qsizetype done, qsizetype total) {
        dialog.setValue(static_cast<int>(done * 1000 / total));
        return !dialog.wasCanceled();
    });
}

int runHost(const CommandLine& line)
{
    ScriptFile script;
    if (!line.script.isEmpty()) {
        script = ScriptFile::load(line.script);
        if (!script.problems.empty()) {
            print(stderr, script.describeProblems(line.script) + u'\n');
            return EXIT_FAILURE;
        }
    }
    const DataFolder folder(line.dataFolder);
    if (!prepare(folder)) {
        print(stderr, u"tornel: preparación cancelada\n"_s);
        return EXIT_FAILURE;
    }
    HostSession session(folder);
    HostWindow window(session, folder.path());
    SessionScriptHost scriptHost(session, window);
    const QSize wished(window.fontMetrics().averageCharWidth() * 150, window.fontMetrics().height() * 40);
    window.resize(wished.boundedTo(window.screen()->availableSize()));
    if (line.quitWhenPainted) {
        quitWhenPainted(window);
    }
    window.show();
    if (line.script.isEmpty()) {
        return QApplication::exec();
    }
    ScriptPlayer player(std::move(script), line.outputFolder, scriptHost);
    QObject::connect(&player, &ScriptPlayer::finished, qApp, [&line](const QString& failure) {
        if (failure.isEmpty()) {
            print(stdout, u"%1: bien\n"_s.arg(line.script));
        } else {
            print(stderr, u"%1, %2\n"_s.arg(line.script, failure));
        }
        if (QApplication::activeModalWidget() != nullptr) {
            // A dialog that asks again however often it is closed would keep its own event loop turning for ever.
            std::_Exit(EXIT_FAILURE);
        }
        QApplication::exit(failure.isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE);
    });
    player.start();
    return QApplication::exec();
}

} // namespace

int main(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    const CommandLine line = CommandLine::parse(arguments, u"" TORNEL_VERSION ""_s, QLocale::system());
    switch (line.wish) {
    case CommandLine::Wish::Run:
        break;
    case CommandLine::Wish::Help:
    case CommandLine::Wish::Version:
        print(stdout, line.message);
        return EXIT_SUCCESS;
    case CommandLine::Wish::Refuse:
        print(stderr, u"tornel: %1\nPruebe tornel --ayuda\n"_s.arg(line.message));
        return 2;
    }

    QLocale::setDefault(line.locale);
    // A desktop's own menu bar is asked for over the message bus, for which every start would wait.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    const QApplication application(argc, argv);
    QApplication::setApplicationName(u"tornel"_s);
    QApplication::setApplicationVersion(u"" TORNEL_VERSION ""_s);
    QApplication::setWindowIcon(hostIcon());
    QTranslator dialogs; // the library's own windows, such as the print dialog
    if (dialogs.load(u"qtbase_es"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&dialogs);
    }
    try {
        return runHost(line);
    } catch (const oVELDRA::RuntimeError& error) {
        tell(line, u"%1 - %2"_s.arg(QString::number(error.number()), error.description()));
    } catch (const std::exception& error) {
        tell(line, QString::fromUtf8(error.what()));
    }
    return EXIT_FAILURE;
}
