#pragma once

#include "declarations/StoredDeclaration.h"
#include "doubles/TestStores.h"

#include <oVELDRA/Store.h>

#include <QString>

#include <memory>

namespace oVELDRA::declarations {

/// An article of a declaration; the numbers as they are typed in Argentina.
struct Article
{
    int item = 1;
    int subitem = 0;
    QString code = QStringLiteral("AC-1");
    QString declared = QStringLiteral("40");
    QString available = QStringLiteral("40");
    QString price = QStringLiteral("1,5");
    QString unit = QStringLiteral("07");
    QString position = QStringLiteral("8471.30.12.000A");
    QString ctc = QStringLiteral("CTC-1");
};

/// A real inputs database of its own.
class ArticlesStore
{
public:
    static inline const QString number = QStringLiteral("24073IT14000123A");
    /// What the report is bound to.
    static inline const QString printStatement = QStringLiteral(
        "select format(ARTITM,'000') as pARTITM,format(ARTSBT,'000') as pARTSBT,ARTNRO,ARTNCM,ARTCTC,ARTUNI,"
        "format(ARTCAT,'00.00') as pARTCAT,format(ARTPRE,'00.000000') as pARTPRE,format(ARTDSC,'00.00') as pARTDSC, "
        "format((ARTDSC * 100) / ARTCAT,'00.00') as pPROC from INS where INTDCL = '24073IT14000123A' "
        "order by ARTITM,ARTSBT ");

    [[nodiscard]] const std::shared_ptr<ConexionDB>& connection() const { return m_db; }

    void add(const Article& article)
    {
        run(*m_db, QStringLiteral("insert into INS (INTDCL,ARTNRO,ARTUNI,ARTCAT,ARTPRE,ARTDSC,ARTNCM,ARTITM,ARTSBT,"
                                  "ARTCTC) values ('%1','%2','%3','%4','%5','%6','%7','%8','%9','%10')")
                       .arg(number, article.code, article.unit, article.declared, article.price, article.available,
                            article.position, QString::number(article.item), QString::number(article.subitem))
                       .arg(article.ctc));
    }

    /// Articles with the items 1, 2, 3 … and the codes AC-1, AC-2, AC-3 …
    void addMany(int count)
    {
        const auto burst = m_db->beginBurst();
        for (int item = 1; item <= count; ++item) {
            add({item, 0, QStringLiteral("AC-%1").arg(item)});
        }
        burst->commit();
    }

    /// The rows for the report.
    [[nodiscard]] std::unique_ptr<Recordset> printed() const
    {
        bool ok = false;
        m_db->setSql(printStatement);
        return m_db->openRecordset(ok);
    }

private:
    std::shared_ptr<ConexionDB> m_db = createStore(doubles::TestStores::newUrl(), Database::Inputs);
};

} // namespace oVELDRA::declarations
