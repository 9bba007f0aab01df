#include "frmDITART.h"

#include <controls/BusyPointer.h>
#include <controls/ListView.h>
#include <controls/OleColor.h>
#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <declarations/AvailableShare.h>
#include <declarations/drDITART.h>
#include <runtime/Numbers.h>
#include <runtime/ValueConverter.h>

#include <QLabel>

#include <cmath>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::declarations {

namespace {

constexpr quint32 Red = 255;

double number(const Recordset& article, QStringView field)
{
    return runtime::toNumber(article.value(field));
}

double shareOf(const Recordset& article)
{
    return availableShare(number(article, u"ARTDSC"), number(article, u"ARTCAT"));
}

/// Throws what making the row's texts would throw.
void requireShowable(const Recordset& article)
{
    if (!std::isfinite(number(article, u"ARTCAT")) || !std::isfinite(number(article, u"ARTPRE"))) {
        throw RuntimeError(6);
    }
    static_cast<void>(shareOf(article));
}

/// How many rows from the first can be shown, and the error that the next one gives.
struct Showable
{
    qsizetype rows = 0;
    std::optional<RuntimeError> error;
};

/// The list reads most rows only when they are shown, too late for an error; so what can fail in a row is tried
/// beforehand. The recordset is left on its first row.
Showable showable(Recordset& articles)
{
    Showable found;
    try {
        for (; !articles.atEof(); articles.moveNext()) {
            requireShowable(articles);
            ++found.rows;
        }
    } catch (const RuntimeError& error) {
        found.error = error;
    }
    if (articles.recordCount() > 0) {
        articles.moveFirst();
    }
    return found;
}

controls::ListRow rowOf(const Recordset& article, const QString& quantityFormat)
{
    const double share = shareOf(article);
    return {{runtime::Format(article.value(u"ARTITM"), u"000"), runtime::Format(article.value(u"ARTSBT"), u"000"),
             runtime::toText(article.value(u"ARTNRO")), runtime::toText(article.value(u"ARTUNI")),
             runtime::Format(number(article, u"ARTCAT"), quantityFormat),
             runtime::Format(number(article, u"ARTPRE"), u"00.000000"),
             runtime::Format(number(article, u"ARTDSC"), quantityFormat), runtime::Format(share, u"00.00")},
            isScarce(share) ? std::optional(controls::colorFromOle(Red)) : std::nullopt};
}

} // namespace

frmDITART::frmDITART(core::Component& component, ReportDialogs dialogs)
    : Form(component, u"frmDITART"_s, u"Listado de articulos"_s), m_dialogs(std::move(dialogs))
{
    QLabel* title = addTitle({}, windowTitle());
    lstV = addList(u"lstV"_s, windowTitle(),
                   {{u"Item"_s, 5, Qt::AlignRight},
                    {u"Subit"_s, 6, Qt::AlignRight},
                    {u"Articulo"_s, 20},
                    {u"Unidad"_s, 8},
                    {u"Cantidad"_s, 16, Qt::AlignRight},
                    {u"Unitario"_s, 14, Qt::AlignRight},
                    {u"Disponible"_s, 16, Qt::AlignRight},
                    {u"Disp %"_s, 8, Qt::AlignRight}});
    title->setBuddy(lstV);
    addHint(u"Label1"_s, u"[F12] Imprimir - [ESC] Salir"_s);
    setKeys({{Qt::Key_F12, controls::AnyModifiers, controls::WholeForm, [this] { lp_Imprimir(); }},
             {Qt::Key_Escape, controls::AnyModifiers, controls::WholeForm, [this] { unload(); }}});
}

void frmDITART::Form_Load()
{
    lp_CargarListado();
}

void frmDITART::lp_CargarListado()
{
    core::trap(component().prompts(), u" - [oVELDRA.frmDITART.lp_CargarListado]", [this] {
        const controls::BusyPointer busy;
        const controls::FillScope fill(*lstV);
        lstV->clear();
        std::unique_ptr<Recordset> records =
            core::rowsOf(*component().state.g_DBINS,
                         u"select * from INS where INTDCL = "_s + declaration() + u" order by ARTITM,ARTSBT "_s);
        const Showable found = showable(*records);
        lstV->append(
            std::move(records),
            [this](const Recordset& article) { return rowOf(article, component().state.g_sFmtCantidad); }, found.rows);
        if (found.error) {
            throw RuntimeError(*found.error);
        }
    });
}

void frmDITART::lp_Imprimir()
{
    core::trap(component().prompts(), u" - [oVELDRA.frmDITART.lp_Imprimir]", [this] {
        std::unique_ptr<drDITART> report;
        {
            const controls::BusyPointer busy;
            // Quantities have two decimals in print, whatever the format on the screen.
            std::unique_ptr<Recordset> records = core::rowsOf(
                *component().state.g_DBINS,
                u"select format(ARTITM,'000') as pARTITM,format(ARTSBT,'000') as pARTSBT,ARTNRO,ARTNCM,ARTCTC,ARTUNI,"
                "format(ARTCAT,'00.00') as pARTCAT,format(ARTPRE,'00.000000') as pARTPRE,"
                "format(ARTDSC,'00.00') as pARTDSC, format((ARTDSC * 100) / ARTCAT,'00.00') as pPROC from INS "
                "where INTDCL = "_s +
                    declaration() + u" order by ARTITM,ARTSBT "_s);
            if (records->atEof()) {
                return;
            }
            report = std::make_unique<drDITART>(component(), std::move(records), m_dialogs);
        }
        const QString& number = component().state.declaration.number;
        report->setCaption(u"lbDIT", u"Declaración nro.: "_s + number);
        report->setDocumentName(u"DIT "_s + number);
        report->showModal();
    });
}

void frmDITART::designState()
{
    lstV->clear();
    lstV->setFocus();
}

QString frmDITART::declaration() const
{
    return core::quoted(component().state.declaration.number);
}

} // namespace oVELDRA::declarations
