#include "ArticleChecks.h"

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Value;

namespace {

Finding about(const StockArticle& article, FindingKind kind, const QString& text)
{
    return {kind,
            u"INS"_s,
            {{Field::INTDCL, article.declaration},
             {Field::ARTITM, article.item},
             {Field::ARTSBT, article.subitem},
             {Field::ARTNRO, article.code},
             {Field::Declared, Value::ofNumber(article.declared)},
             {Field::Balance, Value::ofNumber(article.balance)}},
            text};
}

} // namespace

void NegativeBalanceCheck::article(const StockArticle& article)
{
    if (article.balance < 0 && m_tolerance.isExceededBy(article.balance, -article.balance)) {
        m_sink.add(about(article, FindingKind::NegativeBalance,
                         u"El saldo es %1: se tomó más de lo que había."_s.arg(written(article.balance))));
    }
}

void ArticleWithoutHeaderCheck::article(const StockArticle& article)
{
    if (!article.hasHeader) {
        const QString text =
            article.declaration.isNull()
                ? u"El artículo no tiene número de declaración."_s
                : u"No hay cabecera de la declaración %1 en INTINS."_s.arg(quoted(article.declaration));
        m_sink.add(about(article, FindingKind::ArticleWithoutHeader, text));
    }
}

void RepeatedArticleCheck::article(const StockArticle& article)
{
    if (article.repeats) {
        m_sink.add(about(article, FindingKind::RepeatedArticle,
                         u"Otra fila tiene la misma declaración, ítem y subítem; no se sabe de cuál toman las "
                         u"descargas."_s));
    }
}

} // namespace oVELDRA::data
