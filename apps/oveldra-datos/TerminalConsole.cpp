#include "TerminalConsole.h"

#include <QJsonDocument>
#include <QString>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace oVELDRA::data {

namespace {

// A line that is broken at the terminal's edge could not be erased.
constexpr qsizetype progressWidth = 79;
constexpr auto eraseLine = "\r\x1b[K";

} // namespace

void TerminalConsole::say(const QString& line)
{
    if (!wantsJson()) {
        put(QString(line + u'\n').toUtf8());
    }
}

void TerminalConsole::result(const QJsonObject& object)
{
    if (wantsJson()) {
        put(QJsonDocument(object).toJson(QJsonDocument::Indented));
    }
}

void TerminalConsole::write(const QString& text)
{
    put(text.toUtf8());
}

void TerminalConsole::complain(const QString& line)
{
    eraseProgress();
    flush(); // where both go to one place, in the order in which they were said
    std::fputs(QString(line + u'\n').toUtf8().constData(), m_streams.errors);
    std::fflush(m_streams.errors);
}

void TerminalConsole::progress(const QString& what, qint64 done, qint64 total)
{
    if (!m_streams.errorsAreTerminal) {
        return;
    }
    if (const auto line = m_progress.next(what, done, total, ProgressLine::Clock::now())) {
        std::fputs(eraseLine, m_streams.errors);
        std::fputs(line->left(progressWidth).toUtf8().constData(), m_streams.errors);
        std::fflush(m_streams.errors);
        m_progressShown = true;
    }
}

bool TerminalConsole::finish()
{
    eraseProgress();
    flush();
    if (m_error == 0 || m_error == EPIPE) {
        return true;
    }
    complain(u"oveldra-datos: no se pudo escribir el informe en la salida estándar: "_s + qt_error_string(m_error));
    return false;
}

void TerminalConsole::put(const QByteArray& utf8)
{
    eraseProgress();
    if (m_error != 0) {
        return;
    }
    errno = 0;
    const auto size = static_cast<size_t>(utf8.size());
    if (std::fwrite(utf8.constData(), 1, size, m_streams.output) != size) {
        m_error = errno;
    }
}

void TerminalConsole::flush()
{
    errno = 0;
    if (std::fflush(m_streams.output) != 0 && m_error == 0) {
        m_error = errno;
    }
}

void TerminalConsole::eraseProgress()
{
    if (m_progressShown) {
        std::fputs(eraseLine, m_streams.errors);
        std::fflush(m_streams.errors);
        m_progressShown = false;
    }
}

} // namespace oVELDRA::data
