#pragma once

#include <oVELDRA/RuntimeError.h>

#include <core/Prompts.h>

#include <QString>
#include <QStringView>

#include <functional>

namespace oVELDRA::core {

/// The number of the errors that the rules raise themselves, with a description of their own.
inline constexpr int ApplicationError = -2147221504;

/// The text of an error box. A location that starts with " - " puts the description first and the number before the
/// location; any other puts "number - description" first. The location itself is shown as it stands.
[[nodiscard]] QString errorText(const RuntimeError& error, QStringView location);

/// Shows errorText() in a critical box without a title of its own.
void reportError(Prompts& prompts, const RuntimeError& error, QStringView location);

/// Runs `body`; an error that leaves it is reported once with `location`. True when there was none.
///
/// Errors of the C++ library count too: running out of memory is error 7, any other exception error 5 with its text.
bool trap(Prompts& prompts, QStringView location, const std::function<void()>& body);

/// The exception being handled, as a RuntimeError. Call it in a catch block only.
[[nodiscard]] RuntimeError currentError();

} // namespace oVELDRA::core
