#include "XDisplay.h"

#include <QFile>
#include <QStandardPaths>
#include <QTest>
#include <QtEndian>

#include <csignal>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;

namespace e2e {

namespace {

constexpr int commandTimeout = 30'000;

void end(QProcess& process)
{
    process.terminate();
    if (!process.waitForFinished(commandTimeout)) {
        process.kill();
        process.waitForFinished();
    }
}

/// A test that crashes leaves nothing behind.
void dieWithTest(QProcess& process)
{
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

} // namespace

QStringList XDisplay::missingPrograms()
{
    QStringList missing;
    for (const QString& program : {u"Xvfb"_s, u"openbox"_s, u"xdotool"_s}) {
        if (QStandardPaths::findExecutable(program).isEmpty()) {
            missing.append(program);
        }
    }
    return missing;
}

bool XDisplay::start()
{
    dieWithTest(m_server);
    dieWithTest(m_windowManager);
    // The server looks for a free number itself and says which one it took when it is ready. It must not begin anew
    // when a client leaves: the next one could come in between.
    m_server.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1280x900x24"_s, u"-fbdir"_s,
                               m_folder.path(), u"-nolisten"_s, u"tcp"_s, u"-noreset"_s});
    QByteArray number;
    while (!number.endsWith('\n')) {
        if (!m_server.waitForReadyRead(commandTimeout)) {
            return false;
        }
        number += m_server.readAllStandardOutput();
    }
    m_name = u':' + QString::fromLatin1(number.trimmed());
    m_windowManager.setProcessEnvironment(environment(QProcessEnvironment::systemEnvironment()));
    m_windowManager.setProcessChannelMode(QProcess::ForwardedChannels);
    m_windowManager.start(u"openbox"_s, {});
    // It tells its desktops when it has taken over; a window that came before could stay without the keyboard.
    return m_windowManager.waitForStarted(commandTimeout) &&
           QTest::qWaitFor([this] { return xdotool({u"get_num_desktops"_s}); }, commandTimeout);
}

XDisplay::~XDisplay()
{
    end(m_windowManager);
    end(m_server);
}

QProcessEnvironment XDisplay::environment(QProcessEnvironment base) const
{
    base.insert(u"DISPLAY"_s, m_name);
    base.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    // Not the machine's message bus, nor the user's settings, nor his window manager's.
    base.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path="_s + m_folder.filePath(u"no-bus"_s));
    base.insert(u"XDG_CONFIG_HOME"_s, m_folder.filePath(u"config"_s));
    base.insert(u"XDG_CACHE_HOME"_s, m_folder.filePath(u"cache"_s));
    base.insert(u"XDG_DATA_HOME"_s, m_folder.filePath(u"data"_s));
    base.insert(u"XDG_RUNTIME_DIR"_s, m_folder.path());
    // Keys go to the windows, not through an input method that the machine's user has set up.
    base.remove(u"QT_IM_MODULE"_s);
    base.remove(u"XMODIFIERS"_s);
    return base;
}

bool XDisplay::xdotool(const QStringList& arguments, QString* output) const
{
    QProcess process;
    process.setProcessEnvironment(environment(QProcessEnvironment::systemEnvironment()));
    process.start(u"xdotool"_s, arguments);
    if (!process.waitForFinished(commandTimeout)) {
        process.kill();
        process.waitForFinished();
        return false;
    }
    if (output) {
        *output = QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    }
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

ActiveWindow XDisplay::activeWindow() const
{
    ActiveWindow window;
    // It can close between the two.
    const bool found =
        xdotool({u"getactivewindow"_s}, &window.id) && xdotool({u"getwindowname"_s, window.id}, &window.title);
    return found ? window : ActiveWindow();
}

bool XDisplay::keys(const QStringList& names) const
{
    return xdotool(QStringList{u"key"_s} + names);
}

bool XDisplay::type(const QString& text) const
{
    return xdotool({u"type"_s, text});
}

QImage XDisplay::grab() const
{
    // The server keeps its frame buffer in a file in the format of window dumps: big-endian words, the colour map, the
    // pixels, here of 32 bits each.
    QFile file(m_folder.filePath(u"Xvfb_screen0"_s));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray dump = file.readAll();
    const auto word = [&dump](qsizetype index) {
        return static_cast<int>(qFromBigEndian<quint32>(dump.constData() + index * 4));
    };
    constexpr qsizetype headerWords = 25;
    if (dump.size() < headerWords * 4) {
        return {};
    }
    const int headerSize = word(0);
    const int width = word(4);
    const int height = word(5);
    const int bitsPerPixel = word(11);
    const int bytesPerLine = word(12);
    const int colours = word(19);
    constexpr int colourSize = 12;
    const qsizetype pixels = headerSize + qsizetype{colours} * colourSize;
    if (bitsPerPixel != 32 || dump.size() < pixels + qsizetype{bytesPerLine} * height) {
        return {};
    }
    const auto* const bytes = reinterpret_cast<const uchar*>(dump.constData()) + pixels;
    return QImage(bytes, width, height, bytesPerLine, QImage::Format_RGB32).copy();
}

} // namespace e2e
