#pragma once

#include <oVELDRA/RuntimeError.h>

#include <exception>
#include <new>
#include <oaidl.h>

namespace oVELDRA::automation {

/// How an error's number travels between automation objects: those of the runtime as 0x800A0000 + number, so that every
/// client's Err.Number is the number again; the negative ones of databases as they are.
[[nodiscard]] HRESULT resultOf(int number) noexcept;

/// The number of a failed call. What the automation runtime itself answers comes as the runtime errors that they are
/// known by: DISP_E_TYPEMISMATCH as 13, DISP_E_UNKNOWNNAME as 438 and so on.
[[nodiscard]] int numberOf(HRESULT result) noexcept;

/// The error of a failed IDispatch::Invoke(); takes the texts out of `details`.
[[nodiscard]] RuntimeError errorOf(HRESULT result, EXCEPINFO& details);

/// Leaves an error on the thread, where the caller finds its texts, and answers the result to return. `source` stands
/// for errors that name none themselves.
HRESULT report(const RuntimeError& error, REFIID interfaceId, const wchar_t* source) noexcept;

/// Runs the body of a member: S_OK, or the result of what it threw, which is reported. Nothing gets past it.
template <typename Body>
[[nodiscard]] HRESULT guarded(REFIID interfaceId, const wchar_t* source, Body&& body) noexcept
{
    constexpr int NoMemory = 7;
    constexpr int InternalError = 51;
    try {
        body();
        return S_OK;
    } catch (const RuntimeError& error) {
        return report(error, interfaceId, source);
    } catch (const std::bad_alloc&) {
        return report(RuntimeError(NoMemory), interfaceId, source);
    } catch (const std::exception& error) {
        return report(RuntimeError(InternalError, QString::fromUtf8(error.what())), interfaceId, source);
    } catch (...) {
        return report(RuntimeError(InternalError), interfaceId, source);
    }
}

} // namespace oVELDRA::automation
