#include "Application.h"

#include <oVELDRA/RuntimeError.h>

#include <QApplication>
#include <QLibraryInfo>
#include <QPointer>
#include <QThread>
#include <QTranslator>

#include <array>
#include <clocale>
#include <string>

using namespace Qt::StringLiterals;

namespace oVELDRA::core {

namespace {

/// What makeApplication() made, while it lives.
QPointer<QApplication> ownApplication;

/// For a host that knows nothing of Qt.
void makeApplication()
{
    // QApplication keeps references to both for as long as it lives.
    static std::array<char, 8> name{"oVELDRA"};
    static std::array<char*, 2> arguments{name.data(), nullptr};
    static int count = 1;
    // Qt takes the user's number format for the whole process, and the host's own reading and printing of numbers would
    // begin to use its decimal separator. Qt itself does not need it: QLocale has it.
    const std::string numbers = std::setlocale(LC_NUMERIC, nullptr);
#ifdef Q_OS_WIN
    // How the host's own windows are scaled is the host's matter; Qt would decide it for the whole process.
    QCoreApplication::setAttribute(Qt::AA_PluginApplication);
#endif
    auto* const application = new QApplication(count, arguments.data());
    ownApplication = application;
    std::setlocale(LC_NUMERIC, numbers.c_str());
    // Qt's own windows, those for printing and for files, speak Spanish like all others.
    auto* const spanish = new QTranslator(application);
    if (spanish->load(u"qtbase_es"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)) ||
        spanish->load(u":/oVELDRA/qtbase_es"_s)) { // where the library brings it along
        QCoreApplication::installTranslator(spanish);
    }
}

} // namespace

void ensureApplication()
{
    if (QCoreApplication::instance() == nullptr) {
        makeApplication();
    } else if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr) {
        throw RuntimeError(429,
                           u"El componente no puede crear el objeto: la aplicación anfitriona no admite ventanas."_s,
                           u"oVELDRA"_s);
    }
}

bool endOwnApplication()
{
    if (ownApplication && ownApplication->thread() != QThread::currentThread()) {
        return false;
    }
    delete ownApplication;
    return true;
}

void requireUiThread()
{
    const auto* application = QCoreApplication::instance();
    if (application != nullptr && application->thread() != QThread::currentThread()) {
        throw RuntimeError(5, u"El componente solo puede usarse desde el hilo de la interfaz de usuario."_s,
                           u"oVELDRA"_s);
    }
}

void requireWindows()
{
    requireUiThread();
    if (QCoreApplication::instance() == nullptr) {
        throw RuntimeError(5, u"La aplicación ya terminó: no se pueden mostrar ventanas."_s, u"oVELDRA"_s);
    }
}

} // namespace oVELDRA::core
