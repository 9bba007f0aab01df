#include "MemorySettings.h"

namespace oVELDRA::doubles {

QString MemorySettings::get(const QString& application, const QString& section, const QString& key,
                            const QString& fallback) const
{
    return m_values.value({application, section, key}, fallback);
}

void MemorySettings::save(const QString& application, const QString& section, const QString& key, const QString& value)
{
    m_values.insert({application, section, key}, value);
}

void MemorySettings::remove(const QString& application, const QString& section, const QString& key)
{
    m_values.remove({application, section, key});
}

} // namespace oVELDRA::doubles
