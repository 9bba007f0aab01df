#pragma once

#include <oVELDRA/RuntimeError.h>

#include <functional>
#include <optional>

namespace oVELDRA::doubles {

/// The RuntimeError that `body` throws, or nothing when it throws none.
[[nodiscard]] inline std::optional<RuntimeError> thrownBy(const std::function<void()>& body)
{
    try {
        body();
    } catch (const RuntimeError& error) {
        return error;
    }
    return std::nullopt;
}

/// Its number, 0 for none.
[[nodiscard]] inline int numberThrownBy(const std::function<void()>& body)
{
    const auto error = thrownBy(body);
    return error ? error->number() : 0;
}

} // namespace oVELDRA::doubles
