#pragma once

namespace oVELDRA::data {

/// While one of these lives, a request to end the program (Ctrl+C, a shutdown) is only noted, so that the work can take
/// back what it has begun. The second request ends the program at once. One at a time.
class Interruption
{
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    [[nodiscard]] static bool requested();
    /// Throws RuntimeError when the program was asked to end.
    static void check();
};

} // namespace oVELDRA::data
