#include "doubles/RecordedPrompts.h"
#include "doubles/ThrownError.h"

#include <nomenclature/SuffixText.h>

#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::doubles;
using namespace oVELDRA::nomenclature;

Q_DECLARE_METATYPE(oVELDRA::nomenclature::ValueKind)

class tst_SuffixText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QLocale::setDefault(QLocale(u"es_AR"_s)); }
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void keysAreThePrefixesFilledWithTheBlankPattern_data();
    void keysAreThePrefixesFilledWithTheBlankPattern();
    void everyKeyOfAFullPositionHasFourteenCharacters();
    void keyListIsWrittenForAnInCondition();
    void keyListRefusesAnApostrophe();
    void ruleLineFillsTheCodeToFiveCharacters_data();
    void ruleLineFillsTheCodeToFiveCharacters();
    void codeKindIsByLength();
    void valueKindIsByFirstLetterAndCarriedOver_data();
    void valueKindIsByFirstLetterAndCarriedOver();
    void groupIsMissing_data();
    void groupIsMissing();
    void storedValueIsWhatTheBracketsHold_data();
    void storedValueIsWhatTheBracketsHold();
    void entriesAreJoinedWithAHyphenAndClosedWithOne();
    void optionLines();
    void optionCodeIsTheFirstFourCharacters();
    void m_sVALCHARKeepsWhatAValueMayHold();
    void m_sVALCHARReportsItsOwnFailure();
    void m_sVALSUFCleans_data();
    void m_sVALSUFCleans();
    void typedValueIsCleanedInThisOrder_data();
    void typedValueIsCleanedInThisOrder();
    void acceptedNumbers_data();
    void acceptedNumbers();
    void acceptedTexts_data();
    void acceptedTexts();
    void nothingIsAcceptedWithoutAKind();
};

void tst_SuffixText::keysAreThePrefixesFilledWithTheBlankPattern_data()
{
    QTest::addColumn<QString>("position");
    QTest::addColumn<QStringList>("keys");
    const QStringList full{u"84  .  .  .   "_s, u"8471.  .  .   "_s, u"8471.30.  .   "_s, u"8471.30.12.000"_s};
    QTest::newRow("full") << u"8471.30.12.000A"_s << full;
    QTest::newRow("14 characters") << u"8471.30.12.000"_s << full;
    QTest::newRow("subheading only") << u"8471.30"_s << full.mid(0, 3) + QStringList{u"8471.30"_s};
    QTest::newRow("empty") << u""_s << QStringList{u"  .  .  .   "_s, u".  .  .   "_s, u".  .   "_s, QString(u""_s)};
}

void tst_SuffixText::keysAreThePrefixesFilledWithTheBlankPattern()
{
    QFETCH(const QString, position);
    QFETCH(const QStringList, keys);
    const auto made = suffixKeys(position);
    QCOMPARE(QStringList(made.begin(), made.end()), keys);
}

void tst_SuffixText::everyKeyOfAFullPositionHasFourteenCharacters()
{
    for (const QString& key : suffixKeys(u"0101.21.00.100W"_s)) {
        QCOMPARE(key.size(), 14);
    }
}

void tst_SuffixText::keyListIsWrittenForAnInCondition()
{
    QCOMPARE(suffixKeyList(u"8471.30.12.000A"_s),
             u"('84  .  .  .   ','8471.  .  .   ','8471.30.  .   ','8471.30.12.000')"_s);
}

void tst_SuffixText::keyListRefusesAnApostrophe()
{
    QCOMPARE(numberThrownBy([] { std::ignore = suffixKeyList(u"84') or ('1'='1"_s); }), -2147217900);
}

void tst_SuffixText::ruleLineFillsTheCodeToFiveCharacters_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("detail");
    QTest::addColumn<QString>("line");
    QTest::newRow("two characters") << u"ZC"_s << u"PESO"_s << u"ZC   PESO"_s;
    QTest::newRow("four characters") << u"AB01"_s << u"PESO"_s << u"AB01 PESO"_s;
    QTest::newRow("five characters: no blank between") << u"AB012"_s << u"PESO"_s << u"AB012PESO"_s;
    QTest::newRow("blanks around") << u" ZC "_s << u"  PESO NETO "_s << u"ZC   PESO NETO"_s;
    QTest::newRow("empty") << u""_s << u""_s << u"     "_s;
}

