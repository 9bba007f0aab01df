#include "PartFile.h"

#include <dialect/StatementError.h>
#include <store/StoreError.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <filesystem>
#include <system_error>

using namespace Qt::StringLiterals;

namespace oVELDRA::data {

using store::Trouble;

namespace {

// What SQLite keeps beside a database.
constexpr std::array<QStringView, 3> logEnds{u"-wal", u"-journal", u"-shm"};

void removeLogs(const QString& database)
{
    for (const QStringView end : logEnds) {
        QFile::remove(database + end);
    }
}

/// Whether a log holds what the database beside it does not have yet.
bool hasLog(const QString& database)
{
    return QFileInfo(database + logEnds[0]).size() > 0 || QFileInfo(database + logEnds[1]).size() > 0;
}

RuntimeError fileError(Trouble trouble, const QString& text)
{
    return {dialect::databaseErrorNumber, text, u"oVELDRA.datos"_s, static_cast<int>(trouble)};
}

RuntimeError cannotWrite(const QString& target, const QString& why)
{
    return fileError(Trouble::NoPermission, u"No se puede escribir el archivo '%1': %2."_s.arg(target, why));
}

} // namespace

PartFile::PartFile(QString target, ExistingFile existing)
    : m_target(std::move(target)), m_existing(existing),
      m_path(u"%1.%2.parte"_s.arg(m_target).arg(QCoreApplication::applicationPid()))
{
    const QFileInfo folder(QFileInfo(m_target).absolutePath());
    if (!folder.isDir()) {
        throw cannotWrite(m_target, u"no existe la carpeta"_s);
    }
    checkTarget();
    clear();
    QFile probe(m_path);
    if (!probe.open(QIODevice::WriteOnly)) {
        throw cannotWrite(m_target, probe.errorString());
    }
}

PartFile::~PartFile()
{
    clear();
}

void PartFile::complete()
{
    checkTarget();
    if (hasLog(m_path)) {
        throw cannotWrite(m_target, u"lo último que se escribió quedó en su registro"_s);
    }
    removeLogs(m_path);
    removeLogs(m_target); // of a database that was deleted by hand: they would be taken for this one's
    if (m_existing == ExistingFile::Keep) {
        QFile file(m_path);
        if (!file.rename(m_target)) {
            throw cannotWrite(m_target, file.errorString());
        }
        return;
    }
    std::error_code error;
    std::filesystem::rename(m_path.toStdU16String(), m_target.toStdU16String(), error);
    if (error) {
        throw cannotWrite(m_target, QString::fromStdString(error.message()));
    }
}

void PartFile::checkTarget() const
{
    const QFileInfo target(m_target);
    if (!target.exists() && !target.isSymLink()) {
        return;
    }
    if (m_existing == ExistingFile::Keep) {
        throw fileError(Trouble::AlreadyThere, u"El archivo '%1' ya existe; no se modificó."_s.arg(m_target));
    }
    if (!target.isFile()) {
        throw cannotWrite(m_target, u"no es un archivo"_s);
    }
    if (hasLog(m_target)) {
        throw cannotWrite(m_target, u"es una base de datos en uso (tiene su registro al lado)"_s);
    }
}

void PartFile::clear() const
{
    QFile::remove(m_path);
    removeLogs(m_path);
}

} // namespace oVELDRA::data
