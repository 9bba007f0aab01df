#include "TestStores.h"

#include <QCoreApplication>
#include <QTemporaryDir>

namespace oVELDRA::doubles {

namespace {

/// One object of a kind for the life of the application.
template <typename Kind>
Kind& kept()
{
    static Kind* object = nullptr;
    if (!object) {
        object = new Kind;
        qAddPostRoutine([] {
            delete object;
            object = nullptr;
        });
    }
    return *object;
}

} // namespace

bool TestStores::onServer()
{
    const QByteArray engine = qgetenv("OVELDRA_TEST_ENGINE");
    if (!engine.isEmpty() && engine != "postgresql") {
        qFatal("OVELDRA_TEST_ENGINE: unknown engine '%s'", engine.constData());
    }
    return !engine.isEmpty();
}

PostgresServer& TestStores::server()
{
    auto& server = kept<PostgresServer>();
    if (!server.isRunning()) {
        server.start();
    }
    return server;
}

QString TestStores::newUrl()
{
    static int made = 0;
    const QString name = QStringLiteral("base") + QString::number(++made);
    return onServer() ? server().url(name)
                      : QStringLiteral("sqlite:") + kept<QTemporaryDir>().filePath(name + QStringLiteral(".sqlite"));
}

QString TestStores::created(Database schema)
{
    QString url = newUrl();
    static_cast<void>(createStore(url, schema));
    return url;
}

} // namespace oVELDRA::doubles
