#include "SampleStock.h"

#include "SampleArticles.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <tariff/Tariff.h>

using namespace Qt::StringLiterals;
using tariff::Tariff;
using tariff::TariffPosition;

namespace tornel {

namespace {

struct Export
{
    QString interno;
    qint32 subitem = 0;
    QString number;
    QDate date;
    QString invoice;
    QString product;
    double quantity = 0;
};

double sixDecimals(double value)
{
    return std::round(value * 1e6) / 1e6;
}

std::vector<SampleProduct> products(const Tariff& tariff)
{
    std::vector<SampleProduct> all{
        {u"CAL"_s,
         u"BOT-VAC-45"_s,
         u"Botín de cuero vacuno con suela de TPU"_s,
         u"6403.91.10.100"_s,
         {},
         1,
         {},
         48.5,
         u"225"_s,
         0.95,
         {{u"CUE-VAC-FL14"_s, 0.28, 8, 1, true, true, true},
          {u"SUE-TPU-4045"_s, 0.42, 0, 0.5, false, true, true},
          {u"FOR-PES-150"_s, 0.2, 5, 0, true, false, true},
          {u"CAJ-COR-N5"_s, 0.35, 0, 0, false, false, false}}},
        {u"CAL"_s,
         u"ZAP-VAC-39"_s,
         u"Zapato de cuero vacuno con suela de TPU"_s,
         u"6403.59.10.100"_s,
         {},
         1,
         {},
         41.2,
         u"208"_s,
         0.7,
         {{u"CUE-VAC-FL14"_s, 0.19, 8, 1, true, true, true},
          {u"SUE-TPU-4045"_s, 0.31, 0, 0.5, false, true, true},
          {u"CAJ-COR-N5"_s, 0.3, 0, 0, false, false, false}}},
        {u"LAV"_s,
         u"LAV-CF-800"_s,
         u"Lavarropas de carga frontal, 800 rpm"_s,
         u"8450.11.00.113"_s,
         {},
         1,
         {},
         264,
         u"203"_s,
         58,
         {{u"MOT-UNI-550"_s, 1, 0, 0.2, false, true, true},
          {u"ROD-6203-2RS"_s, 0.24, 0, 0, false, false, true},
          {u"CHA-GAL-060"_s, 14.5, 6, 0, true, false, true},
          {u"POL-PP-SC"_s, 6.2, 2.5, 0.5, true, true, true}}},
        {u"LAV"_s,
         u"LAV-CF-1000"_s,
         u"Lavarropas de carga frontal, 1000 rpm"_s,
         u"8450.11.00.119"_s,
         {},
         1,
         {},
         312.4,
         u"203"_s,
         61,
         {{u"MOT-UNI-550"_s, 1, 0, 0.2, false, true, true},
          {u"ROD-6203-2RS"_s, 0.24, 0, 0, false, false, true},
          {u"INT-BIP-16A"_s, 1, 0, 0, false, false, true},
          {u"CHA-GAL-060"_s, 15.1, 6, 0, true, false, true}}},
        {u"REF"_s,
         u"HEL-CC-320"_s,
         u"Refrigerador con congelador, 320 litros"_s,
         u"8418.10.00.100"_s,
         {},
         1,
         {},
         398.75,
         u"221"_s,
         64,
         {{u"COM-HER-170"_s, 1, 0, 0, false, false, true},
          {u"TUB-COB-838"_s, 1.8, 3, 0, true, false, true},
          {u"POL-ABS-GR"_s, 4.1, 2, 0.5, true, true, true},
          {u"JUN-EPDM-PTA"_s, 0.62, 1.5, 0, true, false, true}}},
        {u"ELE"_s,
         u"PLA-CTRL-LAV"_s,
         u"Placa de control para lavarropas"_s,
         u"8538.90.10"_s,
         {},
         100,
         {},
         21.6,
         u"203"_s,
         0.18,
         {{u"MCU-32B-48P"_s, 1, 0, 0.3, false, true, true},
          {u"CAP-100N-0603"_s, 14, 0, 1, false, true, true},
          {u"RES-10K-0603"_s, 22, 0, 1, false, true, true},
          {u"PCB-2C-CTRL"_s, 1, 0, 0.5, false, true, true},
          {u"DIO-ZEN-5V1"_s, 2, 0, 1, false, true, false}}},
    };
    for (SampleProduct& product : all) {
        const TariffPosition& position = tariff.first(product.position);
        product.position = position.joined();
        product.unit = position.unit;
        product.suffixes = tariff.sampleSuffixes(position);
    }
    return all;
}

std::vector<Export> exports()
{
    std::vector<Export> all{
        {u"EX260031"_s, 31001, u"26001EC01004521K"_s, {2026, 3, 20}, u"0003-00001245"_s, u"BOT-VAC-45"_s, 2400},
        {u"EX260077"_s, 77001, u"26001EC01009874B"_s, {2026, 6, 11}, u"0003-00001388"_s, u"BOT-VAC-45"_s, 2600},
        {u"EX260077"_s, 77002, u"26001EC01009874B"_s, {2026, 6, 11}, u"0003-00001389"_s, u"LAV-CF-800"_s, 640},
        {u"EX260092"_s, 92001, u"26001EC01012037T"_s, {2026, 8, 3}, u"0003-00001460"_s, u"ZAP-VAC-39"_s, 1500},
    };
    // Control boards leave every week, a month's shipments in one export.
    constexpr int months = 6;
    constexpr int weeks = 6;
    for (int month = 0; month < months; ++month) {
        const int number = 260111 + month * 7;
        for (int week = 0; week < weeks; ++week) {
            all.push_back({u"EX%1"_s.arg(number), number % 1000 * 1000 + week + 1,
                           u"26001EC0101%1C"_s.arg(4020 + month * 313), QDate(2026, 4, 8).addMonths(month),
                           u"0003-0000%1"_s.arg(1501 + month * weeks + week), u"PLA-CTRL-LAV"_s,
                           9000.0 + 1200 * week + 500 * month});
        }
    }
    return all;
}

/// What the import would put into the stock for a declaration whose items have one subitem each.
SampleImportedDeclaration imported(const std::vector<SampleDeclaration>& declarations, SampleImportedDeclaration header)
{
    const auto source = std::ranges::find(declarations, header.interno, &SampleDeclaration::interno);
    if (source == declarations.end()) {
        throw std::logic_error("the host has no declaration " + header.interno.toStdString());
    }
    int id = 0;
    for (const SampleItem& item : source->items) {
        ++id;
        const SampleSubitem& row = item.subitems.at(0);
        const double cif = static_cast<double>(row.fobCents) / 100 * source->fobFactor +
                           item.freight * source->freightFactor + item.insurance * source->insuranceFactor;
        header.articles.push_back(
            {row.article, row.unit, row.quantity, sixDecimals(cif / row.quantity), row.quantity, row.position, id});
    }
    return header;
}

/// Takes what an export needs of one input out of the stock, oldest declaration first.
void discharge(SampleStock& stock, const Export& goods, const SampleProduct& product, const SampleBillLine& line)
{
    const double share = 1 + ((line.wasteApplies ? line.waste : 0) + (line.lossApplies ? line.loss : 0)) / 100;
    double needed = sixDecimals(goods.quantity * line.quantity * share / product.multiplier);
    for (SampleImportedDeclaration& declaration : stock.declarations) {
        for (SampleArticleInStock& article : declaration.articles) {
            const double taken = std::min(needed, article.balance);
            if (article.article != line.article || taken <= 0) {
                continue;
            }
            needed = sixDecimals(needed - taken);
            article.balance = sixDecimals(article.balance - taken);
            stock.discharges.push_back({declaration.number, article.article, article.item, article.unitValue, taken,
                                        goods.interno, goods.subitem, goods.number, goods.date, goods.invoice,
                                        goods.quantity, line, product.multiplier});
        }
    }
    if (needed > 0) {
        throw std::logic_error("the sample stock holds too little of " + line.article.toStdString());
    }
}

} // namespace

SampleStock sampleStock(const Tariff& tariff, const std::vector<SampleDeclaration>& declarations)
{
    SampleStock stock;
    stock.catalogs = {{u"CAL"_s, u"Calzado de cuero"_s},
                      {u"ELE"_s, u"Controles electrónicos"_s},
                      {u"LAV"_s, u"Lavarropas"_s},
                      {u"REF"_s, u"Refrigeradores y congeladores"_s}};
    stock.products = products(tariff);
    stock.declarations = {
        imported(declarations, {u"IT260015"_s,
                                u"26001IT14000087H"_s,
                                {2026, 1, 19},
                                {2027, 1, 19},
                                u"Insumos para calzado, embarque de enero"_s,
                                u"001"_s,
                                true,
                                {}}),
        imported(declarations, {u"IT260048"_s,
                                u"26073IT14000412M"_s,
                                {2026, 2, 26},
                                {2027, 2, 26},
                                u"Insumos varios, embarque de febrero"_s,
                                u"073"_s,
                                true,
                                {}}),
        imported(declarations, {u"IT260062"_s,
                                u"26001IT14000533F"_s,
                                {2026, 3, 10},
                                {2027, 3, 10},
                                u"Componentes para placas de control"_s,
                                u"001"_s,
                                true,
                                {}}),
        imported(declarations, {u"IT260090"_s,
                                u"26073IT14000588P"_s,
                                {2026, 5, 14},
                                {2027, 5, 14},
                                u"Repuestos en verificación"_s,
                                u"073"_s,
                                false,
                                {}}),
    };
    for (const Export& goods : exports()) {
        const auto product = std::ranges::find(stock.products, goods.product, &SampleProduct::code);
        if (product == stock.products.end()) {
            throw std::logic_error("no sample product " + goods.product.toStdString());
        }
        for (const SampleBillLine& line : product->bill) {
            discharge(stock, goods, *product, line);
        }
    }
    return stock;
}

} // namespace tornel
