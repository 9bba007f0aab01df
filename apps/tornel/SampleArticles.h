#pragma once

#include <QString>

#include <span>

namespace tornel {

/// An input that the sample companies bring in: the article codes that declarations and bills of inputs share.
struct SampleArticle
{
    QStringView code;
    QStringView description;
    QStringView position;   ///< beginning of its tariff position
    double price = 0;       ///< per unit, in the currency of the invoice
    double typicalLot = 0;  ///< quantity that is usually declared at once
    bool countable = false; ///< quantities are whole numbers
};

/// All of them, in a fixed order.
[[nodiscard]] std::span<const SampleArticle> sampleArticles();

/// The article of that code. Throws std::out_of_range when there is none.
[[nodiscard]] const SampleArticle& sampleArticle(QStringView code);

} // namespace tornel
