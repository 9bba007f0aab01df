#include "DischargeLine.h"

#include <runtime/Numbers.h>
#include <runtime/Texts.h>
#include <runtime/ValueConverter.h>

namespace oVELDRA::listings {

namespace {

using runtime::roundThrough;
using runtime::toNumber;
using runtime::toText;

/// Loss or waste. The rate is applied to the exported quantity when its flag is off, and taken as a quantity when it is
/// on; it is meant this way round.
double lossOrWaste(LossAndWaste shown, double rate, double flag, double exported)
{
    const bool applied = shown == LossAndWaste::Quantities && flag == 0;
    return roundThrough(applied ? exported * rate / 100 : rate, u"00.00000");
}

} // namespace

LossAndWaste lossAndWasteOf(const QString& setting)
{
    return runtime::Trim(setting) == u"S" ? LossAndWaste::Quantities : LossAndWaste::AsKept;
}

DischargeLine dischargeLine(const Recordset& discharge, LossAndWaste shown)
{
    const auto text = [&discharge](QStringView field) { return toText(discharge.value(field)); };
    const auto number = [&discharge](QStringView field) { return toNumber(discharge.value(field)); };
    DischargeLine line;
    line.exportNumber = text(u"EXTNOF");
    line.input = text(u"ARTNRO");
    line.relation = number(u"RIPCAN");
    line.conversion = number(u"PRDMUL");
    line.quantity = text(u"DIPCAN");
    const double exported = number(u"DIPCAN");
    line.waste = lossOrWaste(shown, number(u"RIPMER"), number(u"TRPMER"), exported);
    line.loss = lossOrWaste(shown, number(u"RIPPER"), number(u"TRPPER"), exported);
    const double unitValue = number(u"ARTPRE");
    line.cifUnit = roundThrough(unitValue, u"00.000000");
    line.cifTotal = roundThrough(unitValue * number(u"RALCAN"), u"00.00");
    line.invoice = text(u"EXTFAC");
    return line;
}

} // namespace oVELDRA::listings
