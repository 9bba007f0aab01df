#pragma once

#include "RecordData.h"

#include <oVELDRA/Recordset.h>

#include <QString>

#include <memory>
#include <vector>

namespace oVELDRA::store {

using ColumnNames = std::vector<QString>;

/// A recordset over cells in memory.
class StaticRecordset final : public Recordset
{
public:
    StaticRecordset(std::shared_ptr<const ColumnNames> names, RecordData data)
        : m_names(std::move(names)), m_data(std::move(data))
    {}

    [[nodiscard]] bool atEof() const override { return m_row == m_data.rows(); }
    void moveNext() override;
    void moveFirst() override;
    [[nodiscard]] qsizetype recordCount() const override { return m_data.rows(); }
    [[nodiscard]] QVariant value(QStringView field) const override;
    [[nodiscard]] bool isInMemory() const override { return true; }

    [[nodiscard]] const ColumnNames& columns() const { return *m_names; }

private:
    [[nodiscard]] size_t columnOf(QStringView field) const;

    std::shared_ptr<const ColumnNames> m_names;
    RecordData m_data;
    qsizetype m_row = 0;
    mutable size_t m_next = 0; ///< fields are mostly read in the order of the columns: where to look first
};

} // namespace oVELDRA::store
