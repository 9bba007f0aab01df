#pragma once

#include "Measure.h"
#include "Statements.h"

#include <oVELDRA/Store.h>

#include <core/SharedState.h>
#include <declarations/ImportarInterno.h>

#include <QString>

#include <cstdio>
#include <cstdlib>

/// An import to be measured, on any engine.
namespace bench {

inline constexpr int subitemsPerItem = 100;
inline const QString declaration = QStringLiteral("26073IT14000011A");

/// Makes a host database with one declaration, of interno T.
inline void makeHost(const QString& url, int items)
{
    const auto host = oVELDRA::createStore(url, oVELDRA::Database::Host);
    const auto burst = host->beginBurst();
    run(*host, QStringLiteral("insert into caratula (interno,fobdivcambio,fletedivcambio,segurodivcambio) values "
                              "('T','1,08','1','1')"));
    for (int item = 1; item <= items; ++item) {
        run(*host, QStringLiteral("insert into item (interno,id,FobTotal,itflete,itseguro,ajusteinc,ajusteded) values "
                                  "('T',%1,'5050','101,25','33,33','0','0')")
                       .arg(item));
        for (int subitem = 1; subitem <= subitemsPerItem; ++subitem) {
            run(*host, QStringLiteral("insert into groupsubitems (interno,id,idsub,IDARTICULO,IDUNIDAD,CANTIDAD,"
                                      "PRECIOUNITARIO,NCM,FOB) values ('T',%1,%2,'AC-%2','01','%3,5','1',"
                                      "'7208.90.00.110H','%2')")
                           .arg(item)
                           .arg(subitem)
                           .arg(1 + subitem % 7));
        }
    }
    burst->commit();
}

class NoProgress final : public oVELDRA::declarations::ImportProgress
{
public:
    void limits(int /*minimum*/, int /*maximum*/) override {}
    void advance() override {}
};

/// How long the import of the host's declaration into a stock takes.
inline double importSeconds(const QString& hostUrl, const QString& stockUrl)
{
    const QString interno = QStringLiteral("T");
    oVELDRA::core::SharedState state;
    state.sInternoExt = interno;
    state.g_DBTOR.assign(oVELDRA::connectStore(hostUrl, oVELDRA::Access::ReadOnly));
    state.g_DBINS.assign(oVELDRA::connectStore(stockUrl));
    NoProgress progress;
    QString status;
    const double time = seconds([&] {
        status = oVELDRA::declarations::ImportarInterno(state, progress, interno, declaration,
                                                        QStringLiteral("15/01/2026"), QStringLiteral("banco"),
                                                        QStringLiteral("15/01/2028"), QStringLiteral("073"), 1, false);
    });
    if (status != QLatin1String("OK")) {
        std::fprintf(stderr, "%s\n", qPrintable(status));
        std::exit(2);
    }
    return time;
}

} // namespace bench
