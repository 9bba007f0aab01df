#pragma once

#include "OrderedRows.h"
#include "QuantitySum.h"
#include "RowTally.h"

#include <vector>

namespace oVELDRA::data {

/// A row of INS.
struct StockArticle
{
    dialect::Value declaration;
    dialect::Value item;
    dialect::Value subitem;
    dialect::Value code;
    double declared = 0;
    double balance = 0;
    bool hasHeader = false; ///< whether INTINS has its declaration
    bool repeats = false;   ///< whether a row before it has the same declaration, item and subitem
};

/// The row of DIP that the walk stands on; its columns are read when asked for.
class StockDischarge
{
public:
    StockDischarge(const OrderedRows& rows, bool hasHeader, bool hasArticle)
        : m_rows(rows), m_hasHeader(hasHeader), m_hasArticle(hasArticle)
    {}

    [[nodiscard]] dialect::Value declaration() const { return m_rows.value(0); }
    [[nodiscard]] dialect::Value item() const { return m_rows.value(1); }
    [[nodiscard]] dialect::Value subitem() const { return m_rows.value(2); }
    [[nodiscard]] dialect::Value code() const { return m_rows.value(3); }
    [[nodiscard]] double quantity() const { return m_rows.quantity(quantityPlace); }
    [[nodiscard]] dialect::Value exportFile() const { return m_rows.value(5); }
    [[nodiscard]] dialect::Value exportSubitem() const { return m_rows.value(6); }
    [[nodiscard]] dialect::Value exportNumber() const { return m_rows.value(7); }

    [[nodiscard]] bool hasHeader() const { return m_hasHeader; }
    [[nodiscard]] bool hasArticle() const { return m_hasArticle; }

    static constexpr size_t quantityPlace = 4;

private:
    const OrderedRows& m_rows;
    bool m_hasHeader;
    bool m_hasArticle;
};

/// What INS and DIP have under one declaration, item and subitem. Null equals nothing: a row with Null in one of the
/// three is a group of its own.
struct StockGroup
{
    KeyPart item;
    KeyPart subitem;
    bool complete = true; ///< no Null in its key
    StockArticle first;   ///< the first article, if there is one
    qint64 articles = 0;
    QuantitySum declared;
    QuantitySum balance;
    qint64 discharges = 0;
    QuantitySum discharged;

    /// What the articles' balance should be: declared less discharged.
    [[nodiscard]] double expected() const;
    [[nodiscard]] bool isBalanced(Tolerance tolerance) const;
};

/// What was under one declaration number. Headers, articles and discharges without a number come together, under Null.
struct StockDeclaration
{
    dialect::Value number; ///< as its first row writes it
    bool complete = true;  ///< the number is not Null
    qint64 headers = 0;
    qint64 articles = 0;
    qint64 discharges = 0;
};

/// Is told what a walk over the stock meets: for each declaration its headers, then for each item and subitem its
/// articles, its discharges and the group's end, then the declaration's end.
class StockObserver
{
public:
    StockObserver() = default;
    StockObserver(const StockObserver&) = delete;
    StockObserver& operator=(const StockObserver&) = delete;
    virtual ~StockObserver() = default;

    /// `headers` stands on a row of INTINS with its INTDCL as key and only column.
    virtual void header(const OrderedRows& headers);
    virtual void article(const StockArticle& article);
    virtual void discharge(const StockDischarge& discharge);
    virtual void groupEnds(const StockGroup& group);
    virtual void declarationEnds(const StockDeclaration& declaration);
};

/// Goes once through INTINS, INS and DIP side by side, in the order of declaration, item and subitem. It holds one
/// group at a time, whatever the tables' size.
class StockWalk
{
public:
    StockWalk(store::EngineConnection& engine, const dialect::Catalog& tables, RowTally& tally);

    void run(const std::vector<StockObserver*>& observers);

private:
    void walkDeclaration(const std::vector<StockObserver*>& observers);
    void walkGroup(const std::vector<StockObserver*>& observers, StockDeclaration& declaration);
    [[nodiscard]] StockArticle currentArticle(const StockDeclaration& declaration, bool repeats) const;

    OrderedRows m_headers;
    OrderedRows m_articles;
    OrderedRows m_discharges;
};

} // namespace oVELDRA::data
