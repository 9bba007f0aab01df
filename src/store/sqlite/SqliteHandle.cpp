#include "SqliteHandle.h"

namespace oVELDRA::store {

using namespace Qt::StringLiterals;

namespace {

Trouble troubleOf(int code)
{
    switch (code & 0xFF) {
    case SQLITE_CONSTRAINT:
        return Trouble::DuplicateKey;
    case SQLITE_READONLY:
        return Trouble::ReadOnly;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return Trouble::Locked;
    case SQLITE_FULL:
        return Trouble::DiskFull;
    case SQLITE_CORRUPT:
        return Trouble::Damaged;
    case SQLITE_IOERR:
        return Trouble::Broken;
    case SQLITE_NOTADB:
        return Trouble::NoDatabase;
    case SQLITE_CANTOPEN:
        return Trouble::NoFile;
    case SQLITE_PERM:
    case SQLITE_AUTH:
        return Trouble::NoPermission;
    default:
        return Trouble::Other;
    }
}

} // namespace

RuntimeError sqliteError(int code, sqlite3* database, const QString& detail)
{
    if ((code & 0xFF) == SQLITE_NOMEM) {
        return RuntimeError(7);
    }
    // The only constraints that databases of this component declare are unique keys.
    const bool unique = code == SQLITE_CONSTRAINT_UNIQUE || code == SQLITE_CONSTRAINT_PRIMARYKEY;
    const bool otherConstraint = (code & 0xFF) == SQLITE_CONSTRAINT && !unique;
    const Trouble trouble = otherConstraint ? Trouble::Other : troubleOf(code);
    if (!detail.isEmpty() || trouble != Trouble::Other) {
        return storeError(trouble, detail);
    }
    return storeError(trouble, u"%1: %2"_s.arg(code).arg(QString::fromUtf8(sqlite3_errmsg(database))));
}

} // namespace oVELDRA::store
