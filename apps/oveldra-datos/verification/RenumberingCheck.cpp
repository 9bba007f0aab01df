#include "RenumberingCheck.h"

#include <dialect/TextComparison.h>

#include <algorithm>
#include <tuple>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Value;
using Range = FindingSpool::Range;

namespace {

// Headers whose sums are alike that are looked at closely for one number; with more no single one could be told.
constexpr int mostLookedAt = 100;

QString codeOf(const Value& code)
{
    return dialect::folded(dialect::textOf(code, {}));
}

/// What findings say of one article: how much of it was discharged under another number, or is missing.
struct Part
{
    KeyPart item;
    KeyPart subitem;
    QString code;
    QuantitySum quantity;

    [[nodiscard]] bool isSameArticle(const Part& other) const
    {
        return item == other.item && subitem == other.subitem && code == other.code;
    }
};

Part partOf(const Finding& finding)
{
    return {keyPartOf(finding.value(Field::ARTITM), true),
            keyPartOf(finding.value(Field::ARTSBT), true),
            codeOf(finding.value(Field::ARTNRO)),
            {}};
}

/// The articles of a range of wrong balances, with what their balances lack.
class LackingParts
{
public:
    LackingParts(FindingSpool& spool, const Range& range) : m_reader(spool, FindingKind::WrongBalance, range) {}

    [[nodiscard]] std::optional<Part> next()
    {
        if (!m_reader.next(m_finding)) {
            return std::nullopt;
        }
        Part part = partOf(m_finding);
        part.quantity.add(m_finding.value(Field::Expected).number);
        part.quantity.add(-m_finding.value(Field::Balance).number);
        return part;
    }

private:
    FindingSpool::Reader m_reader;
    Finding m_finding;
};

/// The articles of a range of discharges, with what was discharged of each if that is more than the tolerance.
class DischargedParts
{
public:
    DischargedParts(FindingSpool& spool, const Range& range, Tolerance tolerance)
        : m_reader(spool, FindingKind::DischargeWithoutHeader, range), m_tolerance(tolerance)
    {
        m_more = m_reader.next(m_finding);
    }

    [[nodiscard]] std::optional<Part> next()
    {
        while (m_more) {
            Part part = partOf(m_finding);
            for (; m_more && partOf(m_finding).isSameArticle(part); m_more = m_reader.next(m_finding)) {
                part.quantity.add(m_finding.value(Field::Discharged).number);
            }
            if (m_tolerance.isExceededBy(part.quantity.value(), part.quantity.magnitude())) {
                return part;
            }
        }
        return std::nullopt;
    }

private:
    FindingSpool::Reader m_reader;
    Tolerance m_tolerance;
    Finding m_finding;
    bool m_more = false;
};

} // namespace

RenumberingCheck::RenumberingCheck(Tolerance tolerance, FindingSpool& spool, size_t limit)
    : m_tolerance(tolerance), m_spool(spool), m_limit(limit)
{
    beginDeclaration();
}

void RenumberingCheck::beginDeclaration()
{
    m_hasHeader = false;
    m_sum = {};
    m_balances = m_spool.place(FindingKind::WrongBalance);
    m_articles = m_spool.place(FindingKind::ArticleWithoutHeader);
    m_discharges = m_spool.place(FindingKind::DischargeWithoutHeader);
}

void RenumberingCheck::header(const OrderedRows& /*headers*/)
{
    m_hasHeader = true;
}

void RenumberingCheck::discharge(const StockDischarge& discharge)
{
    if (m_hasHeader || discharge.hasArticle()) {
        return;
    }
    const QString code = codeOf(discharge.code());
    m_sum.comparable = m_sum.comparable && m_code.value_or(code) == code;
    m_code = code;
}

void RenumberingCheck::groupEnds(const StockGroup& group)
{
    if (group.articles > 0) {
        if (!group.isBalanced(m_tolerance)) {
            m_sum.comparable = m_sum.comparable && group.articles == 1;
            addPart(group, codeOf(group.first.code), group.expected() - group.balance.value());
        }
    } else if (!m_hasHeader && m_tolerance.isExceededBy(group.discharged.value(), group.discharged.magnitude())) {
        addPart(group, m_code.value_or(QString()), group.discharged.value());
    }
    m_code.reset();
}

void RenumberingCheck::addPart(const StockGroup& group, const QString& code, double quantity)
{
    const auto hashOf = [](const KeyPart& part) { return qHashMulti(0, part.number, part.text); };
    ++m_sum.parts;
    m_sum.keys = qHashMulti(m_sum.keys, hashOf(group.item), hashOf(group.subitem), code);
    m_sum.quantity.add(quantity);
    m_sum.comparable = m_sum.comparable && group.complete;
}

void RenumberingCheck::declarationEnds(const StockDeclaration& declaration)
{
    const QString number = dialect::textOf(declaration.number, {});
    const Range balances = m_spool.since(FindingKind::WrongBalance, m_balances);
    const Range articles = m_spool.since(FindingKind::ArticleWithoutHeader, m_articles);
    const Range discharges = m_spool.since(FindingKind::DischargeWithoutHeader, m_discharges);
    if (!declaration.complete) {
        // without a number there is nothing that was renumbered
    } else if (m_hasHeader) {
        if (balances.findings > 0) {
            keep(m_headers, {number, balances, m_sum});
        }
        if (declaration.articles + declaration.discharges == 0 && ++m_headerOnly.count == 1) {
            m_headerOnly.number = number;
        }
    } else if (declaration.articles == 0) {
        keep(m_orphans, {number, discharges, m_sum});
    } else if (++m_articlesOnly.count == 1) {
        m_articlesOnly = {1, number, articles, discharges};
    }
    beginDeclaration();
}

