#include <runtime/Texts.h>

#include <QTest>

using namespace Qt::StringLiterals;

class tst_Texts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void trimRemovesBlanksOnly_data();
    void trimRemovesBlanksOnly();
};

void tst_Texts::trimRemovesBlanksOnly_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("trimmed");

    QTest::newRow("both ends") << u"  a b  "_s << u"a b"_s;
    QTest::newRow("front only") << u"  a"_s << u"a"_s;
    QTest::newRow("nothing to do") << u"a"_s << u"a"_s;
    QTest::newRow("blanks only") << u"   "_s << u""_s;
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("tabs stay") << u" \ta\t "_s << u"\ta\t"_s;
    QTest::newRow("line ends stay") << u" a\r\n"_s << u"a\r\n"_s;
    QTest::newRow("no-break blanks stay") << u" \u00A0a\u00A0 "_s << u"\u00A0a\u00A0"_s;
    QTest::newRow("long") << QString(QString(10'000, u' ') + u"a"_s) << u"a"_s;
}

void tst_Texts::trimRemovesBlanksOnly()
{
    QFETCH(const QString, text);
    QTEST(oVELDRA::runtime::Trim(text), "trimmed");
}

QTEST_GUILESS_MAIN(tst_Texts)
#include "tst_Texts.moc"
