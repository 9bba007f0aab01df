#pragma once

#include "Snapshot.h"
#include "SourceTable.h"

#include <QString>

#include <memory>

namespace oVELDRA::data {

/// A database of the store as a source: as it was when this was made, whatever others write in the meantime.
class EngineSource final : public Source
{
public:
    /// An URL as connectStore() takes it; opened read-only. Throws RuntimeError.
    explicit EngineSource(const QString& url);

    [[nodiscard]] const QStringList& tables() const override { return m_tables; }
    [[nodiscard]] std::unique_ptr<SourceTable> open(const QString& table) override;

private:
    Snapshot m_snapshot;
    QStringList m_tables;
};

} // namespace oVELDRA::data
