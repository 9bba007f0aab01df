#pragma once

#include "Finding.h"
#include "StockWalk.h"

namespace oVELDRA::data {

/// Articles with less than nothing left, by more than the tolerance.
class NegativeBalanceCheck final : public StockObserver
{
public:
    NegativeBalanceCheck(Tolerance tolerance, FindingSink& sink) : m_tolerance(tolerance), m_sink(sink) {}

    void article(const StockArticle& article) override;

private:
    Tolerance m_tolerance;
    FindingSink& m_sink;
};

/// Articles whose declaration has no header. A header without articles is no fault.
class ArticleWithoutHeaderCheck final : public StockObserver
{
public:
    explicit ArticleWithoutHeaderCheck(FindingSink& sink) : m_sink(sink) {}

    void article(const StockArticle& article) override;

private:
    FindingSink& m_sink;
};

/// Articles that have the declaration, item and subitem of one before them: which of them a discharge took from cannot
/// be told. The first of each is not reported.
class RepeatedArticleCheck final : public StockObserver
{
public:
    explicit RepeatedArticleCheck(FindingSink& sink) : m_sink(sink) {}

    void article(const StockArticle& article) override;

private:
    FindingSink& m_sink;
};

} // namespace oVELDRA::data
