#include <QLocale>
#include <QSet>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <tariff/CsvReader.h>
#include <tariff/Tariff.h>
#include <tornel/SampleArticles.h>
#include <tornel/SampleDeclarations.h>
#include <tornel/SampleStock.h>
#include <tornel/SqlLiteral.h>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace tornel;
using tariff::CsvReader;
using tariff::Tariff;
using tariff::TariffPosition;

/// What the demonstration's databases are filled with.
class tst_SampleData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void csvCellsMayBeQuoted();
    void csvTakesBothLineEnds();
    void literalsAreWrittenAsTheDialectReadsThem();
    void theWholeTariffIsBuiltIn();
    void aTariffFileWithAnotherHeaderIsRefused();
    void positionsAreFoundByTheirBeginning();
    void sampleSuffixesCoverEveryGroupOnce();
    void everyArticleHasARealPosition();
    void declarationsAreTheSameEveryTime();
    void declarationsHaveTheSizesTheyAreFor();
    void everySubitemHasARealPosition();
    void oneSubitemOfOneDeclarationIsGrouped();
    void stockBalancesAreDeclaredLessDischarged();
    void oneExportSubitemTakesFromTwoDeclarations();
    void oneDeclarationFillsAListingOfSeveralPages();
    void billsAndProductsRefer();

private:
    [[nodiscard]] const SampleDeclaration& declaration(const QString& interno) const
    {
        return *std::ranges::find(m_declarations, interno, &SampleDeclaration::interno);
    }

    std::unique_ptr<Tariff> m_tariff;
    std::vector<SampleDeclaration> m_declarations;
};

void tst_SampleData::initTestCase()
{
    m_tariff = std::make_unique<Tariff>(Tariff::builtIn());
    m_declarations = sampleDeclarations(*m_tariff);
}

void tst_SampleData::csvCellsMayBeQuoted()
{
    const QString text = u"a,\"b, \"\"c\"\"\",,\"dos\nlíneas\"\n1,2\n"_s;
    CsvReader reader(text);
    QCOMPARE(reader.next(), std::optional(QStringList{u"a"_s, u"b, \"c\""_s, u""_s, u"dos\nlíneas"_s}));
    QCOMPARE(reader.next(), std::optional(QStringList{u"1"_s, u"2"_s}));
    QVERIFY(!reader.next());
}

void tst_SampleData::csvTakesBothLineEnds()
{
    const QString text = u"\uFEFFa,b\r\n\r\nc,"_s;
    CsvReader reader(text);
    QCOMPARE(reader.next(), std::optional(QStringList{u"a"_s, u"b"_s}));
    QCOMPARE(reader.next(), std::optional(QStringList{u"c"_s, u""_s}));
    QVERIFY(!reader.next());
}

void tst_SampleData::literalsAreWrittenAsTheDialectReadsThem()
{
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Argentina));
    QCOMPARE(sql::text(u"O'Higgins"), u"'O''Higgins'"_s);
    QCOMPARE(sql::textOrNull(u""), u"Null"_s);
    QCOMPARE(sql::decimal(u"0.5"), u"'0,5'"_s);
    QCOMPARE(sql::decimal(u""), u"Null"_s);
    QCOMPARE(sql::number(1234567.25), u"'1234567,25'"_s);
    QCOMPARE(sql::number(3), u"'3'"_s);
    QCOMPARE(sql::number(100), u"'100'"_s);
    QCOMPARE(sql::number(0.00000125), u"'0,00000125'"_s);
    QCOMPARE(sql::date(QDate(2026, 3, 5)), u"datevalue('05/03/2026')"_s);
    QCOMPARE(sql::flag(true), u"-1"_s);
    QCOMPARE(sql::flag(false), u"0"_s);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QCOMPARE(sql::decimal(u"0.5"), u"'0.5'"_s);
}

void tst_SampleData::theWholeTariffIsBuiltIn()
{
    QCOMPARE(m_tariff->positions().size(), std::size_t{33110});
    QCOMPARE(m_tariff->suffixes().size(), std::size_t{4607});
    const TariffPosition& horse = m_tariff->positions().front();
    QCOMPARE(horse.joined(), u"0101.21.00.100W"_s);
    QCOMPARE(horse.heading, u"CABALLOS, ASNOS, MULOS Y BURDEGANOS, VIVOS."_s);
    QCOMPARE(horse.refund, u"0.5"_s);
    QSet<QString> joined;
    for (const TariffPosition& position : m_tariff->positions()) {
        QCOMPARE(position.joined().size(), 15);
        joined.insert(position.joined());
    }
    QCOMPARE(joined.size(), 33110);
    QVERIFY(std::ranges::all_of(m_tariff->suffixes(), [](const auto& row) { return row.selector.size() == 14; }));
}

