#include "RelationCheck.h"

#include "DuplicateKeys.h"

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

namespace {

void checkCatalogs(store::EngineConnection& engine, const dialect::Catalog& tables, FindingSink& sink, RowTally& tally)
{
    DuplicateKeys duplicates(u"CAT"_s, {Field::CATNRO}, sink);
    OrderedRows catalogs(engine, tables, {u"CAT", {{u"CATNRO"}}, {u"CATNRO"}}, tally.counterOf(u"CAT"));
    for (; !catalogs.atEnd(); catalogs.advance()) {
        duplicates.row(catalogs);
    }
}

/// How the product of a relation stands to a product: behind it, it, or before it.
std::strong_ordering compareProducts(const Key& relation, const Key& product)
{
    const auto first = relation[0] <=> product[0];
    return first == std::strong_ordering::equal ? relation[1] <=> product[1] : first;
}

Finding withoutProduct(const OrderedRows& relations)
{
    const dialect::Value catalog = relations.value(0);
    const dialect::Value product = relations.value(1);
    return {FindingKind::RelationWithoutProduct,
            u"RIP"_s,
            {{Field::ARTNRO, relations.value(2)}, {Field::CATNRO, catalog}, {Field::PRDNRO, product}},
            u"No hay producto %1 del catálogo %2 en PRD."_s.arg(quoted(product), quoted(catalog))};
}

} // namespace

void checkRelations(store::EngineConnection& engine, const dialect::Catalog& tables, FindingSink& sink, RowTally& tally)
{
    checkCatalogs(engine, tables, sink, tally);
    DuplicateKeys duplicateProducts(u"PRD"_s, {Field::CATNRO, Field::PRDNRO}, sink);
    DuplicateKeys duplicateRelations(u"RIP"_s, {Field::CATNRO, Field::PRDNRO, Field::ARTNRO}, sink);
    OrderedRows products(engine, tables, {u"PRD", {{u"CATNRO"}, {u"PRDNRO"}}, {u"CATNRO", u"PRDNRO"}},
                         tally.counterOf(u"PRD"));
    OrderedRows relations(engine, tables,
                          {u"RIP", {{u"CATNRO"}, {u"PRDNRO"}, {u"ARTNRO"}}, {u"CATNRO", u"PRDNRO", u"ARTNRO"}},
                          tally.counterOf(u"RIP"));
    const auto nextProduct = [&] {
        duplicateProducts.row(products);
        products.advance();
    };
    for (; !relations.atEnd(); relations.advance()) {
        duplicateRelations.row(relations);
        const Key& key = relations.key();
        while (!products.atEnd() && std::is_gt(compareProducts(key, products.key()))) {
            nextProduct();
        }
        const bool found = !products.atEnd() && std::is_eq(compareProducts(key, products.key()));
        if (!found || key[0].isNull() || key[1].isNull()) {
            sink.add(withoutProduct(relations));
        }
    }
    while (!products.atEnd()) {
        nextProduct();
    }
}

} // namespace oVELDRA::data
