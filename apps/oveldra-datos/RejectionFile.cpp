#include "RejectionFile.h"

#include <oVELDRA/RuntimeError.h>

#include <dialect/StatementError.h>
#include <store/StoreError.h>

#include <QStringList>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

namespace {

QString quoted(QString field)
{
    static const QString special = u",\"\r\n"_s;
    const bool needsQuotes =
        std::any_of(field.begin(), field.end(), [](QChar character) { return special.contains(character); });
    return needsQuotes ? QString(u'"' + field.replace(u'"', u"\"\""_s) + u'"') : field;
}

} // namespace

RejectionFile::RejectionFile(const QString& path) : m_part(path, ExistingFile::Keep), m_file(m_part.path())
{
    // The folder was just written to; what can fail here shows in finish().
    static_cast<void>(m_file.open(QIODevice::WriteOnly));
    write({u"tabla"_s, u"fila"_s, u"clave"_s, u"motivo"_s});
}

void RejectionFile::add(const Rejection& rejection)
{
    write({rejection.table, QString::number(rejection.row), rejection.key, rejection.reason});
}

void RejectionFile::write(const QStringList& fields)
{
    QStringList cells;
    for (const QString& field : fields) {
        cells.append(quoted(field));
    }
    m_file.write(QString(cells.join(u',') + u"\r\n"_s).toUtf8());
}

void RejectionFile::finish()
{
    if (!m_file.flush() || m_file.error() != QFile::NoError) {
        throw RuntimeError(dialect::databaseErrorNumber,
                           u"No se pudo escribir la lista de filas rechazadas: %1."_s.arg(m_file.errorString()),
                           u"oVELDRA.datos"_s, static_cast<int>(store::Trouble::Broken));
    }
}

void RejectionFile::keep()
{
    m_file.close();
    m_part.complete();
}

} // namespace oVELDRA::data
