#include "StoredTariff.h"
#include "controls/OpenForm.h"
#include "doubles/BoxDriver.h"
#include "doubles/FakeConexionDB.h"
#include "doubles/InterruptedConexionDB.h"
#include "doubles/TestComponent.h"

#include <core/ErrorReport.h>
#include <nomenclature/FrmCargaSufijos.h>
#include <nomenclature/VerificarSufijos.h>

#include <QApplication>
#include <QListView>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;
using namespace oVELDRA::nomenclature;

namespace {

using Box = RecordedPrompts::Box;

const QString position = u"8471.30.12.000A"_s;
const QString keys = u"('84  .  .  .   ','8471.  .  .   ','8471.30.  .   ','8471.30.12.000')"_s;
const QString groupsStatement = u"select distinct left(sufijo,2) as asufijo from sufidos where sim in "_s + keys;
const QString location = u"Seccion [Morvesta.frmModificar.VarificarSufijos]"_s;

const Box noRules{u"No se encontro Sufijo en el nomenclador"_s, core::PlainBox, {}};
const Box differences{
    u"Se encontro diferencias entre los Sufijos de Subitem y el nomenclador."_s, core::ExclamationBox, {}};
const Box cancelQuestion{u"Desea cancelar la operación"_s, core::QuestionBox, {}};
const Box notANumber{u"Debe Ingresar un Valor Númerico"_s, core::PlainBox, {}};
const Box noChoice{u"Error en generar sufijos"_s, core::CriticalBox, {}};

QString groupStatement(const QString& group)
{
    return u"select sufijo,detalle from sufidos where sim in "_s + keys + u" and left(sufijo,2) = '"_s + group + u'\'';
}

/// A user at a scripted tariff: options are chosen by line, values typed.
struct Fixture
{
    Fixture()
    {
        component.state.g_DBNCM.assign(tariff);
        component.state.chosenSuffix = u"ZZ99 - de antes"_s;
        component.prompts.whileShown = [] { QVERIFY(QGuiApplication::overrideCursor() == nullptr); };
    }

    /// A group by its rules, in their order.
    void group(const QString& name, const QList<FakeConexionDB::Row>& rules)
    {
        m_groups.append({name});
        tariff->willGiveRows(groupStatement(name.trimmed()), {u"sufijo"_s, u"detalle"_s}, rules);
    }

    /// AB: option, ZC: number, AD: text.
    void usualGroups()
    {
        group(u"AB"_s, {{u"AB01"_s, u"UNO"_s}, {u"AB02"_s, u"DOS"_s}});
        group(u"ZC"_s, {{u"ZC"_s, u"CANTIDAD"_s}});
        group(u"AD"_s, {{u"AD"_s, u"COLOR"_s}});
    }

    [[nodiscard]] QString verify(const QString& suffixes, int mode = 0)
    {
        tariff->willGiveRows(groupsStatement, {u"asufijo"_s}, m_groups);
        return VerificarSufijos(component, position, suffixes, mode,
                                [this](core::Component& shown, const QStringList& lines) {
                                    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
                                    QVERIFY(shown.state.chosenSuffix.isEmpty());
                                    options.append(lines);
                                    shown.state.chosenSuffix = lines.value(chosenLine);
                                });
    }

    /// Types the values, with an empty one in front of each Yes or No.
    void typing(const QStringList& values)
    {
        for (const QString& value : values) {
            component.prompts.willType(value);
        }
    }

    [[nodiscard]] const QList<Box>& boxes() const { return component.prompts.boxes(); }
    [[nodiscard]] const QList<RecordedPrompts::InputBox>& questions() const { return component.prompts.inputBoxes(); }

    std::shared_ptr<FakeConexionDB> tariff = std::make_shared<FakeConexionDB>();
    TestComponent component;
    QList<QStringList> options; ///< the option lists that came up
    int chosenLine = 1;         ///< -1: closes the list

private:
    QList<FakeConexionDB::Row> m_groups;
};

} // namespace

