#pragma once

#include "OrderedRows.h"

#include <QString>

#include <functional>
#include <map>
#include <utility>

namespace oVELDRA::data {

/// Counts the rows that are read, table by table.
class RowTally
{
public:
    /// `progress` is told every now and then how many rows have been read of all tables together.
    explicit RowTally(std::function<void(qint64)> progress) : m_progress(std::move(progress)) {}
    RowTally(const RowTally&) = delete;
    RowTally& operator=(const RowTally&) = delete;

    /// What counts a table's rows. The tally must outlive it.
    [[nodiscard]] RowCounter counterOf(QStringView table)
    {
        qint64& rows = m_rows[table.toString()];
        return [this, &rows] {
            constexpr qint64 rowsUntilProgress = 4096;
            ++rows;
            if (++m_all % rowsUntilProgress == 0) {
                m_progress(m_all);
            }
        };
    }

    /// By table; 0 for one that is empty.
    [[nodiscard]] const std::map<QString, qint64>& rows() const { return m_rows; }

private:
    std::function<void(qint64)> m_progress;
    std::map<QString, qint64> m_rows; // references to its values stay good
    qint64 m_all = 0;
};

} // namespace oVELDRA::data
