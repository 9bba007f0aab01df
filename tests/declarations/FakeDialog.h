#pragma once

#include <core/Component.h>

#include <functional>
#include <memory>

namespace oVELDRA::declarations {

/// Stands in for a dialog that a screen opens: counts, and does what a test says while it is shown. It must outlive the
/// screen.
class FakeDialog
{
public:
    [[nodiscard]] core::ScreenFactory factory()
    {
        return [this](core::Component&) {
            ++made;
            return std::make_unique<Shown>(*this);
        };
    }

    int made = 0;
    int shown = 0;
    std::function<void()> whileShown;

private:
    class Shown final : public core::Screen
    {
    public:
        explicit Shown(FakeDialog& dialog) : m_dialog(dialog) {}

        void showModal() override
        {
            ++m_dialog.shown;
            if (m_dialog.whileShown) {
                m_dialog.whileShown();
            }
        }

    private:
        FakeDialog& m_dialog;
    };
};

} // namespace oVELDRA::declarations
