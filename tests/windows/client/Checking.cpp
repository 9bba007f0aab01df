#include "Checking.h"

#include <cstdio>
#include <cstdlib>
#include <iomanip>
#include <sstream>

namespace client {

namespace {

template <typename... Parts>
std::string joined(const Parts&... parts)
{
    std::ostringstream text;
    (text << ... << parts);
    return text.str();
}

std::string hexadecimal(HRESULT result)
{
    return joined("0x", std::hex, std::setfill('0'), std::setw(8), static_cast<unsigned long>(result));
}

template <typename... Parts>
void say(const Parts&... parts)
{
    const std::string line = joined(parts..., '\n');
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout); // the last line before a crash is the one that tells
}

[[noreturn]] void fail(std::string_view what, std::string_view difference, const std::source_location& place)
{
    say("failed: ", what, difference, " (", place.file_name(), ':', place.line(), ')');
    // Not exit(): destructors would call into an object that has just proved to be broken.
    std::_Exit(1);
}

} // namespace

void check(bool holds, std::string_view what, std::source_location place)
{
    if (!holds) {
        fail(what, "", place);
    }
    say("holds: ", what);
}

void checkResult(HRESULT result, HRESULT expected, std::string_view what, std::source_location place)
{
    if (result != expected) {
        fail(what, joined(": ", hexadecimal(result), " instead of ", hexadecimal(expected)), place);
    }
    say("holds: ", what);
}

void checkNumber(long long number, long long expected, std::string_view what, std::source_location place)
{
    if (number != expected) {
        fail(what, joined(": ", number, " instead of ", expected), place);
    }
    say("holds: ", what);
}

void checkText(std::wstring_view text, std::wstring_view expected, std::string_view what, std::source_location place)
{
    if (text != expected) {
        fail(what, joined(": \"", printed(text), "\" instead of \"", printed(expected), '"'), place);
    }
    say("holds: ", what);
}

void report(std::string_view name, long long value)
{
    say(name, '=', value);
}

void report(std::string_view name, std::wstring_view value)
{
    say(name, '=', printed(value));
}

std::string printed(std::wstring_view text)
{
    const auto length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

} // namespace client