class tst_VerificarSufijos : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QLocale::setDefault(QLocale(u"es_AR"_s)); }
    void cleanup()
    {
        QLocale::setDefault(QLocale::c());
        QVERIFY(QGuiApplication::overrideCursor() == nullptr);
    }

    // the check
    void positionWithoutRulesHasNoSuffixesWhateverWasStored_data();
    void positionWithoutRulesHasNoSuffixesWhateverWasStored();
    void completeTextComesBackUnchanged_data();
    void completeTextComesBackUnchanged();
    void incompleteTextIsToldAndAskedForAnew_data();
    void incompleteTextIsToldAndAskedForAnew();
    void checkLooksUpEveryGroupAndReentryAgain();
    void groupsOfOtherLengthsAreNeverMissing();
    void modeOneAlwaysAsks();
    void otherModesCheck();
    void emptyTextIsAskedForWithoutANotice();

    // entering anew
    void optionsAreListedBehindTheLineForNone();
    void firstLineStandsForNoOption();
    void codesAndDetailsAreTrimmed();
    void closingTheOptionFormIsAnError();
    void valueIsProposedFromTheStoredText();
    void numberIsCleanedAndFormatted_data();
    void numberIsCleanedAndFormatted();
    void numberThatIsNoneIsRefused();
    void textIsCleaned_data();
    void textIsCleaned();
    void textWithoutAnythingIsAskedForAgain();
    void emptyAnswerAsksWhetherToCancel();
    void noToTheQuestionAsksAgain();
    void valueKindIsCarriedOver();
    void withoutAKindNothingIsAccepted();
    void groupOfOtherLengthIsPassedOver();
    void entriesComeInGroupOrder();
    void everyGroupPassedOverLeavesAHyphen();

    // failures
    void queryThatFailsIsReported_data();
    void queryThatFailsIsReported();
    void missingConnectionIsReported();
    void positionWithApostropheIsReportedAndRunsNothing();
    void failureOfTheOptionFormIsReported();
    void hourglassWhileStatementsRun();

    // with everything real
    void realFormAndKeys();
    void realFormClosedWithEscape();
};

// --- the check ---

void tst_VerificarSufijos::positionWithoutRulesHasNoSuffixesWhateverWasStored_data()
{
    QTest::addColumn<QString>("suffixes");
    QTest::addColumn<int>("mode");
    QTest::newRow("nothing") << u""_s << 0;
    QTest::newRow("something") << u"AB01-ZC(000150)-"_s << 0;
    QTest::newRow("mode 1") << u"AB01-"_s << 1;
}

void tst_VerificarSufijos::positionWithoutRulesHasNoSuffixesWhateverWasStored()
{
    QFETCH(const QString, suffixes);
    QFETCH(const int, mode);
    Fixture fixture;
    QCOMPARE(fixture.verify(suffixes, mode), u"SIN SUFIJOS"_s);
    QCOMPARE(fixture.boxes(), QList{noRules});
    QCOMPARE(fixture.tariff->statements(), QStringList{groupsStatement});
}

void tst_VerificarSufijos::completeTextComesBackUnchanged_data()
{
    QTest::addColumn<QString>("suffixes");
    QTest::addColumn<QString>("result");
    QTest::newRow("closed") << u"AB01-ZC(000150)-AD(ROJO)-"_s << u"AB01-ZC(000150)-AD(ROJO)-"_s;
    QTest::newRow("a hyphen is added") << u"AB01-ZC(000150)-AD(ROJO)"_s << u"AB01-ZC(000150)-AD(ROJO)-"_s;
    QTest::newRow("small letters stay") << u"ab01-zc(1)-ad(x)"_s << u"ab01-zc(1)-ad(x)-"_s;
    QTest::newRow("any order, anything more") << u"XX-AD(x)-ZC()AB01"_s << u"XX-AD(x)-ZC()AB01-"_s;
}

void tst_VerificarSufijos::completeTextComesBackUnchanged()
{
    QFETCH(const QString, suffixes);
    QFETCH(const QString, result);
    Fixture fixture;
    fixture.usualGroups();
    QCOMPARE(fixture.verify(suffixes), result);
    QVERIFY(fixture.boxes().isEmpty());
    QVERIFY(fixture.questions().isEmpty());
    QVERIFY(fixture.options.isEmpty());
    QCOMPARE(fixture.tariff->statements(),
             (QStringList{groupsStatement, groupStatement(u"AB"_s), groupStatement(u"ZC"_s), groupStatement(u"AD"_s)}));
}

