#include "BalanceCheck.h"

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Value;

void BalanceCheck::groupEnds(const StockGroup& group)
{
    if (group.articles == 0 || group.isBalanced(m_tolerance)) {
        return;
    }
    const double expected = group.expected();
    const double balance = group.balance.value();
    const StockArticle& article = group.first;
    const QString who = group.articles == 1 ? u"El artículo tiene"_s
                                            : u"Los %1 artículos repetidos tienen en conjunto"_s.arg(group.articles);
    m_sink.add({FindingKind::WrongBalance,
                u"INS"_s,
                {{Field::INTDCL, article.declaration},
                 {Field::ARTITM, article.item},
                 {Field::ARTSBT, article.subitem},
                 {Field::ARTNRO, article.code},
                 {Field::Declared, Value::ofNumber(group.declared.value())},
                 {Field::Discharged, Value::ofNumber(group.discharged.value())},
                 {Field::Expected, Value::ofNumber(expected)},
                 {Field::Balance, Value::ofNumber(balance)}},
                u"%1 un saldo de %2; lo declarado (%3) menos lo descargado (%4) es %5."_s.arg(
                    who, written(balance), written(group.declared.value()), written(group.discharged.value()),
                    written(expected))});
}

} // namespace oVELDRA::data
