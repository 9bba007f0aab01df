#pragma once

#include "ScriptFile.h"

#include <QString>

#include <functional>

class QWidget;

namespace tornel {

/// What a query of a script answered.
struct ScriptAnswer
{
    QString error; ///< why it could not be asked; empty when it could
    qsizetype rows = 0;
    QString value; ///< of the column asked for, in the first row
};

/// The program that a script is played on.
class ScriptHost
{
public:
    ScriptHost() = default;
    ScriptHost(const ScriptHost&) = delete;
    ScriptHost& operator=(const ScriptHost&) = delete;
    virtual ~ScriptHost() = default;

    /// The main window: active when no modal one is.
    [[nodiscard]] virtual QWidget& window() = 0;

    /// Asks a database; `column` may be empty.
    [[nodiscard]] virtual ScriptAnswer ask(ScriptDatabase database, const QString& statement,
                                           const QString& column) = 0;
};

/// The windows and databases that steps look at and act on.
class ScriptTarget
{
public:
    /// Whether a step can be done now, and if not, why.
    struct Readiness
    {
        bool ready = false;
        bool hopeless = false; ///< waiting would not help
        QString obstacle;
    };

    /// Told that a step is done; the text is empty, or says what failed.
    using Done = std::function<void(const QString& failure)>;

    ScriptTarget(ScriptHost& host, QString outputFolder);

    /// Looks only; changes nothing.
    [[nodiscard]] Readiness check(const ScriptAction& action) const;

    /// Does a step that is ready. A step that opens a modal window returns only when that is closed, but says that it
    /// is done before.
    void act(const ScriptAction& action, const Done& done);

    /// What a step waits for, for messages.
    [[nodiscard]] static QString describe(const ScriptAction& action);

    /// What the user sees in front, for messages.
    [[nodiscard]] QString describeActive() const;

    /// True when a window of the program has the keyboard.
    [[nodiscard]] static bool hasKeyboard();

    /// Gives the keyboard to the window in front. Where there is no window manager, nobody else does when a window in
    /// front of it has closed.
    void activateFront();

    /// True while a modal window is open.
    [[nodiscard]] static bool hasModal();

    /// Closes the modal window in front, whether it wants or not.
    static void closeModal();

private:
    ScriptHost& m_host;
    QString m_outputFolder;
};

} // namespace tornel
