#pragma once

#include "Finding.h"
#include "OrderedRows.h"
#include "StockWalk.h"

namespace oVELDRA::data {

/// Rows of a table whose key compares equal to that of the row before, in the order of the key: equal but for letter
/// case and trailing blanks, or altogether. Null in a key equals nothing. The first row of each key is not reported.
class DuplicateKeys
{
public:
    /// `key` are the fields of the rows' key, which must be the first columns that the rows have.
    DuplicateKeys(QString table, std::vector<Field> key, FindingSink& sink)
        : m_table(std::move(table)), m_fields(std::move(key)), m_sink(sink)
    {}

    void row(const OrderedRows& rows);

private:
    [[nodiscard]] QString sentence(const std::vector<dialect::Value>& values) const;

    QString m_table;
    std::vector<Field> m_fields;
    FindingSink& m_sink;
    Key m_key;
    std::vector<dialect::Value> m_first; ///< how the first row of the key writes it
};

/// The same for INTINS during a walk over the stock.
class DuplicateHeaderCheck final : public StockObserver
{
public:
    explicit DuplicateHeaderCheck(FindingSink& sink) : m_keys(QStringLiteral("INTINS"), {Field::INTDCL}, sink) {}

    void header(const OrderedRows& headers) override { m_keys.row(headers); }

private:
    DuplicateKeys m_keys;
};

} // namespace oVELDRA::data
