#include "PrintQueue.h"

#include <oVELDRA/RuntimeError.h>

#include <vector>
#include <windows.h>
#include <winspool.h>

using namespace Qt::StringLiterals;

namespace oVELDRA::listings::queue {

namespace {

/// An open printer.
class Printer
{
public:
    explicit Printer(const QString& deviceName)
    {
        std::wstring name = deviceName.toStdWString();
        if (!OpenPrinterW(name.data(), &m_handle, nullptr)) {
            m_handle = nullptr;
        }
    }
    ~Printer()
    {
        if (m_handle) {
            ClosePrinter(m_handle);
        }
    }
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

    [[nodiscard]] HANDLE handle() const { return m_handle; }

private:
    HANDLE m_handle = nullptr;
};

[[noreturn]] void refuse(const QString& deviceName, const QString& reason)
{
    constexpr int printerError = 482;
    throw RuntimeError(printerError, u"La impresora %1 no puede imprimir: %2"_s.arg(deviceName, reason));
}

[[noreturn]] void refuseWithLastError(const QString& deviceName)
{
    refuse(deviceName, u"error %1 del sistema."_s.arg(GetLastError()));
}

} // namespace

void requireReady(const QString& deviceName)
{
    const Printer printer(deviceName);
    if (!printer.handle()) {
        refuse(deviceName, u"ya no está en el sistema."_s);
    }
    DWORD size = 0;
    GetPrinterW(printer.handle(), 6, nullptr, 0, &size);
    std::vector<BYTE> buffer(size);
    if (!GetPrinterW(printer.handle(), 6, buffer.data(), size, &size)) {
        refuseWithLastError(deviceName);
    }
    const DWORD status = reinterpret_cast<const PRINTER_INFO_6*>(buffer.data())->dwStatus;
    if ((status & PRINTER_STATUS_PAUSED) != 0) {
        refuse(deviceName, u"está detenida."_s);
    }
}

QString lastRefusal()
{
    return {}; // the print engine of this system reports its own errors
}

void sendRaw(const QString& deviceName, const QString& title, const QByteArray& bytes)
{
    requireReady(deviceName);
    const Printer printer(deviceName);
    std::wstring name = title.toStdWString();
    std::wstring type = L"RAW";
    DOC_INFO_1W document{name.data(), nullptr, type.data()};
    if (StartDocPrinterW(printer.handle(), 1, reinterpret_cast<BYTE*>(&document)) == 0) {
        refuseWithLastError(deviceName);
    }
    std::vector<char> copy(bytes.begin(), bytes.end());
    DWORD written = 0;
    const bool sent = StartPagePrinter(printer.handle()) &&
                      WritePrinter(printer.handle(), copy.data(), static_cast<DWORD>(copy.size()), &written) &&
                      written == copy.size() && EndPagePrinter(printer.handle());
    if (!sent) {
        AbortPrinter(printer.handle());
        refuseWithLastError(deviceName);
    }
    EndDocPrinter(printer.handle());
}

QByteArray toCodePage850(const QString& text)
{
    constexpr UINT codePage = 850;
    const std::wstring wide = text.toStdWString();
    const auto length = static_cast<int>(wide.size());
    const int size = WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, wide.data(), length, nullptr, 0, "?", nullptr);
    QByteArray bytes(size, '\0');
    WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, wide.data(), length, bytes.data(), size, "?", nullptr);
    return bytes;
}

} // namespace oVELDRA::listings::queue
