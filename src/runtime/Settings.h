#pragma once

#include <QString>

namespace oVELDRA::runtime {

/// The per-user settings that the applications of the host's suite share. An empty application, section or key is
/// RuntimeError 5.
class SettingsStore
{
public:
    SettingsStore() = default;
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;
    virtual ~SettingsStore() = default;

    /// The stored text, or `fallback` when nothing is stored; a stored empty text is that empty text.
    [[nodiscard]] virtual QString get(const QString& application, const QString& section, const QString& key,
                                      const QString& fallback = {}) const = 0;
    /// Throws RuntimeError 75 when the text cannot be stored.
    virtual void save(const QString& application, const QString& section, const QString& key, const QString& value) = 0;
};

/// The user's own: on Windows the registry place of the automation runtime's settings functions
/// (HKEY_CURRENT_USER\Software\VB and VBA Program Settings\application\section), elsewhere one INI file per
/// application, `application.ini`, in the user's configuration folder, with the sections as groups.
class UserSettings final : public SettingsStore
{
public:
    /// `folder` replaces the user's configuration folder (and, on Windows, the registry); empty means the real place.
    explicit UserSettings(QString folder = {});

    [[nodiscard]] QString get(const QString& application, const QString& section, const QString& key,
                              const QString& fallback = {}) const override;
    void save(const QString& application, const QString& section, const QString& key, const QString& value) override;

private:
    QString m_folder;
};

} // namespace oVELDRA::runtime
