#include "Component.h"

#include <oVELDRA/RuntimeError.h>

#include <runtime/Settings.h>

#include <QScopeGuard>

#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::core {

Component::Component(Prompts& prompts, runtime::SettingsStore& settings, const runtime::Clock& clock)
    : m_prompts(prompts), m_settings(settings), m_clock(clock)
{}

Component::~Component() = default;

void Component::installScreen(Entry entry, ScreenFactory factory)
{
    m_screens[entry].factory = std::move(factory);
}

void Component::show(Entry entry)
{
    Slot& slot = m_screens.at(entry);
    if (slot.open) {
        throw RuntimeError(400);
    }
    slot.open = true;
    const auto closed = qScopeGuard([&slot] {
        slot.open = false;
        if (std::exchange(slot.dropWhenClosed, false)) {
            slot.screen.reset();
        }
    });
    if (!slot.screen) {
        slot.screen = slot.factory(*this);
    }
    slot.screen->showModal();
}

void Component::start()
{
    // Exactly "N": the setting belongs to another program of the suite, which writes it in capitals.
    const QString opVDE = m_settings.get(u"oZENDALO"_s, u"CONFIG"_s, u"opVDE"_s, u"N"_s);
    state.g_bOpVDE = opVDE != u"N"_s;
    state.g_sFmtCantidad = state.g_bOpVDE ? u"00.00000000"_s : u"00.000000"_s;
    state.g_sFmtListado = state.g_sFmtCantidad;
    ++m_objects;
}

void Component::end()
{
    if (--m_objects > 0) {
        return;
    }
    state.g_DBTOR.release();
    state.g_DBINS.release();
    state.g_DBNCM.release();
    dropScreens();
}

void Component::dropScreens()
{
    for (auto& [entry, slot] : m_screens) {
        if (slot.open) {
            slot.dropWhenClosed = true;
        } else {
            slot.screen.reset();
        }
    }
}

} // namespace oVELDRA::core
