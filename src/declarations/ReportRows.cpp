#include "ReportRows.h"

#include <runtime/ValueConverter.h>

#include <utility>

namespace oVELDRA::declarations {

ReportRows::ReportRows(std::unique_ptr<Recordset> records, QStringList fields)
    : m_records(std::move(records)), m_fields(std::move(fields)), m_count(m_records->recordCount())
{
    if (m_records->isInMemory()) {
        if (m_count > 0) {
            static_cast<void>(texts()); // a field that is not there shows here
        }
        return;
    }
    for (; !m_records->atEof(); m_records->moveNext()) {
        m_copied.push_back(texts());
    }
    m_count = static_cast<qsizetype>(m_copied.size());
    m_records.reset();
}

QStringList ReportRows::row(qsizetype row) const
{
    if (!m_records) {
        return m_copied[static_cast<std::size_t>(row)];
    }
    if (row < m_place) {
        m_records->moveFirst();
        m_place = 0;
    }
    for (; m_place < row; ++m_place) {
        m_records->moveNext();
    }
    return texts();
}

QStringList ReportRows::texts() const
{
    QStringList texts;
    texts.reserve(m_fields.size());
    for (const QString& field : m_fields) {
        texts.append(runtime::toText(m_records->value(field)));
    }
    return texts;
}

} // namespace oVELDRA::declarations
