#include "Application.h"

#include <oVELDRA/RuntimeError.h>

#include <QApplication>
#include <QThread>

#include <array>

using namespace Qt::StringLiterals;

namespace oVELDRA::core {

void ensureApplication()
{
    if (QCoreApplication::instance() == nullptr) {
        // QApplication keeps references to both for as long as it lives.
        static std::array<char, 8> name{"oVELDRA"};
        static std::array<char*, 2> arguments{name.data(), nullptr};
        static int count = 1;
        [[maybe_unused]] const auto* application = new QApplication(count, arguments.data());
    } else if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr) {
        throw RuntimeError(429,
                           u"El componente no puede crear el objeto: la aplicación anfitriona no admite ventanas."_s,
                           u"oVELDRA"_s);
    }
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
