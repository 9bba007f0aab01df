#include <nomenclature/Position.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA::nomenclature;

class tst_Position : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void split_data();
    void split();
    void typedPositionTakesItsLastCharacterAsControl_data();
    void typedPositionTakesItsLastCharacterAsControl();
    void joinedFormHasAPointBetweenTheFirstTwoParts();
    void splittingAndJoiningGivesTheSame();
    void onlyFourteenAndFifteenCharactersAreALength();
    void commasBecomePoints_data();
    void commasBecomePoints();
    void searchPatternTakesPointsAsWildcards_data();
    void searchPatternTakesPointsAsWildcards();
};

void tst_Position::split_data()
{
    QTest::addColumn<QString>("position");
    QTest::addColumn<QStringList>("parts");
    QTest::newRow("full") << u"8471.30.12.000A"_s << QStringList{u"8471.30.12"_s, u"000"_s, u"A"_s};
    QTest::newRow("without control") << u"8471.30.12.000"_s << QStringList{u"8471.30.12"_s, u"000"_s, u""_s};
    QTest::newRow("subheading only") << u"8471.30.12"_s << QStringList{u"8471.30.12"_s, u""_s, u""_s};
    QTest::newRow("short") << u"84"_s << QStringList{u"84"_s, u""_s, u""_s};
    QTest::newRow("empty") << u""_s << QStringList{u""_s, u""_s, u""_s};
    QTest::newRow("what follows is not used")
        << u"8471.30.12.000AB"_s << QStringList{u"8471.30.12"_s, u"000"_s, u"A"_s};
    QTest::newRow("whatever joins them") << u"8471.30.12-000A"_s << QStringList{u"8471.30.12"_s, u"000"_s, u"A"_s};
}

void tst_Position::split()
{
    QFETCH(const QString, position);
    QFETCH(const QStringList, parts);
    const PositionParts split = splitPosition(position);
    QCOMPARE((QStringList{split.subheading, split.opening, split.control}), parts);
}

void tst_Position::typedPositionTakesItsLastCharacterAsControl_data()
{
    QTest::addColumn<QString>("position");
    QTest::addColumn<QStringList>("parts");
    QTest::newRow("full") << u"8471.30.12.000A"_s << QStringList{u"8471.30.12"_s, u"000"_s, u"A"_s};
    QTest::newRow("14 characters: the last one counts twice")
        << u"8471.30.12.00A"_s << QStringList{u"8471.30.12"_s, u"00A"_s, u"A"_s};
    QTest::newRow("14 digits and points") << u"8471.30.12.000"_s << QStringList{u"8471.30.12"_s, u"000"_s, u"0"_s};
}

void tst_Position::typedPositionTakesItsLastCharacterAsControl()
{
    QFETCH(const QString, position);
    QFETCH(const QStringList, parts);
    const PositionParts split = splitTypedPosition(position);
    QCOMPARE((QStringList{split.subheading, split.opening, split.control}), parts);
}

void tst_Position::joinedFormHasAPointBetweenTheFirstTwoParts()
{
    QCOMPARE(joinedPosition({u"8471.30.12"_s, u"000"_s, u"A"_s}), u"8471.30.12.000A"_s);
}

void tst_Position::splittingAndJoiningGivesTheSame()
{
    const PositionParts parts{u"0101.21.00"_s, u"100"_s, u"W"_s};
    QCOMPARE(splitPosition(joinedPosition(parts)), parts);
    QCOMPARE(splitTypedPosition(joinedPosition(parts)), parts);
}

void tst_Position::onlyFourteenAndFifteenCharactersAreALength()
{
    for (qsizetype length = 0; length < 100; ++length) {
        QCOMPARE(isPositionLength(length), length == 14 || length == 15);
    }
}

void tst_Position::commasBecomePoints_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("pointed");
    QTest::newRow("commas") << u"8471,30,12,000A"_s << u"8471.30.12.000A"_s;
    QTest::newRow("mixed") << u"8471,30.12,000A"_s << u"8471.30.12.000A"_s;
    QTest::newRow("points") << u"8471.30"_s << u"8471.30"_s;
    QTest::newRow("only commas") << u",,,"_s << u"..."_s;
    QTest::newRow("empty") << u""_s << u""_s;
}

void tst_Position::commasBecomePoints()
{
    QFETCH(const QString, typed);
    QFETCH(const QString, pointed);
    QCOMPARE(commasToPoints(typed), pointed);
}

void tst_Position::searchPatternTakesPointsAsWildcards_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("pattern");
    QTest::newRow("8471.3") << u"8471.3"_s << u"8471%3%"_s;
    QTest::newRow("every point") << u"8471.30.12"_s << u"8471%30%12%"_s;
    QTest::newRow("without points") << u"84"_s << u"84%"_s;
    QTest::newRow("ends with a point") << u"8471."_s << u"8471%%"_s;
    QTest::newRow("empty") << u""_s << u"%"_s;
    QTest::newRow("commas and blanks stay") << u" 8471,3 "_s << u" 8471,3 %"_s;
}

void tst_Position::searchPatternTakesPointsAsWildcards()
{
    QFETCH(const QString, typed);
    QFETCH(const QString, pattern);
    QCOMPARE(searchPattern(typed), pattern);
}

QTEST_GUILESS_MAIN(tst_Position)
#include "tst_Position.moc"
