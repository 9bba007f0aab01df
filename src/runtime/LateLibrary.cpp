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
        const QString reason = m_library.isLoaded()
                                   ? u"%1 no tiene la función %2"_s.arg(m_library.fileName(), QString::fromLatin1(name))
                                   : m_library.errorString();
        throw RuntimeError(fileNotFound, u"No se pudo cargar una biblioteca del sistema: "_s + reason, u"oVELDRA"_s);
    }
    return found;
}

} // namespace oVELDRA::runtime
