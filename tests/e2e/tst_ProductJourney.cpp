#include "AccessibleBus.h"
#include "Seat.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// A product is made from nothing, in a catalog that is made for it, and picked for the host.
class tst_ProductJourney : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aNewProductIsPickedWithTheKeyboard();

private:
    static void makeCatalog(e2e::Seat& seat);
    static void makeProduct(e2e::Seat& seat);
    static void enterSuffixes(e2e::Seat& seat);
    static void addInput(e2e::Seat& seat);
    static void checkRows(e2e::Seat& seat);
    /// What the host shows beside a caption of its "Producto elegido".
    [[nodiscard]] static QString shown(const e2e::AccessibleBus& bus, const QString& caption);
};

void tst_ProductJourney::initTestCase()
{
    e2e::prepare(e2e::XDisplay::missingPrograms() + e2e::AccessibleBus::missingPrograms());
}

void tst_ProductJourney::aNewProductIsPickedWithTheKeyboard()
{
    e2e::AccessibleBus bus;
    QVERIFY(bus.start());
    e2e::Seat seat(u"product"_s);
    e2e::travel(seat, [&] {
        seat.sitDown([&bus](const QProcessEnvironment& base) { return bus.environment(base); });
        QCOMPARE(seat.count(u"select * from RIP"_s), 24);

        // No catalog has been chosen yet, so the list of catalogs comes first.
        seat.keys({u"F2"_s});
        seat.expectWindow(u"Catalogos"_s);
        seat.keys({u"Return"_s});
        seat.expectWindow(u"Productos"_s);
        seat.keys({u"F11"_s});
        seat.expectWindow(u"Catalogos"_s);
        makeCatalog(seat);
        makeProduct(seat);
        addInput(seat);
        seat.keys({u"Escape"_s});
        seat.expectWindow(u"Productos"_s);
        seat.shot(u"made"_s);
        seat.keys({u"Return"_s});
        seat.expectWindow(e2e::hostTitle());
        seat.shot(u"picked"_s);

        QCOMPARE(e2e::awaited([&] { return shown(bus, u"Elegido"_s); }, u"Sí"_s), u"Sí"_s);
        QCOMPARE(shown(bus, u"Catálogo"_s), u"OPT"_s);
        QCOMPARE(shown(bus, u"Producto"_s), u"SCAN-A4"_s);
        QCOMPARE(shown(bus, u"Posición"_s), u"8471.90.14.000B"_s);
        QCOMPARE(shown(bus, u"Precio unitario"_s), u"120,50"_s);
        QCOMPARE(shown(bus, u"Sufijos"_s), u"AA(GENERICA)-AB(SA 4)-CA00-NA01-NB02-ZA(000600)-ZB(000022)-ZC(000030)-"_s);
        seat.leave();
        checkRows(seat);
    });
}

void tst_ProductJourney::makeCatalog(e2e::Seat& seat)
{
    seat.keys({u"Insert"_s});
    seat.expectWindow(u"Altas y Modificación de Catalogos"_s);
    seat.fill(u"OPT"_s);
    seat.type(u"Aparatos opticos"_s);
    seat.keys({u"F11"_s});
    seat.expectWindow(u"Catalogos"_s);
    // By its description it is the first.
    seat.keys({u"Return"_s});
    seat.expectWindow(u"Productos"_s);
}

void tst_ProductJourney::makeProduct(e2e::Seat& seat)
{
    const QString editor = u"Relación Insumo - Producto"_s;
    seat.keys({u"Insert"_s});
    seat.expectWindow(editor);
    seat.fill(u"SCAN-A4"_s);
    seat.fill(u"Digitalizador A4"_s);
    seat.type(u"8471.90.14"_s);
    seat.keys({u"F6"_s});
    seat.expectWindow(u"Buscar Posición"_s);
    seat.keys({u"Return"_s});
    seat.expectWindow(editor);
    seat.keys({u"Return"_s}); // the position is what was found
    for (const QString& text : {u"1"_s, u"07"_s, u"120,5"_s, u"2,25"_s}) {
        seat.fill(text);
    }
    seat.type(u"200"_s);
    seat.keys({u"F11"_s});
    enterSuffixes(seat);
    seat.expectWindow(editor);
}

