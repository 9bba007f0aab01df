#pragma once

#include "doubles/PostgresServer.h"

#include <oVELDRA/Store.h>

#include <QString>

namespace oVELDRA::doubles {

/// Databases for a test program that runs on every engine: on files, or, when the environment says
/// OVELDRA_TEST_ENGINE=postgresql, on a server of the program's own. Needs a QCoreApplication, with which they go.
class TestStores
{
public:
    [[nodiscard]] static bool onServer();
    /// The program's server; starts it.
    [[nodiscard]] static PostgresServer& server();

    /// The URL of a database that is not there yet.
    [[nodiscard]] static QString newUrl();
    /// The URL of a new, empty database.
    [[nodiscard]] static QString created(Database schema);
};

} // namespace oVELDRA::doubles
