#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <vector>

namespace oVELDRA::dialect {

/// What a column holds, as the rules see it.
enum class ColumnKind : quint8 {
    Text,         ///< at most `width` characters, or any number when that is 0
    Integer,      ///< 32 bits
    Double,       ///
    Boolean,      ///< yes/no: -1 or 0, whatever non-zero value is written
    SmallInteger, ///< yes/no that keeps the small integer written
    Date          ///< a day without a time
};

struct Column
{
    QString name;
    ColumnKind kind = ColumnKind::Text;
    int width = 0;
};

struct Table
{
    QString name;
    std::vector<Column> columns;
    std::vector<int> key; ///< columns that together are unique; empty without such a key
    QByteArray rowMark{}; ///< where there is a choice, the column that tells rows apart and keeps their order

    /// Index of a column by name in any letter case, or -1.
    [[nodiscard]] int find(QStringView column) const;
};

/// The tables of a database, against which names are resolved.
struct Catalog
{
    std::vector<Table> tables;

    /// The table of a name in any letter case, or null.
    [[nodiscard]] const Table* find(QStringView table) const;
};

} // namespace oVELDRA::dialect
