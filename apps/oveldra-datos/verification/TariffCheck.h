#pragma once

#include "Finding.h"
#include "OrderedRows.h"
#include "RowTally.h"

namespace oVELDRA::data {

/// Two databases, each with a transaction open.
struct TariffDatabases
{
    store::EngineConnection& inputs;
    const dialect::Catalog& inputsTables;
    store::EngineConnection& nomenclature;
    const dialect::Catalog& nomenclatureTables;
};

/// Products whose position is not that of any row of NCM, [001] + '.' + [002] + [003]. Compared as the store compares
/// texts: without regard to letter case and trailing blanks.
///
/// A position that is Null or blank was never in the tariff: such a product is reported as one without a position. A
/// row of NCM with Null in one of the three columns has no position.
///
/// Works on `blockSize` different positions at a time, and reads NCM once for each block: the order of NCM's three
/// columns is not that of the positions put together.
class TariffCheck
{
public:
    static constexpr size_t usualBlockSize = 50000;

    TariffCheck(const TariffDatabases& databases, FindingSink& sink, RowTally& tally,
                size_t blockSize = usualBlockSize);

    void run();

private:
    struct Position
    {
        KeyPart part;
        bool found = false;
    };

    [[nodiscard]] bool readBlock();
    void lookUp();
    void report();

    TariffDatabases m_databases;
    FindingSink& m_sink;
    RowCounter m_countPosition;
    size_t m_blockSize;
    OrderedRows m_ahead;    ///< goes ahead to gather a block's positions
    OrderedRows m_products; ///< follows to report its products
    bool m_firstBlock = true;
    std::vector<Position> m_block; ///< in order
};

} // namespace oVELDRA::data