void tst_VerificarSufijos::incompleteTextIsToldAndAskedForAnew_data()
{
    QTest::addColumn<QString>("suffixes");
    QTest::newRow("first group") << u"ZC(000150)-AD(ROJO)-"_s;
    QTest::newRow("last group") << u"AB01-ZC(000150)-"_s;
    QTest::newRow("another option than the first") << u"AB02-ZC(000150)-AD(ROJO)-"_s;
    QTest::newRow("no brackets") << u"AB01-ZC-AD(ROJO)-"_s;
    QTest::newRow("SIN SUFIJOS") << u"SIN SUFIJOS"_s;
    QTest::newRow("blank") << u" "_s;
}

void tst_VerificarSufijos::incompleteTextIsToldAndAskedForAnew()
{
    QFETCH(const QString, suffixes);
    Fixture fixture;
    fixture.usualGroups();
    fixture.typing({u"7"_s, u"azul"_s});
    QCOMPARE(fixture.verify(suffixes), u"AB01-ZC(000007)-AD(AZUL)-"_s);
    QCOMPARE(fixture.boxes(), QList{differences});
    QCOMPARE(fixture.questions().size(), 2);
    QCOMPARE(fixture.options.size(), 1);
}

void tst_VerificarSufijos::checkLooksUpEveryGroupAndReentryAgain()
{
    Fixture fixture;
    fixture.usualGroups();
    fixture.typing({u"7"_s, u"azul"_s});
    std::ignore = fixture.verify(u"x"_s);
    const QStringList perGroup{groupStatement(u"AB"_s), groupStatement(u"ZC"_s), groupStatement(u"AD"_s)};
    QCOMPARE(fixture.tariff->statements(), QStringList{groupsStatement} + perGroup + perGroup);
}

