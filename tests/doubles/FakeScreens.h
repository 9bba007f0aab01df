#pragma once

#include <core/Component.h>

#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace oVELDRA::doubles {

/// Screens without a window in place of the real ones: they count, and do what they are told while they are shown.
/// Must outlive the component that they are installed in.
class FakeScreens
{
public:
    struct Count
    {
        int made = 0;
        int shown = 0;
        int dropped = 0;
    };

    void install(core::Component& component, core::Entry entry, std::function<void()> whileShown = {})
    {
        component.installScreen(entry, [this, entry, whileShown = std::move(whileShown)](core::Component&) {
            return std::make_unique<FakeScreen>(m_counts[entry], whileShown);
        });
    }

    [[nodiscard]] const Count& operator[](core::Entry entry) { return m_counts[entry]; }

private:
    class FakeScreen final : public core::Screen
    {
    public:
        FakeScreen(Count& count, std::function<void()> whileShown) : m_count(count), m_whileShown(std::move(whileShown))
        {
            ++m_count.made;
        }
        FakeScreen(const FakeScreen&) = delete;
        FakeScreen& operator=(const FakeScreen&) = delete;
        ~FakeScreen() override { ++m_count.dropped; }

        void showModal() override
        {
            ++m_count.shown;
            if (m_whileShown) {
                m_whileShown();
            }
        }

    private:
        Count& m_count;
        std::function<void()> m_whileShown;
    };

    std::map<core::Entry, Count> m_counts;
};

} // namespace oVELDRA::doubles
