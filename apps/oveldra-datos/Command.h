#pragma once

#include "Console.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace oVELDRA::data {

/// What a command was called with; checked against the command's own declarations before it runs.
struct Arguments
{
    QStringList operands;
    QMap<QString, QString> options; ///< by name without the dashes; a flag has an empty value

    [[nodiscard]] bool has(const QString& option) const { return options.contains(option); }
};

struct Option
{
    QString name;  ///< without the dashes
    QString value; ///< what its value is called in the help; empty for a flag
    QString help;
};

/// One of the program's commands. `--json` and `--ayuda` (also `--help`) belong to all of them and are not listed here.
struct Command
{
    QString name;
    QString summary;      ///< one line
    QStringList operands; ///< what they are called in the help; all are required
    QString help; ///< what it does, what it never does, its exit codes, examples; lines of at most 78 characters
    std::vector<Option> options;
    /// Answers an exit code. A RuntimeError thrown here is complained about by the caller, who then answers Failed;
    /// BadUsageError likewise, with BadUsage.
    std::function<int(const Arguments&, Console&)> run;
};

/// An option or operand whose value makes no sense; the text says which and why, in Spanish.
class BadUsageError : public std::exception
{
public:
    explicit BadUsageError(QString text) : m_text(std::move(text)), m_bytes(m_text.toUtf8()) {}
    [[nodiscard]] const QString& text() const { return m_text; }
    [[nodiscard]] const char* what() const noexcept override { return m_bytes.constData(); }

private:
    QString m_text;
    QByteArray m_bytes;
};

// The commands, each in the file of its name.
[[nodiscard]] Command crear();
[[nodiscard]] Command migrar();
[[nodiscard]] Command copiar();
[[nodiscard]] Command verificar();
[[nodiscard]] Command vencimientos();
[[nodiscard]] Command respaldar();

} // namespace oVELDRA::data
