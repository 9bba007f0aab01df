#pragma once

#include <libpq-fe.h>

namespace oVELDRA::store {

/// The functions of libpq that the engine uses, under their own names without "PQ".
///
/// They are loaded with the first connection to a server: the library comes with those of directories, tickets and
/// encryption, whose loading alone takes a fifth of the time in which a host without a server is up.
struct Libpq
{
    decltype(&PQclear) clear;
    decltype(&PQcmdTuples) cmdTuples;
    decltype(&PQexec) exec;
    decltype(&PQexecPrepared) execPrepared;
    decltype(&PQgetisnull) getisnull;
    decltype(&PQgetlength) getlength;
    decltype(&PQgetvalue) getvalue;
    decltype(&PQntuples) ntuples;
    decltype(&PQprepare) prepare;
    decltype(&PQresultErrorField) resultErrorField;
    decltype(&PQresultStatus) resultStatus;
    decltype(&PQsetNoticeProcessor) setNoticeProcessor;
    decltype(&PQstatus) status;
    decltype(&PQtransactionStatus) transactionStatus;
};

/// Loads them at the first call. Throws RuntimeError 53 when libpq is not installed.
[[nodiscard]] const Libpq& libpq();

} // namespace oVELDRA::store
