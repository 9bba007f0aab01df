#pragma once

#include "doubles/TestStores.h"

#include <oVELDRA/Store.h>

#include <core/SharedState.h>

#include <QString>
#include <QStringList>

#include <memory>

namespace oVELDRA::catalog {

/// A real inputs database of its own, handed over to a component.
class InputsStore
{
public:
    explicit InputsStore(core::SharedState& state) { state.g_DBINS.assign(m_db); }

    qint64 run(const QString& sql)
    {
        m_db->setSql(sql);
        return m_db->execute();
    }

    void addCatalog(const QString& code, const QString& description)
    {
        run(QStringLiteral("insert into CAT (CATNRO,CATDES) values ('%1','%2')").arg(code, description));
    }

    void addProduct(const QString& catalog, const QString& product, const QString& description)
    {
        run(QStringLiteral("insert into PRD (CATNRO,PRDNRO,PRDDES,PRDNCM,PRDMUL,PRDUNI,PRDPRE,PRDSUF,PRDPAI,PRDKGU) "
                           "values ('%1','%2','%3','8471.30.12','1','07','2','SIN SUFIJOS','200','1')")
                .arg(catalog, product, description));
    }

    void addRelation(const QString& catalog, const QString& product, const QString& input)
    {
        run(QStringLiteral("insert into RIP (CATNRO,PRDNRO,ARTNRO,RPADES,RIPCAN,RIPMER,RIPPER,TRPMER,TRPPER,DIPOBL) "
                           "values ('%1','%2','%3','insumo','1','0','0',0,0,0)")
                .arg(catalog, product, input));
    }

    /// The fields of every row, joined by "|".
    [[nodiscard]] QStringList rows(const QString& sql, const QStringList& fields)
    {
        bool ok = false;
        m_db->setSql(sql);
        const auto recordset = m_db->openRecordset(ok);
        QStringList rows;
        for (; ok && !recordset->atEof(); recordset->moveNext()) {
            QStringList cells;
            for (const QString& field : fields) {
                cells.append(recordset->value(field).toString());
            }
            rows.append(cells.join(QLatin1Char('|')));
        }
        return ok ? rows : QStringList{m_db->lastError().description()};
    }

private:
    std::shared_ptr<ConexionDB> m_db = createStore(doubles::TestStores::newUrl(), Database::Inputs);
};

} // namespace oVELDRA::catalog
