#pragma once

#include "ReferenceModel.h"

#include <oVELDRA/ConexionDB.h>

#include <core/SharedState.h>
#include <declarations/CifDistribution.h>

#include <QString>

#include <vector>

namespace oVELDRA::histories {

struct HostSubitem
{
    QString article;
    QString unit;
    QString position;
    int quantity = 1;
    int fob = 1;
};

struct HostItem
{
    declarations::ItemAmounts amounts;
    std::vector<HostSubitem> subitems;
};

/// A declaration of the host's.
struct HostFile
{
    QString interno;
    declarations::ExchangeFactors factors;
    std::vector<HostItem> items;
};

/// What the import is asked for.
struct ImportRequest
{
    QString interno;
    QString declaration;
    QString officialDate;
    QString description;
    QString expiry;
    QString customsOffice;
    qint16 available = 1;
    bool adjustments = false;
};

/// Writes a declaration into the host's database.
void addTo(ConexionDB& host, const HostFile& file);

/// Imports by the real import, from and into the state's databases. Answers its status text.
[[nodiscard]] QString imported(core::SharedState& state, const ImportRequest& request);

/// What the import makes of the inputs database, and how its status text begins. `file` is the host's declaration of
/// the request's interno, or null.
[[nodiscard]] QString imported(ReferenceModel& model, const HostFile* file, const ImportRequest& request);

} // namespace oVELDRA::histories
