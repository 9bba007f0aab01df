#pragma once

#include "../Quantity.h"

#include <store/RowStream.h>

#include <compare>
#include <functional>

namespace oVELDRA::data {

/// A part of a key, in the order of store::RowStream: Null, then numbers, then texts by their folded form.
struct KeyPart
{
    enum class Kind : quint8 { Null, Number, Text };

    Kind kind = Kind::Null;
    double number = 0;
    QString text;

    [[nodiscard]] bool isNull() const { return kind == Kind::Null; }
};

[[nodiscard]] std::strong_ordering operator<=>(const KeyPart& a, const KeyPart& b);
[[nodiscard]] inline bool operator==(const KeyPart& a, const KeyPart& b)
{
    return (a <=> b) == std::strong_ordering::equal;
}

/// The part that a column's value is; with `digits`, texts of digits are numbers.
[[nodiscard]] KeyPart keyPartOf(dialect::Value value, bool digits);

using Key = std::vector<KeyPart>;

/// A key that has Null in a part equals no other.
[[nodiscard]] bool isComplete(const Key& key);

/// What a scan reads.
struct RowsWanted
{
    struct KeyColumn
    {
        QStringView name;
        bool digits = false; ///< numbers, which some files keep as texts ("001")
    };

    QStringView table;
    std::vector<KeyColumn> key;
    std::vector<QStringView> columns;
};

/// Is told of every row that is read.
using RowCounter = std::function<void()>;

/// A table's rows in the order of a key. Stands on its first row when made.
class OrderedRows
{
public:
    /// The table and columns must be there (see KnownTables.h). For the rest see store::RowStream.
    OrderedRows(store::EngineConnection& engine, const dialect::Catalog& tables, const RowsWanted& wanted,
                RowCounter counter);

    [[nodiscard]] bool atEnd() const { return m_atEnd; }
    /// RuntimeError when the next row stands before this one, as happens with digits kept as texts of several lengths:
    /// nothing can be compared then.
    void advance();

    /// The current row's key; at the end the last row's.
    [[nodiscard]] const Key& key() const { return m_key; }
    /// A column of the current row, by its place in what was wanted.
    [[nodiscard]] dialect::Value value(size_t place) const { return m_stream.value(place); }
    /// The same as a quantity.
    [[nodiscard]] double quantity(size_t place) const { return quantityOf(value(place)); }

private:
    void readKey();

    QString m_table;
    std::vector<bool> m_digits;
    RowCounter m_counter;
    store::RowStream m_stream;
    Key m_key;
    Key m_previous;
    bool m_atEnd = false;
};

/// Column names as a scan of that table; RuntimeError for one that it does not have.
[[nodiscard]] dialect::TableScan scanOf(const dialect::Table& table, const RowsWanted& wanted);

} // namespace oVELDRA::data
