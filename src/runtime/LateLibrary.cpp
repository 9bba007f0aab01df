#include "LateLibrary.h"

#include <oVELDRA/RuntimeError.h>

using namespace Qt::StringLiterals;

namespace oVELDRA::runtime {

LateLibrary::LateLibrary(const QString& name, int version) : m_library(name, version) {}

QFunctionPointer LateLibrary::address(const char* name)
{
    const QFunctionPointer found = m_library.resolve(name);
    if (found == nullptr) {
        constexpr int fileNotFound = 53;
        throw RuntimeError(fileNotFound,
                           u"No se pudo cargar una biblioteca del sistema: %1"_s.arg(m_library.errorString()),
                           u"oVELDRA"_s);
    }
    return found;
}

} // namespace oVELDRA::runtime
