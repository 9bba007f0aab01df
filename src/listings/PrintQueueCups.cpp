#include "Libcups.h"
#include "PrintQueue.h"

#include <oVELDRA/RuntimeError.h>

#include <QStringEncoder>

#include <memory>

using namespace Qt::StringLiterals;

namespace oVELDRA::listings::queue {

namespace {

struct FreeDestination
{
    void operator()(cups_dest_t* destination) const { libcups().cupsFreeDests(1, destination); }
};

struct CloseConnection
{
    void operator()(http_t* connection) const { libcups().httpClose(connection); }
};

/// Whether the spooler answers at all. The library says of every queue of a stopped one that it does not exist.
bool isSpoolerThere()
{
    constexpr int patience = 5000; // milliseconds
    const std::unique_ptr<http_t, CloseConnection> connection(
        libcups().httpConnect2(libcups().cupsServer(), libcups().ippPort(), nullptr, AF_UNSPEC,
                               libcups().cupsEncryption(), 1, patience, nullptr));
    return connection != nullptr;
}

[[noreturn]] void refuse(const QString& deviceName, const QString& reason)
{
    constexpr int printerError = 482;
    throw RuntimeError(printerError, u"La impresora %1 no puede imprimir: %2"_s.arg(deviceName, reason));
}

/// The name of the queue, without the name of a set of options behind it.
QByteArray queueOf(const QString& deviceName)
{
    return deviceName.section(u'/', 0, 0).toUtf8();
}

} // namespace

void requireReady(const QString& deviceName)
{
    const std::unique_ptr<cups_dest_t, FreeDestination> destination(
        libcups().cupsGetNamedDest(CUPS_HTTP_DEFAULT, queueOf(deviceName).constData(), nullptr));
    if (!destination) {
        refuse(deviceName, isSpoolerThere() ? u"ya no está en el sistema."_s
                                            : u"el servicio de impresión del sistema no responde."_s);
    }
    const auto option = [&destination](const char* name) {
        return QByteArray(libcups().cupsGetOption(name, destination->num_options, destination->options));
    };
    if (option("printer-is-accepting-jobs") == "false") {
        refuse(deviceName, u"no acepta trabajos."_s);
    }
    if (option("printer-state").toInt() == IPP_PSTATE_STOPPED) {
        refuse(deviceName, u"está detenida."_s);
    }
}

QString lastRefusal()
{
    return libcups().cupsLastError() < IPP_STATUS_REDIRECTION_OTHER_SITE
               ? QString()
               : QString::fromUtf8(libcups().cupsLastErrorString());
}

void sendRaw(const QString& deviceName, const QString& title, const QByteArray& bytes)
{
    requireReady(deviceName);
    const QByteArray name = queueOf(deviceName);
    const int job =
        libcups().cupsCreateJob(CUPS_HTTP_DEFAULT, name.constData(), title.toUtf8().constData(), 0, nullptr);
    if (job == 0) {
        refuse(deviceName, lastRefusal());
    }
    const bool sent = libcups().cupsStartDocument(CUPS_HTTP_DEFAULT, name.constData(), job, title.toUtf8().constData(),
                                                  CUPS_FORMAT_RAW, 1) == HTTP_STATUS_CONTINUE &&
                      libcups().cupsWriteRequestData(CUPS_HTTP_DEFAULT, bytes.constData(),
                                                     static_cast<size_t>(bytes.size())) == HTTP_STATUS_CONTINUE;
    const ipp_status_t finished = libcups().cupsFinishDocument(CUPS_HTTP_DEFAULT, name.constData());
    if (!sent || finished >= IPP_STATUS_REDIRECTION_OTHER_SITE) {
        const QString reason = lastRefusal();
        libcups().cupsCancelJob2(CUPS_HTTP_DEFAULT, name.constData(), job, 0);
        refuse(deviceName, reason);
    }
}

QByteArray toCodePage850(const QString& text)
{
    constexpr char substitute = '\x7f'; // what the encoder writes for a character that the code page does not have
    QStringEncoder encoder("IBM850");
    if (!encoder.isValid()) {
        throw RuntimeError(5, u"Falta la página de códigos 850 para imprimir en modo DOS."_s);
    }
    QByteArray bytes = encoder.encode(text);
    return bytes.replace(substitute, '?');
}

} // namespace oVELDRA::listings::queue
