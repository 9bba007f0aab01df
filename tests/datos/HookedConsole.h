#pragma once

#include <QString>

#include <functional>
#include <oveldra-datos/Console.h>
#include <utility>

namespace oVELDRA::data {

/// A console that says nothing and does something at every report of progress: what others do in the middle of the
/// work.
class HookedConsole final : public Console
{
public:
    using Hook = std::function<void(const QString& what, qint64 done, qint64 total)>;

    explicit HookedConsole(Hook hook) : m_hook(std::move(hook)) {}

    [[nodiscard]] bool wantsJson() const override { return false; }
    void say(const QString& /*line*/) override {}
    void result(const QJsonObject& /*object*/) override {}
    void write(const QString& /*text*/) override {}
    void complain(const QString& /*line*/) override {}
    void progress(const QString& what, qint64 done, qint64 total) override { m_hook(what, done, total); }

private:
    Hook m_hook;
};

} // namespace oVELDRA::data
