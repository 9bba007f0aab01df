#include "AccessibleBus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QFileInfo>
#include <QStandardPaths>

#include <csignal>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;

namespace e2e {

namespace {

constexpr int patience = 30'000; // milliseconds

const QString& accessibleInterface()
{
    static const QString name = u"org.a11y.atspi.Accessible"_s;
    return name;
}

/// All programs that have windows are this one's children.
Accessible registry()
{
    return {u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/accessible/root"_s};
}

/// Stops at the first object that is wanted.
std::optional<Accessible> search(const AccessibleBus& bus, const Accessible& object,
                                 const std::function<bool(const Accessible&)>& isWanted)
{
    if (isWanted(object)) {
        return object;
    }
    for (const Accessible& child : bus.children(object)) {
        if (auto found = search(bus, child, isWanted)) {
            return found;
        }
    }
    return std::nullopt;
}

} // namespace

QStringList AccessibleBus::missingPrograms()
{
    QStringList missing;
    if (QStandardPaths::findExecutable(u"dbus-daemon"_s).isEmpty()) {
        missing.append(u"dbus-daemon"_s);
    }
    // It is started by the bus, which finds it by this file.
    if (!QFileInfo::exists(u"/usr/share/dbus-1/services/org.a11y.Bus.service"_s)) {
        missing.append(u"at-spi2-core"_s);
    }
    return missing;
}

AccessibleBus::~AccessibleBus()
{
    if (!m_connectionName.isEmpty()) {
        QDBusConnection::disconnectFromBus(m_connectionName);
    }
    // What it started ends with it.
    m_daemon.terminate();
    if (!m_daemon.waitForFinished(patience)) {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
}

bool AccessibleBus::start()
{
    QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
    own.insert(u"XDG_RUNTIME_DIR"_s, m_folder.path());
    own.insert(u"GSETTINGS_BACKEND"_s, u"memory"_s);
    own.remove(u"DISPLAY"_s);
    m_daemon.setProcessEnvironment(own);
    m_daemon.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); }); // a test that crashes leaves nothing
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    m_daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address"_s,
                                      u"--address=unix:path="_s + m_folder.filePath(u"bus"_s)});
    QByteArray address;
    while (!address.endsWith('\n')) {
        if (!m_daemon.waitForReadyRead(patience)) {
            qWarning("the message bus does not come up");
            return false;
        }
        address += m_daemon.readAllStandardOutput();
    }
    m_sessionAddress = QString::fromLatin1(address.trimmed());

    // The first question starts the other bus.
    const QString asking = u"e2e-session"_s;
    QDBusMessage question =
        QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, u"org.a11y.Bus"_s, u"GetAddress"_s);
    const QDBusMessage answer =
        QDBusConnection::connectToBus(m_sessionAddress, asking).call(question, QDBus::Block, patience);
    QDBusConnection::disconnectFromBus(asking);
    if (answer.type() != QDBusMessage::ReplyMessage) {
        qWarning().noquote() << "no bus of assistive programs:" << answer.errorMessage();
        return false;
    }
    m_connectionName = u"e2e-accessible"_s;
    return QDBusConnection::connectToBus(answer.arguments().constFirst().toString(), m_connectionName).isConnected();
}

QProcessEnvironment AccessibleBus::environment(QProcessEnvironment base) const
{
    base.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_sessionAddress);
    base.insert(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
    return base;
}

std::optional<Accessible> AccessibleBus::find(const QString& windowTitle,
                                              const std::function<bool(const Accessible&)>& isWanted) const
{
    for (const Accessible& program : children(registry())) {
        for (const Accessible& window : children(program)) {
            if (name(window) != windowTitle) {
                continue;
            }
            if (auto found = search(*this, window, isWanted)) {
                return found;
            }
        }
    }
    return std::nullopt;
}

QString AccessibleBus::name(const Accessible& object) const
{
    return property(object, u"Name"_s);
}

QString AccessibleBus::description(const Accessible& object) const
{
    return property(object, u"Description"_s);
}

QString AccessibleBus::role(const Accessible& object) const
{
    return ask(object, accessibleInterface(), u"GetRoleName"_s).value(0).toString();
}

bool AccessibleBus::hasFocus(const Accessible& object) const
{
    // Two words of flags.
    constexpr quint32 focused = 1U << 12U;
    const QVariantList answer = ask(object, accessibleInterface(), u"GetState"_s);
    return !answer.isEmpty() && (qdbus_cast<QList<quint32>>(answer.constFirst()).value(0) & focused) != 0;
}

QList<Accessible> AccessibleBus::children(const Accessible& object) const
{
    QList<Accessible> list;
    const QVariantList answer = ask(object, accessibleInterface(), u"GetChildren"_s);
    if (answer.isEmpty()) {
        return list;
    }
    const auto argument = answer.constFirst().value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        Accessible child;
        QDBusObjectPath path;
        argument.beginStructure();
        argument >> child.service >> path;
        argument.endStructure();
        child.path = path.path();
        list.append(child);
    }
    argument.endArray();
    return list;
}

QVariantList AccessibleBus::ask(const Accessible& object, const QString& interface, const QString& method,
                                const QVariantList& arguments) const
{
    QDBusMessage question = QDBusMessage::createMethodCall(object.service, object.path, interface, method);
    question.setArguments(arguments);
    const QDBusMessage answer = QDBusConnection(m_connectionName).call(question, QDBus::Block, patience);
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments() : QVariantList();
}

QString AccessibleBus::property(const Accessible& object, const QString& property) const
{
    const QVariantList answer =
        ask(object, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {accessibleInterface(), property});
    return answer.isEmpty() ? QString() : answer.constFirst().value<QDBusVariant>().variant().toString();
}

} // namespace e2e
