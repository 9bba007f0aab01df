#include "ProcesarNCM.h"

#include <controls/BusyPointer.h>
#include <core/Component.h>
#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <core/Prompts.h>
#include <nomenclature/Position.h>
#include <runtime/ValueConverter.h>

using namespace Qt::StringLiterals;

namespace oVELDRA::nomenclature {

namespace {

/// The position in the stored form, empty when the tariff does not have it.
QString storedForm(core::SharedState& state, const QString& position)
{
    const controls::BusyPointer busy;
    const PositionParts typed = splitTypedPosition(position);
    const QString condition = u" [001] = "_s + core::quoted(typed.subheading) + u" and [002] = "_s +
                              core::quoted(typed.opening) + u"  and [003] = "_s + core::quoted(typed.control);
    const auto row = core::rowsOf(
        *state.g_DBNCM, u"select [001],[002],[003],[012] as uest ,[059] as lapi from NCM where "_s + condition);
    if (row->atEof()) {
        return {};
    }
    return joinedPosition({runtime::toText(row->value(u"001")), runtime::toText(row->value(u"002")),
                           runtime::toText(row->value(u"003"))});
}

} // namespace

QString ProcesarNCM(core::Component& component, QString& position)
{
    QString result;
    core::trap(component.prompts(), u"Sección [Morvesta.frmModificar.ProcesarNCM]", [&] {
        if (!isPositionLength(position.size())) {
            component.prompts().messageBox(u"Error en la estructura de la posición"_s, core::ExclamationBox);
            return;
        }
        position = commasToPoints(position);
        result = storedForm(component.state, position);
        if (result.isEmpty()) {
            component.prompts().messageBox(u"Posición no encontrada en Nomenclador"_s, core::ExclamationBox);
        }
    });
    return result;
}

} // namespace oVELDRA::nomenclature
