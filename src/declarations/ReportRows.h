#pragma once

#include <oVELDRA/Recordset.h>

#include <QStringList>

#include <memory>
#include <vector>

namespace oVELDRA::declarations {

/// The rows of a report's data source, in any order: pages are painted as the user turns to them.
///
/// A recordset in memory is kept and read row by row; of any other the fields are copied, so that no page can meet an
/// error of the database.
class ReportRows
{
public:
    /// `records` stands on its first row, or has none. RuntimeError 3265 for a field that is not there, and whatever
    /// reading the recordset throws.
    ReportRows(std::unique_ptr<Recordset> records, QStringList fields);

    [[nodiscard]] qsizetype count() const { return m_count; }
    /// The texts of the fields, in their order, of a row from 0 to count() - 1.
    [[nodiscard]] QStringList row(qsizetype row) const;

private:
    [[nodiscard]] QStringList texts() const;

    std::unique_ptr<Recordset> m_records; ///< null when the rows were copied
    QStringList m_fields;
    qsizetype m_count;
    std::vector<QStringList> m_copied;
    mutable qsizetype m_place = 0; ///< the row on which the recordset stands
};

} // namespace oVELDRA::declarations
