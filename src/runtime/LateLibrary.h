#pragma once

#include <QLibrary>
#include <QString>

namespace oVELDRA::runtime {

/// A shared library of the system that is loaded with the first function taken from it, and stays loaded.
///
/// For libraries that bring a dozen others along and that most users never need: linking them would make every start
/// of every host wait for them.
class LateLibrary
{
public:
    /// `name` without prefix and ending, `version` as it stands behind them ("pq", 5).
    LateLibrary(const QString& name, int version);

    /// Points `function` to the library's function of that name. Throws RuntimeError 53, naming the library, when it is
    /// not installed or has no such function.
    template <typename Function>
    void take(Function*& function, const char* name)
    {
        function = reinterpret_cast<Function*>(address(name));
    }

private:
    [[nodiscard]] QFunctionPointer address(const char* name);

    QLibrary m_library;
};

} // namespace oVELDRA::runtime
