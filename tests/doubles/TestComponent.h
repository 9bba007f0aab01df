#pragma once

#include "doubles/FixedClock.h"
#include "doubles/MemorySettings.h"
#include "doubles/RecordedPrompts.h"

#include <core/Component.h>

namespace oVELDRA::doubles {

/// A component over doubles, one per test function: `TestComponent component; frmX form(component);`
struct TestComponentParts
{
    RecordedPrompts prompts;
    MemorySettings settings;
    FixedClock clock;
};

class TestComponent final : private TestComponentParts, public core::Component
{
public:
    TestComponent()
        : core::Component(TestComponentParts::prompts, TestComponentParts::settings, TestComponentParts::clock)
    {}

    // The doubles themselves, with what they recorded and can be told.
    using TestComponentParts::clock;
    using TestComponentParts::prompts;
    using TestComponentParts::settings;
};

} // namespace oVELDRA::doubles
