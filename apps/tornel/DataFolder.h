#pragma once

#include <oVELDRA/Store.h>

#include <QString>

namespace tornel {

/// The folder where the demonstration keeps its three databases.
class DataFolder
{
public:
    explicit DataFolder(QString path);

    /// Where they are when the user does not say otherwise.
    [[nodiscard]] static QString standardPath();

    [[nodiscard]] const QString& path() const { return m_path; }
    [[nodiscard]] QString file(oVELDRA::Database database) const;

    /// Opens one of the databases. Throws oVELDRA::RuntimeError.
    [[nodiscard]] std::shared_ptr<oVELDRA::ConexionDB> connect(oVELDRA::Database database,
                                                               oVELDRA::Access access) const;

private:
    QString m_path;
};

} // namespace tornel
