#include "doubles/TestComponent.h"
#include "doubles/TestStores.h"

#include <controls/ListView.h>
#include <listings/Printing.h>
#include <listings/frmListados.h>
#include <listings/frmVerINSxSBT.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;
using namespace oVELDRA::listings;

namespace {

/// A system without printers.
class NoPrinters final : public Printers, public Spooler
{
public:
    [[nodiscard]] QStringList deviceNames() const override { return {}; }
    [[nodiscard]] std::unique_ptr<PrintDocument> begin(const QString& /*deviceName*/, const QString& /*title*/) override
    {
        throw RuntimeError(482);
    }
    void send(const QString& /*deviceName*/, const QString& /*page*/) override { throw RuntimeError(482); }
};

} // namespace

/// The listings of discharges from a real inputs database.
class tst_ListingsInStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void dischargesOfASubitemComeByDeclarationItemAndSubitem();
    void subitemIsFoundInAnyCaseOfItsInterno();
    void dischargesOfADeclarationComeByTheirDays();
    void everyNumberOfADischargeIsRead_data();
    void everyNumberOfADischargeIsRead();
    void declarationWithoutDischargesIsReported();

private:
    void run(const QString& sql)
    {
        m_inputs->setSql(sql);
        m_inputs->execute();
    }
    /// A discharge for the subitem 3 of the export EXP-1.
    void addToSubitem(const QString& declaration, int item, int subitem, const QString& input, const QString& quantity)
    {
        run(u"insert into DIP (ARTDCL,ARTNRO,ARTITM,ARTSBT,RALCAN,ARTPRE,EXTINT,EXTSBT) values "
            "('%1','%2',%3,%4,%5,'1,25','EXP-1',3)"_s.arg(declaration, input)
                .arg(item)
                .arg(subitem)
                .arg(quantity));
    }
    /// The rows of the subitem's view, their cells joined by "|".
    [[nodiscard]] QStringList viewOf(const QString& interno, qint32 subitem);

    std::shared_ptr<ConexionDB> m_inputs;
    TestComponent m_component;
    NoPrinters m_printers;
};

void tst_ListingsInStore::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
    m_inputs = createStore(TestStores::newUrl(), Database::Inputs);
    m_component.prompts.clear();
    m_component.state.g_DBINS.assign(m_inputs);
    m_component.state.g_sFmtCantidad = u"00.00"_s;
    m_component.state.declaration.internalNumber = u"it260062"_s;
    run(u"insert into INTINS (INTNRO,INTDCL) values ('IT260062','26001IT14000999Z')"_s);
}

QStringList tst_ListingsInStore::viewOf(const QString& interno, qint32 subitem)
{
    m_component.state.sInternoExt = interno;
    m_component.state.g_lIdSUB = subitem;
    frmVerINSxSBT form(m_component);
    form.Cargar_Insumos();
    const auto& list = *static_cast<ListView*>(form.findChild<QTreeView*>(u"lstView"_s));
    QStringList rows;
    for (int row = 0; row < list.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < list.model()->columnCount(); ++column) {
            cells.append(list.text(row, column));
        }
        rows.append(cells.join(u'|'));
    }
    return rows;
}

void tst_ListingsInStore::dischargesOfASubitemComeByDeclarationItemAndSubitem()
{
    addToSubitem(u"O1"_s, 1, 0, u"AC-1"_s, u"1"_s);
    addToSubitem(u"Ñ1"_s, 1, 0, u"AC-2"_s, u"2"_s);
    addToSubitem(u"n1"_s, 10, 0, u"AC-3"_s, u"3"_s);
    addToSubitem(u"N1"_s, 2, 1, u"AC-4"_s, u"'4,5'"_s);
    addToSubitem(u"n1"_s, 2, 1, u" AC-5 "_s, u"Null"_s); // a tie with the one before
    addToSubitem(u"N1"_s, 2, 0, u"AC-6"_s, u"6"_s);
    QCOMPARE(viewOf(u"EXP-1"_s, 3),
             (QStringList{u"AC-6|N1|002|000|06,00|01,250000"_s, u"AC-4|N1|002|001|04,50|01,250000"_s,
                          u"AC-5|n1|002|001|00,00|01,250000"_s, u"AC-3|n1|010|000|03,00|01,250000"_s,
                          u"AC-2|Ñ1|001|000|02,00|01,250000"_s, u"AC-1|O1|001|000|01,00|01,250000"_s}));
    QVERIFY(m_component.prompts.boxes().isEmpty());
}

