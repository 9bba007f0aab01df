// The one file in which the identifiers of the type library's header are defined and not only declared.
#include <initguid.h>
#include <oVELDRA.h>
