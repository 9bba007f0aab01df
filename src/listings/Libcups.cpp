#include "Libcups.h"

#include <runtime/LateLibrary.h>

using namespace Qt::StringLiterals;

namespace oVELDRA::listings {

namespace {

Libcups load()
{
    runtime::LateLibrary library(u"cups"_s, 2);
    Libcups functions{};
    library.take(functions.cupsCancelJob2, "cupsCancelJob2");
    library.take(functions.cupsCreateJob, "cupsCreateJob");
    library.take(functions.cupsEncryption, "cupsEncryption");
    library.take(functions.cupsFinishDocument, "cupsFinishDocument");
    library.take(functions.cupsFreeDests, "cupsFreeDests");
    library.take(functions.cupsGetNamedDest, "cupsGetNamedDest");
    library.take(functions.cupsGetOption, "cupsGetOption");
    library.take(functions.cupsLastError, "cupsLastError");
    library.take(functions.cupsLastErrorString, "cupsLastErrorString");
    library.take(functions.cupsServer, "cupsServer");
    library.take(functions.cupsStartDocument, "cupsStartDocument");
    library.take(functions.cupsWriteRequestData, "cupsWriteRequestData");
    library.take(functions.httpClose, "httpClose");
    library.take(functions.httpConnect2, "httpConnect2");
    library.take(functions.ippPort, "ippPort");
    return functions;
}

} // namespace

const Libcups& libcups()
{
    static const Libcups functions = load();
    return functions;
}

} // namespace oVELDRA::listings