void RenumberingCheck::keep(std::vector<Candidate>& candidates, Candidate candidate)
{
    if (!candidate.sum.comparable || candidate.sum.parts == 0 || !std::isfinite(candidate.sum.quantity.value())) {
        return;
    }
    if (candidates.size() == m_limit) {
        m_tooMuch = true;
        return;
    }
    candidates.push_back(std::move(candidate));
}

bool RenumberingCheck::finish()
{
    if (!m_tooMuch) {
        reportDischarges();
    }
    reportHeader();
    return !m_tooMuch;
}

void RenumberingCheck::reportDischarges()
{
    std::sort(m_headers.begin(), m_headers.end(), [](const Candidate& a, const Candidate& b) {
        return std::tuple(a.sum.parts, a.sum.keys, a.sum.quantity.value()) <
               std::tuple(b.sum.parts, b.sum.keys, b.sum.quantity.value());
    });
    std::vector<std::vector<const Candidate*>> fitting(m_headers.size());
    for (const Candidate& orphan : m_orphans) {
        if (const auto header = headerLacking(orphan)) {
            fitting[*header].push_back(&orphan);
        }
    }
    for (size_t i = 0; i < m_headers.size(); ++i) {
        if (fitting[i].size() != 1) {
            continue;
        }
        const Candidate& header = m_headers[i];
        const Candidate& orphan = *fitting[i].front();
        const Value oldNumber = Value::ofText(header.number);
        const Value newNumber = Value::ofText(orphan.number);
        m_spool.add({FindingKind::HalfRenumbered,
                     u"DIP"_s,
                     {{Field::INTDCL, oldNumber},
                      {Field::ARTDCL, newNumber},
                      {Field::Discharged, Value::ofNumber(orphan.sum.quantity.value())}},
                     u"Las descargas (%1) del número %2 son justo las que faltan en los saldos de %3: DIP ya tiene el "
                     u"número nuevo; INS e INTINS, todavía no."_s.arg(orphan.findings.findings)
                         .arg(quoted(newNumber), quoted(oldNumber))});
        m_spool.leaveOut(FindingKind::WrongBalance, header.findings);
        m_spool.leaveOut(FindingKind::DischargeWithoutHeader, orphan.findings);
    }
}

/// The only header whose balances lack exactly the discharges of a number.
std::optional<size_t> RenumberingCheck::headerLacking(const Candidate& orphan)
{
    const Sum& sum = orphan.sum;
    const double quantity = sum.quantity.value();
    const auto sameKeys = [&sum](const Candidate& header) {
        return header.sum.parts == sum.parts && header.sum.keys == sum.keys;
    };
    const Tolerance together{m_tolerance.amount * static_cast<double>(sum.parts)};
    const auto tooMuchApart = [&](double other) {
        return together.isExceededBy(other - quantity, sum.quantity.magnitude());
    };
    const auto start = std::partition_point(m_headers.begin(), m_headers.end(), [&](const Candidate& header) {
        const auto keys = std::tuple(header.sum.parts, header.sum.keys);
        const auto wanted = std::tuple(sum.parts, sum.keys);
        const double other = header.sum.quantity.value();
        return keys < wanted || (keys == wanted && other < quantity && tooMuchApart(other));
    });
    std::optional<size_t> result;
    int lookedAt = 0;
    for (auto header = start; header != m_headers.end() && sameKeys(*header); ++header) {
        if (tooMuchApart(header->sum.quantity.value())) {
            break;
        }
        const bool fits = lacks(*header, orphan);
        if (++lookedAt > mostLookedAt || (fits && result)) {
            return std::nullopt;
        }
        if (fits) {
            result = static_cast<size_t>(header - m_headers.begin());
        }
    }
    return result;
}

bool RenumberingCheck::lacks(const Candidate& header, const Candidate& orphan)
{
    LackingParts lacking(m_spool, header.findings);
    DischargedParts discharged(m_spool, orphan.findings, m_tolerance);
    while (true) {
        const std::optional<Part> missing = lacking.next();
        const std::optional<Part> there = discharged.next();
        if (!missing || !there) {
            return !missing && !there;
        }
        const double apart = missing->quantity.value() - there->quantity.value();
        if (!missing->isSameArticle(*there) ||
            m_tolerance.isExceededBy(apart, missing->quantity.magnitude() + there->quantity.magnitude())) {
            return false;
        }
    }
}

void RenumberingCheck::reportHeader()
{
    if (m_articlesOnly.count != 1 || m_headerOnly.count != 1) {
        return;
    }
    const Value oldNumber = Value::ofText(m_headerOnly.number);
    const Value newNumber = Value::ofText(m_articlesOnly.number);
    m_spool.add({FindingKind::HalfRenumbered,
                 u"INTINS"_s,
                 {{Field::INTDCL, oldNumber}, {Field::ARTDCL, newNumber}},
                 u"%1 es el único número con artículos y sin cabecera, y %2 la única cabecera sin artículos ni "
                 u"descargas: DIP e INS ya tienen el número nuevo; INTINS, todavía no."_s.arg(quoted(newNumber),
                                                                                              quoted(oldNumber))});
    m_spool.leaveOut(FindingKind::ArticleWithoutHeader, m_articlesOnly.articles);
    m_spool.leaveOut(FindingKind::DischargeWithoutHeader, m_articlesOnly.discharges);
}

} // namespace oVELDRA::data
