#pragma once

#include "Finding.h"
#include "RowTally.h"

namespace oVELDRA::data {

/// Goes through CAT, PRD and RIP: relations whose product is not in PRD, and keys that are there twice. Products whose
/// catalog is not there are no fault.
void checkRelations(store::EngineConnection& engine, const dialect::Catalog& tables, FindingSink& sink,
                    RowTally& tally);

} // namespace oVELDRA::data
