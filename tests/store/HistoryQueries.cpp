// The queries of a history: those of the screens, and others made up of whatever the dialect has.
#include "History.h"

namespace oVELDRA::histories {

using namespace Qt::StringLiterals;

Step History::screenQuery(const ReferenceModel& model)
{
    const Said catalog = quoted(m_words.catalog());
    const Said product = quoted(m_words.product());
    const Said declaration =
        quoted(m_words.spelling(m_words.presentText(model, u"INTINS"_s, u"INTDCL"_s, m_words.declaration())));
    return alone(m_dice.oneOf<StatementPtr>({
        select({.table = u"CAT"_s, .order = {u"CATDES"_s}}),
        select({.items = {column(u"PRDNRO"_s), column(u"PRDDES"_s), column(u"PRDNCM"_s), column(u"PRDPAI"_s)},
                .table = u"PRD"_s,
                .which = is(u"CATNRO"_s, catalog)}),
        select({.items = {column(u"ARTNRO"_s), column(u"RPADES"_s), column(u"RIPCAN"_s)},
                .table = u"RIP"_s,
                .which = is(u"PRDNRO"_s, product) && is(u"CATNRO"_s, catalog)}),
        select({.table = u"INTINS"_s,
                .which = between(u"INTFOF"_s, dateValue(m_words.date()), dateValue(m_words.date()))}),
        select({.table = u"INS"_s, .which = is(u"INTDCL"_s, declaration), .order = {u"ARTITM"_s, u"ARTSBT"_s}}),
        select({.items = {threeDigits(u"ARTITM"_s, u"pARTITM"_s), threeDigits(u"ARTSBT"_s, u"pARTSBT"_s),
                          column(u"ARTNRO"_s), column(u"ARTDSC"_s)},
                .table = u"INS"_s,
                .which = is(u"INTDCL"_s, declaration),
                .order = {u"ARTITM"_s, u"ARTSBT"_s}}),
        select({.table = u"DIP"_s, .which = is(u"ARTDCL"_s, declaration), .order = {u"EXTFOF"_s}}),
        select({.items = {column(u"ARTDCL"_s), column(u"ARTNRO"_s), column(u"RALCAN"_s)},
                .table = u"DIP"_s,
                .which = is(u"EXTINT"_s, quoted(m_words.interno())) && is(u"EXTSBT"_s, bare(m_dice.below(6))),
                .order = {u"ARTDCL"_s, u"ARTITM"_s, u"ARTSBT"_s}}),
        count(u"INTDCL"_s, u"INTINS"_s, is(u"INTDCL"_s, declaration)),
    }));
}

Step History::anyQuery(const ReferenceModel& model)
{
    const QString table = anyTable(model);
    const std::vector<dialect::Column>& columns = model.table(table).definition.columns;
    if (m_dice.chance(25)) {
        const QString counted = m_dice.chance(50) ? u"*"_s : m_dice.oneOf(columns).name;
        return alone(count(counted, table, m_words.condition(model, table)));
    }
    SelectParts parts{.table = table};
    parts.distinct = m_dice.chance(40);
    if (m_dice.chance(70)) {
        parts.which = m_words.condition(model, table);
    }
    if (parts.distinct || m_dice.chance(50)) {
        parts.items.push_back(column(m_dice.oneOf(columns).name));
        const QString other = m_dice.oneOf(columns).name;
        if (other != parts.items.front().name && m_dice.chance(50)) {
            parts.items.push_back(column(other));
        }
    }
    if (m_dice.chance(60)) {
        const QString first = parts.items.empty() ? m_dice.oneOf(columns).name : parts.items.front().name;
        parts.order << first + (m_dice.chance(30) ? u" desc"_s : QString());
        if (parts.items.size() == 2) {
            parts.order << parts.items.back().name;
        }
    }
    return alone(select(std::move(parts)));
}

QString describe(const Step& step)
{
    if (const auto* const statements = std::get_if<Statements>(&step)) {
        QStringList texts;
        for (const StatementPtr& statement : statements->statements) {
            texts << statement->text();
        }
        return u"scope %1\n  "_s.arg(static_cast<int>(statements->scope)) + texts.join(u"\n  "_s);
    }
    if (const auto* const request = std::get_if<ImportRequest>(&step)) {
        return u"import %1 as '%2' of %3"_s.arg(request->interno, request->declaration, request->officialDate);
    }
    if (const auto* const renumbering = std::get_if<Renumbering>(&step)) {
        return u"renumber row %1 to '%2'"_s.arg(renumbering->row).arg(renumbering->newNumber);
    }
    return u"delete row %1"_s.arg(std::get<Deletion>(step).row);
}

} // namespace oVELDRA::histories
