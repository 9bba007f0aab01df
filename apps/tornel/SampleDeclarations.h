#pragma once

#include <QString>

#include <vector>

namespace tariff {
class Tariff;
} // namespace tariff

namespace tornel {

/// A subitem of a declaration of the host: one article.
struct SampleSubitem
{
    QString article; ///< "agrupado!" for one that the host has grouped
    QString unit;
    double quantity = 0;
    double unitPrice = 0;
    QString position;
    qint64 fobCents = 0;
};

struct SampleItem
{
    std::vector<SampleSubitem> subitems;
    double freight = 0;
    double insurance = 0;
    double increments = 0;
    double deductions = 0;

    /// What its subitems add up to.
    [[nodiscard]] qint64 fobCents() const;
};

/// A declaration as the host keeps it.
struct SampleDeclaration
{
    QString interno;
    double fobFactor = 1;
    double freightFactor = 1;
    double insuranceFactor = 1;
    std::vector<SampleItem> items;

    [[nodiscard]] qsizetype subitemCount() const;
};

/// The declarations of the demonstration: always the same ones. By interno:
/// - IT260015, IT260048: the ones that the sample stock was imported from; every item has one subitem
/// - IT260101: two items, one with one subitem and one with two
/// - IT260102: forty items with one or several subitems, adjustments and exchange factors
/// - IT260103: 2,000 items and 10,000 subitems
/// - IT260104: with a grouped subitem, which must be refused
/// - IT260105 … IT260107: ordinary ones
[[nodiscard]] std::vector<SampleDeclaration> sampleDeclarations(const tariff::Tariff& tariff);

} // namespace tornel
