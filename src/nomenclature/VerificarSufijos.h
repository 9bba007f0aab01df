#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace oVELDRA::core {
class Component;
} // namespace oVELDRA::core

namespace oVELDRA::nomenclature {

/// Lets the user choose one of the lines of a suffix group. The chosen line goes into `chosenSuffix` of the shared
/// state, which stays as it is when the user does not choose.
using OptionChooser = std::function<void(core::Component& component, const QStringList& lines)>;

/// The option form.
void chooseInForm(core::Component& component, const QStringList& lines);

/// Checks a product's suffix text against the rules of its position and, where something is missing (or the text is
/// empty, or `mode` is 1), asks the user for every suffix anew. Answers the text to store: "SIN SUFIJOS" for a position
/// without rules, empty when the user cancelled or an error was reported.
[[nodiscard]] QString VerificarSufijos(core::Component& component, const QString& position, const QString& suffixes,
                                       int mode = 0, const OptionChooser& choose = chooseInForm);

} // namespace oVELDRA::nomenclature
