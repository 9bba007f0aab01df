#pragma once

#include "PartFile.h"

#include <store/Engine.h>

#include <QString>

#include <memory>
#include <optional>

namespace oVELDRA::data {

/// The database that a command fills, opened for writing and made when it is not there. A file that was not there takes
/// its name only in keep(): until then, and when that is never called, nobody meets half a database.
class Destination
{
public:
    /// An URL as connectStore() takes it. Throws RuntimeError; BadUsageError for a database in memory.
    explicit Destination(const QString& url);

    [[nodiscard]] store::EngineConnection& engine() { return *m_engine; }

    /// Closes the database and leaves it where it belongs. Throws RuntimeError.
    void keep();

private:
    std::optional<PartFile> m_part; // removed behind the engine
    std::unique_ptr<store::EngineConnection> m_engine;
};

} // namespace oVELDRA::data
