#pragma once

#include "PartFile.h"
#include "Transfer.h"

#include <QFile>
#include <QString>

namespace oVELDRA::data {

/// The rejected rows of a transfer as a CSV file (RFC 4180, UTF-8), a line with the columns' names first: tabla, fila,
/// clave, motivo. A file that is there already is not touched.
class RejectionFile final : public RejectionListener
{
public:
    /// Throws RuntimeError when it cannot be written there.
    explicit RejectionFile(const QString& path);

    void add(const Rejection& rejection) override;
    /// Throws RuntimeError when not all of it could be written.
    void finish() override;
    /// Gives the file its name. Throws RuntimeError.
    void keep();

private:
    void write(const QStringList& fields);

    PartFile m_part;
    QFile m_file;
};

} // namespace oVELDRA::data
