#include "Connections.h"

#include "AdoConexion.h"
#include "AutomationConexion.h"
#include "LateObject.h"
#include "Variants.h"

#include <QObject>

#include <memory>

namespace oVELDRA::automation {

namespace {

QVariant connectionOver(LateObject object)
{
    if (object.knows({L"SetSql", L"OpenRecordset", L"Execute"})) {
        return QVariant::fromValue<std::shared_ptr<ConexionDB>>(
            std::make_shared<AutomationConexion>(std::move(object)));
    }
    if (object.knows({L"ConnectionString", L"CursorLocation", L"Execute"})) {
        return QVariant::fromValue<std::shared_ptr<ConexionDB>>(std::make_shared<AdoConexion>(std::move(object)));
    }
    // Whatever it is, it is an object, and none that the component knows.
    return QVariant::fromValue<QObject*>(nullptr);
}

} // namespace

QVariant connectionArgument(const VARIANT* argument)
{
    if (argument == nullptr) {
        return {};
    }
    Variant plain;
    // What cannot even be copied is no object; the member itself reports that. The headers do not say that the source
    // stays as it is.
    if (FAILED(VariantCopyInd(plain.place(), const_cast<VARIANT*>(argument)))) {
        return {};
    }
    switch ((*plain).vt) {
    case VT_NULL:
        return QVariant::fromValue(nullptr);
    case VT_DISPATCH:
    case VT_UNKNOWN:
        if ((*plain).punkVal == nullptr) {
            return QVariant::fromValue(std::shared_ptr<ConexionDB>());
        }
        if (auto object = plain.object()) {
            return connectionOver(LateObject(std::move(object)));
        }
        return QVariant::fromValue<QObject*>(nullptr);
    default:
        return {}; // omitted, or a value that is no object: both are errors of the same kind
    }
}

} // namespace oVELDRA::automation