void tst_VerificarSufijos::groupsOfOtherLengthsAreNeverMissing()
{
    Fixture fixture;
    fixture.group(u"AB"_s, {{u"AB012"_s, u"CINCO"_s}});
    fixture.group(u"AC"_s, {{u"AC1"_s, u"TRES"_s}});
    fixture.group(u"AE"_s, {});
    fixture.group(u""_s, {{QVariant(), QVariant()}});
    QCOMPARE(fixture.verify(u"x"_s), u"x-"_s);
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_VerificarSufijos::modeOneAlwaysAsks()
{
    Fixture fixture;
    fixture.usualGroups();
    fixture.typing({u"7"_s, u"azul"_s});
    QCOMPARE(fixture.verify(u"AB01-ZC(000150)-AD(ROJO)-"_s, 1), u"AB01-ZC(000007)-AD(AZUL)-"_s);
    QVERIFY(fixture.boxes().isEmpty());
    QCOMPARE(fixture.tariff->statements().size(), 4);
}

void tst_VerificarSufijos::otherModesCheck()
{
    for (const int mode : {0, 2, -1}) {
        Fixture fixture;
        fixture.usualGroups();
        QCOMPARE(fixture.verify(u"AB01-ZC(1)-AD(X)-"_s, mode), u"AB01-ZC(1)-AD(X)-"_s);
        QVERIFY(fixture.questions().isEmpty());
    }
}

void tst_VerificarSufijos::emptyTextIsAskedForWithoutANotice()
{
    Fixture fixture;
    fixture.usualGroups();
    fixture.typing({u"7"_s, u"azul"_s});
    QCOMPARE(fixture.verify(u""_s), u"AB01-ZC(000007)-AD(AZUL)-"_s);
    QVERIFY(fixture.boxes().isEmpty());
    QCOMPARE(fixture.tariff->statements().size(), 4);
}

// --- entering anew ---

void tst_VerificarSufijos::optionsAreListedBehindTheLineForNone()
{
    Fixture fixture;
    fixture.usualGroups();
    fixture.chosenLine = 2;
    fixture.typing({u"7"_s, u"azul"_s});
    QCOMPARE(fixture.verify(u""_s), u"AB02-ZC(000007)-AD(AZUL)-"_s);
    const QStringList lines{u"AB00 - Ninguna opción"_s, u"AB01 - UNO"_s, u"AB02 - DOS"_s};
    QCOMPARE(fixture.options, QList<QStringList>{lines});
}

void tst_VerificarSufijos::firstLineStandsForNoOption()
{
    Fixture fixture;
    fixture.group(u"AB"_s, {{u"AB01"_s, u"UNO"_s}});
    fixture.chosenLine = 0;
    QCOMPARE(fixture.verify(u""_s), u"AB00-"_s);
}

void tst_VerificarSufijos::codesAndDetailsAreTrimmed()
{
    Fixture fixture;
    fixture.group(u"AB "_s, {{u" AB01 "_s, u" UNO "_s}});
    fixture.group(u"ZC"_s, {{u"ZC  "_s, u"CANTIDAD"_s}});
    fixture.typing({u"1"_s});
    QCOMPARE(fixture.verify(u""_s), u"AB01-ZC(000001)-"_s);
    const QStringList lines{u"AB00 - Ninguna opción"_s, u"AB01 - UNO"_s};
    QCOMPARE(fixture.options, QList<QStringList>{lines});
}

void tst_VerificarSufijos::closingTheOptionFormIsAnError()
{
    Fixture fixture;
    fixture.usualGroups();
    fixture.chosenLine = -1;
    QCOMPARE(fixture.verify(u"x"_s), QString());
    QCOMPARE(fixture.boxes(), (QList{differences, noChoice}));
    QVERIFY(fixture.questions().isEmpty());
}

void tst_VerificarSufijos::valueIsProposedFromTheStoredText()
{
    Fixture fixture;
    fixture.usualGroups();
    fixture.group(u"AE"_s, {{u"AE"_s, u"MARCA"_s}});
    fixture.typing({u"1"_s, u"a"_s, u"b"_s});
    QCOMPARE(fixture.verify(u"ZC(000150)-AD(ROJO)-"_s), u"AB01-ZC(000001)-AD(A)-AE(B)-"_s);
    const QString title = u"Ingrese Valor"_s;
    const QList<RecordedPrompts::InputBox> questions{
        {u"CANTIDAD"_s, title, u"000150"_s}, {u"COLOR"_s, title, u"ROJO"_s}, {u"MARCA"_s, title, {}}};
    QCOMPARE(fixture.questions(), questions);
}

void tst_VerificarSufijos::numberIsCleanedAndFormatted_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("entry");
    for (const auto& locale : {u"es_AR"_s, u"en_US"_s}) {
        const auto row = [&locale](const char* what) -> QTestData& {
            return QTest::addRow("%s, %s", what, qPrintable(locale)) << locale;
        };
        row("plain") << u"12"_s << u"ZC(000012)"_s;
        row("(12)") << u"(12)"_s << u"ZC(000012)"_s;
        row("negative loses its sign") << u"-12"_s << u"ZC(000012)"_s;
        row("large") << u"1234567"_s << u"ZC(1234567)"_s;
        row("point at the end") << u"12."_s << u"ZC(000012)"_s;
    }
}

void tst_VerificarSufijos::numberIsCleanedAndFormatted()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, typed);
    QFETCH(const QString, entry);
    QLocale::setDefault(QLocale(locale));
    Fixture fixture;
    fixture.group(u"ZC"_s, {{u"ZC"_s, u"CANTIDAD"_s}});
    fixture.typing({typed});
    QCOMPARE(fixture.verify(u""_s), QString(entry + u'-'));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_VerificarSufijos::numberThatIsNoneIsRefused()
{
    Fixture fixture;
    fixture.group(u"ZC"_s, {{u"ZC"_s, u"CANTIDAD"_s}});
    fixture.typing({u"12 x"_s, u" "_s, u"1.5"_s, u"12"_s});
    QCOMPARE(fixture.verify(u""_s), u"ZC(000012)-"_s);
    QCOMPARE(fixture.boxes(), (QList{notANumber, notANumber, notANumber}));
    QCOMPARE(fixture.questions().size(), 4);
}

void tst_VerificarSufijos::textIsCleaned_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("entry");
    QTest::newRow("rojo-azul") << u"rojo-azul"_s << u"AD(ROJO AZUL)"_s;
    QTest::newRow("brackets") << u"a(b)c"_s << u"AD(A B C)"_s;
    QTest::newRow("eñe and accent") << u"año de camión"_s << u"AD(AÑO DE CAMI N)"_s;
    QTest::newRow("apostrophe") << u"d'oro"_s << u"AD(D ORO)"_s;
    QTest::newRow("long") << u"abcdefghijklmnopqrstuvwxyz"_s << u"AD(ABCDEFGHIJKLMNOPQRST)"_s;
    QTest::newRow("blank at the end after cleaning") << u"rojo."_s << u"AD(ROJO)"_s;
}

