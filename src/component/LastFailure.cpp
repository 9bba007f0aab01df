#include "LastFailure.h"

#include <utility>

namespace oVELDRA::cinterface {

namespace {

/// Numbers of errors are never 0, which is success on this border.
constexpr qint32 WrongArgument = 5;

} // namespace

qint32 LastFailure::keep(const RuntimeError& error) noexcept
{
    number = error.number() != 0 ? error.number() : WrongArgument;
    native = error.nativeNumber();
    description = error.description().toUtf8();
    source = error.source().toUtf8();
    ++count;
    return number;
}

LastFailure& lastFailure() noexcept
{
    thread_local LastFailure failure;
    return failure;
}

} // namespace oVELDRA::cinterface
