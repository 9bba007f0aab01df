#include "Texts.h"

#include <new>

namespace oVELDRA::automation {

QString textFrom(const OLECHAR* text)
{
    // Its length stands before it; a null character inside does not end it.
    return QString::fromWCharArray(text, static_cast<qsizetype>(SysStringLen(const_cast<BSTR>(text))));
}

QString takenText(BSTR text)
{
    const QString taken = textFrom(text);
    SysFreeString(text);
    return taken;
}

BSTR newText(QStringView text)
{
    static_assert(sizeof(OLECHAR) == sizeof(QChar));
    const BSTR made = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.utf16()), static_cast<UINT>(text.size()));
    if (made == nullptr) {
        throw std::bad_alloc();
    }
    return made;
}

} // namespace oVELDRA::automation
