#include "Seat.h"

#include <oVELDRA/Store.h>

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QSet>

#include <tornel/HostLists.h>
#include <utility>

using namespace Qt::StringLiterals;
using oVELDRA::Access;
using oVELDRA::Database;

namespace e2e {

namespace {

QString keptAs(const QImage& screen, const QString& name)
{
    const QDir folder(QString::fromUtf8(JOURNEY_SHOTS));
    const QString path = folder.filePath(name + u".png"_s);
    return folder.mkpath(u"."_s) && screen.save(path) ? path : QString();
}

/// Windows with their texts and frames have many colours.
bool isBlank(const QImage& image)
{
    constexpr qsizetype fewColours = 16;
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            colours.insert(image.pixel(x, y));
        }
        if (colours.size() > fewColours) {
            return false;
        }
    }
    return true;
}

} // namespace

const QString& hostTitle()
{
    static const QString title = u"Tornel: declaraciones del despachante"_s;
    return title;
}

void prepare(const QStringList& missingPrograms)
{
    if (!missingPrograms.isEmpty()) {
        QSKIP(qPrintable(u"not installed: %1"_s.arg(missingPrograms.join(u", "_s))));
    }
    QLocale locale(QLocale::Spanish, QLocale::Argentina);
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    QLocale::setDefault(locale);
}

Seat::Seat(QString name) : m_name(std::move(name)), m_folder(m_place.path()) {}

Seat::~Seat()
{
    if (m_program.state() != QProcess::NotRunning) {
        m_program.kill();
        m_program.waitForFinished();
    }
}

void Seat::sitDown(const Surroundings& surroundings)
{
    if (!m_display.start()) {
        stop(u"a screen with a window manager"_s);
    }
    m_program.setProcessEnvironment(surroundings(m_display.environment(QProcessEnvironment::systemEnvironment())));
    m_program.setProcessChannelMode(QProcess::ForwardedChannels);
    m_program.start(QString::fromUtf8(TORNEL_PROGRAM), {u"--datos"_s, m_folder.path()});
    if (!m_program.waitForStarted()) {
        stop(u"the program to start"_s);
    }
    expectWindow(hostTitle());
}

void Seat::keys(const QStringList& names) const
{
    if (!m_display.keys(names)) {
        stop(u"the keys %1 to be pressed"_s.arg(names.join(u' ')));
    }
}

void Seat::type(const QString& text) const
{
    if (!m_display.type(text)) {
        stop(u"\"%1\" to be typed"_s.arg(text));
    }
}

void Seat::fill(const QString& text) const
{
    type(text);
    keys({u"Return"_s});
}

void Seat::expectWindow(const QString& title)
{
    ActiveWindow window;
    const auto hasComeUp = [&] {
        window = m_display.activeWindow();
        return window.title == title && window.id != m_windowId;
    };
    if (!QTest::qWaitFor(hasComeUp, patience)) {
        stop(u"the window \"%1\""_s.arg(title));
    }
    m_windowId = window.id;
}

bool Seat::isInSameWindow() const
{
    return m_display.activeWindow().id == m_windowId;
}

void Seat::shot(const QString& name) const
{
    const QImage screen = m_display.grab();
    if (isBlank(screen) || keptAs(screen, m_name + u'-' + name).isEmpty()) {
        stop(u"a picture of the screen"_s);
    }
}

void Seat::leave()
{
    keys({u"ctrl+q"_s});
    if (m_program.state() != QProcess::NotRunning && !m_program.waitForFinished(patience)) {
        stop(u"the program to end"_s);
    }
    if (m_program.exitStatus() != QProcess::NormalExit || m_program.exitCode() != 0) {
        stop(u"exit code 0, not %1,"_s.arg(m_program.exitCode()));
    }
}

std::unique_ptr<oVELDRA::Recordset> Seat::rows(const QString& statement)
{
    if (!m_inputs) {
        m_inputs = m_folder.connect(Database::Inputs, Access::ReadOnly);
    }
    return tornel::lists::open(*m_inputs, statement);
}

qsizetype Seat::count(const QString& statement)
{
    return rows(statement)->recordCount();
}

QByteArray Seat::storedInputs() const
{
    const QString database = m_folder.file(Database::Inputs);
    QByteArray bytes;
    // What was written last is in the log beside it, which need not be there.
    for (const QString& name : {database, QString(database + u"-wal"_s)}) {
        QFile file(name);
        if (file.open(QIODevice::ReadOnly)) {
            bytes += file.readAll();
        }
    }
    if (bytes.isEmpty()) {
        stop(u"%1 to be read"_s.arg(database));
    }
    return bytes;
}

QString Seat::situation() const
{
    const QString title = m_display.activeWindow().title;
    const QString holder = title.isEmpty() ? u"no window"_s : u"the window \"%1\""_s.arg(title);
    const QString picture = keptAs(m_display.grab(), m_name + u"-failed"_s);
    return u"%1 has the keyboard; %2"_s.arg(holder, picture.isEmpty() ? u"the screen cannot be kept"_s
                                                                      : u"the screen is kept in "_s + picture);
}

void Seat::stop(const QString& expectation) const
{
    throw JourneyStopped(u"waited for %1"_s.arg(expectation).toStdString());
}

} // namespace e2e
