#pragma once

#include <QJsonObject>
#include <QString>

namespace oVELDRA::data {

/// What the program says to whoever started it.
enum ExitCode : int {
    Success = 0,
    Findings = 1, ///< it ran, and found what should not be (or not yet): see the command's help
    BadUsage = 2, ///< the command line makes no sense
    Failed = 3    ///< something could not be done; nothing was left half done
};

/// Where a command's words go. Texts are for people and in Spanish; the result is for programs.
class Console
{
public:
    Console() = default;
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    virtual ~Console() = default;

    /// Whether the caller asked for JSON. Then say() is silent, and one result() is all that standard output gets.
    [[nodiscard]] virtual bool wantsJson() const = 0;
    /// A line of the command's report, to standard output.
    virtual void say(const QString& line) = 0;
    /// The command's result, to standard output when JSON was asked for, and nowhere otherwise.
    virtual void result(const QJsonObject& object) = 0;
    /// A text of the command's own making that is neither (CSV), to standard output as it is.
    virtual void write(const QString& text) = 0;
    /// A line about something that went wrong, to standard error.
    virtual void complain(const QString& line) = 0;
    /// How far long work is, to standard error when that is a terminal. May be called for every row. `total` 0:
    /// unknown.
    virtual void progress(const QString& what, qint64 done, qint64 total) = 0;
};

} // namespace oVELDRA::data
