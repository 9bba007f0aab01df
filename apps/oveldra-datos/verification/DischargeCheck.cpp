#include "DischargeCheck.h"

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Value;

namespace {

QString withoutHeader(const StockDischarge& discharge)
{
    if (discharge.declaration().isNull()) {
        return u"La descarga no tiene número de declaración."_s;
    }
    const QString article = discharge.hasArticle() ? u"aunque su artículo está en INS"_s : u"ni el artículo en INS"_s;
    return u"No hay cabecera de la declaración %1 en INTINS, %2."_s.arg(quoted(discharge.declaration()), article);
}

QString withoutArticle(const StockDischarge& discharge)
{
    return u"La declaración %1 no tiene un artículo con ítem %2 y subítem %3."_s.arg(
        quoted(discharge.declaration()), quoted(discharge.item()), quoted(discharge.subitem()));
}

} // namespace

void DischargeCheck::discharge(const StockDischarge& discharge)
{
    if (discharge.hasHeader() && discharge.hasArticle()) {
        return;
    }
    m_sink.add({discharge.hasHeader() ? FindingKind::DischargeWithoutArticle : FindingKind::DischargeWithoutHeader,
                u"DIP"_s,
                {{Field::ARTDCL, discharge.declaration()},
                 {Field::ARTITM, discharge.item()},
                 {Field::ARTSBT, discharge.subitem()},
                 {Field::ARTNRO, discharge.code()},
                 {Field::EXTINT, discharge.exportFile()},
                 {Field::EXTSBT, discharge.exportSubitem()},
                 {Field::EXTNOF, discharge.exportNumber()},
                 {Field::Discharged, Value::ofNumber(discharge.quantity())}},
                discharge.hasHeader() ? withoutArticle(discharge) : withoutHeader(discharge)});
}

} // namespace oVELDRA::data
