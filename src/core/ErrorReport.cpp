#include "ErrorReport.h"

#include <new>

using namespace Qt::StringLiterals;

namespace oVELDRA::core {

QString errorText(const RuntimeError& error, QStringView location)
{
    const QString number = QString::number(error.number());
    if (location.startsWith(u" - ")) {
        return error.description() + u"\r\n\r\n"_s + number + location;
    }
    return number + u" - "_s + error.description() + u"\r\n\r\n"_s + location;
}

void reportError(Prompts& prompts, const RuntimeError& error, QStringView location)
{
    prompts.messageBox(errorText(error, location), CriticalBox);
}

bool trap(Prompts& prompts, QStringView location, const std::function<void()>& body)
{
    try {
        body();
        return true;
    } catch (...) {
        reportError(prompts, currentError(), location);
        return false;
    }
}

RuntimeError currentError()
{
    try {
        throw;
    } catch (const RuntimeError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return RuntimeError(7);
    } catch (const std::exception& error) {
        return {5, QString::fromLocal8Bit(error.what())};
    } catch (...) {
        return RuntimeError(5);
    }
}

} // namespace oVELDRA::core
