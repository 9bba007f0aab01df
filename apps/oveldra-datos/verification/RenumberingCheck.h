#pragma once

#include "FindingSpool.h"
#include "StockWalk.h"

#include <optional>

namespace oVELDRA::data {

/// Declarations that were being renumbered when something broke. A renumbering writes the discharges, then the
/// articles, then the header; what it has written has the new number, the rest still the old one.
///
/// Two states are recognised, each reported once with both numbers and no longer as what its rows look like one by one:
///
/// - Only the discharges were written. A number without header and articles has discharges, and a header's articles
///   lack exactly these in their balances: the same items, subitems and article codes, each the same quantity within
///   the tolerance, and nothing else is wrong with the header's balances. Quantities within the tolerance are not seen
///   on either side. When several numbers or several headers fit, none is taken.
/// - Only the header was not written. Nothing in its columns says which articles were its own, so this is seen when
///   one number in the whole database has articles and no header, and one header has neither articles nor discharges.
///
/// It must be told of each event behind the checks that report wrong balances, discharges and articles, as it finds
/// their findings in the spool. Numbers and headers that could fit are kept, up to a limit; beyond it nothing was being
/// renumbered, but whole tables are missing, and nothing is recognised.
class RenumberingCheck final : public StockObserver
{
public:
    static constexpr size_t usualLimit = 20000;

    RenumberingCheck(Tolerance tolerance, FindingSpool& spool, size_t limit = usualLimit);

    void header(const OrderedRows& headers) override;
    void discharge(const StockDischarge& discharge) override;
    void groupEnds(const StockGroup& group) override;
    void declarationEnds(const StockDeclaration& declaration) override;

    /// To be called behind the walk: adds the findings and leaves those of their rows out. False when there was too
    /// much to be recognised.
    [[nodiscard]] bool finish();

private:
    /// What a number's discharges, or a header's balances, amount to.
    struct Sum
    {
        qint64 parts = 0;
        size_t keys = 0; ///< hash of items, subitems and article codes, in order
        QuantitySum quantity;
        bool comparable = true;
    };

    struct Candidate
    {
        QString number;
        FindingSpool::Range findings;
        Sum sum;
    };

    /// The only one of its sort, or the first of several.
    struct Single
    {
        qint64 count = 0;
        QString number;
        FindingSpool::Range articles;
        FindingSpool::Range discharges;
    };

    void beginDeclaration();
    void addPart(const StockGroup& group, const QString& code, double quantity);
    void keep(std::vector<Candidate>& candidates, Candidate candidate);
    [[nodiscard]] std::optional<size_t> headerLacking(const Candidate& orphan);
    [[nodiscard]] bool lacks(const Candidate& header, const Candidate& orphan);
    void reportDischarges();
    void reportHeader();

    Tolerance m_tolerance;
    FindingSpool& m_spool;
    size_t m_limit;

    bool m_tooMuch = false;

    // Of the declaration that the walk is in:
    bool m_hasHeader = false;
    Sum m_sum;
    std::optional<QString> m_code; ///< of the group's discharges
    FindingSpool::Range m_balances;
    FindingSpool::Range m_articles;
    FindingSpool::Range m_discharges;

    std::vector<Candidate> m_orphans;
    std::vector<Candidate> m_headers;
    Single m_articlesOnly; ///< numbers with articles and no header
    Single m_headerOnly;   ///< headers with nothing
};

} // namespace oVELDRA::data
