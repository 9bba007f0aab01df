#include <oVELDRA/cloVELDRAMain.h>

#include <catalog/frmProducto.h>
#include <core/Component.h>
#include <core/Prompts.h>
#include <declarations/frmImportar.h>
#include <listings/frmVerINSxSBT.h>
#include <runtime/Clock.h>
#include <runtime/Settings.h>

#include <QCoreApplication>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA {

namespace {

/// Stands in for a screen that is not built yet: it tells the user so.
class MissingScreen final : public core::Screen
{
public:
    MissingScreen(core::Prompts& prompts, QString subject) : m_prompts(prompts), m_subject(std::move(subject)) {}

    void showModal() override
    {
        m_prompts.messageBox(u"La pantalla de %1 todavía no está disponible en esta versión."_s.arg(m_subject),
                             core::InformationBox);
    }

private:
    core::Prompts& m_prompts;
    QString m_subject;
};

/// The component of the process with its real collaborators, and which screen belongs to which entry operation.
struct Composition
{
    Composition()
    {
        component.installScreen(core::Entry::Mostrar,
                                [](core::Component& owner) { return std::make_unique<catalog::frmProducto>(owner); });
        component.installScreen(core::Entry::MostrarDIT, [](core::Component& owner) {
            return std::make_unique<MissingScreen>(owner.prompts(), u"declaraciones de importación temporaria"_s);
        });
        component.installScreen(core::Entry::Importar, [](core::Component& owner) {
            return std::make_unique<declarations::frmImportar>(owner);
        });
        component.installScreen(core::Entry::VerINSxSBT, [](core::Component& owner) {
            return std::make_unique<listings::frmVerINSxSBT>(owner);
        });
    }

    core::ScreenPrompts prompts;
    runtime::UserSettings settings;
    runtime::SystemClock clock;
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
