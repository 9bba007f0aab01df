#pragma once

#include "doubles/TestStores.h"

#include <oVELDRA/Store.h>

#include <QString>

#include <memory>

namespace oVELDRA::nomenclature {

/// A small tariff in a real store.
class StoredTariff
{
public:
    void addPosition(const QString& subheading, const QString& opening, const QString& control,
                     const QString& description = QStringLiteral("Null"),
                     const QString& second = QStringLiteral("Null"))
    {
        run(QStringLiteral("insert into NCM ([001],[002],[003],[010],[004]) values ('%1','%2','%3',%4,%5)")
                .arg(subheading, opening, control, description, second));
    }

    void addRule(const QString& selector, const QString& code, const QString& detail)
    {
        run(QStringLiteral("insert into sufidos (sim,sufijo,detalle) values ('%1','%2','%3')")
                .arg(selector, code, detail));
    }

    std::shared_ptr<ConexionDB> db = createStore(doubles::TestStores::newUrl(), Database::Nomenclature);

private:
    void run(const QString& statement)
    {
        db->setSql(statement);
        db->execute();
    }
};

} // namespace oVELDRA::nomenclature
