#pragma once

#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace e2e {

/// A window that has the keyboard. Both are empty when there is none.
struct ActiveWindow
{
    QString id;
    QString title;
};

/// A screen of its own with a window manager, and the keyboard that types into it.
class XDisplay
{
public:
    /// The programs it needs that are not installed; empty when it can be used.
    [[nodiscard]] static QStringList missingPrograms();

    /// Starts the server and the window manager. False when they do not come up.
    [[nodiscard]] bool start();
    /// Ends both. Programs that are shown on it should have ended before.
    ~XDisplay();

    /// What a program needs to be shown on it, with everything else as `base` has it.
    [[nodiscard]] QProcessEnvironment environment(QProcessEnvironment base) const;

    [[nodiscard]] ActiveWindow activeWindow() const;

    /// Presses and releases keys by their X names, one after the other.
    [[nodiscard]] bool keys(const QStringList& names) const;
    /// Types a text of plain letters, digits and signs.
    [[nodiscard]] bool type(const QString& text) const;

    /// What is on the screen.
    [[nodiscard]] QImage grab() const;

private:
    [[nodiscard]] bool xdotool(const QStringList& arguments, QString* output = nullptr) const;

    QTemporaryDir m_folder;
    QString m_name;
    QProcess m_server;
    QProcess m_windowManager;
};

} // namespace e2e
