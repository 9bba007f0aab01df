#pragma once

#include <oleauto.h>
#include <string_view>
#include <utility>
#include <windows.h>

namespace client {

/// A text that an object takes or gives; the client frees it.
class Text
{
public:
    Text() = default;
    explicit Text(std::wstring_view text) : m_text(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() { SysFreeString(m_text); }

    [[nodiscard]] BSTR get() const { return m_text; }
    /// For a call that takes it by reference.
    [[nodiscard]] BSTR* place() { return &m_text; }
    /// For a call that gives one: what was here is freed.
    [[nodiscard]] BSTR* receive()
    {
        SysFreeString(std::exchange(m_text, nullptr));
        return &m_text;
    }
    [[nodiscard]] std::wstring_view view() const { return {m_text, SysStringLen(m_text)}; }

private:
    BSTR m_text = nullptr;
};

} // namespace client
