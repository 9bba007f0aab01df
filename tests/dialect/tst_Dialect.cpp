#include <oVELDRA/RuntimeError.h>

#include <dialect/JetPrinter.h>
#include <dialect/Parser.h>
#include <dialect/StatementError.h>
#include <dialect/TextComparison.h>

#include <QCollator>
#include <QRandomGenerator>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA::dialect;

namespace {

QString printed(const QString& statement)
{
    return printJet(parse(statement));
}

QString shapeOf(const QString& statement)
{
    QString shape;
    Literals literals;
    liftLiterals(statement, shape, literals);
    return shape;
}

int parseError(const QString& statement)
{
    try {
        static_cast<void>(parse(statement));
    } catch (const oVELDRA::RuntimeError& error) {
        return error.number();
    }
    return 0;
}

} // namespace

class tst_Dialect : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // --- shapes ---------------------------------------------------------------------------------------------------

    void statementsThatDifferInLiteralsShareAShape()
    {
        const QString one = shapeOf(u"select * from CAT where CATNRO = 'A' and x = 1"_s);
        QCOMPARE(shapeOf(u"select * from CAT where CATNRO = 'O''Brien' and x = 2.5E3"_s), one);
        QVERIFY(shapeOf(u"select * from CAT where CATNRO = 3 and x = 1"_s) != one);
        QVERIFY(shapeOf(u"select * from CAT where CATNRO = 'A' or x = 1"_s) != one);
        QVERIFY(shapeOf(u"select * from CAT where CATNRO = #2026-01-01# and x = 1"_s) != one);
    }

    /// The short cut for a known shape must say and find exactly what reading from the start does.
    void aKnownShapeIsRecognisedExactly()
    {
        const QStringList statements{u"select * from CAT where CATNRO = 'A' and x = 1"_s,
                                     u"select * from CAT where CATNRO = 'O''Brien' and x = 2.5E3"_s,
                                     u"select * from CAT where CATNRO = \"A\" and x = .5"_s,
                                     u"select * from CAT where CATNRO = 'A' and x = 1 "_s,
                                     u"select * from CAT where CATNRO = 'A' and x = '1'"_s,
                                     u"select * from CAT where CATNRO = 'A' and x = #2026-01-01#"_s,
                                     u"select * from CAT where CATNRO = 'A' and x = 12"_s,
                                     u"select * from CAT where CATNRO = 'A' and x = "_s,
                                     u"select * from CAT where CATNRO = 'A' and x = 1x"_s,
                                     u"select * from CAT where CATNRO = 'A and x = 1"_s,
                                     u"select * from CAT where CATNRO = 'A'' and x = 1"_s,
                                     u"select * from CAT"_s,
                                     u"'A'"_s,
                                     u""_s};
        const auto lifted = [](const QString& statement, QString& shape, Literals& literals) {
            try {
                liftLiterals(statement, shape, literals);
                return true;
            } catch (const oVELDRA::RuntimeError&) {
                return false;
            }
        };
        for (const QString& known : statements) {
            QString shape;
            Literals ofKnown;
            if (!lifted(known, shape, ofKnown)) {
                continue;
            }
            for (const QString& other : statements) {
                QString otherShape;
                Literals expected;
                const bool same = lifted(other, otherShape, expected) && otherShape == shape;
                Literals found;
                QCOMPARE(literalsOfShape(other, shape, found), same);
                if (same) {
                    QCOMPARE(found.size(), expected.size());
                    for (qsizetype i = 0; i < found.size(); ++i) {
                        QCOMPARE(found[i].kind, expected[i].kind);
                        QCOMPARE(found[i].text(), expected[i].text());
                    }
                }
            }
        }
    }

    void namesOfDigitsAreNoLiterals()
    {
        QVERIFY(shapeOf(u"select [001] from NCM"_s) != shapeOf(u"select [002] from NCM"_s));
        QString shape;
        Literals literals;
        const QString statement = u"select [001]+ '.' +[002] from NCM where x1 = 12"_s;
        liftLiterals(statement, shape, literals);
        QCOMPARE(literals.size(), 2);
        QCOMPARE(literals[0].text(), u"."_s);
        QCOMPARE(literals[1].raw.toString(), u"12"_s);
    }

    void doubledQuotesStandForOne()
    {
        const QString statement = u"select 'a''b' from x where y = \"c\"\"d'e\""_s;
        const ParsedStatement parsed = parse(statement);
        QCOMPARE(parsed.literals[0].text(), u"a'b"_s);
        QCOMPARE(parsed.literals[1].text(), u"c\"d'e"_s);
    }

    // --- trees ----------------------------------------------------------------------------------------------------

    void precedence_data()
    {
        QTest::addColumn<QString>("written");
        QTest::addColumn<QString>("meant");
        QTest::newRow("and before or") << u"a or b and c"_s << u"([a] or ([b] and [c]))"_s;
        QTest::newRow("not before and") << u"not a and b"_s << u"((not [a]) and [b])"_s;
        QTest::newRow("comparison before not") << u"not a = b"_s << u"(not ([a] = [b]))"_s;
        QTest::newRow("& before comparison") << u"a & b = c"_s << u"(([a] & [b]) = [c])"_s;
        QTest::newRow("+ before &") << u"a & b + c"_s << u"([a] & ([b] + [c]))"_s;
        QTest::newRow("* before +") << u"a + b * c"_s << u"([a] + ([b] * [c]))"_s;
        QTest::newRow("from left to right") << u"a - b - c"_s << u"(([a] - [b]) - [c])"_s;
        QTest::newRow("sign") << u"-a * b"_s << u"((- [a]) * [b])"_s;
        QTest::newRow("between and and") << u"a between b and c and d"_s << u"(([a] between [b] and [c]) and [d])"_s;
        QTest::newRow("not like") << u"a not like b"_s << u"([a] not like [b])"_s;
        QTest::newRow("brackets") << u"(a or b) and c"_s << u"(([a] or [b]) and [c])"_s;
        QTest::newRow("long runs stay flat") << u"a and b and c"_s << u"([a] and [b] and [c])"_s;
    }

    void precedence()
    {
        QFETCH(QString, written);
        QFETCH(QString, meant);
        QCOMPARE(printed(u"delete from t where "_s + written), u"delete from [t] where "_s + meant);
    }

    void keywordsAreReadInAnyCase()
    {
        QCOMPARE(printed(u"SELECT Distinct a AS b FROM t WHERE a IS NOT NULL ORDER BY a DESC, b Asc"_s),
                 u"select distinct [a] as [b] from [t] where ([a] is not null) order by [a] desc, [b]"_s);
    }

    void hugeExpressionsAreRefusedNotRunInto()
    {
        const QString deep = QString(5000, u'(') + u'1' + QString(5000, u')');
        QCOMPARE(parseError(u"select "_s + deep + u" from t"), syntaxErrorNumber);
        QCOMPARE(parseError(u"select "_s + QString(5000, u'-') + u"1 from t"), syntaxErrorNumber); // a comment mark
        QCOMPARE(parseError(u"select "_s + u"- "_s.repeated(5000) + u"1 from t"), syntaxErrorNumber);
        QCOMPARE(parseError(u"select a"_s + u"+a"_s.repeated(5000) + u" from t"), syntaxErrorNumber);
        QCOMPARE(parseError(u"delete from t where a=1"_s + u" and a=1"_s.repeated(5000)), 0);
        QCOMPARE(parseError(u"delete from t where a in (1"_s + u",1"_s.repeated(40000) + u')'), syntaxErrorNumber);
    }

    void everyCutOfAStatementIsAnErrorOrAStatement()
    {
        const QString statement =
            u"select distinct left(a,2) as b, -c+1.5E2 from [t x] where a like 'x%' and not (c between "
            "1 and 2) or a in ('p','q') and d is not null order by b desc, c"_s;
        for (qsizetype length = 0; length <= statement.size(); ++length) {
            const int error = parseError(statement.left(length));
            QVERIFY2(error == 0 || error == syntaxErrorNumber, qPrintable(statement.left(length)));
        }
        QCOMPARE(parseError(statement), 0);
    }

    // --- texts ----------------------------------------------------------------------------------------------------

    void equality_data()
    {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<bool>("equal");
        QTest::newRow("case") << u"Motor"_s << u"MOTOR"_s << true;
        QTest::newRow("trailing blanks") << u"A  "_s << u"a"_s << true;
        QTest::newRow("only blanks") << u"   "_s << u""_s << true;
        QTest::newRow("leading blanks count") << u" a"_s << u"a"_s << false;
        QTest::newRow("tabs count") << u"a\t"_s << u"a"_s << false;
        QTest::newRow("accents count") << u"camion"_s << u"camión"_s << false;
        QTest::newRow("eñe is a letter of its own") << u"caño"_s << u"cano"_s << false;
        QTest::newRow("case of eñe and accents") << u"CAÑÓN"_s << u"cañón"_s << true;
    }

    void equality()
    {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QFETCH(bool, equal);
        QCOMPARE(equalTexts(a, b), equal);
        QCOMPARE(folded(a) == folded(b), equal);
    }

    void spanishAlphabet()
    {
        QStringList words{u"ñandú"_s, u"nube"_s, u"oca"_s, u"Árbol"_s, u"arbusto"_s, u"arbol"_s,
                          u"zeta"_s,  u"10"_s,   u"9"_s,   u"a b"_s,   u"ab"_s,      u"A-B"_s};
        std::stable_sort(words.begin(), words.end(),
                         [](const QString& a, const QString& b) { return spanishOrder(a, b) < 0; });
        QCOMPARE(words, QStringList({u"10"_s, u"9"_s, u"a b"_s, u"A-B"_s, u"ab"_s, u"arbol"_s, u"Árbol"_s, u"arbusto"_s,
                                     u"nube"_s, u"ñandú"_s, u"oca"_s, u"zeta"_s}));
    }

    /// The short cut for ASCII texts must order exactly as the collator does.
    void asciiShortCutOrdersAsTheCollator()
    {
        QCollator collator{QLocale(QLocale::Spanish, QLocale::Argentina)};
        collator.setCaseSensitivity(Qt::CaseInsensitive);
        QRandomGenerator random(20261120);
        const auto text = [&random]() -> QString {
            QString result;
            for (int i = random.bounded(8); i > 0; --i) {
                result += QChar(random.bounded(0x20, 0x7F));
            }
            return result + u'x'; // no trailing blanks: those never count here
        };
        const auto sign = [](int order) { return order < 0 ? -1 : (order > 0 ? 1 : 0); };
        for (int i = 0; i < 20000; ++i) {
            const QString a = text();
            const QString b = text();
            const QString pair = a + u'|' + b;
            QVERIFY2(sign(spanishOrder(a, b)) == sign(collator.compare(a, b)), qPrintable(pair));
            const QByteArray a8 = a.toUtf8();
            const QByteArray b8 = b.toUtf8();
            QCOMPARE(sign(spanishOrderUtf8(a8.toStdString(), b8.toStdString())), sign(spanishOrder(a, b)));
        }
    }

    void like_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<bool>("matches");
        QTest::newRow("prefix") << u"8471.30.12"_s << u"8471%3%"_s << true;
        QTest::newRow("prefix without the digit") << u"8471.50.12"_s << u"8471%3%"_s << false;
        QTest::newRow("everything") << u""_s << u"%"_s << true;
        QTest::newRow("empty pattern") << u"a"_s << u""_s << false;
        QTest::newRow("one character") << u"abc"_s << u"a_c"_s << true;
        QTest::newRow("case") << u"ÑANDÚ"_s << u"ñan%"_s << true;
        QTest::newRow("blanks count") << u"a "_s << u"a"_s << false;
        QTest::newRow("list") << u"b1"_s << u"[a-f]%"_s << true;
        QTest::newRow("list, other") << u"g1"_s << u"[a-f]%"_s << false;
        QTest::newRow("list, excluded") << u"g1"_s << u"[!a-f]%"_s << true;
        QTest::newRow("single characters in a list") << u"x"_s << u"[xyz]"_s << true;
        QTest::newRow("open bracket") << u"[a"_s << u"[a"_s << true;
        QTest::newRow("star is no wildcard") << u"abc"_s << u"a*"_s << false;
        QTest::newRow("star is itself") << u"a*"_s << u"a*"_s << true;
        QTest::newRow("second try of a run") << u"aXbXc"_s << u"a%Xc"_s << true;
        QTest::newRow("many runs") << QString(2000, u'a') << u"%a%a%a%b"_s << false;
    }

    void like()
    {
        QFETCH(QString, text);
        QFETCH(QString, pattern);
        QFETCH(bool, matches);
        QCOMPARE(LikePattern(pattern).matches(text), matches);
        QCOMPARE(LikePattern(pattern).matchesUtf8(text.toStdString()), matches);
    }
};

QTEST_GUILESS_MAIN(tst_Dialect)
#include "tst_Dialect.moc"
