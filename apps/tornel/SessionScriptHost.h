#pragma once

#include "HostSession.h"
#include "ScriptTarget.h"

namespace tornel {

/// The demonstration as a script sees it.
class SessionScriptHost final : public ScriptHost
{
public:
    /// Neither is owned.
    SessionScriptHost(HostSession& session, QWidget& window) : m_session(session), m_window(window) {}

    [[nodiscard]] QWidget& window() override { return m_window; }
    [[nodiscard]] ScriptAnswer ask(ScriptDatabase database, const QString& statement, const QString& column) override;

private:
    HostSession& m_session;
    QWidget& m_window;
};

} // namespace tornel
