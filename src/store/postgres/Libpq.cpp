#include "Libpq.h"

#include <runtime/LateLibrary.h>

using namespace Qt::StringLiterals;

namespace oVELDRA::store {

namespace {

Libpq load()
{
    runtime::LateLibrary library(u"pq"_s, 5);
    Libpq functions{};
    library.take(functions.clear, "PQclear");
    library.take(functions.cmdTuples, "PQcmdTuples");
    library.take(functions.exec, "PQexec");
    library.take(functions.execPrepared, "PQexecPrepared");
    library.take(functions.getisnull, "PQgetisnull");
    library.take(functions.getlength, "PQgetlength");
    library.take(functions.getvalue, "PQgetvalue");
    library.take(functions.ntuples, "PQntuples");
    library.take(functions.prepare, "PQprepare");
    library.take(functions.resultErrorField, "PQresultErrorField");
    library.take(functions.resultStatus, "PQresultStatus");
    library.take(functions.setNoticeProcessor, "PQsetNoticeProcessor");
    library.take(functions.status, "PQstatus");
    library.take(functions.transactionStatus, "PQtransactionStatus");
    return functions;
}

} // namespace

const Libpq& libpq()
{
    static const Libpq functions = load();
    return functions;
}

} // namespace oVELDRA::store
