#pragma once

#include "SampleDeclarations.h"
#include "SampleStock.h"
#include "TableLoader.h"

#include <oVELDRA/Store.h>

#include <tariff/Tariff.h>
#include <vector>

namespace tornel {

/// What the databases of the demonstration hold after the first start.
class SampleContent
{
public:
    explicit SampleContent(tariff::Tariff tariff);

    [[nodiscard]] qsizetype rowCount(oVELDRA::Database database) const;

    /// Writes the rows of one database into its empty tables. Throws oVELDRA::RuntimeError.
    void write(oVELDRA::Database database, oVELDRA::ConexionDB& connection, const RowCounter& counter) const;

private:
    void writeNomenclature(oVELDRA::ConexionDB& connection, const RowCounter& counter) const;
    void writeHost(oVELDRA::ConexionDB& connection, const RowCounter& counter) const;
    void writeCatalogs(oVELDRA::ConexionDB& connection, const RowCounter& counter) const;
    void writeStock(oVELDRA::ConexionDB& connection, const RowCounter& counter) const;
    void writeDischarges(oVELDRA::ConexionDB& connection, const RowCounter& counter) const;

    tariff::Tariff m_tariff;
    std::vector<SampleDeclaration> m_declarations;
    SampleStock m_stock;
};

} // namespace tornel
