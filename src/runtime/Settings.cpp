#include "Settings.h"

#include <oVELDRA/RuntimeError.h>

#include <QSettings>
#include <QStandardPaths>
#include <QStringList>
#include <QVariant>

#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::runtime {

namespace {

/// An application, section or key as one step of a path: separators, and what Windows does not allow in a file name,
/// stand as %XX, so that no name reaches into another place. Ordinary names stay as they are.
QString pathStep(const QString& name)
{
    if (name.isEmpty()) {
        throw RuntimeError(5);
    }
    QString step;
    for (const QChar character : name) {
        if (character < u' ' || R"(%/\:*?"<>|)"_L1.contains(character)) {
            step += u'%' + QString::number(character.unicode(), 16).rightJustified(2, u'0').toUpper();
        } else {
            step += character;
        }
    }
    return step;
}

QString keyPath(const QString& section, const QString& key)
{
    return pathStep(section) + u'/' + pathStep(key);
}

QSettings open(const QString& folder, const QString& application)
{
#ifdef Q_OS_WIN
    if (folder.isEmpty()) {
        return QSettings(u"HKEY_CURRENT_USER\\Software\\VB and VBA Program Settings\\"_s + pathStep(application),
                         QSettings::NativeFormat);
    }
#endif
    const QString place =
        folder.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) : folder;
    return {QString(place + u'/' + pathStep(application) + u".ini"_s), QSettings::IniFormat};
}

} // namespace

UserSettings::UserSettings(QString folder) : m_folder(std::move(folder)) {}

QString UserSettings::get(const QString& application, const QString& section, const QString& key,
                          const QString& fallback) const
{
    const QSettings settings = open(m_folder, application);
    const QString path = keyPath(section, key);
    if (!settings.contains(path)) {
        return fallback;
    }
    const QVariant value = settings.value(path);
    // A comma that a person typed into the file without quotes around the value makes a list of it.
    return value.typeId() == QMetaType::QStringList ? value.toStringList().join(u", "_s) : value.toString();
}

void UserSettings::save(const QString& application, const QString& section, const QString& key, const QString& value)
{
    QSettings settings = open(m_folder, application);
    settings.setValue(keyPath(section, key), value);
    settings.sync();
    if (settings.status() != QSettings::NoError) {
        throw RuntimeError(75, u"No se pudo guardar la configuración en %1"_s.arg(settings.fileName()));
    }
}

} // namespace oVELDRA::runtime
