#include "History.h"

#include <algorithm>
#include <utility>

namespace oVELDRA::histories {

using namespace Qt::StringLiterals;
using Scope = Statements::Scope;

namespace {

constexpr int hostFileCount = 14;
constexpr int quantityDecimals = 8;
constexpr int percentageDecimals = 5;
constexpr int priceDecimals = 6;

Condition sameProduct(const QString& catalog, const QString& product)
{
    return is(u"CATNRO"_s, quoted(catalog)) && is(u"PRDNRO"_s, quoted(product));
}

Condition ofDeclaration(const QString& number)
{
    return is(u"INTDCL"_s, quoted(number));
}

/// A column's change by an amount, in the store's own arithmetic.
Assignment lessened(const QString& column, const Said& amount)
{
    return {column, {column + u" - " + amount.text, {}}, [amount](const QVariant& before) {
                return before.isValid() ? QVariant(before.toDouble() - amount.value.toDouble()) : QVariant();
            }};
}

} // namespace

History::History(quint64 seed) : m_dice(seed), m_words(m_dice)
{
    const auto likely = [this](int times, Maker maker) { m_makers.insert(m_makers.end(), size_t(times), maker); };
    likely(6, &History::catalog);
    likely(1, &History::deletedCatalog);
    likely(8, &History::product);
    likely(4, &History::editedProduct);
    likely(2, &History::deletedProduct);
    likely(8, &History::relation);
    likely(4, &History::editedRelation);
    likely(3, &History::movedKeys);
    likely(16, &History::import);
    likely(5, &History::editedHeader);
    likely(8, &History::renumbering);
    likely(4, &History::uncheckedRenumbering);
    likely(2, &History::deletion);
    likely(14, &History::discharge);
    likely(4, &History::bulkEdit);
    likely(4, &History::refusedStatement);
    likely(5, &History::failingBurst);
    likely(8, &History::screenQuery);
    likely(12, &History::anyQuery);
    makeHostFiles();
}

const HostFile* History::hostFile(const QString& interno) const
{
    const auto found = std::find_if(m_hostFiles.begin(), m_hostFiles.end(),
                                    [&interno](const HostFile& file) { return file.interno == interno; });
    return found == m_hostFiles.end() ? nullptr : &*found;
}

Step History::next(const ReferenceModel& model)
{
    return (this->*m_dice.oneOf(m_makers))(model);
}

HostItem History::hostItem(bool shared)
{
    HostItem item;
    for (int subitems = shared ? 2 + m_dice.below(3) : 1; subitems > 0; --subitems) {
        item.subitems.push_back(
            {m_words.article(), m_words.unit(), m_words.position(), 1 + m_dice.below(40), 1 + m_dice.below(500)});
        item.amounts.fob += item.subitems.back().fob;
    }
    item.amounts.freight = m_words.number(2);
    item.amounts.insurance = m_words.number(2);
    item.amounts.increments = m_words.number(2);
    item.amounts.deductions = m_words.number(1);
    return item;
}

void History::makeHostFiles()
{
    for (int file = 1; file <= hostFileCount; ++file) {
        HostFile made{u"TOR-%1"_s.arg(file), {1, 1, m_words.number(2)}, {}};
        for (int items = 1 + m_dice.below(4); items > 0; --items) {
            made.items.push_back(hostItem(m_dice.chance(60)));
        }
        m_hostFiles.push_back(made);
    }
    // Some cannot be imported to their end, for a reason that only their last item has.
    HostItem worthless = hostItem(true);
    worthless.amounts.fob = 0;
    HostItem unspeakable = hostItem(true);
    unspeakable.subitems.back().article = u"O'B"_s;
    HostItem uncounted = hostItem(false);
    uncounted.subitems.back().quantity = 0;
    m_hostFiles[0].items.push_back(worthless);
    m_hostFiles[1].items.push_back(unspeakable);
    m_hostFiles[2].items.push_back(uncounted);
}

Step History::catalog(const ReferenceModel& /*model*/)
{
    const Said code = quoted(m_words.catalog());
    const Said description = quoted(m_words.description());
    if (m_dice.chance(40)) {
        return alone(update(u"CAT"_s, {{u"CATDES"_s, description}}, is(u"CATNRO"_s, code)));
    }
    return alone(insertInto(u"CAT"_s, {{u"CATNRO"_s, code}, {u"CATDES"_s, description}}));
}

Step History::deletedCatalog(const ReferenceModel& /*model*/)
{
    const Condition which = is(u"CATNRO"_s, quoted(m_words.catalog()));
    return Statements{{deleteFrom(u"PRD"_s, which), deleteFrom(u"CAT"_s, which)}, Scope::Committed};
}

Step History::product(const ReferenceModel& /*model*/)
{
    const QString catalog = m_words.catalog();
    const QString product = m_words.product();
    return Statements{{count(u"PRDNRO"_s, u"PRD"_s, sameProduct(catalog, product)),
                       insertInto(u"PRD"_s, {{u"PRDNRO"_s, quoted(product)},
                                             {u"PRDDES"_s, quoted(m_words.description())},
                                             {u"PRDNCM"_s, quoted(m_words.position())},
                                             {u"PRDMUL"_s, quotedNumber(m_words.number(2), 2)},
                                             {u"PRDUNI"_s, quoted(m_words.unit())},
                                             {u"PRDPRE"_s, quotedNumber(m_words.number(priceDecimals), priceDecimals)},
                                             {u"PRDSUF"_s, quoted(m_words.description())},
                                             {u"PRDPAI"_s, quoted(u"203"_s)},
                                             {u"PRDKGU"_s, quotedNumber(m_words.number(3), 3)},
                                             {u"CATNRO"_s, quoted(catalog)}})}};
}

Step History::editedProduct(const ReferenceModel& model)
{
    const QString product = m_words.presentText(model, u"PRD"_s, u"PRDNRO"_s, m_words.product());
    return alone(update(u"PRD"_s,
                        {{u"PRDDES"_s, quoted(m_words.description())},
                         {u"PRDNCM"_s, quoted(m_words.position())},
                         {u"PRDMUL"_s, quotedNumber(m_words.number(2), 2)},
                         {u"PRDUNI"_s, quoted(m_words.unit())},
                         {u"PRDPRE"_s, cdblOf(m_words.number(priceDecimals), priceDecimals)},
                         {u"PRDSUF"_s, quoted({})},
                         {u"PRDPAI"_s, quoted(u"200"_s)},
                         {u"PRDKGU"_s, cdblOf(m_words.number(3), 3)}},
                        sameProduct(m_words.catalog(), m_words.spelling(product))));
}

Step History::deletedProduct(const ReferenceModel& /*model*/)
{
    const Condition which = sameProduct(m_words.catalog(), m_words.product());
    return Statements{{deleteFrom(u"RIP"_s, which), deleteFrom(u"PRD"_s, which)}, Scope::Committed};
}

Step History::relation(const ReferenceModel& /*model*/)
{
    const QString catalog = m_words.catalog();
    const QString product = m_words.product();
    const QString article = m_words.article();
    const Said waste = quotedNumber(m_words.number(percentageDecimals), percentageDecimals);
    return Statements{
        {count(u"ARTNRO"_s, u"RIP"_s, sameProduct(catalog, product) && is(u"ARTNRO"_s, quoted(article))),
         insertInto(u"RIP"_s, {{u"CATNRO"_s, quoted(catalog)},
                               {u"PRDNRO"_s, quoted(product)},
                               {u"ARTNRO"_s, quoted(article)},
                               {u"RPADES"_s, quoted(m_words.description())},
                               {u"RIPCAN"_s, quotedNumber(m_words.number(quantityDecimals), quantityDecimals)},
                               {u"RIPMER"_s, waste},
                               {u"RIPPER"_s, waste},
                               {u"TRPMER"_s, bare(-m_dice.below(2))},
                               {u"TRPPER"_s, bare(-m_dice.below(2))},
                               {u"DIPOBL"_s, bare(-m_dice.below(2))}})}};
}

Step History::editedRelation(const ReferenceModel& model)
{
    const QString article = m_words.presentText(model, u"RIP"_s, u"ARTNRO"_s, m_words.article());
    const Condition which =
        sameProduct(m_words.catalog(), m_words.product()) && is(u"ARTNRO"_s, quoted(m_words.spelling(article)));
    if (m_dice.chance(25)) {
        return alone(deleteFrom(u"RIP"_s, which));
    }
    return alone(update(u"RIP"_s,
                        {{u"ARTNRO"_s, quoted(m_dice.chance(70) ? m_words.spelling(article) : m_words.article())},
                         {u"RPADES"_s, quoted(m_words.description())},
                         {u"RIPCAN"_s, quotedNumber(m_words.number(quantityDecimals), quantityDecimals)},
                         {u"TRPMER"_s, bare(-m_dice.below(2))}},
                        which));
}

/// Codes written over, of many rows at once: some of them already belong to others.
Step History::movedKeys(const ReferenceModel& /*model*/)
{
    const QString table = m_dice.oneOf<QString>({u"CAT"_s, u"PRD"_s, u"RIP"_s});
    return alone(update(table, {{u"CATNRO"_s, quoted(m_words.catalog())}}, is(u"CATNRO"_s, quoted(m_words.catalog()))));
}

Step History::import(const ReferenceModel& model)
{
    ImportRequest request;
    request.interno = u"TOR-%1"_s.arg(1 + m_dice.below(hostFileCount + 1)); // the last one is not there
    request.declaration = m_dice.chance(70)
                              ? m_words.declaration()
                              : m_words.spelling(m_words.presentText(model, u"INTINS"_s, u"INTDCL"_s, u"Z"_s));
    if (m_dice.chance(5)) {
        request.declaration = u"260731T140000012345"_s; // too long
    }
    request.officialDate = m_dice.chance(95) ? m_words.date().toString(u"dd/MM/yyyy"_s) : u"31/02/2024"_s;
    request.expiry = m_words.date().toString(u"dd/MM/yyyy"_s);
    request.description = m_words.description();
    request.customsOffice = m_words.office();
    request.available = static_cast<qint16>(m_dice.below(2));
    request.adjustments = m_dice.chance(50);
    return request;
}

Step History::editedHeader(const ReferenceModel& model)
{
    const QString number = m_words.presentText(model, u"INTINS"_s, u"INTDCL"_s, m_words.declaration());
    return alone(update(u"INTINS"_s,
                        {{u"INTNRO"_s, quoted(m_words.interno())},
                         {u"INTDES"_s, quoted(m_words.description())},
                         {u"INTCTC"_s, quoted(m_words.article())},
                         {u"INTFOF"_s, dateValue(m_words.date())},
                         {u"INTVEN"_s, m_dice.chance(90) ? dateValue(m_words.date()) : unreadableDate()},
                         {u"INTIOK"_s, bare(m_dice.below(2))}},
                        ofDeclaration(m_words.spelling(number))));
}

Step History::renumbering(const ReferenceModel& model)
{
    const QString number = m_dice.chance(60)
                               ? m_words.declaration()
                               : m_words.spelling(m_words.presentText(model, u"DIP"_s, u"ARTDCL"_s, u"Y"_s));
    return Renumbering{m_dice.below(1000), number};
}

/// Without the screen's checks: the number may be another's, and what was renumbered before that shows stays so.
Step History::uncheckedRenumbering(const ReferenceModel& model)
{
    const Said oldNumber = quoted(m_words.presentText(model, u"INTINS"_s, u"INTDCL"_s, m_words.declaration()));
    const Said newNumber = quoted(m_words.declaration());
    const std::vector<Assignment> number{{u"INTDCL"_s, newNumber}};
    return Statements{{update(u"DIP"_s, {{u"ARTDCL"_s, newNumber}}, is(u"ARTDCL"_s, oldNumber)),
                       update(u"INS"_s, number, is(u"INTDCL"_s, oldNumber)),
                       update(u"INTINS"_s, number, is(u"INTDCL"_s, oldNumber))},
                      anyScope()};
}

Step History::deletion(const ReferenceModel& model)
{
    if (m_dice.chance(50)) {
        return Deletion{m_dice.below(1000)};
    }
    const Said number =
        quoted(m_words.spelling(m_words.presentText(model, u"INTINS"_s, u"INTDCL"_s, m_words.declaration())));
    return Statements{{deleteFrom(u"INTINS"_s, is(u"INTDCL"_s, number)), deleteFrom(u"INS"_s, is(u"INTDCL"_s, number)),
                       deleteFrom(u"DIP"_s, is(u"ARTDCL"_s, number))},
                      anyScope()};
}

Step History::discharge(const ReferenceModel& model)
{
    const ModelTable& articles = model.table(u"INS");
    if (articles.rows.empty()) {
        return import(model);
    }
    const Row& article = m_dice.oneOf(articles.rows);
    const QString number = articles.cell(article, u"INTDCL").toString();
    const int item = articles.cell(article, u"ARTITM").toInt();
    const int subitem = articles.cell(article, u"ARTSBT").toInt();
    const double quantity = m_words.number(3);
    const Said waste = quotedNumber(m_words.number(percentageDecimals), percentageDecimals);
    const Condition which = ofDeclaration(m_words.spelling(number)) && is(u"ARTITM"_s, threeDigitsOf(item)) &&
                            is(u"ARTSBT"_s, threeDigitsOf(subitem));
    const Assignment balance = m_dice.chance(60) ? lessened(u"ARTDSC"_s, cdblOf(quantity, 3))
                                                 : Assignment{u"ARTDSC"_s, quotedNumber(m_words.number(3), 3)};
    return Statements{{insertInto(u"DIP"_s, {{u"ARTDCL"_s, quoted(m_words.spelling(number))},
                                             {u"ARTNRO"_s, quoted(articles.cell(article, u"ARTNRO").toString())},
                                             {u"ARTITM"_s, threeDigitsOf(item)},
                                             {u"ARTSBT"_s, threeDigitsOf(subitem)},
                                             {u"RALCAN"_s, quotedNumber(quantity, 3)},
                                             {u"EXTINT"_s, quoted(m_words.interno())},
                                             {u"EXTSBT"_s, bare(m_dice.below(6))},
                                             {u"EXTNOF"_s, quoted(m_words.export_())},
                                             {u"EXTFOF"_s, dateValue(m_words.date())},
                                             {u"RIPMER"_s, waste},
                                             {u"TRPMER"_s, bare(-m_dice.below(2))},
                                             {u"PRDMUL"_s, quotedNumber(m_words.number(1), 1)}}),
                       update(u"INS"_s, {balance}, which)},
                      anyScope()};
}

Step History::bulkEdit(const ReferenceModel& model)
{
    const QString table = anyTable(model);
    const dialect::Table& definition = model.table(table).definition;
    const auto place = static_cast<size_t>(m_dice.below(static_cast<int>(definition.columns.size())));
    const Condition which = m_words.condition(model, table);
    if (m_dice.chance(10)) {
        return alone(deleteFrom(table, which && m_words.condition(model, table)));
    }
    const dialect::Column& column = definition.columns[place];
    return alone(update(table, {{column.name, m_words.valueFor(column)}}, which));
}

Step History::refusedStatement(const ReferenceModel& /*model*/)
{
    return alone(refusedText());
}

/// What fails in the middle leaves what was done before it, and what undoes it still runs.
Step History::failingBurst(const ReferenceModel& model)
{
    const QString number = m_words.declaration();
    const auto article = insertInto(u"INS"_s, {{u"INTDCL"_s, quoted(number)},
                                               {u"ARTNRO"_s, quoted(m_words.article())},
                                               {u"ARTCAT"_s, quotedNumber(m_words.number(2), 2)}});
    std::vector<StatementPtr> statements{insertedHeader(model), article};
    statements.push_back(m_dice.chance(50) ? refusedText() : insertedHeader(model));
    statements.push_back(m_dice.chance(50)
                             ? insertInto(u"INS"_s, {{u"INTDCL"_s, quoted(number)}, {u"ARTCAT"_s, unreadableNumber()}})
                             : insertInto(u"INS"_s, {{u"INTDCL"_s, quoted(number.repeated(3))}}));
    statements.push_back(article);
    if (m_dice.chance(50)) {
        statements.push_back(deleteFrom(u"INTINS"_s, ofDeclaration(m_words.declaration())));
        statements.push_back(deleteFrom(u"INS"_s, ofDeclaration(number)));
    }
    return Statements{std::move(statements), anyScope()};
}

StatementPtr History::insertedHeader(const ReferenceModel& model)
{
    const QString number = m_words.presentText(model, u"INTINS"_s, u"INTDCL"_s, m_words.declaration());
    return insertInto(u"INTINS"_s,
                      {{u"INTNRO"_s, quoted(m_words.interno())},
                       {u"INTDCL"_s, quoted(m_dice.chance(50) ? m_words.spelling(number) : m_words.declaration())},
                       {u"INTFOF"_s, dateValue(m_words.date())},
                       {u"INTIOK"_s, bare(m_dice.below(3) - 1)}});
}

StatementPtr History::refusedText()
{
    constexpr int unknownTable = -2147217865;
    constexpr int unknownColumn = -2147217904;
    constexpr int syntaxError = -2147217900;
    return m_dice.oneOf<StatementPtr>({
        refused(u"delete from INTINZ where INTDCL = 'Z'"_s, unknownTable),
        refused(u"update INTINS set INTDCX = 'Z' where INTDCL = 'Z'"_s, unknownColumn),
        refused(u"update CAT set CATDES = 'O'B' where CATNRO = 'A1'"_s, syntaxError),
        refused(u"delete from CAT; delete from PRD"_s, syntaxError),
        refused(u"update INS set ARTDSC = 'doce' where INTDCL = 'Z'"_s, typeMismatch),
        refused(u"delete from INS where ARTDSC = 'doce'"_s, typeMismatch),
        refused(u"update INTINS set INTFOF = datevalue('31/02/2024') where INTDCL = 'Z'"_s, typeMismatch),
    });
}

QString History::anyTable(const ReferenceModel& model)
{
    return m_dice.oneOf(model.tables()).definition.name;
}

Scope History::anyScope()
{
    return m_dice.oneOf<Scope>({Scope::None, Scope::Committed, Scope::Committed, Scope::Left});
}

} // namespace oVELDRA::histories
