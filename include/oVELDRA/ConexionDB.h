#pragma once

#include <oVELDRA/Export.h>
#include <oVELDRA/Recordset.h>
#include <oVELDRA/RuntimeError.h>

#include <QString>

#include <memory>

namespace oVELDRA {

/// A scope around the statements of one operation that other writers must not come between.
///
/// It is no undo: a statement that fails leaves what the ones before it did, and leaving the scope without commit()
/// (because an error is on its way to its report) keeps what was done, like single statements would. What it adds:
/// other seats cannot write in between, a process that dies in between leaves nothing, and it is fast.
/// Scopes of one connection nest; only the outermost one counts.
class OVELDRA_EXPORT WriteBurst
{
public:
    WriteBurst() = default;
    WriteBurst(const WriteBurst&) = delete;
    WriteBurst& operator=(const WriteBurst&) = delete;
    virtual ~WriteBurst();

    /// Makes the statements of the scope permanent and ends it. Throws RuntimeError when that fails; then nothing of
    /// the scope is in the database. A second call does nothing.
    virtual void commit();
};

/// The host's database-access object: any class with these operations will do.
///
/// The texts given to it are the component's own SQL, in the Jet dialect. It is used from the user-interface thread
/// only.
class OVELDRA_EXPORT ConexionDB
{
public:
    ConexionDB() = default;
    ConexionDB(const ConexionDB&) = delete;
    ConexionDB& operator=(const ConexionDB&) = delete;
    virtual ~ConexionDB();

    /// The statement that the next openRecordset() or execute() runs.
    virtual void setSql(const QString& text) = 0;

    /// Runs the statement as a query. `ok` is true when it ran and gave a result, empty or not. Otherwise the pointer
    /// is null, nothing is thrown and lastError() says why.
    [[nodiscard]] virtual std::unique_ptr<Recordset> openRecordset(bool& ok) = 0;

    /// Runs the statement as a command and answers the number of records affected. Throws RuntimeError.
    virtual qint64 execute() = 0;

    /// Why the last openRecordset() was not ok. The default is error 91, for a class that keeps no reason.
    [[nodiscard]] virtual RuntimeError lastError() const;

    /// Opens a write scope. The default gives one that does nothing, for connections that have no such thing.
    [[nodiscard]] virtual std::unique_ptr<WriteBurst> beginBurst();
};

} // namespace oVELDRA
