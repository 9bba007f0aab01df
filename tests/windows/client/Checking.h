#pragma once

#include <source_location>
#include <string>
#include <string_view>
#include <windows.h>

namespace client {

/// Says what was checked, and leaves the program with exit code 1 when it does not hold: what comes after a broken
/// promise of an object's proves nothing.
void check(bool holds, std::string_view what, std::source_location place = std::source_location::current());

/// Compares two results of calls, and shows both when they differ.
void checkResult(HRESULT result, HRESULT expected, std::string_view what,
                 std::source_location place = std::source_location::current());

/// Compares two numbers, and shows both when they differ.
void checkNumber(long long number, long long expected, std::string_view what,
                 std::source_location place = std::source_location::current());

/// Compares two texts, and shows both when they differ.
void checkText(std::wstring_view text, std::wstring_view expected, std::string_view what,
               std::source_location place = std::source_location::current());

/// One line "name=value" for the program that runs this one.
void report(std::string_view name, long long value);
void report(std::string_view name, std::wstring_view value);

/// In the code page of the regional settings.
[[nodiscard]] std::string printed(std::wstring_view text);

} // namespace client