void tst_SampleData::aTariffFileWithAnotherHeaderIsRefused()
{
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, Tariff(u"001,002\n", u"sim,sufijo,detalle\n"));
    QVERIFY_THROWS_EXCEPTION(std::runtime_error,
                             Tariff(u"001,002,003,004,010,012,019,020,059\n1,2\n", u"sim,sufijo,detalle\n"));
}

void tst_SampleData::positionsAreFoundByTheirBeginning()
{
    QCOMPARE(m_tariff->first(u"0101.21.00").joined(), u"0101.21.00.100W"_s);
    QCOMPARE(m_tariff->first(u"0101.21.00.200").joined(), u"0101.21.00.200B"_s);
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, std::ignore = m_tariff->first(u"0000.00"));
}

void tst_SampleData::sampleSuffixesCoverEveryGroupOnce()
{
    const Tariff small(
        u"001,002,003,004,010,012,019,020,059\n8471.30.12,000,A,,,,,,\n0101.21.00,100,W,,,,,,\n",
        u"sim,sufijo,detalle\n84  .  .  .   ,AA,MARCA\n84  .  .  .   ,CA01,UNO\n84  .  .  .   ,CA02,DOS\n"
        u"8471.30.  .   ,ZC,AÑO\n8472.  .  .   ,PB01,OTRA\n8471.30.12.000,NA01,TRES\n");
    QCOMPARE(small.sampleSuffixes(small.positions()[0]), u"AA(MUESTRA)-CA01-ZC(000150)-NA01-"_s);
    QCOMPARE(small.sampleSuffixes(small.positions()[1]), u"SIN SUFIJOS"_s);
}

void tst_SampleData::everyArticleHasARealPosition()
{
    QSet<QString> codes;
    for (const SampleArticle& article : sampleArticles()) {
        QVERIFY(m_tariff->first(article.position).joined().startsWith(article.position));
        QVERIFY(article.price > 0 && article.typicalLot > 0);
        codes.insert(article.code.toString());
    }
    QCOMPARE(codes.size(), static_cast<qsizetype>(sampleArticles().size()));
}

void tst_SampleData::declarationsAreTheSameEveryTime()
{
    const auto again = sampleDeclarations(*m_tariff);
    QCOMPARE(again.size(), m_declarations.size());
    for (std::size_t i = 0; i < again.size(); ++i) {
        QCOMPARE(again[i].items.size(), m_declarations[i].items.size());
        QVERIFY(std::ranges::equal(again[i].items, m_declarations[i].items, {}, &SampleItem::fobCents,
                                   &SampleItem::fobCents));
    }
    // Pinned, so that another machine or library that draws other numbers is noticed.
    QCOMPARE(declaration(u"IT260102"_s).items.front().fobCents(), qint64{1866750});
    QCOMPARE(declaration(u"IT260103"_s).items.back().fobCents(), qint64{414087});
}

void tst_SampleData::declarationsHaveTheSizesTheyAreFor()
{
    const SampleDeclaration& two = declaration(u"IT260101"_s);
    QCOMPARE(two.items.size(), std::size_t{2});
    QCOMPARE(two.items[0].subitems.size(), std::size_t{1});
    QCOMPARE(two.items[1].subitems.size(), std::size_t{2});
    QCOMPARE(two.items[0].fobCents(), qint64{10000});
    QCOMPARE(two.items[1].fobCents(), qint64{10000});

    const SampleDeclaration& forty = declaration(u"IT260102"_s);
    QCOMPARE(forty.items.size(), std::size_t{40});
    QVERIFY(forty.fobFactor != 1 && forty.freightFactor != 1);
    const auto single = [](const SampleItem& item) { return item.subitems.size() == 1; };
    QVERIFY(std::ranges::any_of(forty.items, single) && !std::ranges::all_of(forty.items, single));
    QVERIFY(std::ranges::any_of(forty.items, [](const SampleItem& item) { return item.increments > 0; }));
    QVERIFY(std::ranges::any_of(forty.items, [](const SampleItem& item) { return item.deductions > 0; }));

    const SampleDeclaration& large = declaration(u"IT260103"_s);
    QCOMPARE(large.items.size(), std::size_t{2000});
    QCOMPARE(large.subitemCount(), 10000);
}