void tst_SuffixText::ruleLineFillsTheCodeToFiveCharacters()
{
    QFETCH(const QString, code);
    QFETCH(const QString, detail);
    QFETCH(const QString, line);
    QCOMPARE(ruleLine(code, detail), line);
}

void tst_SuffixText::codeKindIsByLength()
{
    QCOMPARE(codeKind(u"AB01"_s), CodeKind::Option);
    QCOMPARE(codeKind(u"ZC"_s), CodeKind::Value);
    for (const auto& code : {u""_s, u"A"_s, u"AB0"_s, u"AB012"_s, u"AB0123"_s}) {
        QCOMPARE(codeKind(code), CodeKind::Other);
    }
}

void tst_SuffixText::valueKindIsByFirstLetterAndCarriedOver_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<ValueKind>("before");
    QTest::addColumn<ValueKind>("kind");
    using enum ValueKind;
    QTest::newRow("A") << u"AD"_s << None << Text;
    QTest::newRow("A after Z") << u"AD"_s << Number << Text;
    QTest::newRow("small a") << u"ad"_s << None << Text;
    QTest::newRow("Z") << u"ZC"_s << None << Number;
    QTest::newRow("Z after A") << u"ZC"_s << Text << Number;
    QTest::newRow("small z") << u"zc"_s << None << Number;
    QTest::newRow("another letter after A") << u"NC"_s << Text << Text;
    QTest::newRow("another letter after Z") << u"NC"_s << Number << Number;
    QTest::newRow("another letter first") << u"NC"_s << None << None;
}

void tst_SuffixText::valueKindIsByFirstLetterAndCarriedOver()
{
    QFETCH(const QString, code);
    QFETCH(const ValueKind, before);
    QFETCH(const ValueKind, kind);
    QCOMPARE(valueKind(code, before), kind);
}

void tst_SuffixText::groupIsMissing_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("suffixes");
    QTest::addColumn<bool>("missing");
    const QString suffixes = u"AB01-ZC(000150)-AD(ROJO)-"_s;
    QTest::newRow("option there") << u"AB01"_s << suffixes << false;
    QTest::newRow("option there in small letters") << u"AB01"_s << u"ab01-"_s << false;
    QTest::newRow("small option there in capitals") << u"ab01"_s << suffixes << false;
    QTest::newRow("another option of its group does not count") << u"AB01"_s << u"AB02-"_s << true;
    QTest::newRow("no option does not count either") << u"AB01"_s << u"AB00-"_s << true;
    QTest::newRow("value there") << u"ZC"_s << suffixes << false;
    QTest::newRow("value there in small letters") << u"ZC"_s << u"zc(1)"_s << false;
    QTest::newRow("small value there in capitals") << u"zc"_s << suffixes << false;
    QTest::newRow("value code without a bracket") << u"ZC"_s << u"ZC-"_s << true;
    QTest::newRow("value code of an option") << u"AB"_s << suffixes << true;
    QTest::newRow("value without an end") << u"ZC"_s << u"ZC("_s << false;
    QTest::newRow("nothing there") << u"ZC"_s << u"SIN SUFIJOS"_s << true;
    QTest::newRow("empty text") << u"AB01"_s << u""_s << true;
    QTest::newRow("code of three characters is never missing") << u"AB0"_s << u""_s << false;
    QTest::newRow("empty code is never missing") << u""_s << u""_s << false;
}

void tst_SuffixText::groupIsMissing()
{
    QFETCH(const QString, code);
    QFETCH(const QString, suffixes);
    QFETCH(const bool, missing);
    QCOMPARE(isMissing(code, suffixes), missing);
}

void tst_SuffixText::storedValueIsWhatTheBracketsHold_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("suffixes");
    QTest::addColumn<QString>("value");
    const QString suffixes = u"AB01-ZC(000150)-AD(ROJO)-"_s;
    QTest::newRow("number") << u"ZC"_s << suffixes << u"000150"_s;
    QTest::newRow("text") << u"AD"_s << suffixes << u"ROJO"_s;
    QTest::newRow("at the beginning") << u"AD"_s << u"AD(ROJO)"_s << u"ROJO"_s;
    QTest::newRow("the first of two") << u"AD"_s << u"AD(ROJO)-AD(AZUL)-"_s << u"ROJO"_s;
    QTest::newRow("up to the next end") << u"AD"_s << u"AD(RO)JO)"_s << u"RO"_s;
    QTest::newRow("empty brackets") << u"AD"_s << u"AD()-"_s << u""_s;
    QTest::newRow("no end") << u"AD"_s << u"AD(ROJO"_s << u""_s;
    QTest::newRow("not there") << u"AE"_s << suffixes << u""_s;
    QTest::newRow("only as an option") << u"AB"_s << suffixes << u""_s;
    QTest::newRow("within another value") << u"AD"_s << u"AC(PADRE)-AD(ROJO)-"_s << u"ROJO"_s;
    QTest::newRow("no text") << u"AD"_s << u""_s << u""_s;
}

