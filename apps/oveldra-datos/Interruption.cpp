#include "Interruption.h"

#include <oVELDRA/RuntimeError.h>

#include <array>
#include <csignal>

using namespace Qt::StringLiterals;

namespace oVELDRA::data {

namespace {

constexpr int interrupted = 18; // the automation runtime's number for an interruption by the user

volatile std::sig_atomic_t signalled = 0;

#ifdef SIGHUP
constexpr std::array signalNumbers = {SIGINT, SIGTERM, SIGHUP};
#else
constexpr std::array signalNumbers = {SIGINT, SIGTERM};
#endif

extern "C" void noteSignal(int number)
{
    signalled = 1;
    std::signal(number, SIG_DFL);
}

} // namespace

Interruption::Interruption()
{
    signalled = 0;
    for (const int number : signalNumbers) {
        // What the caller wants ignored (nohup) stays so.
        if (std::signal(number, noteSignal) == SIG_IGN) {
            std::signal(number, SIG_IGN);
        }
    }
}

Interruption::~Interruption()
{
    for (const int number : signalNumbers) {
        if (std::signal(number, SIG_DFL) == SIG_IGN) {
            std::signal(number, SIG_IGN);
        }
    }
}

bool Interruption::requested()
{
    return signalled != 0;
}

void Interruption::check()
{
    if (requested()) {
        throw RuntimeError(interrupted, u"Se interrumpió a pedido del usuario; no quedó nada a medias."_s);
    }
}

} // namespace oVELDRA::data
