#include "HostFile.h"

#include "HistoryStatements.h"

#include <oVELDRA/RuntimeError.h>

#include <declarations/ImportarInterno.h>

#include <array>
#include <charconv>

namespace oVELDRA::histories {

using namespace Qt::StringLiterals;

namespace {

constexpr int noRow = 3021;
constexpr int syntaxError = -2147217900;
constexpr int significantDigits = 15;

class NoProgress final : public declarations::ImportProgress
{
public:
    void limits(int /*minimum*/, int /*maximum*/) override {}
    void advance() override {}
};

void execute(ConexionDB& store, const StatementPtr& statement)
{
    store.setSql(statement->text());
    store.execute();
}

Said amount(double number)
{
    constexpr int decimals = 2;
    return quotedNumber(number, decimals);
}

/// A number after it went through a text.
double throughText(double number)
{
    std::array<char, 32> text{};
    char* const begin = text.data();
    const auto written =
        std::to_chars(begin, begin + text.size(), number, std::chars_format::general, significantDigits);
    std::from_chars(begin, written.ptr, number);
    return number;
}

void requireStorable(const HostSubitem& subitem)
{
    for (const QString& text : {subitem.article, subitem.unit, subitem.position}) {
        if (text.contains(u'\'')) {
            throw Refusal{syntaxError};
        }
    }
}

void requireDone(ReferenceModel& model, const StatementPtr& statement)
{
    const QStringList words = statement->outcome(model).split(u' ');
    if (words.constFirst() == u"refused") {
        throw Refusal{words.at(1).toInt()};
    }
}

Said dateOrAsItIs(const QString& text)
{
    const QDate date = QDate::fromString(text, u"dd/MM/yyyy"_s);
    return date.isValid() ? dateValue(date) : unreadableDate();
}

void importItem(ReferenceModel& model, const HostFile& file, int number, const ImportRequest& request)
{
    const HostItem& item = file.items[static_cast<size_t>(number) - 1];
    declarations::ItemValues values = declarations::itemValues(item.amounts, file.factors, request.adjustments);
    const bool only = item.subitems.size() == 1;
    if (!only) {
        values = declarations::forSharing(values);
    }
    int place = only ? 0 : 1;
    for (const HostSubitem& subitem : item.subitems) {
        const double cif = only ? values.cif : declarations::sharedCif(subitem.fob, file.factors, values);
        const double price = throughText(declarations::unitValue(cif, subitem.quantity));
        requireStorable(subitem);
        const Said quantity = bare(subitem.quantity);
        requireDone(model, insertInto(u"INS"_s, {{u"INTDCL"_s, quoted(request.declaration)},
                                                 {u"ARTNRO"_s, quoted(subitem.article)},
                                                 {u"ARTUNI"_s, quoted(subitem.unit)},
                                                 {u"ARTCAT"_s, quantity},
                                                 {u"ARTPRE"_s, {{}, price}},
                                                 {u"ARTDSC"_s, quantity},
                                                 {u"ARTNCM"_s, quoted(subitem.position)},
                                                 {u"ARTITM"_s, bare(number)},
                                                 {u"ARTSBT"_s, bare(place)}}));
        ++place;
    }
}

void importAll(ReferenceModel& model, const HostFile* file, const ImportRequest& request)
{
    if (!file) {
        throw Refusal{noRow};
    }
    requireDone(model, insertInto(u"INTINS"_s, {{u"INTNRO"_s, quoted(request.interno)},
                                                {u"INTDCL"_s, quoted(request.declaration)},
                                                {u"INTFOF"_s, dateOrAsItIs(request.officialDate)},
                                                {u"INTDES"_s, quoted(request.description)},
                                                {u"INTVEN"_s, dateOrAsItIs(request.expiry)},
                                                {u"INTADU"_s, quoted(request.customsOffice)},
                                                {u"INTIOK"_s, bare(request.available)}}));
    for (size_t number = 1; number <= file->items.size(); ++number) {
        importItem(model, *file, static_cast<int>(number), request);
    }
}

/// What the import's undo statements leave, which also hit what was there under the number before.
void undo(ReferenceModel& model, const ImportRequest& request)
{
    const Condition ofDeclaration = is(u"INTDCL"_s, quoted(request.declaration));
    requireDone(model, deleteFrom(u"INTINS"_s, is(u"INTNRO"_s, quoted(request.interno)) && ofDeclaration));
    requireDone(model, deleteFrom(u"INS"_s, ofDeclaration));
}

QString failed(ReferenceModel& model, const ImportRequest& request, int number)
{
    undo(model, request);
    return u"ER ERROR %1 - "_s.arg(number);
}

} // namespace

void addTo(ConexionDB& host, const HostFile& file)
{
    const auto burst = host.beginBurst();
    const Said interno = quoted(file.interno);
    execute(host, insertInto(u"caratula"_s, {{u"interno"_s, interno},
                                             {u"fobdivcambio"_s, amount(file.factors.fob)},
                                             {u"fletedivcambio"_s, amount(file.factors.freight)},
                                             {u"segurodivcambio"_s, amount(file.factors.insurance)}}));
    int id = 0;
    for (const HostItem& item : file.items) {
        const Said number = bare(++id);
        execute(host, insertInto(u"item"_s, {{u"interno"_s, interno},
                                             {u"id"_s, number},
                                             {u"FobTotal"_s, amount(item.amounts.fob)},
                                             {u"itflete"_s, amount(item.amounts.freight)},
                                             {u"itseguro"_s, amount(item.amounts.insurance)},
                                             {u"ajusteinc"_s, amount(item.amounts.increments)},
                                             {u"ajusteded"_s, amount(item.amounts.deductions)}}));
        int subid = 0;
        for (const HostSubitem& subitem : item.subitems) {
            execute(host, insertInto(u"groupsubitems"_s, {{u"interno"_s, interno},
                                                          {u"id"_s, number},
                                                          {u"idsub"_s, bare(++subid)},
                                                          {u"IDARTICULO"_s, quoted(subitem.article)},
                                                          {u"IDUNIDAD"_s, quoted(subitem.unit)},
                                                          {u"CANTIDAD"_s, bare(subitem.quantity)},
                                                          {u"NCM"_s, quoted(subitem.position)},
                                                          {u"FOB"_s, bare(subitem.fob)}}));
        }
    }
    burst->commit();
}

QString imported(core::SharedState& state, const ImportRequest& request)
{
    NoProgress progress;
    state.sInternoExt = request.interno;
    return declarations::ImportarInterno(state, progress, request.interno, request.declaration, request.officialDate,
                                         request.description, request.expiry, request.customsOffice, request.available,
                                         request.adjustments);
}

QString imported(ReferenceModel& model, const HostFile* file, const ImportRequest& request)
{
    try {
        importAll(model, file, request);
        return u"OK"_s;
    } catch (const Refusal& refusal) {
        return failed(model, request, refusal.number);
    } catch (const RuntimeError& error) { // of the distribution
        return failed(model, request, error.number());
    }
}

} // namespace oVELDRA::histories
