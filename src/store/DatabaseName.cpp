#include "DatabaseName.h"

#include <oVELDRA/RuntimeError.h>

#include <algorithm>

namespace oVELDRA::store {

using namespace Qt::StringLiterals;

QString nameOf(Database database)
{
    switch (database) {
    case Database::Inputs:
        return u"insumos"_s;
    case Database::Nomenclature:
        return u"ncm"_s;
    case Database::Host:
        break;
    }
    return u"tornel"_s;
}

Database databaseNamed(const QString& name)
{
    const auto* const found = std::find_if(databases.begin(), databases.end(), [&name](Database database) {
        return name.compare(nameOf(database), Qt::CaseInsensitive) == 0;
    });
    if (found == databases.end()) {
        throw RuntimeError(5, u"No existe la base '%1': elija insumos, ncm o tornel."_s.arg(name), u"oVELDRA.store"_s);
    }
    return *found;
}

} // namespace oVELDRA::store