void tst_SuffixText::storedValueIsWhatTheBracketsHold()
{
    QFETCH(const QString, code);
    QFETCH(const QString, suffixes);
    QFETCH(const QString, value);
    QCOMPARE(storedValue(code, suffixes), value);
}

void tst_SuffixText::entriesAreJoinedWithAHyphenAndClosedWithOne()
{
    QString text = withEntry(u""_s, u"AB01"_s);
    QCOMPARE(text, u"AB01"_s);
    text = withEntry(text, valueEntry(u"ZC"_s, u"000150"_s));
    text = withEntry(text, valueEntry(u"AD"_s, u"ROJO"_s));
    QCOMPARE(closed(text), u"AB01-ZC(000150)-AD(ROJO)-"_s);
    QCOMPARE(closed(closed(text)), u"AB01-ZC(000150)-AD(ROJO)-"_s);
    QCOMPARE(withEntry(u"  "_s, u"AB01"_s), u"AB01"_s);
    QCOMPARE(closed(u""_s), u"-"_s);
}

void tst_SuffixText::optionLines()
{
    QCOMPARE(optionLine(u"AB01 "_s, u" UNO "_s), u"AB01 - UNO"_s);
    QCOMPARE(optionLine(u"AB01"_s, u""_s), u"AB01 - "_s);
    QCOMPARE(noOptionLine(u"AB"_s), u"AB00 - Ninguna opción"_s);
}

void tst_SuffixText::optionCodeIsTheFirstFourCharacters()
{
    QCOMPARE(optionCode(u"AB01 - UNO"_s), u"AB01"_s);
    QCOMPARE(optionCode(noOptionLine(u"AB"_s)), u"AB00"_s);
    QCOMPARE(optionCode(u"AB"_s), u"AB"_s);
}

void tst_SuffixText::m_sVALCHARKeepsWhatAValueMayHold()
{
    RecordedPrompts prompts;
    const QString kept = u"/,&0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZÑ"_s;
    for (char16_t c = 1; c < 0x2000; ++c) {
        const QChar character(c);
        QCOMPARE(m_sVALCHAR(prompts, character), kept.contains(character) ? QString(character) : u" "_s);
    }
    QCOMPARE(m_sVALCHAR(prompts, u"AB"_s), u"A"_s);
    QVERIFY(prompts.boxes().isEmpty());
}

void tst_SuffixText::m_sVALCHARReportsItsOwnFailure()
{
    RecordedPrompts prompts;
    QCOMPARE(m_sVALCHAR(prompts, {}), QString());
    const RecordedPrompts::Box box{
        u"5 - Argumento o llamada a procedimiento no válidos\r\n\r\n m_sVALCHAR_err"_s, core::CriticalBox, {}};
    QCOMPARE(prompts.boxes(), QList{box});
}

void tst_SuffixText::m_sVALSUFCleans_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("cleaned");
    QTest::newRow("capitals") << u"rojo"_s << u"ROJO"_s;
    QTest::newRow("trimmed before") << u"  rojo "_s << u"ROJO"_s;
    QTest::newRow("first 20 characters") << u"abcdefghijklmnopqrstuvwxyz"_s << u"ABCDEFGHIJKLMNOPQRST"_s;
    QTest::newRow("blanks in front do not count") << u"     abcdefghijklmnopqrstuvwxyz"_s << u"ABCDEFGHIJKLMNOPQRST"_s;
    QTest::newRow("exactly 20 characters") << u"12345678901234567890"_s << u"12345678901234567890"_s;
    QTest::newRow("eñe stays") << u"año Ñandú"_s << u"AÑO ÑAND "_s;
    QTest::newRow("accents become blanks") << u"camión"_s << u"CAMI N"_s;
    QTest::newRow("marks that stay") << u"a/b,c&d"_s << u"A/B,C&D"_s;
    QTest::newRow("marks that do not, not trimmed again") << u".a.b."_s << u" A B "_s;
    QTest::newRow("brackets and hyphen are marks like others") << u"(1-2)"_s << u" 1 2 "_s;
    QTest::newRow("tab") << u"\ta"_s << u" A"_s;
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("blank") << u"   "_s << u""_s;
}

