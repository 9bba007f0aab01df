#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <optional>

namespace e2e {

/// A window or a control as a program describes it to assistive programs.
struct Accessible
{
    QString service; ///< the program on the bus
    QString path;    ///< of the object in it
};

/// The bus over which assistive programs ask others for their windows, the test's own.
class AccessibleBus
{
public:
    /// What it needs that is not installed; empty when it can be used.
    [[nodiscard]] static QStringList missingPrograms();

    AccessibleBus() = default;
    ~AccessibleBus();
    AccessibleBus(const AccessibleBus&) = delete;
    AccessibleBus& operator=(const AccessibleBus&) = delete;

    /// False, with a warning, when it does not come up.
    [[nodiscard]] bool start();

    /// What makes a program tell this bus, with everything else as `base` has it.
    [[nodiscard]] QProcessEnvironment environment(QProcessEnvironment base) const;

    /// The first object that is as asked for, in the order of the programs' own trees; those that hold others come
    /// before them. Only windows of that title are searched.
    [[nodiscard]] std::optional<Accessible> find(const QString& windowTitle,
                                                 const std::function<bool(const Accessible&)>& isWanted) const;

    [[nodiscard]] QString name(const Accessible& object) const;
    [[nodiscard]] QString description(const Accessible& object) const;
    [[nodiscard]] QString role(const Accessible& object) const;
    [[nodiscard]] bool hasFocus(const Accessible& object) const;
    [[nodiscard]] QList<Accessible> children(const Accessible& object) const;

private:
    [[nodiscard]] QVariantList ask(const Accessible& object, const QString& interface, const QString& method,
                                   const QVariantList& arguments = {}) const;
    [[nodiscard]] QString property(const Accessible& object, const QString& property) const;

    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_sessionAddress;
    QString m_connectionName; ///< empty while there is none
};

} // namespace e2e
