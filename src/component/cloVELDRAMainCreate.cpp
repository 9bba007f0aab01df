#include <oVELDRA/cloVELDRAMain.h>

#include <catalog/frmProducto.h>
#include <core/Component.h>
#include <core/Prompts.h>
#include <declarations/frmDIT.h>
#include <declarations/frmDITART.h>
#include <declarations/frmImportar.h>
#include <declarations/frmMODDIT.h>
#include <listings/SystemPrinters.h>
#include <listings/frmListados.h>
#include <listings/frmVerINSxSBT.h>
#include <runtime/Clock.h>
#include <runtime/Settings.h>

#include <QCoreApplication>

#include <memory>
#include <utility>

namespace oVELDRA {

namespace {

/// The component of the process with its real collaborators, and which screen belongs to which entry operation.
struct Composition
{
    Composition()
    {
        component.installScreen(core::Entry::Mostrar,
                                [](core::Component& owner) { return std::make_unique<catalog::frmProducto>(owner); });
        component.installScreen(core::Entry::MostrarDIT, [this](core::Component& owner) {
            return std::make_unique<declarations::frmDIT>(owner, declarationDialogs());
        });
        component.installScreen(core::Entry::Importar, [](core::Component& owner) {
            return std::make_unique<declarations::frmImportar>(owner);
        });
        component.installScreen(core::Entry::VerINSxSBT, [](core::Component& owner) {
            return std::make_unique<listings::frmVerINSxSBT>(owner);
        });
    }

    [[nodiscard]] declarations::DeclarationDialogs declarationDialogs()
    {
        const core::ScreenFactory dischargeListing = [this](core::Component& owner) {
            return std::make_unique<listings::frmListados>(owner, printers, spooler);
        };
        return {[dischargeListing](core::Component& owner) {
                    return std::make_unique<declarations::frmMODDIT>(owner, dischargeListing);
                },
                [](core::Component& owner) { return std::make_unique<declarations::frmDITART>(owner); }};
    }

    core::ScreenPrompts prompts;
    runtime::UserSettings settings;
    runtime::SystemClock clock;
    listings::SystemPrinters printers;
    listings::SystemSpooler spooler;
    core::Component component{prompts, settings, clock};
};

/// Never destroyed: an object of the class may be released as late as a host's own static objects are, when what Qt's
/// windows need is gone already. The windows themselves go earlier, with the last object or with the application.
Composition& composition()
{
    static auto* const only = new Composition;
    return *only;
}

/// Whether the application that runs now will call dropScreensWithApplication().
bool routineIsSet = false;

void dropScreensWithApplication()
{
    routineIsSet = false;
    composition().component.dropScreens();
}

} // namespace

cloVELDRAMain::cloVELDRAMain() : cloVELDRAMain(composition().component)
{
    if (!std::exchange(routineIsSet, true)) {
        qAddPostRoutine(&dropScreensWithApplication);
    }
}

} // namespace oVELDRA