void tst_SuffixText::m_sVALSUFCleans()
{
    QFETCH(const QString, value);
    QFETCH(const QString, cleaned);
    RecordedPrompts prompts;
    QCOMPARE(m_sVALSUF(prompts, value), cleaned);
    QVERIFY(prompts.boxes().isEmpty());
}

void tst_SuffixText::typedValueIsCleanedInThisOrder_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("cleaned");
    QTest::newRow("brackets go before trimming") << u"(12)"_s << u"12"_s;
    QTest::newRow("hyphen goes before trimming") << u"-12-"_s << u"12"_s;
    QTest::newRow("hyphen within") << u"rojo-azul"_s << u"ROJO AZUL"_s;
    QTest::newRow("all of them") << u" ( -rojo- ) "_s << u"ROJO"_s;
    QTest::newRow("brackets in front do not count for the 20")
        << u"((((abcdefghijklmnopqrstuvwxyz"_s << u"ABCDEFGHIJKLMNOPQRST"_s;
    QTest::newRow("another mark goes after trimming") << u".12."_s << u" 12 "_s;
    QTest::newRow("nothing left") << u"(-)"_s << u""_s;
}

void tst_SuffixText::typedValueIsCleanedInThisOrder()
{
    QFETCH(const QString, typed);
    QFETCH(const QString, cleaned);
    RecordedPrompts prompts;
    QCOMPARE(cleanedValue(prompts, typed), cleaned);
}

void tst_SuffixText::acceptedNumbers_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("cleaned");
    QTest::addColumn<QString>("value"); // null when refused
    for (const auto& locale : {u"es_AR"_s, u"en_US"_s}) {
        const auto row = [&locale](const char* what) -> QTestData& {
            return QTest::addRow("%s, %s", what, qPrintable(locale)) << locale;
        };
        row("whole") << u"12"_s << u"000012"_s;
        row("zero") << u"0"_s << u"000000"_s;
        row("six digits") << u"123456"_s << u"123456"_s;
        row("more than six") << u"1234567"_s << u"1234567"_s;
        row("blanks around") << u" 12 "_s << u"000012"_s;
        row("comma as the decimal separator, halves up") << u"12,5"_s << u"000013"_s;
        row("blank within") << u"1 2"_s << QString();
        row("letters") << u"12 X"_s << QString();
        row("fraction") << u"1/2"_s << QString();
        row("exponent") << u"1E3"_s << u"001000"_s;
        row("too large for a number") << u"1E999"_s << QString();
        row("empty") << u""_s << QString();
    }
}

void tst_SuffixText::acceptedNumbers()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, cleaned);
    QFETCH(const QString, value);
    QLocale::setDefault(QLocale(locale));
    const auto accepted = acceptedValue(cleaned, ValueKind::Number);
    QCOMPARE(accepted.has_value(), !value.isNull());
    QCOMPARE(accepted.value_or(QString()), value);
}

void tst_SuffixText::acceptedTexts_data()
{
    QTest::addColumn<QString>("cleaned");
    QTest::addColumn<QString>("value"); // null when refused
    QTest::newRow("text") << u"ROJO AZUL"_s << u"ROJO AZUL"_s;
    QTest::newRow("stored trimmed") << u" ROJO "_s << u"ROJO"_s;
    QTest::newRow("digits") << u"12"_s << u"12"_s;
    QTest::newRow("blank") << u"  "_s << QString();
    QTest::newRow("empty") << u""_s << QString();
}

void tst_SuffixText::acceptedTexts()
{
    QFETCH(const QString, cleaned);
    QFETCH(const QString, value);
    const auto accepted = acceptedValue(cleaned, ValueKind::Text);
    QCOMPARE(accepted.has_value(), !value.isNull());
    QCOMPARE(accepted.value_or(QString()), value);
}

void tst_SuffixText::nothingIsAcceptedWithoutAKind()
{
    QVERIFY(!acceptedValue(u"12"_s, ValueKind::None));
    QVERIFY(!acceptedValue(u"ROJO"_s, ValueKind::None));
}

QTEST_GUILESS_MAIN(tst_SuffixText)
#include "tst_SuffixText.moc"
