#include "doubles/FakeConexionDB.h"
#include "doubles/FakeScreens.h"
#include "doubles/TestComponent.h"
#include "doubles/ThrownError.h"

#include <core/MemberTable.h>

#include <QDate>
#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::doubles;
using core::Entry;
using core::ValueType;

class tst_MemberTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void slotsStandInOrder_data();
    void slotsStandInOrder();
    void tableHasTwentyMembers();
    void invokeReads_data();
    void invokeReads();
    void invokeWrites_data();
    void invokeWrites();
    void invokeConnects();
    void invokeConnectsWithFewerArguments();
    void invokeRunsOperations_data();
    void invokeRunsOperations();
    void invokeTakesAnyLetterCase();
    void invokeRefusesUnknownNamesAndKinds_data();
    void invokeRefusesUnknownNamesAndKinds();
    void invokeRefusesWrongCounts_data();
    void invokeRefusesWrongCounts();
    void invokeConvertsToText_data();
    void invokeConvertsToText();
    void invokeRefusesWhatIsNoText_data();
    void invokeRefusesWhatIsNoText();
    void errorsOfTheMemberComeThrough();
};

void tst_MemberTable::slotsStandInOrder_data()
{
    QTest::addColumn<int>("slot");
    QTest::addColumn<MemberKind>("kind");
    QTest::addColumn<ValueType>("result");
    QTest::addColumn<int>("parameters");
    QTest::addColumn<int>("optional");
    const auto read = [](const char* name, int slot, ValueType type) {
        QTest::newRow(name) << slot << MemberKind::Get << type << 0 << 0;
    };
    const auto write = [](const char* name, int slot) {
        QTest::newRow(name) << slot << MemberKind::Put << ValueType::None << 1 << 0;
    };
    const auto operation = [](const char* name, int slot) {
        QTest::newRow(name) << slot << MemberKind::Call << ValueType::None << 0 << 0;
    };
    read("OK", 1, ValueType::Boolean);
    read("CATNRO", 2, ValueType::Text);
    read("PRDDES", 3, ValueType::Text);
    read("PRDNCM", 4, ValueType::Text);
    read("PRDPAI", 5, ValueType::Text);
    read("PRDPRE", 6, ValueType::Double);
    read("PRDSUF", 7, ValueType::Text);
    read("PRDUNI", 8, ValueType::Text);
    write("BaseNcm", 9);
    write("BaseTornel", 10);
    write("BaseInsumos", 11);
    write("Interno_Externo", 12);
    QTest::newRow("ConectarDB") << 13 << MemberKind::Call << ValueType::Boolean << 3 << 2;
    operation("Mostrar", 14);
    operation("Importar", 15);
    operation("MostrarDIT", 16);
    read("PRDNRO", 17, ValueType::Text);
    write("ADUANA", 18);
    operation("VerINSxSBT", 19);
    write("IdSUB", 20);
}

void tst_MemberTable::slotsStandInOrder()
{
    QFETCH(const int, slot);
    QFETCH(const MemberKind, kind);
    QFETCH(const ValueType, result);
    QFETCH(const int, parameters);
    QFETCH(const int, optional);
    const core::Member& member = core::memberTable()[size_t(slot) - 1];
    QCOMPARE(QLatin1StringView(member.name), QLatin1StringView(QTest::currentDataTag()));
    QCOMPARE(member.slot, slot);
    QCOMPARE(member.kind, kind);
    QCOMPARE(member.result, result);
    QCOMPARE(int(member.parameters.size()), parameters);
    QCOMPARE(int(std::ranges::count(member.parameters, true, &core::Parameter::optional)), optional);
    QCOMPARE(core::findMember(QString(member.name), kind), &member);
}

void tst_MemberTable::tableHasTwentyMembers()
{
    QCOMPARE(core::memberTable().size(), size_t(20));
}

void tst_MemberTable::invokeReads_data()
{
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("OK") << QVariant(true);
    QTest::newRow("CATNRO") << QVariant(u"c"_s);
    QTest::newRow("PRDDES") << QVariant(u"d"_s);
    QTest::newRow("PRDNCM") << QVariant(u"m"_s);
    QTest::newRow("PRDPAI") << QVariant(u"p"_s);
    QTest::newRow("PRDPRE") << QVariant(1.5);
    QTest::newRow("PRDSUF") << QVariant(u"s"_s);
    QTest::newRow("PRDUNI") << QVariant(u"u"_s);
    QTest::newRow("PRDNRO") << QVariant(u"n"_s);
}

void tst_MemberTable::invokeReads()
{
    TestComponent component;
    cloVELDRAMain object(component);
    component.state.g_bOK = true;
    component.state.g_sCATNRO = u"c"_s;
    component.state.g_sPRDNRO = u"n"_s;
    component.state.g_sPRDDES = u"d"_s;
    component.state.g_sPRDNCM = u"m"_s;
    component.state.g_sPRDPAI = u"p"_s;
    component.state.g_sPRDSUF = u"s"_s;
    component.state.g_sPRDUNI = u"u"_s;
    component.state.g_dPRDPRE = 1.5;
    QTEST(object.invoke(QString::fromLatin1(QTest::currentDataTag()), MemberKind::Get), "expected");
}

