#pragma once

#include <runtime/Settings.h>

#include <QMap>
#include <QString>
#include <QStringList>

namespace oVELDRA::doubles {

/// Settings that live and die with the test. Starts out empty.
class MemorySettings final : public runtime::SettingsStore
{
public:
    [[nodiscard]] QString get(const QString& application, const QString& section, const QString& key,
                              const QString& fallback = {}) const override;
    void save(const QString& application, const QString& section, const QString& key, const QString& value) override;

    void remove(const QString& application, const QString& section, const QString& key);

private:
    QMap<QStringList, QString> m_values;
};

} // namespace oVELDRA::doubles