void tst_ProductJourney::enterSuffixes(e2e::Seat& seat)
{
    const QString prompt = u"Ingrese Valor"_s;
    const QString options = u"Carga de Sufijos"_s;
    seat.expectWindow(u"oVELDRA"_s); // differences between what there is and the tariff
    seat.keys({u"Return"_s});
    for (const QString& text : {u"Generica"_s, u"sa-4"_s}) {
        seat.expectWindow(prompt);
        seat.fill(text);
    }
    for (const QStringList& way : {QStringList(), QStringList{u"Down"_s}, QStringList{u"Down"_s, u"Down"_s}}) {
        seat.expectWindow(options);
        seat.keys(way + QStringList{u"Return"_s});
    }
    for (const QString& text : {u"600"_s, u"22"_s, u"30"_s}) {
        seat.expectWindow(prompt);
        seat.fill(text);
    }
}

void tst_ProductJourney::addInput(e2e::Seat& seat)
{
    seat.keys({u"Insert"_s});
    seat.expectWindow(u"Relación Insumo-Producto"_s);
    for (const QString& text : {u"MOT-UNI-550"_s, u"Motor universal"_s, u"1,5"_s, u"2,5"_s}) {
        seat.fill(text);
    }
    seat.keys({u"space"_s, u"F11"_s}); // the waste is a percentage
    seat.expectWindow(u"Relación Insumo - Producto"_s);
}

void tst_ProductJourney::checkRows(e2e::Seat& seat)
{
    const auto catalog = seat.rows(u"select * from CAT where CATNRO = 'OPT'"_s);
    QCOMPARE(catalog->recordCount(), 1);
    QCOMPARE(catalog->value(u"CATDES").toString(), u"Aparatos opticos"_s);

    const auto product = seat.rows(u"select * from PRD where CATNRO = 'OPT'"_s);
    QCOMPARE(product->recordCount(), 1);
    QCOMPARE(product->value(u"PRDNRO").toString(), u"SCAN-A4"_s);
    QCOMPARE(product->value(u"PRDDES").toString(), u"Digitalizador A4"_s);
    QCOMPARE(product->value(u"PRDNCM").toString(), u"8471.90.14.000B"_s);
    QCOMPARE(product->value(u"PRDUNI").toString(), u"07"_s);
    QCOMPARE(product->value(u"PRDPAI").toString(), u"200"_s);
    QCOMPARE(product->value(u"PRDPRE").toDouble(), 120.5);
    QCOMPARE(product->value(u"PRDKGU").toDouble(), 2.25);
    QCOMPARE(product->value(u"PRDSUF").toString(),
             u"AA(GENERICA)-AB(SA 4)-CA00-NA01-NB02-ZA(000600)-ZB(000022)-ZC(000030)-"_s);

    QCOMPARE(seat.count(u"select * from RIP"_s), 25);
    const auto input = seat.rows(u"select * from RIP where CATNRO = 'OPT' and PRDNRO = 'SCAN-A4'"_s);
    QCOMPARE(input->recordCount(), 1);
    QCOMPARE(input->value(u"ARTNRO").toString(), u"MOT-UNI-550"_s);
    QCOMPARE(input->value(u"RPADES").toString(), u"Motor universal"_s);
    QCOMPARE(input->value(u"RIPCAN").toDouble(), 1.5);
    QCOMPARE(input->value(u"RIPMER").toDouble(), 2.5);
    QCOMPARE(input->value(u"TRPMER").toInt(), -1);
    QCOMPARE(input->value(u"TRPPER").toInt(), 0);
}

QString tst_ProductJourney::shown(const e2e::AccessibleBus& bus, const QString& caption)
{
    const auto label = bus.find(e2e::hostTitle(), [&](const e2e::Accessible& object) {
        return bus.name(object) == caption && bus.role(object) == u"label"_s;
    });
    return label ? bus.description(*label) : QString();
}

QTEST_GUILESS_MAIN(tst_ProductJourney)
#include "tst_ProductJourney.moc"
