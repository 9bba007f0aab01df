#pragma once

#include <oVELDRA/RuntimeError.h>

#include <QByteArray>

#include <exception>
#include <new>

namespace oVELDRA::cinterface {

/// The last failure of a thread, as the functions of the C interface tell it.
struct LastFailure
{
    qint32 number = 0;
    qint32 native = 0;
    QByteArray description; ///< UTF-8
    QByteArray source;
    quint64 count = 0; ///< of failures so far, which tells a new one from the one before

    /// Keeps an error and answers its number.
    qint32 keep(const RuntimeError& error) noexcept;
};

/// That of the calling thread.
[[nodiscard]] LastFailure& lastFailure() noexcept;

/// Runs the body of a function of the C interface: 0, or the number of what it threw, which is kept. Nothing gets past
/// it.
template <typename Body>
[[nodiscard]] qint32 guarded(Body&& body) noexcept
{
    constexpr int NoMemory = 7;
    constexpr int InternalError = 51;
    try {
        body();
        return 0;
    } catch (const RuntimeError& error) {
        return lastFailure().keep(error);
    } catch (const std::bad_alloc&) {
        return lastFailure().keep(RuntimeError(NoMemory));
    } catch (const std::exception& error) {
        return lastFailure().keep(
            RuntimeError(InternalError, QString::fromUtf8(error.what()), QStringLiteral("oVELDRA")));
    } catch (...) {
        return lastFailure().keep(RuntimeError(InternalError));
    }
}

} // namespace oVELDRA::cinterface
