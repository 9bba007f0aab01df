#pragma once

#include <oVELDRA/Export.h>

#include <QString>

#include <exception>

namespace oVELDRA {

/// The only exception type that crosses a border of the library.
///
/// `number()` is the automation runtime's error number (for example 13, 91, 3021) or, for errors of a database, the
/// negative HRESULT-style number that data-access layers report (for example -2147217900 for a syntax error).
/// `description()` is the Spanish text that the user sees. `source()` names what raised it; it may be empty.
class OVELDRA_EXPORT RuntimeError : public std::exception
{
public:
    /// An error of the automation runtime, described by the runtime's own text for the number
    /// ("Error definido por la aplicación o el objeto" for a number without a text of its own).
    explicit RuntimeError(int number);

    /// An error with a text of its own. `nativeNumber` tells database errors apart that share one `number`
    /// (see Store.h); 0 when there is nothing to tell apart.
    RuntimeError(int number, QString description, QString source = {}, int nativeNumber = 0);

    RuntimeError(const RuntimeError&) = default;
    RuntimeError(RuntimeError&&) = default;
    RuntimeError& operator=(const RuntimeError&) = default;
    RuntimeError& operator=(RuntimeError&&) = default;
    ~RuntimeError() override;

    [[nodiscard]] int number() const noexcept { return m_number; }
    [[nodiscard]] const QString& description() const noexcept { return m_description; }
    [[nodiscard]] const QString& source() const noexcept { return m_source; }
    [[nodiscard]] int nativeNumber() const noexcept { return m_nativeNumber; }

    /// "number - description" in UTF-8, for logs and debuggers.
    [[nodiscard]] const char* what() const noexcept override;

private:
    int m_number;
    int m_nativeNumber = 0;
    QString m_description;
    QString m_source;
    QByteArray m_what;
};

} // namespace oVELDRA
