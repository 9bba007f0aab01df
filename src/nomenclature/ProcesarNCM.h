#pragma once

#include <QString>

namespace oVELDRA::core {
class Component;
} // namespace oVELDRA::core

namespace oVELDRA::nomenclature {

/// Looks a typed position up in the tariff and answers it in the stored form, or empty after telling what is wrong.
/// Commas in `position` become points in place.
[[nodiscard]] QString ProcesarNCM(core::Component& component, QString& position);

} // namespace oVELDRA::nomenclature
