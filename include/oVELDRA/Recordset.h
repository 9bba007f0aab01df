#pragma once

#include <oVELDRA/Export.h>

#include <QStringView>
#include <QVariant>

namespace oVELDRA {

/// A static, client-side cursor over the rows of one query, opened on its first row.
///
/// The rows are a snapshot: nothing that happens in the database afterwards changes them, and they stay readable after
/// the connection is gone.
class OVELDRA_EXPORT Recordset
{
public:
    Recordset() = default;
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;
    virtual ~Recordset();

    /// True past the last row, and at once for an empty result.
    [[nodiscard]] virtual bool atEof() const = 0;

    /// To the next row; from the last row to the end. Throws RuntimeError 3021 when already at the end.
    virtual void moveNext() = 0;

    /// Back to the first row. Throws RuntimeError 3021 for an empty result.
    virtual void moveFirst() = 0;

    /// Number of rows of the whole result, wherever the cursor stands.
    [[nodiscard]] virtual qsizetype recordCount() const = 0;

    /// The field of the current row, by column name or alias in any letter case.
    ///
    /// Texts come as QString, numbers as double, integers as qlonglong, yes/no columns as int (-1 or 0; a column that
    /// keeps a small integer gives that integer), dates as QDate, Null as an invalid QVariant.
    /// Throws RuntimeError 3265 for an unknown name and 3021 when there is no current row.
    [[nodiscard]] virtual QVariant value(QStringView field) const = 0;

    /// True when all rows are in memory already, so that reading one that has been counted cannot fail: a list may then
    /// keep the recordset and read a row when it is shown. The default is false, and every row is read at once.
    [[nodiscard]] virtual bool isInMemory() const { return false; }
};

} // namespace oVELDRA
