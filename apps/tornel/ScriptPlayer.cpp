#include "ScriptPlayer.h"

#include <QAbstractEventDispatcher>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tornel {

namespace {

/// Until the script says otherwise. Generous: it is reached only when something is wrong.
constexpr auto defaultDeadline = 60s;
/// For closing what a failed script left open.
constexpr auto closingDeadline = 10s;

} // namespace

ScriptPlayer::ScriptPlayer(ScriptFile script, QString outputFolder, ScriptHost& host, QObject* parent)
    : QObject(parent), m_script(std::move(script)), m_target(host, std::move(outputFolder))
{
    m_deadline.setSingleShot(true);
    m_deadline.setInterval(defaultDeadline);
    connect(&m_deadline, &QTimer::timeout, this, &ScriptPlayer::deadlineReached);
}

void ScriptPlayer::start()
{
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, &ScriptPlayer::look);
    m_state = State::Looking;
    m_deadline.start();
}

void ScriptPlayer::look()
{
    // Nothing is done in here: the dispatcher must not be entered again from its own signal. Posting wakes it up.
    if (m_state == State::Closing) {
        QMetaObject::invokeMethod(this, ScriptTarget::hasModal() ? &ScriptPlayer::closeOne : &ScriptPlayer::finish,
                                  Qt::QueuedConnection);
        return;
    }
    if (m_state != State::Looking) {
        return;
    }
    if (atEnd()) {
        if (!ScriptTarget::hasModal()) {
            QMetaObject::invokeMethod(this, &ScriptPlayer::finish, Qt::QueuedConnection);
        }
        return;
    }
    if (!m_activationAsked && !ScriptTarget::hasKeyboard()) {
        m_activationAsked = true;
        QMetaObject::invokeMethod(
            this, [this] { m_target.activateFront(); }, Qt::QueuedConnection);
    }
    const ScriptTarget::Readiness readiness = m_target.check(m_script.steps[m_next].action);
    m_obstacle = readiness.obstacle;
    if (readiness.ready) {
        m_state = State::Acting;
        QMetaObject::invokeMethod(this, &ScriptPlayer::perform, Qt::QueuedConnection);
    } else if (readiness.hopeless) {
        m_state = State::Acting;
        QMetaObject::invokeMethod(
            this, [this] { fail(m_obstacle); }, Qt::QueuedConnection);
    }
}

void ScriptPlayer::perform()
{
    if (m_state != State::Acting) {
        return;
    }
    const ScriptAction& action = m_script.steps[m_next].action;
    if (const auto* const deadline = std::get_if<step::Deadline>(&action)) {
        m_deadline.setInterval(deadline->time);
    }
    m_target.act(action, [this](const QString& failure) { stepDone(failure); });
}

void ScriptPlayer::stepDone(const QString& failure)
{
    if (m_state != State::Acting) {
        return; // the deadline came first
    }
    if (!failure.isEmpty()) {
        fail(failure);
        return;
    }
    ++m_next;
    m_obstacle.clear();
    m_activationAsked = false;
    m_state = State::Looking;
    m_deadline.start();
}

void ScriptPlayer::deadlineReached()
{
    if (m_state == State::Closing) {
        finish();
        return;
    }
    // A step that is ready by now has only waited for a busy program; the next look will see it.
    const bool ready = atEnd() ? !ScriptTarget::hasModal() : m_target.check(m_script.steps[m_next].action).ready;
    if (m_state == State::Looking && ready) {
        m_deadline.start();
    } else {
        fail(m_obstacle);
    }
}

void ScriptPlayer::fail(const QString& obstacle)
{
    const QString expected =
        atEnd() ? u"el fin del guion sin ventanas abiertas"_s : ScriptTarget::describe(m_script.steps[m_next].action);
    const int line = m_script.steps.empty() ? 0 : m_script.steps[qMin(m_next, m_script.steps.size() - 1)].line;
    m_failure = u"línea %1: se esperaba %2"_s.arg(line).arg(expected);
    if (!obstacle.isEmpty()) {
        m_failure += u", pero "_s + obstacle;
    }
    m_failure += u"; está activo: "_s + m_target.describeActive();
    m_state = State::Closing;
    m_deadline.start(closingDeadline);
}

void ScriptPlayer::closeOne()
{
    if (m_state == State::Closing) {
        ScriptTarget::closeModal();
    }
}

void ScriptPlayer::finish()
{
    if (m_state == State::Over) {
        return;
    }
    m_state = State::Over;
    m_deadline.stop();
    disconnect(QAbstractEventDispatcher::instance(), nullptr, this, nullptr);
    Q_EMIT finished(m_failure);
}

} // namespace tornel