void tst_SampleData::everySubitemHasARealPosition()
{
    QSet<QString> real;
    for (const TariffPosition& position : m_tariff->positions()) {
        real.insert(position.joined());
    }
    for (const SampleDeclaration& declaration : m_declarations) {
        for (const SampleItem& item : declaration.items) {
            QVERIFY(!item.subitems.empty());
            for (const SampleSubitem& row : item.subitems) {
                QVERIFY2(real.contains(row.position), qPrintable(row.position));
                QVERIFY(row.quantity > 0 && row.fobCents > 0 && !row.unit.isEmpty());
            }
        }
    }
}

void tst_SampleData::oneSubitemOfOneDeclarationIsGrouped()
{
    int grouped = 0;
    for (const SampleDeclaration& declaration : m_declarations) {
        for (const SampleItem& item : declaration.items) {
            for (const SampleSubitem& row : item.subitems) {
                QVERIFY(!row.article.isEmpty());
                if (row.article == u"agrupado!") {
                    ++grouped;
                    QCOMPARE(declaration.interno, u"IT260104"_s);
                }
            }
        }
    }
    QCOMPARE(grouped, 1);
}

void tst_SampleData::stockBalancesAreDeclaredLessDischarged()
{
    const SampleStock stock = sampleStock(*m_tariff, m_declarations);
    QCOMPARE(stock.declarations.size(), std::size_t{4});
    for (const SampleImportedDeclaration& imported : stock.declarations) {
        QVERIFY(imported.number.size() <= 17 && !imported.number.contains(u'-'));
        QCOMPARE(imported.articles.size(), declaration(imported.interno).items.size());
        for (const SampleArticleInStock& article : imported.articles) {
            double discharged = 0;
            for (const SampleDischarge& row : stock.discharges) {
                if (row.declaration == imported.number && row.item == article.item) {
                    QCOMPARE(row.article, article.article);
                    QCOMPARE(row.unitValue, article.unitValue);
                    discharged += row.quantity;
                }
            }
            QVERIFY(article.balance >= 0 && article.unitValue > 0);
            QVERIFY(std::abs(article.declared - discharged - article.balance) < 1e-5);
        }
    }
}

void tst_SampleData::oneExportSubitemTakesFromTwoDeclarations()
{
    const SampleStock stock = sampleStock(*m_tariff, m_declarations);
    QSet<QString> declarations;
    for (const SampleDischarge& row : stock.discharges) {
        if (row.exportInterno == u"EX260077" && row.exportSubitem == 77001 && row.article == u"CUE-VAC-FL14") {
            declarations.insert(row.declaration);
        }
    }
    QCOMPARE(declarations.size(), 2);
}

void tst_SampleData::oneDeclarationFillsAListingOfSeveralPages()
{
    const SampleStock stock = sampleStock(*m_tariff, m_declarations);
    QCOMPARE(std::ranges::count(stock.discharges, u"26001IT14000533F"_s, &SampleDischarge::declaration), 180);
    const auto& boards = *std::ranges::find(stock.declarations, u"IT260062"_s, &SampleImportedDeclaration::interno);
    const auto isLow = [](const SampleArticleInStock& article) { return article.balance / article.declared < 0.3; };
    QVERIFY(std::ranges::any_of(boards.articles, isLow) && !std::ranges::all_of(boards.articles, isLow));
    const auto blocked = std::ranges::count(stock.declarations, false, &SampleImportedDeclaration::enabled);
    QCOMPARE(blocked, 1);
}

void tst_SampleData::billsAndProductsRefer()
{
    const SampleStock stock = sampleStock(*m_tariff, m_declarations);
    for (const SampleProduct& product : stock.products) {
        QVERIFY(std::ranges::find(stock.catalogs, product.catalog, &SampleCatalog::code) != stock.catalogs.end());
        QCOMPARE(m_tariff->first(product.position).joined(), product.position);
        QVERIFY(product.multiplier > 0 && !product.unit.isEmpty() && !product.suffixes.isEmpty());
        QVERIFY(!product.bill.empty());
        for (const SampleBillLine& line : product.bill) {
            QVERIFY(line.quantity > 0);
            QCOMPARE(sampleArticle(line.article).code.toString(), line.article);
        }
    }
}

QTEST_GUILESS_MAIN(tst_SampleData)
#include "tst_SampleData.moc"
