#pragma once

#include "SampleDeclarations.h"

#include <QDate>
#include <QString>

#include <vector>

namespace tariff {
class Tariff;
} // namespace tariff

namespace tornel {

struct SampleCatalog
{
    QString code;
    QString description;
};

/// One input of a product, per unit of it.
struct SampleBillLine
{
    QString article;
    double quantity = 0;
    double waste = 0; ///< %
    double loss = 0;  ///< %
    bool wasteApplies = false;
    bool lossApplies = false;
    bool obligatory = true;
};

struct SampleProduct
{
    QString catalog;
    QString code;
    QString description;
    QString position;
    QString suffixes;
    double multiplier = 1;
    QString unit;
    double price = 0;
    QString country;
    double kilograms = 0;
    std::vector<SampleBillLine> bill;
};

/// An article of an imported declaration, with what is left of it.
struct SampleArticleInStock
{
    QString article;
    QString unit;
    double declared = 0;
    double unitValue = 0;
    double balance = 0;
    QString position;
    int item = 0;
};

struct SampleImportedDeclaration
{
    QString interno;
    QString number;
    QDate official;
    QDate expiry;
    QString description;
    QString customs;
    bool enabled = true;
    std::vector<SampleArticleInStock> articles;
};

/// What one export subitem took from one declared article.
struct SampleDischarge
{
    QString declaration;
    QString article;
    int item = 0;
    double unitValue = 0;
    double quantity = 0;
    QString exportInterno;
    qint32 exportSubitem = 0;
    QString exportNumber;
    QDate exportDate;
    QString invoice;
    double exported = 0;
    SampleBillLine line;
    double multiplier = 1;
};

/// The stock of inputs of the demonstration: always the same one. One declaration is blocked, one has as many
/// discharges as fill a listing of several pages. Balances are what was declared less what was
/// discharged; exports take from the oldest declaration first, so EX260077/77001 takes from two.
struct SampleStock
{
    std::vector<SampleCatalog> catalogs;
    std::vector<SampleProduct> products;
    std::vector<SampleImportedDeclaration> declarations;
    std::vector<SampleDischarge> discharges;
};

/// Throws std::logic_error when an export needs more than there is.
[[nodiscard]] SampleStock sampleStock(const tariff::Tariff& tariff, const std::vector<SampleDeclaration>& declarations);

} // namespace tornel