void tst_VerificarSufijos::textIsCleaned()
{
    QFETCH(const QString, typed);
    QFETCH(const QString, entry);
    Fixture fixture;
    fixture.group(u"AD"_s, {{u"AD"_s, u"COLOR"_s}});
    fixture.typing({typed});
    QCOMPARE(fixture.verify(u""_s), QString(entry + u'-'));
}

void tst_VerificarSufijos::textWithoutAnythingIsAskedForAgain()
{
    Fixture fixture;
    fixture.group(u"AD"_s, {{u"AD"_s, u"COLOR"_s}});
    fixture.typing({u"   "_s, u"---"_s, u"é.é"_s, u"rojo"_s});
    QCOMPARE(fixture.verify(u""_s), u"AD(ROJO)-"_s);
    QVERIFY(fixture.boxes().isEmpty());
    QCOMPARE(fixture.questions().size(), 4);
}

void tst_VerificarSufijos::emptyAnswerAsksWhetherToCancel()
{
    Fixture fixture;
    fixture.usualGroups();
    fixture.typing({u""_s});
    fixture.component.prompts.willAnswer(core::AnswerYes);
    QCOMPARE(fixture.verify(u"x"_s), QString());
    QCOMPARE(fixture.boxes(), (QList{differences, cancelQuestion}));
    QCOMPARE(fixture.questions().size(), 1);
    QVERIFY(fixture.component.prompts.allAnswered());
}

void tst_VerificarSufijos::noToTheQuestionAsksAgain()
{
    Fixture fixture;
    fixture.group(u"AD"_s, {{u"AD"_s, u"COLOR"_s}});
    fixture.typing({u""_s, u"rojo"_s});
    fixture.component.prompts.willAnswer(core::AnswerNo);
    QCOMPARE(fixture.verify(u"AD ROJO"_s), u"AD(ROJO)-"_s);
    QCOMPARE(fixture.boxes(), (QList{differences, cancelQuestion}));
    QCOMPARE(fixture.questions().size(), 2);
    QCOMPARE(fixture.questions().first(), fixture.questions().last());
}

void tst_VerificarSufijos::valueKindIsCarriedOver()
{
    Fixture fixture;
    fixture.group(u"ZC"_s, {{u"ZC"_s, u"CANTIDAD"_s}});
    fixture.group(u"NB"_s, {{u"NB"_s, u"COMO EL ANTERIOR"_s}});
    fixture.group(u"AB"_s, {{u"AB01"_s, u"UNO"_s}}); // an option's letter does not count
    fixture.group(u"PC"_s, {{u"PC"_s, u"COMO EL PRIMERO"_s}});
    fixture.group(u"AD"_s, {{u"AD"_s, u"COLOR"_s}});
    fixture.group(u"SE"_s, {{u"SE"_s, u"COMO EL COLOR"_s}});
    fixture.typing({u"1"_s, u"x"_s, u"2"_s, u"y"_s, u"3"_s, u"rojo"_s, u"4"_s});
    QCOMPARE(fixture.verify(u""_s), u"ZC(000001)-NB(000002)-AB01-PC(000003)-AD(ROJO)-SE(4)-"_s);
    QCOMPARE(fixture.boxes(), (QList{notANumber, notANumber}));
}

void tst_VerificarSufijos::withoutAKindNothingIsAccepted()
{
    Fixture fixture;
    fixture.group(u"NB"_s, {{u"NB"_s, u"NADA VALE"_s}});
    fixture.group(u"ZC"_s, {{u"ZC"_s, u"CANTIDAD"_s}});
    fixture.typing({u"1"_s, u"rojo"_s, u"(2)"_s, u""_s});
    fixture.component.prompts.willAnswer(core::AnswerYes);
    QCOMPARE(fixture.verify(u""_s), QString());
    QCOMPARE(fixture.boxes(), QList{cancelQuestion});
    QCOMPARE(fixture.questions().size(), 4);
}

