#include "StockVerification.h"

#include "../KnownTables.h"
#include "../Snapshot.h"
#include "ArticleChecks.h"
#include "BalanceCheck.h"
#include "DischargeCheck.h"
#include "DuplicateKeys.h"
#include "RelationCheck.h"
#include "RenumberingCheck.h"
#include "TariffCheck.h"

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

namespace {

/// Answers whether everything was looked for.
bool verifyDeclarations(Snapshot& inputs, Tolerance tolerance, FindingSpool& spool, RowTally& tally)
{
    DuplicateHeaderCheck duplicateHeaders(spool);
    BalanceCheck balances(tolerance, spool);
    NegativeBalanceCheck negativeBalances(tolerance, spool);
    ArticleWithoutHeaderCheck orphanArticles(spool);
    RepeatedArticleCheck repeatedArticles(spool);
    DischargeCheck discharges(spool);
    RenumberingCheck renumberings(tolerance, spool);
    StockWalk(inputs.engine(), inputs.tables(), tally)
        .run({&duplicateHeaders, &balances, &negativeBalances, &orphanArticles, &repeatedArticles, &discharges,
              &renumberings});
    return renumberings.finish();
}

} // namespace

QStringList verifyStock(const VerificationWish& wish, FindingSpool& spool, RowTally& tally)
{
    QStringList leftOut;
    Snapshot inputs(wish.inputs);
    requireTables(inputs.tables(), Database::Inputs, {u"CAT", u"PRD", u"RIP", u"INTINS", u"INS", u"DIP"});
    std::optional<Snapshot> nomenclature;
    if (wish.nomenclature) {
        nomenclature.emplace(*wish.nomenclature);
        requireTables(nomenclature->tables(), Database::Nomenclature, {u"NCM"});
    } else {
        leftOut.append(u"No se controlaron las posiciones de los productos: falta --ncm."_s);
    }
    if (!verifyDeclarations(inputs, wish.tolerance, spool, tally)) {
        leftOut.append(u"No se buscaron descargas de renumeraciones a medias: hay demasiadas declaraciones con "
                       u"errores."_s);
    }
    checkRelations(inputs.engine(), inputs.tables(), spool, tally);
    if (nomenclature) {
        TariffCheck({inputs.engine(), inputs.tables(), nomenclature->engine(), nomenclature->tables()}, spool, tally)
            .run();
    }
    return leftOut;
}

} // namespace oVELDRA::data
