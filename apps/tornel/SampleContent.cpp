#include "SampleContent.h"

#include "SampleArticles.h"
#include "SqlLiteral.h"

#include <numeric>

using namespace Qt::StringLiterals;
using oVELDRA::ConexionDB;
using oVELDRA::Database;
using tariff::Tariff;
using tariff::TariffPosition;
using tariff::TariffSuffix;

namespace tornel {

namespace {

QString cents(qint64 amount)
{
    return sql::number(static_cast<double>(amount) / 100);
}

/// Item and subitem numbers are three digits in the stock.
QString threeDigits(int number)
{
    return sql::text(u"%1"_s.arg(number, 3, 10, '0'_L1));
}

/// How many rows the lists inside a list have together.
template <typename Owner, typename Row>
std::size_t innerRows(const std::vector<Owner>& owners, std::vector<Row> Owner::*rows)
{
    return std::accumulate(owners.begin(), owners.end(), std::size_t{0},
                           [rows](std::size_t sum, const Owner& owner) { return sum + (owner.*rows).size(); });
}

} // namespace

SampleContent::SampleContent(Tariff tariff)
    : m_tariff(std::move(tariff)), m_declarations(sampleDeclarations(m_tariff)),
      m_stock(sampleStock(m_tariff, m_declarations))
{}

qsizetype SampleContent::rowCount(Database database) const
{
    std::size_t rows = 0;
    switch (database) {
    case Database::Nomenclature:
        rows = m_tariff.positions().size() + m_tariff.suffixes().size();
        break;
    case Database::Inputs:
        rows = m_stock.catalogs.size() + m_stock.products.size() + innerRows(m_stock.products, &SampleProduct::bill) +
               m_stock.declarations.size() + innerRows(m_stock.declarations, &SampleImportedDeclaration::articles) +
               m_stock.discharges.size();
        break;
    case Database::Host:
        // Each declaration has its header, and the row 0 beside its items.
        rows = m_declarations.size() * 2 + innerRows(m_declarations, &SampleDeclaration::items);
        for (const SampleDeclaration& declaration : m_declarations) {
            rows += static_cast<std::size_t>(declaration.subitemCount());
        }
        break;
    }
    return static_cast<qsizetype>(rows);
}

void SampleContent::write(Database database, ConexionDB& connection, const RowCounter& counter) const
{
    switch (database) {
    case Database::Nomenclature:
        writeNomenclature(connection, counter);
        break;
    case Database::Inputs:
        writeCatalogs(connection, counter);
        writeStock(connection, counter);
        writeDischarges(connection, counter);
        break;
    case Database::Host:
        writeHost(connection, counter);
        break;
    }
}

void SampleContent::writeNomenclature(ConexionDB& connection, const RowCounter& counter) const
{
    TableLoader positions(connection, u"NCM", u"[001],[002],[003],[004],[010],[012],[019],[020],[059]", counter);
    for (const TariffPosition& row : m_tariff.positions()) {
        positions.insert({sql::text(row.subheading), sql::text(row.opening), sql::text(row.control),
                          sql::textOrNull(row.heading), sql::textOrNull(row.text), sql::textOrNull(row.unit),
                          sql::decimal(row.refund), sql::decimal(row.duty), sql::textOrNull(row.remark)});
    }
    TableLoader suffixes(connection, u"sufidos", u"sim,sufijo,detalle", counter);
    for (const TariffSuffix& row : m_tariff.suffixes()) {
        suffixes.insert({sql::text(row.selector), sql::text(row.suffix), sql::textOrNull(row.detail)});
    }
}

void SampleContent::writeHost(ConexionDB& connection, const RowCounter& counter) const
{
    TableLoader headers(connection, u"caratula", u"interno,fobdivcambio,fletedivcambio,segurodivcambio", counter);
    TableLoader items(connection, u"item", u"interno,id,FobTotal,itflete,itseguro,ajusteinc,ajusteded", counter);
    TableLoader subitems(connection, u"groupsubitems",
                         u"interno,id,idsub,IDARTICULO,IDUNIDAD,CANTIDAD,PRECIOUNITARIO,NCM,FOB", counter);
    for (const SampleDeclaration& declaration : m_declarations) {
        const QString interno = sql::text(declaration.interno);
        headers.insert({interno, sql::number(declaration.fobFactor), sql::number(declaration.freightFactor),
                        sql::number(declaration.insuranceFactor)});
        // The host keeps a row 0 per declaration that is no item of it.
        items.insert({interno, u"0"_s, cents(0), cents(0), cents(0), cents(0), cents(0)});
        int id = 0;
        int idsub = 0;
        for (const SampleItem& item : declaration.items) {
            const QString itemId = QString::number(++id);
            items.insert({interno, itemId, cents(item.fobCents()), sql::number(item.freight),
                          sql::number(item.insurance), sql::number(item.increments), sql::number(item.deductions)});
            for (const SampleSubitem& row : item.subitems) {
                subitems.insert({interno, itemId, QString::number(++idsub), sql::text(row.article), sql::text(row.unit),
                                 sql::number(row.quantity), sql::number(row.unitPrice), sql::text(row.position),
                                 cents(row.fobCents)});
            }
        }
    }
}

void SampleContent::writeCatalogs(ConexionDB& connection, const RowCounter& counter) const
{
    TableLoader catalogs(connection, u"CAT", u"CATNRO,CATDES", counter);
    for (const SampleCatalog& row : m_stock.catalogs) {
        catalogs.insert({sql::text(row.code), sql::text(row.description)});
    }
    TableLoader products(connection, u"PRD", u"CATNRO,PRDNRO,PRDDES,PRDNCM,PRDMUL,PRDUNI,PRDPRE,PRDSUF,PRDPAI,PRDKGU",
                         counter);
    TableLoader bills(connection, u"RIP", u"CATNRO,PRDNRO,ARTNRO,RPADES,RIPCAN,RIPMER,RIPPER,TRPMER,TRPPER,DIPOBL",
                      counter);
    for (const SampleProduct& row : m_stock.products) {
        products.insert({sql::text(row.catalog), sql::text(row.code), sql::text(row.description),
                         sql::text(row.position), sql::number(row.multiplier), sql::text(row.unit),
                         sql::number(row.price), sql::text(row.suffixes), sql::text(row.country),
                         sql::number(row.kilograms)});
        for (const SampleBillLine& line : row.bill) {
            bills.insert({sql::text(row.catalog), sql::text(row.code), sql::text(line.article),
                          sql::text(sampleArticle(line.article).description), sql::number(line.quantity),
                          sql::number(line.waste), sql::number(line.loss), sql::flag(line.wasteApplies),
                          sql::flag(line.lossApplies), sql::flag(line.obligatory)});
        }
    }
}

void SampleContent::writeStock(ConexionDB& connection, const RowCounter& counter) const
{
    TableLoader headers(connection, u"INTINS", u"INTNRO,INTDCL,INTFOF,INTDES,INTVEN,INTADU,INTIOK", counter);
    TableLoader articles(connection, u"INS", u"INTDCL,ARTNRO,ARTUNI,ARTCAT,ARTPRE,ARTDSC,ARTNCM,ARTITM,ARTSBT",
                         counter);
    for (const SampleImportedDeclaration& row : m_stock.declarations) {
        headers.insert({sql::text(row.interno), sql::text(row.number), sql::date(row.official),
                        sql::text(row.description), sql::date(row.expiry), sql::text(row.customs),
                        row.enabled ? u"1"_s : u"0"_s});
        for (const SampleArticleInStock& article : row.articles) {
            articles.insert({sql::text(row.number), sql::text(article.article), sql::text(article.unit),
                             sql::number(article.declared), sql::number(article.unitValue),
                             sql::number(article.balance), sql::text(article.position), threeDigits(article.item),
                             threeDigits(0)});
        }
    }
}

void SampleContent::writeDischarges(ConexionDB& connection, const RowCounter& counter) const
{
    TableLoader discharges(connection, u"DIP",
                           u"ARTDCL,ARTNRO,ARTITM,ARTSBT,ARTPRE,RALCAN,EXTINT,EXTSBT,EXTNOF,EXTFOF,EXTFAC,DIPCAN,"
                           u"RIPCAN,RIPMER,RIPPER,TRPMER,TRPPER,PRDMUL",
                           counter);
    for (const SampleDischarge& row : m_stock.discharges) {
        discharges.insert({sql::text(row.declaration), sql::text(row.article), threeDigits(row.item), threeDigits(0),
                           sql::number(row.unitValue), sql::number(row.quantity), sql::text(row.exportInterno),
                           QString::number(row.exportSubitem), sql::text(row.exportNumber), sql::date(row.exportDate),
                           sql::text(row.invoice), sql::number(row.exported), sql::number(row.line.quantity),
                           sql::number(row.line.waste), sql::number(row.line.loss), sql::flag(row.line.wasteApplies),
                           sql::flag(row.line.lossApplies), sql::number(row.multiplier)});
    }
}

} // namespace tornel
