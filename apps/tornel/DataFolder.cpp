#include "DataFolder.h"

#include <QDir>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace tornel {

namespace {

QString fileName(oVELDRA::Database database)
{
    switch (database) {
    case oVELDRA::Database::Inputs:
        return u"insumos.sqlite"_s;
    case oVELDRA::Database::Nomenclature:
        return u"nomenclador.sqlite"_s;
    case oVELDRA::Database::Host:
        break;
    }
    return u"tornel.sqlite"_s;
}

} // namespace

DataFolder::DataFolder(QString path) : m_path(std::move(path)) {}

QString DataFolder::standardPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/tornel"_s;
}

QString DataFolder::file(oVELDRA::Database database) const
{
    return QDir(m_path).absoluteFilePath(fileName(database));
}

std::shared_ptr<oVELDRA::ConexionDB> DataFolder::connect(oVELDRA::Database database, oVELDRA::Access access) const
{
    return oVELDRA::connectStore(u"sqlite:"_s + file(database), access);
}

} // namespace tornel