void tst_MemberTable::invokeWrites_data()
{
    using Read = QString (*)(const core::SharedState&);
    QTest::addColumn<Read>("read");
    QTest::newRow("BaseNcm") << Read([](const core::SharedState& state) { return state.g_sBaseNcm; });
    QTest::newRow("BaseTornel") << Read([](const core::SharedState& state) { return state.g_sBaseTornel; });
    QTest::newRow("BaseInsumos") << Read([](const core::SharedState& state) { return state.g_sBaseInsumos; });
    QTest::newRow("Interno_Externo") << Read([](const core::SharedState& state) { return state.sInternoExt; });
    QTest::newRow("ADUANA") << Read([](const core::SharedState& state) { return state.g_sAduana; });
    QTest::newRow("IdSUB") << Read([](const core::SharedState& state) { return QString::number(state.g_lIdSUB); });
}

void tst_MemberTable::invokeWrites()
{
    using Read = QString (*)(const core::SharedState&);
    QFETCH(const Read, read);
    TestComponent component;
    cloVELDRAMain object(component);
    const QVariant answer = object.invoke(QString::fromLatin1(QTest::currentDataTag()), MemberKind::Put, {u"42"_s});
    QVERIFY(!answer.isValid());
    QCOMPARE(read(component.state), u"42"_s);
}

void tst_MemberTable::invokeConnects()
{
    TestComponent component;
    cloVELDRAMain object(component);
    const std::shared_ptr<ConexionDB> inputs = std::make_shared<FakeConexionDB>();
    const std::shared_ptr<ConexionDB> nomenclature = std::make_shared<FakeConexionDB>();
    const QVariant answer =
        object.invoke(u"ConectarDB", MemberKind::Call,
                      {QVariant::fromValue(inputs), QVariant::fromValue(nomenclature), QVariant::fromValue(nullptr)});
    QCOMPARE(answer, QVariant(true));
    QCOMPARE(component.state.g_DBINS.assigned(), inputs.get());
    QCOMPARE(component.state.g_DBNCM.assigned(), nomenclature.get());
    QVERIFY(component.state.g_DBTOR.assigned() == nullptr);
}

void tst_MemberTable::invokeConnectsWithFewerArguments()
{
    TestComponent component;
    cloVELDRAMain object(component);
    const std::shared_ptr<ConexionDB> inputs = std::make_shared<FakeConexionDB>();
    // Accepted, but omitted connections are reported as ever.
    QCOMPARE(object.invoke(u"ConectarDB", MemberKind::Call, {QVariant::fromValue(inputs)}), QVariant(false));
    QCOMPARE(object.invoke(u"ConectarDB", MemberKind::Call, {QVariant::fromValue(inputs), QVariant::fromValue(inputs)}),
             QVariant(false));
    QCOMPARE(component.state.g_DBINS.assigned(), inputs.get());
    QCOMPARE(component.prompts.boxes().size(), 2);
}

void tst_MemberTable::invokeRunsOperations_data()
{
    QTest::addColumn<Entry>("entry");
    QTest::newRow("Mostrar") << Entry::Mostrar;
    QTest::newRow("Importar") << Entry::Importar;
    QTest::newRow("MostrarDIT") << Entry::MostrarDIT;
    QTest::newRow("VerINSxSBT") << Entry::VerINSxSBT;
}

void tst_MemberTable::invokeRunsOperations()
{
    QFETCH(const Entry, entry);
    FakeScreens screens;
    TestComponent component;
    cloVELDRAMain object(component);
    object.put_Interno_Externo(u"I1"_s);
    screens.install(component, entry);
    QVERIFY(!object.invoke(QString::fromLatin1(QTest::currentDataTag()), MemberKind::Call).isValid());
    QCOMPARE(screens[entry].shown, 1);
    QVERIFY(component.prompts.boxes().isEmpty());
}

void tst_MemberTable::invokeTakesAnyLetterCase()
{
    TestComponent component;
    cloVELDRAMain object(component);
    object.invoke(u"interno_EXTERNO", MemberKind::Put, {u"I1"_s});
    QCOMPARE(component.state.sInternoExt, u"I1"_s);
    QCOMPARE(object.invoke(u"ok", MemberKind::Get), QVariant(false));
}

void tst_MemberTable::invokeRefusesUnknownNamesAndKinds_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<MemberKind>("kind");
    QTest::newRow("unknown") << u"PRDXXX"_s << MemberKind::Get;
    QTest::newRow("empty") << QString() << MemberKind::Call;
    QTest::newRow("accessor's name") << u"get_OK"_s << MemberKind::Get;
    QTest::newRow("read property written") << u"OK"_s << MemberKind::Put;
    QTest::newRow("read property called") << u"OK"_s << MemberKind::Call;
    QTest::newRow("write property read") << u"ADUANA"_s << MemberKind::Get;
    QTest::newRow("operation read") << u"Mostrar"_s << MemberKind::Get;
}

