#include "TableLoader.h"

using namespace Qt::StringLiterals;

namespace tornel {

TableLoader::TableLoader(oVELDRA::ConexionDB& connection, QStringView table, QStringView columns, RowCounter counter)
    : m_connection(connection), m_head(u"insert into "_s + table + u" ("_s + columns + u") values ("_s),
      m_counter(std::move(counter))
{}

void TableLoader::insert(const QStringList& values)
{
    m_connection.setSql(m_head + values.join(u',') + u')');
    m_connection.execute();
    m_counter();
}

} // namespace tornel
