#include "doubles/FakeConexionDB.h"
#include "doubles/ThrownError.h"

#include <core/Module1.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::doubles;

class tst_Module1 : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FormatoCampo_data();
    void FormatoCampo();
    void LimpiarEdicion();
    void AbrirRecordsetIsTrueOnARow();
    void AbrirRecordsetIsFalseWithAnEmptyRecordset();
    void AbrirRecordsetIsFalseWithNullWhenNotOpened();
    void quotedRefusesApostrophes();
};

void tst_Module1::FormatoCampo_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("padRight");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("expected");

    const QString fifty = u"0123456789"_s.repeated(5);
    QTest::newRow("EXPO at 6, left-aligned") << u"EXPO"_s << true << 6 << u"EXPO  "_s;
    QTest::newRow("EXPO at 6, right-aligned") << u"EXPO"_s << false << 6 << u"  EXPO"_s;
    QTest::newRow("EXPO at 3, left-aligned") << u"EXPO"_s << true << 3 << u"EXP"_s;
    QTest::newRow("EXPO at 3, right-aligned") << u"EXPO"_s << false << 3 << u"EXP"_s;
    QTest::newRow("as long as the width, left-aligned") << u"EXPO"_s << true << 4 << u"EXPO"_s;
    QTest::newRow("as long as the width, right-aligned") << u"EXPO"_s << false << 4 << u"EXPO"_s;
    QTest::newRow("empty, left-aligned") << u""_s << true << 3 << u"   "_s;
    QTest::newRow("empty, right-aligned") << u""_s << false << 3 << u"   "_s;
    QTest::newRow("blanks of its own stay") << u" A "_s << true << 5 << u" A   "_s;
    QTest::newRow("accents count as one") << u"AÑÓ"_s << false << 5 << u"  AÑÓ"_s;
    QTest::newRow("width 0") << u"EXPO"_s << true << 0 << u""_s;
    QTest::newRow("negative width") << u"EXPO"_s << true << -1
                                    << u"Err_FrmSytr Argumento o llamada a procedimiento no válidos: EXPO"_s;
    QTest::newRow("negative width, first 50 characters only")
        << QString(fifty + u"X"_s) << false << -6
        << QString(u"Err_FrmSytr Argumento o llamada a procedimiento no válidos: "_s + fifty);
}

void tst_Module1::FormatoCampo()
{
    QFETCH(const QString, text);
    QFETCH(const bool, padRight);
    QFETCH(const int, width);
    QTEST(core::FormatoCampo(text, padRight, width), "expected");
}

void tst_Module1::LimpiarEdicion()
{
    core::SharedState state;
    state.currentProduct = u"P"_s;
    state.currentInput = u"I"_s;
    state.productModify = state.productSaved = state.inputModify = state.inputSaved = true;
    state.g_sPRDNRO = u"kept"_s;
    core::LimpiarEdicion(state);
    QCOMPARE(state.currentProduct, QString());
    QCOMPARE(state.currentInput, QString());
    QVERIFY(!state.productModify && !state.productSaved && !state.inputModify && !state.inputSaved);
    QCOMPARE(state.g_sPRDNRO, u"kept"_s);
}

void tst_Module1::AbrirRecordsetIsTrueOnARow()
{
    FakeConexionDB connection;
    connection.willGiveRows({}, {u"CATNRO"_s}, {{u"7"_s}});
    std::unique_ptr<Recordset> recordset;
    QVERIFY(core::AbrirRecordset(connection, u"select * from CAT"_s, recordset));
    QCOMPARE(recordset->value(u"CATNRO").toString(), u"7"_s);
    QCOMPARE(connection.statements(), QStringList(u"select * from CAT"_s));
}

void tst_Module1::AbrirRecordsetIsFalseWithAnEmptyRecordset()
{
    FakeConexionDB connection;
    connection.willGiveRows({}, {u"CATNRO"_s});
    std::unique_ptr<Recordset> recordset;
    QVERIFY(!core::AbrirRecordset(connection, u"select * from CAT"_s, recordset));
    QVERIFY(recordset);
    QVERIFY(recordset->atEof());
}

void tst_Module1::AbrirRecordsetIsFalseWithNullWhenNotOpened()
{
    FakeConexionDB connection;
    connection.willGiveRows(u"a"_s, {u"X"_s}, {{1}});
    connection.willNotOpen(u"b"_s, RuntimeError(3709));
    std::unique_ptr<Recordset> recordset;
    QVERIFY(core::AbrirRecordset(connection, u"a"_s, recordset));
    QVERIFY(!core::AbrirRecordset(connection, u"b"_s, recordset));
    QVERIFY(!recordset); // the earlier result is gone, too
    QCOMPARE(connection.lastError().number(), 3709);
}

void tst_Module1::quotedRefusesApostrophes()
{
    QCOMPARE(core::quoted(u"ABC"_s), u"'ABC'"_s);
    QCOMPARE(core::quoted({}), u"''"_s);
    QCOMPARE(core::quoted(u"O´Higgins \"x\""_s), u"'O´Higgins \"x\"'"_s);
    for (const QString& text : {u"O'Higgins"_s, u"'"_s, u"x' or '1'='1"_s, u"''"_s}) {
        const auto error = thrownBy([&] { (void)core::quoted(text); });
        QVERIFY(error);
        QCOMPARE(error->number(), -2147217900);
        QVERIFY(error->description().startsWith(u"Error de sintaxis"_s));
        QVERIFY(error->description().contains(text));
    }
}

QTEST_MAIN(tst_Module1)
#include "tst_Module1.moc"
