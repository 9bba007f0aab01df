#include "StaticRecordset.h"

#include <oVELDRA/RuntimeError.h>

namespace oVELDRA::store {

void StaticRecordset::moveNext()
{
    if (atEof()) {
        throw RuntimeError(3021);
    }
    ++m_row;
}

void StaticRecordset::moveFirst()
{
    if (m_data.rows() == 0) {
        throw RuntimeError(3021);
    }
    m_row = 0;
}

QVariant StaticRecordset::value(QStringView field) const
{
    const size_t column = columnOf(field);
    if (atEof()) {
        throw RuntimeError(3021);
    }
    return m_data.variant(m_row, column);
}

size_t StaticRecordset::columnOf(QStringView field) const
{
    const size_t count = m_names->size();
    for (size_t tried = 0; tried < count; ++tried) {
        const size_t column = m_next + tried < count ? m_next + tried : m_next + tried - count;
        const QString& name = (*m_names)[column];
        if (name.size() == field.size() && (name == field || field.compare(name, Qt::CaseInsensitive) == 0)) {
            m_next = column + 1 < count ? column + 1 : 0;
            return column;
        }
    }
    throw RuntimeError(3265);
}

} // namespace oVELDRA::store
