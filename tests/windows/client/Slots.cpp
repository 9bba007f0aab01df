#include "Commands.h"
#include "CountedConnection.h"
#include "Host.h"

#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace client {

namespace {

struct NamedReader
{
    const char* name;
    HRESULT (STDMETHODCALLTYPE _cloVELDRAMain::*read)(BSTR*);
};

struct NamedWriter
{
    const char* name;
    HRESULT (STDMETHODCALLTYPE _cloVELDRAMain::*write)(BSTR*);
    const wchar_t* text;
};

constexpr NamedReader textReaders[] = {
    {"CATNRO", &_cloVELDRAMain::get_CATNRO}, {"PRDDES", &_cloVELDRAMain::get_PRDDES},
    {"PRDNCM", &_cloVELDRAMain::get_PRDNCM}, {"PRDPAI", &_cloVELDRAMain::get_PRDPAI},
    {"PRDSUF", &_cloVELDRAMain::get_PRDSUF}, {"PRDUNI", &_cloVELDRAMain::get_PRDUNI},
    {"PRDNRO", &_cloVELDRAMain::get_PRDNRO},
};

constexpr NamedWriter writers[] = {
    {"BaseNcm", &_cloVELDRAMain::put_BaseNcm, L"C:\\datos\\ncm.mdb"},
    {"BaseTornel", &_cloVELDRAMain::put_BaseTornel, L"C:\\datos\\tornel.mdb"},
    {"BaseInsumos", &_cloVELDRAMain::put_BaseInsumos, L"C:\\datos\\insumos.mdb"},
    {"Interno_Externo", &_cloVELDRAMain::put_Interno_Externo, L"TOR00001"},
    {"ADUANA", &_cloVELDRAMain::put_ADUANA, L"073"},
    {"IdSUB", &_cloVELDRAMain::put_IdSUB, L"123"},
};

void checkInitialValues(_cloVELDRAMain& component)
{
    VARIANT_BOOL ok = VARIANT_TRUE;
    checkResult(component.get_OK(&ok), S_OK, "OK can be read");
    checkNumber(ok, VARIANT_FALSE, "OK is False before a pick");
    for (const NamedReader& reader : textReaders) {
        Text text(L"not yet written");
        checkResult((component.*reader.read)(text.receive()), S_OK, std::string(reader.name) + " can be read");
        checkText(text.view(), L"", std::string(reader.name) + " is empty before a pick");
    }
    double price = 1;
    checkResult(component.get_PRDPRE(&price), S_OK, "PRDPRE can be read");
    check(price == 0, "PRDPRE is 0 before a pick");
}

void checkWriters(_cloVELDRAMain& component)
{
    for (const NamedWriter& writer : writers) {
        Text text(writer.text);
        BSTR const before = text.get();
        checkResult((component.*writer.write)(text.place()), S_OK, std::string(writer.name) + " can be written");
        check(text.get() == before, std::string(writer.name) + " leaves the caller's variable alone");
        checkText(text.view(), writer.text, std::string(writer.name) + " leaves the caller's text alone");
    }
    // An empty text is no text at all in many hosts.
    Text none;
    checkResult(component.put_ADUANA(none.place()), S_OK, "a text that is a null pointer can be written");
    check(none.get() == nullptr, "the null pointer stays one");
}

/// The user who closes every window of the program.
class Closer
{
public:
    Closer() : m_thread([this](const std::stop_token& stop) { run(stop); }) {}

    /// The title of the first window since the last question.
    [[nodiscard]] std::wstring takeTitle()
    {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_title, {});
    }

private:
    void run(const std::stop_token& stop)
    {
        while (!stop.stop_requested()) {
            EnumWindows(&visit, reinterpret_cast<LPARAM>(this));
            constexpr DWORD pause = 20;
            Sleep(pause);
        }
    }

    static BOOL CALLBACK visit(HWND window, LPARAM closer)
    {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process != GetCurrentProcessId() || !IsWindowVisible(window) || !IsWindowEnabled(window)) {
            return TRUE;
        }
        wchar_t title[256] = {};
        if (GetWindowTextW(window, title, static_cast<int>(std::size(title))) > 0) {
            reinterpret_cast<Closer*>(closer)->close(window, title);
        }
        return TRUE;
    }

    void close(HWND window, const wchar_t* title)
    {
        {
            const std::lock_guard lock(m_mutex);
            if (m_title.empty()) {
                m_title = title;
            }
        }
        PostMessageW(window, WM_CLOSE, 0, 0);
    }

    std::mutex m_mutex;
    std::wstring m_title;
    std::jthread m_thread;
};

void checkOperations(_cloVELDRAMain& component)
{
    struct Operation
    {
        const char* name;
        HRESULT (STDMETHODCALLTYPE _cloVELDRAMain::*call)();
    };
    constexpr Operation operations[] = {
        {"Mostrar", &_cloVELDRAMain::Mostrar},
        {"Importar", &_cloVELDRAMain::Importar},
        {"MostrarDIT", &_cloVELDRAMain::MostrarDIT},
        {"VerINSxSBT", &_cloVELDRAMain::VerINSxSBT},
    };
    Closer closer;
    for (const Operation& operation : operations) {
        checkResult((component.*operation.call)(), S_OK, std::string(operation.name) + " opens and closes");
        report(operation.name, closer.takeTitle());
    }
}

} // namespace

void checkSlots()
{
    const Apartment apartment(COINIT_APARTMENTTHREADED);
    CountedConnection connection;
    ComPtr<_cloVELDRAMain> component = create();
    checkInitialValues(*component.Get());
    checkWriters(*component.Get());
    bool connected = false;
    checkResult(connect(*component.Get(), &connection, connected), S_OK, "ConectarDB can be called");
    check(connected, "ConectarDB takes the connection and two Nulls");
    check(connection.references() > 1, "the component keeps the connection");
    checkOperations(*component.Get());
    check(connection.opened() > 0, "the screens read through the connection");
    component.Reset();
    checkNumber(connection.references(), 1, "nothing of the connection is kept after the last release");
    checkNumber(connection.recordset().references(), 1, "no result is kept");
}

} // namespace client