void tst_VerificarSufijos::groupOfOtherLengthIsPassedOver()
{
    Fixture fixture;
    fixture.group(u"AB"_s, {{u"AB012"_s, u"CINCO"_s}});
    fixture.group(u"AC"_s, {});
    fixture.group(u"AD"_s, {{u"AD"_s, u"COLOR"_s}});
    fixture.typing({u"rojo"_s});
    QCOMPARE(fixture.verify(u""_s), u"AD(ROJO)-"_s);
    QVERIFY(fixture.options.isEmpty());
}

void tst_VerificarSufijos::entriesComeInGroupOrder()
{
    Fixture fixture;
    fixture.group(u"AD"_s, {{u"AD"_s, u"COLOR"_s}});
    fixture.group(u"AB"_s, {{u"AB01"_s, u"UNO"_s}});
    fixture.group(u"ZC"_s, {{u"ZC"_s, u"CANTIDAD"_s}});
    fixture.typing({u"rojo"_s, u"150"_s});
    QCOMPARE(fixture.verify(u""_s), u"AD(ROJO)-AB01-ZC(000150)-"_s);
}

void tst_VerificarSufijos::everyGroupPassedOverLeavesAHyphen()
{
    Fixture fixture;
    fixture.group(u"AB"_s, {{u"AB012"_s, u"CINCO"_s}});
    QCOMPARE(fixture.verify(u""_s), u"-"_s);
}

// --- failures ---

void tst_VerificarSufijos::queryThatFailsIsReported_data()
{
    QTest::addColumn<int>("ordinal");
    QTest::addColumn<QList<QString>>("before");
    QTest::newRow("the groups") << 1 << QStringList{};
    QTest::newRow("a group in the check") << 3 << QStringList{};
    QTest::newRow("a group in the re-entry") << 6 << QStringList{differences.text};
}

void tst_VerificarSufijos::queryThatFailsIsReported()
{
    QFETCH(const int, ordinal);
    QFETCH(const QList<QString>, before);
    Fixture fixture;
    fixture.usualGroups();
    fixture.tariff->failStatement(ordinal, RuntimeError(-2147217865, u"No está la tabla sufidos."_s));
    QCOMPARE(fixture.verify(u"AB01-"_s), QString());
    QCOMPARE(
        fixture.component.prompts.texts(),
        before +
            QStringList{
                u"-2147217865 - No está la tabla sufidos.\r\n\r\nSeccion [Morvesta.frmModificar.VarificarSufijos]"_s});
    QCOMPARE(fixture.boxes().constLast().style, core::CriticalBox);
    QCOMPARE(fixture.boxes().constLast().title, QString());
}

void tst_VerificarSufijos::missingConnectionIsReported()
{
    Fixture fixture;
    fixture.component.state.g_DBNCM.release();
    QCOMPARE(fixture.verify(u""_s), QString());
    QCOMPARE(fixture.component.prompts.texts(), QStringList{core::errorText(RuntimeError(3709), location)});
}

void tst_VerificarSufijos::positionWithApostropheIsReportedAndRunsNothing()
{
    Fixture fixture;
    QCOMPARE(VerificarSufijos(fixture.component, u"84') or ('1'='1"_s, u"AB01-"_s), QString());
    QVERIFY(fixture.tariff->statements().isEmpty());
    QCOMPARE(fixture.boxes().size(), 1);
    QCOMPARE(fixture.boxes().constFirst().style, core::CriticalBox);
    QVERIFY(fixture.boxes().constFirst().text.startsWith(u"-2147217900 - "));
    QVERIFY(fixture.boxes().constFirst().text.endsWith(QString(u"\r\n\r\n"_s + location)));
}

void tst_VerificarSufijos::failureOfTheOptionFormIsReported()
{
    Fixture fixture;
    fixture.group(u"AB"_s, {{u"AB01"_s, u"UNO"_s}});
    fixture.tariff->willGiveRows(groupsStatement, {u"asufijo"_s}, {{u"AB"_s}});
    const auto failing = [](core::Component&, const QStringList&) { throw RuntimeError(7); };
    QCOMPARE(VerificarSufijos(fixture.component, position, {}, 1, failing), QString());
    QCOMPARE(fixture.component.prompts.texts(), QStringList{core::errorText(RuntimeError(7), location)});
}

