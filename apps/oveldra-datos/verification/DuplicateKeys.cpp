#include "DuplicateKeys.h"

#include <QStringList>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Value;

namespace {

QString listed(const std::vector<Value>& values)
{
    QStringList texts;
    for (const Value& value : values) {
        texts.append(quoted(value));
    }
    return texts.join(u", "_s);
}

} // namespace

void DuplicateKeys::row(const OrderedRows& rows)
{
    std::vector<Value> values;
    for (size_t place = 0; place < m_fields.size(); ++place) {
        values.push_back(rows.value(place));
    }
    if (m_first.empty() || rows.key() != m_key || !isComplete(m_key)) {
        m_key = rows.key();
        m_first = std::move(values);
        return;
    }
    Finding finding{FindingKind::DuplicateKey, m_table, {}, sentence(values)};
    for (size_t place = 0; place < m_fields.size(); ++place) {
        finding.entries.push_back({m_fields[place], values[place]});
    }
    m_sink.add(finding);
}

QString DuplicateKeys::sentence(const std::vector<Value>& values) const
{
    const QString first = listed(m_first);
    const QString here = listed(values);
    return first == here ? u"La clave %1 ya está en otra fila de %2."_s.arg(here, m_table)
                         : u"La clave %1 es la misma que %2 para el programa, que no distingue mayúsculas ni blancos "
                           u"finales."_s.arg(here, first);
}

} // namespace oVELDRA::data
