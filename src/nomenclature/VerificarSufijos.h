#pragma once

#include <QString>

namespace oVELDRA::core {
class Component;
} // namespace oVELDRA::core

namespace oVELDRA::nomenclature {

/// Checks a product's suffix text against the rules of its position and, where something is missing (or `mode` is 1),
/// asks the user for every suffix anew. Answers the text to store: "SIN SUFIJOS" for a position without rules, empty
/// when the user cancelled or an error was reported.
[[nodiscard]] QString VerificarSufijos(core::Component& component, const QString& position, const QString& suffixes,
                                       int mode = 0);

} // namespace oVELDRA::nomenclature