void tst_ListingsInStore::subitemIsFoundInAnyCaseOfItsInterno()
{
    addToSubitem(u"N1"_s, 1, 0, u"AC-1"_s, u"1"_s);
    QCOMPARE(viewOf(u"exp-1 "_s, 3).size(), 1);
    QCOMPARE(viewOf(u"EXP-1"_s, 4), QStringList());
    QCOMPARE(viewOf(u"EXP-"_s, 3), QStringList());
    QVERIFY(m_component.prompts.boxes().isEmpty());
}

void tst_ListingsInStore::dischargesOfADeclarationComeByTheirDays()
{
    const auto add = [this](const QString& declaration, const QString& input, const QString& day) {
        run(u"insert into DIP (ARTDCL,ARTNRO,EXTFOF) values ('%1','%2',%3)"_s.arg(declaration, input, day));
    };
    add(u"26001IT14000999Z"_s, u"C"_s, u"datevalue('02/01/2026')"_s);
    add(u"26001IT14000998Z"_s, u"X"_s, u"datevalue('02/01/2026')"_s);
    add(u"26001IT14000999z"_s, u"D"_s, u"datevalue('10/01/2026')"_s);
    add(u"26001IT14000999Z"_s, u"B"_s, u"datevalue('31/12/2025')"_s);
    add(u"26001IT14000999Z "_s, u"E"_s, u"datevalue('10/01/2026')"_s);
    add(u"26001IT14000999Z"_s, u"A"_s, u"Null"_s);
    frmListados form(m_component, m_printers, m_printers);
    QVERIFY(form.GenerarLineas());
    QStringList inputs;
    for (const DischargeLine& line : form.lines()) {
        inputs.append(line.input);
    }
    QCOMPARE(inputs, (QStringList{u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s}));
    QVERIFY(m_component.prompts.boxes().isEmpty());
}

void tst_ListingsInStore::everyNumberOfADischargeIsRead_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("quantity");
    QTest::newRow("comma") << u"es_AR"_s << u"1234,5"_s;
    QTest::newRow("point") << u"en_US"_s << u"1234.5"_s;
}

void tst_ListingsInStore::everyNumberOfADischargeIsRead()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, quantity);
    QLocale::setDefault(QLocale(locale));
    run(u"insert into DIP (ARTDCL,ARTNRO,EXTNOF,EXTFAC,ARTPRE,RALCAN,DIPCAN,RIPCAN,RIPMER,RIPPER,TRPMER,TRPPER,PRDMUL) "
        "values ('26001IT14000999Z','CUERO Ñ','26001EC01004521K','0003-1245',21.1234567,672.005,'%1',0.28,2.5,1.25,0,"
        "-1,1000)"_s.arg(quantity));
    run(u"insert into DIP (ARTDCL) values ('26001IT14000999Z')"_s);
    m_component.settings.save(u"TORNEL"_s, u"OBJ"_s, u"VELDRA.RestarPerMer"_s, u"S"_s);
    frmListados form(m_component, m_printers, m_printers);
    QVERIFY(form.GenerarLineas());
    const DischargeLine full{
        u"26001EC01004521K"_s, u"CUERO Ñ"_s, 0.28, 1000, quantity, 1.25, 30.8625, 21.123457, 14195.07, u"0003-1245"_s};
    QCOMPARE(form.lines().size(), std::size_t{2});
    QVERIFY(form.lines()[0] == full);
    QVERIFY(form.lines()[1] == DischargeLine());
}

void tst_ListingsInStore::declarationWithoutDischargesIsReported()
{
    frmListados form(m_component, m_printers, m_printers);
    QVERIFY(!form.GenerarLineas());
    QCOMPARE(m_component.prompts.texts(), QStringList{u"No hay Exportaciones relacionadas con este DIT"_s});
}

QTEST_MAIN(tst_ListingsInStore)
#include "tst_ListingsInStore.moc"
