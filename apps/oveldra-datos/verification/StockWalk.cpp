#include "StockWalk.h"

namespace oVELDRA::data {

using Observers = std::vector<StockObserver*>;

namespace {

constexpr size_t declaredPlace = 4;
constexpr size_t balancePlace = 5;

RowsWanted headersWanted()
{
    return {u"INTINS", {{u"INTDCL"}}, {u"INTDCL"}};
}

RowsWanted articlesWanted()
{
    return {u"INS",
            {{u"INTDCL"}, {u"ARTITM", true}, {u"ARTSBT", true}},
            {u"INTDCL", u"ARTITM", u"ARTSBT", u"ARTNRO", u"ARTCAT", u"ARTDSC"}};
}

RowsWanted dischargesWanted()
{
    return {u"DIP",
            {{u"ARTDCL"}, {u"ARTITM", true}, {u"ARTSBT", true}},
            {u"ARTDCL", u"ARTITM", u"ARTSBT", u"ARTNRO", u"RALCAN", u"EXTINT", u"EXTSBT", u"EXTNOF"}};
}

const KeyPart& numberOf(const OrderedRows& rows)
{
    return rows.key().front();
}

bool standsOn(const OrderedRows& rows, const KeyPart& number)
{
    return !rows.atEnd() && numberOf(rows) == number;
}

bool standsOn(const OrderedRows& rows, const Key& key)
{
    return !rows.atEnd() && rows.key() == key;
}

/// The stream whose key comes first, of those that are not at their end; null when all are.
template <typename Less>
const OrderedRows* first(std::initializer_list<const OrderedRows*> streams, Less less)
{
    const OrderedRows* result = nullptr;
    for (const OrderedRows* const rows : streams) {
        if (!rows->atEnd() && (!result || less(*rows, *result))) {
            result = rows;
        }
    }
    return result;
}

} // namespace

double StockGroup::expected() const
{
    QuantitySum expected = declared;
    expected.add(-discharged.value());
    return expected.value();
}

bool StockGroup::isBalanced(Tolerance tolerance) const
{
    const double magnitude = declared.magnitude() + discharged.magnitude() + balance.magnitude();
    return !tolerance.isExceededBy(expected() - balance.value(), magnitude);
}

void StockObserver::header(const OrderedRows& /*headers*/) {}
void StockObserver::article(const StockArticle& /*article*/) {}
void StockObserver::discharge(const StockDischarge& /*discharge*/) {}
void StockObserver::groupEnds(const StockGroup& /*group*/) {}
void StockObserver::declarationEnds(const StockDeclaration& /*declaration*/) {}

StockWalk::StockWalk(store::EngineConnection& engine, const dialect::Catalog& tables, RowTally& tally)
    : m_headers(engine, tables, headersWanted(), tally.counterOf(u"INTINS")),
      m_articles(engine, tables, articlesWanted(), tally.counterOf(u"INS")),
      m_discharges(engine, tables, dischargesWanted(), tally.counterOf(u"DIP"))
{}

void StockWalk::run(const Observers& observers)
{
    while (!m_headers.atEnd() || !m_articles.atEnd() || !m_discharges.atEnd()) {
        walkDeclaration(observers);
    }
}

void StockWalk::walkDeclaration(const Observers& observers)
{
    const auto before = [](const OrderedRows& a, const OrderedRows& b) { return numberOf(a) < numberOf(b); };
    const OrderedRows& start = *first({&m_headers, &m_articles, &m_discharges}, before);
    const KeyPart number = numberOf(start);
    StockDeclaration declaration;
    declaration.number = start.value(0);
    declaration.complete = !number.isNull();
    for (; standsOn(m_headers, number); m_headers.advance()) {
        ++declaration.headers;
        for (StockObserver* const observer : observers) {
            observer->header(m_headers);
        }
    }
    while (standsOn(m_articles, number) || standsOn(m_discharges, number)) {
        walkGroup(observers, declaration);
    }
    for (StockObserver* const observer : observers) {
        observer->declarationEnds(declaration);
    }
}

void StockWalk::walkGroup(const Observers& observers, StockDeclaration& declaration)
{
    const auto before = [](const OrderedRows& a, const OrderedRows& b) { return a.key() < b.key(); };
    const Key key = first({&m_articles, &m_discharges}, before)->key();
    StockGroup group;
    group.item = key[1];
    group.subitem = key[2];
    group.complete = isComplete(key);
    const auto goesOn = [&group] { return group.complete || group.articles + group.discharges == 0; };
    for (; goesOn() && standsOn(m_articles, key); m_articles.advance()) {
        const StockArticle article = currentArticle(declaration, group.articles > 0);
        if (++group.articles == 1) {
            group.first = article;
        }
        group.declared.add(article.declared);
        group.balance.add(article.balance);
        for (StockObserver* const observer : observers) {
            observer->article(article);
        }
    }
    const bool hasHeader = declaration.complete && declaration.headers > 0;
    for (; goesOn() && standsOn(m_discharges, key); m_discharges.advance()) {
        ++group.discharges;
        const StockDischarge discharge(m_discharges, hasHeader, group.articles > 0);
        group.discharged.add(discharge.quantity());
        for (StockObserver* const observer : observers) {
            observer->discharge(discharge);
        }
    }
    declaration.articles += group.articles;
    declaration.discharges += group.discharges;
    for (StockObserver* const observer : observers) {
        observer->groupEnds(group);
    }
}

StockArticle StockWalk::currentArticle(const StockDeclaration& declaration, bool repeats) const
{
    return {m_articles.value(0),
            m_articles.value(1),
            m_articles.value(2),
            m_articles.value(3),
            m_articles.quantity(declaredPlace),
            m_articles.quantity(balancePlace),
            declaration.complete && declaration.headers > 0,
            repeats};
}

} // namespace oVELDRA::data
