#pragma once

#include "DataFolder.h"

#include <QString>

#include <functional>
#include <vector>

namespace tornel {

/// Makes the databases that a data folder lacks and fills them with the sample.
///
/// Each one is built under a name of its own beside its place and takes its name when it is complete, so a first start
/// that is broken off leaves either a whole database or none. Leftovers of a broken one are cleared away.
class FirstStart
{
public:
    /// Rows done, of how many. Answers whether to go on.
    using Report = std::function<bool(qsizetype done, qsizetype total)>;

    explicit FirstStart(const DataFolder& folder);

    /// True when a database is missing.
    [[nodiscard]] bool needed() const;

    /// Makes what is missing. False when the report said to stop. Throws oVELDRA::RuntimeError. Two programs that start
    /// at once wait for each other.
    bool run(const Report& report);

private:
    [[nodiscard]] std::vector<oVELDRA::Database> missing() const;

    const DataFolder& m_folder;
};

} // namespace tornel
