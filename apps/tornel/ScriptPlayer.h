#pragma once

#include "ScriptFile.h"
#include "ScriptTarget.h"

#include <QObject>
#include <QTimer>

namespace tornel {

/// Plays a script on the real windows, driven by the event loop alone: whenever it is about to wait for events, in
/// whatever modal loop it runs, the player looks whether the current step can be done, and does it. A step that cannot
/// be done before its deadline ends the script, and so does a message box that nobody expects.
class ScriptPlayer : public QObject
{
    Q_OBJECT

public:
    /// The host is not owned. Screenshots go to `outputFolder`, which is made when it is needed.
    ScriptPlayer(ScriptFile script, QString outputFolder, ScriptHost& host, QObject* parent = nullptr);

    /// Begins when the event loop next waits.
    void start();

Q_SIGNALS:
    /// The script is over; its dialogs are closed, or would not be in time. The text is empty when every step was done;
    /// otherwise it says in which line what was expected and what is there instead.
    void finished(const QString& failure);

private:
    enum class State { Idle, Looking, Acting, Closing, Over };

    void look();
    void perform();
    void stepDone(const QString& failure);
    void fail(const QString& obstacle);
    void closeOne();
    void finish();
    void deadlineReached();
    [[nodiscard]] bool atEnd() const { return m_next >= m_script.steps.size(); }

    ScriptFile m_script;
    ScriptTarget m_target;
    QTimer m_deadline;
    State m_state = State::Idle;
    std::size_t m_next = 0;
    bool m_activationAsked = false;
    QString m_obstacle;
    QString m_failure;
};

} // namespace tornel
