#pragma once

#include <oVELDRA/ConexionDB.h>

namespace bench {

inline void run(oVELDRA::ConexionDB& db, const QString& sql)
{
    db.setSql(sql);
    db.execute();
}

} // namespace bench
