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
    // Read in the order of the table's columns, where a recordset finds them fastest.
    DischargeLine line;
    line.input = text(u"ARTNRO");
    const double unitValue = number(u"ARTPRE");
    const double discharged = number(u"RALCAN");
    line.exportNumber = text(u"EXTNOF");
    line.invoice = text(u"EXTFAC");
    const QVariant quantity = discharge.value(u"DIPCAN");
    const double exported = toNumber(quantity);
    line.quantity = toText(quantity);
    line.relation = number(u"RIPCAN");
    const double waste = number(u"RIPMER");
    const double loss = number(u"RIPPER");
    line.waste = lossOrWaste(shown, waste, number(u"TRPMER"), exported);
    line.loss = lossOrWaste(shown, loss, number(u"TRPPER"), exported);
    line.conversion = number(u"PRDMUL");
    line.cifUnit = roundThrough(unitValue, u"00.000000");
    line.cifTotal = roundThrough(unitValue * discharged, u"00.00");
    return line;
}

} // namespace oVELDRA::listings
