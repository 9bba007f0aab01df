#include "HostLists.h"

#include "SqlLiteral.h"

using namespace Qt::StringLiterals;
using oVELDRA::ConexionDB;
using oVELDRA::Recordset;

namespace tornel::lists {

std::unique_ptr<Recordset> open(ConexionDB& connection, const QString& statement)
{
    connection.setSql(statement);
    bool ok = false;
    auto rows = connection.openRecordset(ok);
    if (!ok) {
        throw connection.lastError();
    }
    return rows;
}

std::vector<Declaration> declarations(ConexionDB& host, ConexionDB& inputs)
{
    std::vector<Declaration> list;
    const auto rows =
        open(host, u"select interno,fobdivcambio,fletedivcambio,segurodivcambio from caratula order by interno"_s);
    for (; !rows->atEof(); rows->moveNext()) {
        Declaration row;
        row.interno = rows->value(u"interno").toString();
        row.fobFactor = rows->value(u"fobdivcambio").toDouble();
        row.freightFactor = rows->value(u"fletedivcambio").toDouble();
        row.insuranceFactor = rows->value(u"segurodivcambio").toDouble();
        const QString of = u" where interno = "_s + sql::text(row.interno);
        const auto items =
            open(host, u"select count(*) as Total, sum(FobTotal) as Suma from item"_s + of + u" and id<>0"_s);
        row.items = items->value(u"Total").toLongLong();
        row.fobTotal = items->value(u"Suma").toDouble();
        // Of the rows themselves nothing is read, and there are many.
        const auto subitems = open(host, u"select count(*) as Total from groupsubitems"_s + of);
        row.subitems = subitems->value(u"Total").toLongLong();
        const auto stock = open(inputs, u"select INTDCL from INTINS where INTNRO = "_s + sql::text(row.interno) +
                                            u" order by INTDCL"_s);
        if (!stock->atEof()) {
            row.imported = stock->value(u"INTDCL").toString();
        }
        list.push_back(std::move(row));
    }
    return list;
}

std::vector<ExportSubitem> exportSubitems(ConexionDB& inputs)
{
    std::vector<ExportSubitem> list;
    const auto rows = open(inputs, u"select EXTINT,EXTSBT,EXTNOF,EXTFOF,EXTFAC from DIP order by EXTINT,EXTSBT"_s);
    for (; !rows->atEof(); rows->moveNext()) {
        const QString interno = rows->value(u"EXTINT").toString();
        const qint64 subitem = rows->value(u"EXTSBT").toLongLong();
        if (list.empty() || list.back().interno != interno || list.back().subitem != subitem) {
            list.push_back({interno, subitem, rows->value(u"EXTNOF").toString(), rows->value(u"EXTFOF").toDate(),
                            rows->value(u"EXTFAC").toString(), 0});
        }
        ++list.back().inputs;
    }
    return list;
}

} // namespace tornel::lists