void tst_MemberTable::invokeRefusesUnknownNamesAndKinds()
{
    QFETCH(const QString, name);
    QFETCH(const MemberKind, kind);
    TestComponent component;
    cloVELDRAMain object(component);
    QCOMPARE(numberThrownBy([&] { object.invoke(name, kind); }), 438);
    QCOMPARE(numberThrownBy([&] { object.invoke(name, kind, {u"1"_s}); }), 438);
}

void tst_MemberTable::invokeRefusesWrongCounts_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<MemberKind>("kind");
    QTest::addColumn<int>("count");
    QTest::newRow("read with one") << u"OK"_s << MemberKind::Get << 1;
    QTest::newRow("write with none") << u"ADUANA"_s << MemberKind::Put << 0;
    QTest::newRow("write with two") << u"ADUANA"_s << MemberKind::Put << 2;
    QTest::newRow("operation with one") << u"Mostrar"_s << MemberKind::Call << 1;
    QTest::newRow("ConectarDB with none") << u"ConectarDB"_s << MemberKind::Call << 0;
    QTest::newRow("ConectarDB with four") << u"ConectarDB"_s << MemberKind::Call << 4;
}

void tst_MemberTable::invokeRefusesWrongCounts()
{
    QFETCH(const QString, name);
    QFETCH(const MemberKind, kind);
    QFETCH(const int, count);
    TestComponent component;
    cloVELDRAMain object(component);
    QCOMPARE(numberThrownBy([&] { object.invoke(name, kind, QVariantList(count, u"1"_s)); }), 450);
    QVERIFY(component.prompts.boxes().isEmpty());
}

void tst_MemberTable::invokeConvertsToText_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("expected");
    for (const QString& locale : {u"es_AR"_s, u"en_US"_s}) {
        const auto row = [&locale](const char* name) -> QTestData& {
            return QTest::addRow("%s %s", qPrintable(locale), name) << locale;
        };
        row("text") << QVariant(u" x "_s) << u" x "_s;
        row("character") << QVariant(QChar(u'Ñ')) << u"Ñ"_s;
        row("integer") << QVariant(1234) << u"1234"_s;
        row("long integer") << QVariant(-123456789012LL) << u"-123456789012"_s;
        row("double") << QVariant(1234.5) << (locale == u"es_AR" ? u"1234,5"_s : u"1234.5"_s);
        row("great double") << QVariant(1.5e15) << (locale == u"es_AR" ? u"1,5E+15"_s : u"1.5E+15"_s);
        row("true") << QVariant(true) << u"-1"_s;
        row("false") << QVariant(false) << u"0"_s;
        row("date") << QVariant(QDate(2024, 3, 5)) << u"05/03/2024"_s;
    }
}

void tst_MemberTable::invokeConvertsToText()
{
    QFETCH(const QString, locale);
    QFETCH(const QVariant, value);
    QLocale::setDefault(QLocale(locale));
    TestComponent component;
    cloVELDRAMain object(component);
    object.invoke(u"ADUANA", MemberKind::Put, {value});
    QTEST(component.state.g_sAduana, "expected");
}

void tst_MemberTable::invokeRefusesWhatIsNoText_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("number");
    QTest::newRow("Null") << QVariant::fromValue(nullptr) << 94;
    QTest::newRow("omitted") << QVariant() << 13;
    QTest::newRow("list") << QVariant(QVariantList{1}) << 13;
    QTest::newRow("object") << QVariant::fromValue<QObject*>(this) << 13;
    QTest::newRow("connection") << QVariant::fromValue(std::shared_ptr<ConexionDB>()) << 13;
}

void tst_MemberTable::invokeRefusesWhatIsNoText()
{
    QFETCH(const QVariant, value);
    QFETCH(const int, number);
    TestComponent component;
    cloVELDRAMain object(component);
    object.put_ADUANA(u"001"_s);
    QCOMPARE(numberThrownBy([&] { object.invoke(u"ADUANA", MemberKind::Put, {value}); }), number);
    QCOMPARE(component.state.g_sAduana, u"001"_s);
}

void tst_MemberTable::errorsOfTheMemberComeThrough()
{
    TestComponent component;
    cloVELDRAMain object(component);
    QCOMPARE(numberThrownBy([&] { object.invoke(u"IdSUB", MemberKind::Put, {u"abc"_s}); }), 13);
    object.invoke(u"IdSUB", MemberKind::Put, {77});
    QCOMPARE(component.state.g_lIdSUB, 77);
}

QTEST_MAIN(tst_MemberTable)
#include "tst_MemberTable.moc"
