#include "SampleDeclarations.h"

#include "SampleArticles.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <tariff/Tariff.h>

using namespace Qt::StringLiterals;
using tariff::Tariff;
using tariff::TariffPosition;

namespace tornel {

namespace {

/// The same numbers on every machine: the distributions of the standard library are not, so only the engine is used.
class Dice
{
public:
    explicit Dice(quint32 seed) : m_engine(seed) {}

    /// From `low` to `high`, both included.
    [[nodiscard]] int between(int low, int high)
    {
        return low + static_cast<int>(m_engine() % static_cast<quint32>(high - low + 1));
    }

private:
    std::mt19937 m_engine;
};

qint64 cents(double amount)
{
    return std::llround(amount * 100);
}

double rounded(double value, double steps)
{
    return std::round(value * steps) / steps;
}

/// Units of the tariff are an approximation and can be missing; pieces are the fallback.
QString unitOf(const TariffPosition& position)
{
    return position.unit.isEmpty() ? u"07"_s : position.unit;
}

SampleSubitem subitem(const Tariff& tariff, const SampleArticle& article, double quantity)
{
    const TariffPosition& position = tariff.first(article.position);
    return {article.code.toString(), unitOf(position),  quantity,
            article.price,           position.joined(), cents(quantity * article.price)};
}

/// A lot between half and one and a half times what is usual.
SampleSubitem lotOf(const Tariff& tariff, const SampleArticle& article, Dice& dice)
{
    const double quantity = article.typicalLot * dice.between(50, 150) / 100;
    return subitem(tariff, article, rounded(quantity, article.countable ? 1 : 100));
}

/// Freight and insurance as a share of the FOB value.
SampleItem itemOf(std::vector<SampleSubitem> subitems, Dice& dice)
{
    SampleItem item;
    item.subitems = std::move(subitems);
    const double fob = static_cast<double>(item.fobCents()) / 100;
    item.freight = rounded(fob * dice.between(20, 90) / 1000, 100);
    item.insurance = rounded(fob * dice.between(3, 12) / 1000, 100);
    return item;
}

/// Few numbers, for following the arithmetic by hand.
SampleDeclaration twoItems(const Tariff& tariff)
{
    const auto priced = [&tariff](QStringView code, double quantity, double fob) {
        SampleSubitem row = subitem(tariff, sampleArticle(code), quantity);
        row.fobCents = cents(fob);
        row.unitPrice = rounded(fob / quantity, 1e6);
        return row;
    };
    SampleDeclaration declaration{u"IT260101"_s, 1, 1, 1, {}};
    SampleItem single;
    single.subitems = {priced(u"COM-HER-170", 3, 100)};
    single.freight = 10;
    single.insurance = 5;
    SampleItem split = single;
    split.subitems = {priced(u"MOT-UNI-550", 3, 60), priced(u"VEN-MIC-80", 2, 40)};
    declaration.items = {single, split};
    return declaration;
}

SampleDeclaration fortyItems(const Tariff& tariff)
{
    Dice dice(40);
    SampleDeclaration declaration{u"IT260102"_s, 1.0845, 1.0845, 1, {}};
    const auto articles = sampleArticles();
    std::size_t next = 0;
    for (int id = 1; id <= 40; ++id) {
        const int count = id % 3 == 0 ? dice.between(2, 6) : 1;
        std::vector<SampleSubitem> subitems;
        subitems.reserve(static_cast<std::size_t>(count));
        for (int sub = 0; sub < count; ++sub) {
            subitems.push_back(lotOf(tariff, articles[next++ % articles.size()], dice));
        }
        SampleItem item = itemOf(std::move(subitems), dice);
        if (id % 4 == 0) {
            item.increments = dice.between(50, 900);
        }
        if (id % 10 == 0) {
            item.deductions = dice.between(10, 120);
        }
        declaration.items.push_back(std::move(item));
    }
    return declaration;
}

/// A year's spare parts of an assembly plant: every item another position of the tariff.
SampleDeclaration twoThousandItems(const Tariff& tariff)
{
    Dice dice(2000);
    SampleDeclaration declaration{u"IT260103"_s, 1, 1.0845, 1.0845, {}};
    const auto& positions = tariff.positions();
    const auto firstMachine = std::ranges::lower_bound(positions, u"8400"_s, {}, &TariffPosition::subheading);
    const auto available = static_cast<std::size_t>(positions.end() - firstMachine);
    for (std::size_t id = 1; id <= 2000; ++id) {
        const TariffPosition& position = *(firstMachine + static_cast<std::ptrdiff_t>(id * 7 % available));
        std::vector<SampleSubitem> subitems;
        for (int sub = 1; sub <= 5; ++sub) {
            SampleSubitem row;
            row.article = u"REP-%1-%2"_s.arg(id, 4, 10, '0'_L1).arg(sub, 2, 10, '0'_L1);
            row.unit = unitOf(position);
            row.quantity = dice.between(1, 60);
            row.unitPrice = dice.between(25, 4500) / 100.0;
            row.position = position.joined();
            row.fobCents = cents(row.quantity * row.unitPrice);
            subitems.push_back(std::move(row));
        }
        declaration.items.push_back(itemOf(std::move(subitems), dice));
    }
    return declaration;
}

SampleDeclaration withGroupedSubitem(const Tariff& tariff)
{
    Dice dice(4);
    SampleDeclaration declaration{u"IT260104"_s, 1, 1, 1, {}};
    declaration.items.push_back(itemOf({lotOf(tariff, sampleArticle(u"CHA-GAL-060"), dice)}, dice));
    SampleSubitem grouped = lotOf(tariff, sampleArticle(u"TOR-M4X12-ZN"), dice);
    grouped.article = u"agrupado!"_s;
    declaration.items.push_back(itemOf({lotOf(tariff, sampleArticle(u"JUN-EPDM-PTA"), dice), grouped}, dice));
    return declaration;
}

SampleDeclaration oneArticlePerItem(const Tariff& tariff, const QString& interno, double factor,
                                    const std::vector<QStringView>& codes)
{
    Dice dice(static_cast<quint32>(codes.size()) + 7);
    SampleDeclaration declaration{interno, factor, factor, factor, {}};
    for (const QStringView code : codes) {
        declaration.items.push_back(itemOf({lotOf(tariff, sampleArticle(code), dice)}, dice));
    }
    return declaration;
}

} // namespace

qint64 SampleItem::fobCents() const
{
    return std::accumulate(subitems.begin(), subitems.end(), qint64{0},
                           [](qint64 sum, const SampleSubitem& row) { return sum + row.fobCents; });
}

qsizetype SampleDeclaration::subitemCount() const
{
    return std::accumulate(items.begin(), items.end(), qsizetype{0}, [](qsizetype sum, const SampleItem& item) {
        return sum + static_cast<qsizetype>(item.subitems.size());
    });
}

std::vector<SampleDeclaration> sampleDeclarations(const Tariff& tariff)
{
    return {
        oneArticlePerItem(tariff, u"IT260015"_s, 1, {u"CUE-VAC-FL14", u"SUE-TPU-4045", u"FOR-PES-150", u"CAJ-COR-N5"}),
        oneArticlePerItem(tariff, u"IT260048"_s, 1.0845,
                          {u"CUE-VAC-FL14", u"MOT-UNI-550", u"ROD-6203-2RS", u"CHA-GAL-060", u"POL-PP-SC"}),
        oneArticlePerItem(tariff, u"IT260062"_s, 1,
                          {u"MCU-32B-48P", u"CAP-100N-0603", u"RES-10K-0603", u"PCB-2C-CTRL", u"DIO-ZEN-5V1"}),
        oneArticlePerItem(tariff, u"IT260090"_s, 1.0845, {u"VAL-EVA-LAV", u"TER-BIM-95", u"RES-HEL-SUSP"}),
        twoItems(tariff),
        fortyItems(tariff),
        twoThousandItems(tariff),
        withGroupedSubitem(tariff),
        oneArticlePerItem(tariff, u"IT260105"_s, 1,
                          {u"MCU-32B-48P", u"CAP-100N-0603", u"RES-10K-0603", u"PCB-2C-CTRL"}),
        oneArticlePerItem(tariff, u"IT260106"_s, 0.1785, {u"COM-HER-170", u"TUB-COB-838", u"POL-ABS-GR"}),
        oneArticlePerItem(tariff, u"IT260107"_s, 1, {u"CUE-VAC-FL14", u"SUE-TPU-4045"}),
    };
}

} // namespace tornel
