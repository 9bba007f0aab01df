#pragma once

#include <core/SharedState.h>

#include <functional>
#include <map>
#include <memory>

namespace oVELDRA::runtime {
class Clock;
class SettingsStore;
} // namespace oVELDRA::runtime

namespace oVELDRA::core {

class Prompts;
class Component;

/// The entry operations that open a screen.
enum class Entry { Mostrar, Importar, MostrarDIT, VerINSxSBT };

/// A screen that an entry operation shows. Made on first use, kept for later calls.
class Screen
{
public:
    Screen() = default;
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    virtual ~Screen() = default;

    /// Loads and shows the screen; returns when the user has closed it.
    virtual void showModal() = 0;
};

using ScreenFactory = std::function<std::unique_ptr<Screen>(Component&)>;

/// The component as its parts see it: the shared state and the collaborators, by reference.
class Component
{
public:
    /// The collaborators are not owned and must outlive the component.
    Component(Prompts& prompts, runtime::SettingsStore& settings, const runtime::Clock& clock);
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;
    ~Component();

    SharedState state;

    [[nodiscard]] Prompts& prompts() const { return m_prompts; }
    [[nodiscard]] runtime::SettingsStore& settings() const { return m_settings; }
    [[nodiscard]] const runtime::Clock& clock() const { return m_clock; }

    /// Says how the screen of an entry operation is made. Known once, at composition.
    void installScreen(Entry entry, ScreenFactory factory);

    /// Shows the screen of an entry operation, which must be installed. Throws RuntimeError 400 when that screen is
    /// already open.
    void show(Entry entry);

    /// An object of the class was made: reads the number formats from the settings.
    void start();
    /// An object was released. With the last one the connections are dropped and the kept screens closed.
    void end();
    /// Destroys the kept screens; for the end of the application, when no widget may outlive it. A screen that is open
    /// goes when it closes.
    void dropScreens();

private:
    struct Slot
    {
        ScreenFactory factory;
        std::unique_ptr<Screen> screen;
        bool open = false;
        bool dropWhenClosed = false;
    };

    Prompts& m_prompts;
    runtime::SettingsStore& m_settings;
    const runtime::Clock& m_clock;
    std::map<Entry, Slot> m_screens;
    int m_objects = 0;
};

} // namespace oVELDRA::core
