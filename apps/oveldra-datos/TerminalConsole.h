#pragma once

#include "Console.h"
#include "ProgressLine.h"

#include <cstdio>

namespace oVELDRA::data {

/// The console over the program's own streams. Everything is written in UTF-8, whatever the locale.
///
/// A reader of standard output who goes away (`| head`) is no error: the work goes on, and nothing more is written.
class TerminalConsole final : public Console
{
public:
    enum class Format : quint8 { Text, Json };

    struct Streams
    {
        std::FILE* output = stdout;
        std::FILE* errors = stderr;
        bool errorsAreTerminal = false; ///< only then is progress shown
    };

    /// The streams stay the caller's.
    TerminalConsole(Format format, Streams streams) : m_format(format), m_streams(streams) {}
    ~TerminalConsole() override { eraseProgress(); }

    [[nodiscard]] bool wantsJson() const override { return m_format == Format::Json; }
    void say(const QString& line) override;
    void result(const QJsonObject& object) override;
    void write(const QString& text) override;
    void complain(const QString& line) override;
    void progress(const QString& what, qint64 done, qint64 total) override;

    /// Writes what still waits, and erases the progress line. False, with a complaint, when standard output did not
    /// take everything (a full disk); call it once, at the end.
    [[nodiscard]] bool finish();

private:
    void put(const QByteArray& utf8);
    void flush();
    void eraseProgress();

    Format m_format;
    Streams m_streams;
    ProgressLine m_progress;
    bool m_progressShown = false;
    int m_error = 0; ///< errno of the first write that failed
};

} // namespace oVELDRA::data