void tst_VerificarSufijos::hourglassWhileStatementsRun()
{
    StoredTariff tariff;
    tariff.addRule(u"84  .  .  .   "_s, u"ZC"_s, u"CANTIDAD"_s);
    int waits = 0;
    Fixture fixture;
    fixture.component.state.g_DBNCM.assign(
        std::make_shared<InterruptedConexionDB>(tariff.db, [&waits](int /*statement*/) {
            const QCursor* pointer = QGuiApplication::overrideCursor();
            waits += pointer != nullptr && pointer->shape() == Qt::WaitCursor ? 1 : 0;
        }));
    fixture.typing({u"1"_s});
    QCOMPARE(VerificarSufijos(fixture.component, position, u"x"_s), u"ZC(000001)-"_s);
    QCOMPARE(waits, 3);
}

// --- with everything real ---

namespace {

/// The component with real boxes over a real tariff of three groups.
struct RealParts
{
    RealParts()
    {
        tariff.addRule(u"84  .  .  .   "_s, u"AB01"_s, u"UNO"_s);
        tariff.addRule(u"84  .  .  .   "_s, u"AB02"_s, u"DOS"_s);
        tariff.addRule(u"8471.  .  .   "_s, u"ZC"_s, u"CANTIDAD"_s);
        tariff.addRule(u"8471.30.12.000"_s, u"AD"_s, u"COLOR"_s);
        component.state.g_DBNCM.assign(tariff.db);
    }

    StoredTariff tariff;
    core::ScreenPrompts prompts;
    MemorySettings settings;
    FixedClock clock;
    core::Component component{prompts, settings, clock};
};

/// The user at the option form, which is the first window to come up.
void atTheOptionForm(const std::function<void(const QListView& list)>& actions)
{
    QTimer::singleShot(0, qApp, [actions] {
        auto* form = dynamic_cast<FrmCargaSufijos*>(QApplication::activeModalWidget());
        QVERIFY(form != nullptr);
        QVERIFY(QTest::qWaitForWindowActive(form));
        actions(*form->findChild<QListView*>(u"LstOpcion"_s));
        if (form->isVisible()) {
            form->unload();
            QFAIL("the option form did not close");
        }
    });
}

} // namespace

void tst_VerificarSufijos::realFormAndKeys()
{
    RealParts parts;
    QStringList lines;
    atTheOptionForm([&lines](const QListView& list) {
        for (int row = 0; row < list.model()->rowCount(); ++row) {
            lines.append(list.model()->index(row, 0).data().toString());
        }
        pressKey(Qt::Key_Down);
        pressKey(Qt::Key_Down);
        pressKey(Qt::Key_Return);
    });
    BoxDriver user;
    user.type(u"(12)"_s);
    user.type({}, Qt::Key_Escape);
    user.press(Qt::Key_Escape); // No to the question
    user.type(u"rojo-azul"_s);
    QCOMPARE(VerificarSufijos(parts.component, position, u"ZC(000150)-AD(VERDE)-"_s, 1),
             u"AB02-ZC(000012)-AD(ROJO AZUL)-"_s);
    QCOMPARE(lines, (QStringList{u"AB00 - Ninguna opción"_s, u"AB01 - UNO"_s, u"AB02 - DOS"_s}));
    QVERIFY(user.done());
    QCOMPARE(user.texts(), (QStringList{u"CANTIDAD"_s, u"COLOR"_s, u"Desea cancelar la operación"_s, u"COLOR"_s}));
    QCOMPARE(user.seen().at(0).title, u"Ingrese Valor"_s);
    QCOMPARE(user.seen().at(0).proposal, u"000150"_s);
    QCOMPARE(user.seen().at(3).proposal, u"VERDE"_s);
    QCOMPARE(user.seen().at(2).buttons, (QStringList{u"Sí"_s, u"No"_s}));
}

void tst_VerificarSufijos::realFormClosedWithEscape()
{
    RealParts parts;
    atTheOptionForm([](const QListView& /*list*/) { pressKey(Qt::Key_Escape); });
    BoxDriver user;
    user.press(Qt::Key_Return);
    QCOMPARE(VerificarSufijos(parts.component, position, {}), QString());
    QVERIFY(user.done());
    QCOMPARE(user.texts(), QStringList{u"Error en generar sufijos"_s});
    QCOMPARE(user.seen().constFirst().icon, QMessageBox::Critical);
}

QTEST_MAIN(tst_VerificarSufijos)
#include "tst_VerificarSufijos.moc"
