#include "BusySeat.h"

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

qint64 count(ConexionDB& connection, const QString& table)
{
    connection.setSql(u"select count(*) as n from "_s + table);
    bool ok = false;
    const auto rows = connection.openRecordset(ok);
    return ok ? rows->value(u"n").toLongLong() : -1;
}

void importOne(ConexionDB& connection, qint64 number, int articles)
{
    const auto burst = connection.beginBurst();
    const QString declaration = u"DIT%1"_s.arg(number, 8, 10, QChar(u'0'));
    connection.setSql(
        u"insert into INTINS (INTNRO,INTDCL,INTDES,INTIOK) values ('T%1','%2','Declaración',1)"_s.arg(number).arg(
            declaration));
    connection.execute();
    for (int article = 1; article <= articles; ++article) {
        connection.setSql(u"insert into INS (INTDCL,ARTNRO,ARTUNI,ARTCAT,ARTPRE,ARTDSC,ARTNCM,ARTITM,ARTSBT) values "
                          "('%1','ARTICULO-%2','07','10','1','10','8471.30.12.000A','%2','001')"_s.arg(declaration)
                              .arg(article, 3, 10, QChar(u'0')));
        connection.execute();
    }
    burst->commit();
}

void fill(ConexionDB& connection, int declarations)
{
    const auto burst = connection.beginBurst();
    for (int number = 1; number <= declarations; ++number) {
        importOne(connection, number, articlesEach);
    }
    burst->commit();
}

} // namespace oVELDRA::data
