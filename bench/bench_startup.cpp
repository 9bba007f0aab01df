// How long the first screens take to be painted, against an empty Qt dialog: the demonstration host from the start of
// its process, and the list of a subitem's inputs from the call of its entry operation.
//
// Measured in real windows, on a screen of its own with a window manager, where Xvfb and openbox are installed, and
// else offscreen; QT_QPA_PLATFORM makes it measure there and nowhere else. Offscreen an empty dialog waits for no
// window system and is hardly a limit.

#include "Measure.h"
#include "e2e/XDisplay.h"

#include <oVELDRA/cloVELDRAMain.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <tornel/DataFolder.h>
#include <tornel/FirstPaint.h>
#include <tornel/FirstStart.h>
#include <tornel/HostSession.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int starts = 15;
constexpr int openings = 25;
constexpr double startBar = 2.0;
constexpr double openingBar = 1.5;

/// Seconds from the start of a program until it says that its window is painted.
double startOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    QElapsedTimer timer;
    timer.start();
    process.start(program, arguments);
    const bool painted = process.waitForReadyRead() && process.readAllStandardOutput() == "mostrada\n";
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    if (!painted || !process.waitForFinished() || process.exitCode() != 0) {
        std::fprintf(stderr, "%s does not start: %s\n", qPrintable(program),
                     process.readAllStandardError().constData());
        std::exit(2);
    }
    return seconds;
}

/// Closes the next dialog as soon as it has been painted, and knows when that was.
class NextDialog : public QObject
{
public:
    NextDialog() { qApp->installEventFilter(this); }

    /// Seconds from the call of `open`, which shows a dialog until it is closed, until the dialog was painted.
    template <typename Open>
    double painted(Open open)
    {
        m_waiting = true;
        m_timer.start();
        open();
        if (m_waiting) {
            std::fprintf(stderr, "no dialog was painted\n");
            std::exit(2);
        }
        return m_seconds;
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* const dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(watched) : nullptr;
        if (m_waiting && dialog != nullptr) {
            m_waiting = false;
            new tornel::FirstPaint(*dialog, [this, dialog] {
                m_seconds = static_cast<double>(m_timer.nsecsElapsed()) / 1e9;
                dialog->reject();
            });
        }
        return false;
    }

private:
    bool m_waiting = false;
    QElapsedTimer m_timer;
    double m_seconds = 0;
};

bool programStart(const tornel::DataFolder& folder)
{
    const QString host = QStringLiteral(TORNEL_PROGRAM);
    const QString empty = QStringLiteral(EMPTY_DIALOG);
    const QStringList arguments{u"--datos"_s, folder.path(), u"--salir-al-mostrar"_s};
    // The files come into the machine's memory first; a cold disk is no part of either.
    startOf(host, arguments);
    startOf(empty, {});
    bench::Samples ours;
    bench::Samples limit;
    for (int i = 0; i < starts; ++i) {
        limit.add(startOf(empty, {}));
        ours.add(startOf(host, arguments));
    }
    return bench::reportMedians("from process start to the host's window painted", ours, limit, startBar);
}

/// What the host's button does, for the export that took from two declarations.
void lookAtSubitem(tornel::HostSession& session)
{
    session.run(tornel::Operation::SubitemInputs, {u"EX260077"_s, u"001"_s, u"77001"_s});
}

bool firstOpening(const tornel::DataFolder& folder, NextDialog& next)
{
    bench::Samples ours;
    bench::Samples limit;
    for (int i = 0; i <= openings; ++i) {
        // With its last object the component drops its screens.
        QDialog empty;
        tornel::HostSession session(folder);
        const double emptySeconds = next.painted([&empty] { empty.exec(); });
        const double seconds = next.painted([&session] { lookAtSubitem(session); });
        if (i > 0) { // the process is warm
            limit.add(emptySeconds);
            ours.add(seconds);
        }
    }
    return bench::reportMedians("VerINSxSBT to painted, its first call", ours, limit, openingBar);
}

bool laterOpenings(const tornel::DataFolder& folder, NextDialog& next)
{
    bench::Samples ours;
    bench::Samples limit;
    QDialog empty;
    tornel::HostSession session(folder);
    for (int i = 0; i <= openings; ++i) {
        const double emptySeconds = next.painted([&empty] { empty.exec(); });
        const double seconds = next.painted([&session] { lookAtSubitem(session); });
        if (i > 0) { // neither is made any more
            limit.add(emptySeconds);
            ours.add(seconds);
        }
    }
    return bench::reportMedians("VerINSxSBT to painted, later calls", ours, limit, openingBar);
}

/// What this program says when it is run once more, on a screen of its own.
int measureOnScreen(const QString& self)
{
    e2e::XDisplay screen;
    if (!screen.start()) {
        std::fputs("the screen does not come up\n", stderr);
        return 2;
    }
    QProcess process;
    process.setProcessEnvironment(screen.environment(QProcessEnvironment::systemEnvironment()));
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(self, QStringList());
    process.waitForFinished(-1);
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : 2;
}

int measureHere(int argc, char** argv)
{
    const QTemporaryDir place;
    // Not the settings of the user, nor his message bus: looking for one takes longer than either window.
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(place.filePath(u"config"_s)));
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(place.path()));
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + QFile::encodeName(place.filePath(u"no-bus"_s)));
    const QApplication application(argc, argv);
    std::printf("platform: %s\n", qPrintable(QGuiApplication::platformName()));
    std::fflush(stdout);
    const tornel::DataFolder folder(place.filePath(u"datos"_s));
    tornel::FirstStart(folder).run([](qsizetype, qsizetype) { return true; });

    bool held = programStart(folder);
    NextDialog next;
    held = firstOpening(folder, next) && held;
    held = laterOpenings(folder, next) && held;
    return held ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        return measureHere(argc, argv);
    }
    if (e2e::XDisplay::missingPrograms().isEmpty()) {
        const QCoreApplication application(argc, argv);
        return measureOnScreen(QCoreApplication::applicationFilePath());
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return measureHere(argc, argv);
}
