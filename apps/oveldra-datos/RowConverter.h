#pragma once

#include "SourceTable.h"

#include <dialect/Catalog.h>

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace oVELDRA::data {

/// Makes rows of a source's table fit for a table of the store, or says why a row cannot be kept there.
class RowConverter
{
public:
    /// Columns belong together whose names are the same in any letter case. `identity` are columns of `table` that tell
    /// its rows apart for people.
    RowConverter(dialect::Table table, const QStringList& sourceColumns, std::vector<int> identity);

    /// The columns of the table that the source has, in the order of convert()'s values.
    [[nodiscard]] const std::vector<int>& columns() const { return m_columns; }
    /// Those that it does not have: they stay Null.
    [[nodiscard]] QStringList missingColumns() const;
    /// The source's columns that the table does not have, by place.
    [[nodiscard]] const std::vector<size_t>& unknownColumns() const { return m_unknown; }
    /// The place in the source's rows of a column of the table, by name; -1 when the source does not have it.
    [[nodiscard]] int sourcePlace(QStringView column) const;

    /// Converts the source's row with that number (1 is the first). Answers why it cannot be kept, in Spanish, or a
    /// null string; then `values` is what is to be written. The keys of rows that were kept are remembered: their
    /// repetition is refused.
    [[nodiscard]] QString convert(const SourceRow& row, qint64 number, std::vector<dialect::Value>& values);

    /// What the row is called in messages: "INTDCL=…, ARTITM=1".
    [[nodiscard]] QString describe(const SourceRow& row) const;

private:
    [[nodiscard]] QString convertCell(const dialect::Column& column, const dialect::Value& cell,
                                      dialect::Value& value) const;
    /// The same for any two keys that the store takes for equal; null for a key with a Null in it.
    [[nodiscard]] QString foldedKey(const std::vector<dialect::Value>& values) const;

    dialect::Table m_table;
    std::vector<int> m_identity;
    std::vector<int> m_sources; ///< by column of the table: the place in the source, or -1
    std::vector<int> m_columns;
    std::vector<size_t> m_unknown;
    std::vector<size_t> m_keyPlaces; ///< of the key's columns in the values
    QHash<QString, qint64> m_rowsOfKeys;
    dialect::LazySeparators m_separators;
};

} // namespace oVELDRA::data
