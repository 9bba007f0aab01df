#include "frmVerINSxSBT.h"

#include <controls/BusyPointer.h>
#include <controls/ListView.h>
#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <runtime/Numbers.h>
#include <runtime/Texts.h>
#include <runtime/ValueConverter.h>

#include <QLabel>

using namespace Qt::StringLiterals;

namespace oVELDRA::listings {

frmVerINSxSBT::frmVerINSxSBT(core::Component& component)
    : Form(component, u"frmVerINSxSBT"_s, u"Insumos por subitem de exportación"_s)
{
    const QString title = u"Insumos descargados para este subitem's"_s;
    QLabel* heading = addTitle(u"Label1"_s, title);
    lstView = addList(u"lstView"_s, title,
                      {{u"Insumo"_s, 18},
                       {u"D.I.T"_s, 18},
                       {u"Item"_s, 5, Qt::AlignRight},
                       {u"SubIt"_s, 6, Qt::AlignRight},
                       {u"Descargado"_s, 16, Qt::AlignRight},
                       {u"Cif Unitario"_s, 16, Qt::AlignRight}});
    heading->setBuddy(lstView);
    addHint({}, u"[ESC] Salir"_s);
    setKeys({{Qt::Key_Escape, controls::AnyModifiers, controls::WholeForm, [this] { unload(); }}});
}

void frmVerINSxSBT::Form_Load()
{
    Cargar_Insumos();
}

void frmVerINSxSBT::Cargar_Insumos()
{
    core::trap(component().prompts(), u" - seccion [oVELDRA.frmVerINSxSBT.cargar_insumos]", [this] {
        core::SharedState& state = component().state;
        const controls::BusyPointer busy;
        const controls::FillScope fill(*lstView);
        lstView->clear();

        const QString statement =
            u"select ARTDCL, ARTNRO, ARTITM, ARTSBT, RALCAN, ARTPRE from DIP where EXTINT = %1 and EXTSBT = %2 order by ARTDCL, ARTITM, ARTSBT"_s
                .arg(core::quoted(state.sInternoExt), QString::number(state.g_lIdSUB));
        lstView->append(
            core::rowsOf(*state.g_DBINS, statement), [&state](const Recordset& discharge) -> controls::ListRow {
                const auto field = [&discharge](QStringView name) { return discharge.value(name); };
                return {{runtime::Trim(runtime::toText(field(u"ARTNRO"))),
                         runtime::Trim(runtime::toText(field(u"ARTDCL"))), runtime::Format(field(u"ARTITM"), u"000"),
                         runtime::Format(field(u"ARTSBT"), u"000"),
                         runtime::Format(runtime::toNumber(field(u"RALCAN")), state.g_sFmtCantidad),
                         runtime::Format(runtime::toNumber(field(u"ARTPRE")), u"00.000000")}};
            });
    });
}

void frmVerINSxSBT::designState()
{
    lstView->clear();
    lstView->setFocus();
}

} // namespace oVELDRA::listings
