#include "TariffCheck.h"

#include "../KnownTables.h"

#include <dialect/TextComparison.h>

#include <algorithm>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Value;

namespace {

RowsWanted productsWanted()
{
    return {u"PRD", {{u"PRDNCM"}}, {u"CATNRO", u"PRDNRO", u"PRDNCM"}};
}

bool isBlank(const KeyPart& position)
{
    return position.isNull() || (position.kind == KeyPart::Kind::Text && position.text.isEmpty());
}

Finding about(const OrderedRows& products, FindingKind kind)
{
    const Value position = products.value(2);
    return {kind,
            u"PRD"_s,
            {{Field::CATNRO, products.value(0)}, {Field::PRDNRO, products.value(1)}, {Field::PRDNCM, position}},
            kind == FindingKind::ProductWithoutPosition
                ? u"El producto no tiene posición."_s
                : u"La posición %1 no está en el nomenclador."_s.arg(quoted(position))};
}

} // namespace

TariffCheck::TariffCheck(const TariffDatabases& databases, FindingSink& sink, RowTally& tally, size_t blockSize)
    : m_databases(databases), m_sink(sink), m_countPosition(tally.counterOf(u"NCM")), m_blockSize(blockSize),
      m_ahead(databases.inputs, databases.inputsTables, productsWanted(), [] {}),
      m_products(databases.inputs, databases.inputsTables, productsWanted(), [] {})
{}

void TariffCheck::run()
{
    while (readBlock()) {
        lookUp();
        report();
        m_firstBlock = false;
    }
}

/// False when there are no more products.
bool TariffCheck::readBlock()
{
    m_block.clear();
    for (; !m_ahead.atEnd(); m_ahead.advance()) {
        const KeyPart& position = m_ahead.key().front();
        if (!m_block.empty() && m_block.back().part == position) {
            continue;
        }
        if (m_block.size() == m_blockSize) {
            break;
        }
        m_block.push_back({position, false});
    }
    return !m_block.empty();
}

void TariffCheck::lookUp()
{
    const dialect::Table& table = *m_databases.nomenclatureTables.find(u"NCM");
    dialect::TableScan scan;
    for (const QStringView column : {u"001", u"002", u"003"}) {
        scan.columns.push_back(requiredColumn(table, column));
    }
    store::RowStream rows(m_databases.nomenclature, table, scan);
    while (rows.next()) {
        if (m_firstBlock) {
            m_countPosition();
        }
        const Value subheading = rows.value(0);
        const Value opening = rows.value(1);
        const Value control = rows.value(2);
        if (subheading.isNull() || opening.isNull() || control.isNull()) {
            continue;
        }
        const QString position =
            dialect::textOf(subheading, {}) + u'.' + dialect::textOf(opening, {}) + dialect::textOf(control, {});
        const KeyPart part = keyPartOf(Value::ofText(dialect::folded(position)), false);
        const auto found = std::lower_bound(m_block.begin(), m_block.end(), part,
                                            [](const Position& a, const KeyPart& b) { return a.part < b; });
        if (found != m_block.end() && found->part == part) {
            found->found = true;
        }
    }
}

void TariffCheck::report()
{
    auto position = m_block.cbegin();
    for (; !m_products.atEnd(); m_products.advance()) {
        while (position != m_block.cend() && position->part < m_products.key().front()) {
            ++position;
        }
        if (position == m_block.cend()) {
            return; // the next block's
        }
        if (isBlank(position->part)) {
            m_sink.add(about(m_products, FindingKind::ProductWithoutPosition));
        } else if (!position->found) {
            m_sink.add(about(m_products, FindingKind::PositionNotInTariff));
        }
    }
}

} // namespace oVELDRA::data
