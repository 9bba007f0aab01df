#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

namespace tornel {

/// What the program was started with.
struct CommandLine
{
    enum class Wish { Run, Help, Version, Refuse };

    Wish wish = Wish::Run;
    QString message; ///< what to print for Help, Version and Refuse
    QString dataFolder;
    QString script;
    QString outputFolder;
    bool quitWhenPainted = false; ///< for measuring the start; never with a script
    QLocale locale;

    /// Needs no application object, so that help and version work without a display.
    [[nodiscard]] static CommandLine parse(const QStringList& arguments, const QString& version, const QLocale& system);
};

} // namespace tornel
