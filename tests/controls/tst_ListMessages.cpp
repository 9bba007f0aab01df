#include <controls/ListMessages.h>

#include <QListView>
#include <QStandardItemModel>
#include <QStringListModel>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA::controls;

namespace {

quint32 packed(int x, int y)
{
    return static_cast<quint32>(static_cast<quint16>(x)) | static_cast<quint32>(static_cast<quint16>(y)) << 16U;
}

/// A shown list of 20 items of which some fit.
struct ShownList
{
    ShownList()
    {
        QStringList items;
        for (int item = 0; item < 20; ++item) {
            items.append(u"item %1"_s.arg(item));
        }
        model.setStringList(items);
        list.setModel(&model);
        list.resize(200, 100);
        list.show();
    }

    [[nodiscard]] QPoint middleOf(int row) const { return list.visualRect(model.index(row)).center(); }

    QStringListModel model;
    QListView list;
};

} // namespace

class tst_ListMessages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findString_data();
    void findString();
    void findStringLooksInTheGivenColumn();
    void pointOnAnItem();
    void pointOnAScrolledItem();
    void pointOutsideGivesNearestItemAndMark_data();
    void pointOutsideGivesNearestItemAndMark();
    void pointBelowTheLastItemIsInside();
    void pointBetweenItems();
    void emptyListHasNoItem();
};

void tst_ListMessages::findString_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("startAfter");
    QTest::addColumn<int>("row");
    QTest::newRow("first of several") << u"Ab"_s << -1 << 0;
    QTest::newRow("any letter case") << u"aBL"_s << -1 << 2;
    QTest::newRow("behind the start") << u"Ab"_s << 0 << 2;
    QTest::newRow("wraps") << u"Abe"_s << 2 << 0;
    QTest::newRow("the start itself comes last") << u"Zeta"_s << 3 << 3;
    QTest::newRow("only at the beginning") << u"eta"_s << -1 << -1;
    QTest::newRow("whole item") << u"Beta"_s << -1 << 1;
    QTest::newRow("longer than the item") << u"Betaa"_s << -1 << -1;
    QTest::newRow("empty text") << u""_s << -1 << -1;
    QTest::newRow("start behind the end") << u"Ab"_s << 99 << 0;
    QTest::newRow("start before the beginning") << u"Ab"_s << -9 << 0;
    QTest::newRow("accents count") << u"Ába"_s << -1 << -1;
}

void tst_ListMessages::findString()
{
    QFETCH(const QString, text);
    QFETCH(const int, startAfter);
    QFETCH(const int, row);
    const QStringListModel model({u"Abeja"_s, u"Beta"_s, u"ablanda"_s, u"Zeta"_s});
    QCOMPARE(oVELDRA::controls::findString(model, text, startAfter), row);
    QCOMPARE(oVELDRA::controls::findString(QStringListModel(), text, startAfter), -1);
}

void tst_ListMessages::findStringLooksInTheGivenColumn()
{
    QStandardItemModel model(2, 2);
    model.setItem(0, 0, new QStandardItem(u"uno"_s));
    model.setItem(1, 1, new QStandardItem(u"uno"_s));
    QCOMPARE(oVELDRA::controls::findString(model, u"un", -1), 0);
    QCOMPARE(oVELDRA::controls::findString(model, u"un", -1, 1), 1);
}

void tst_ListMessages::pointOnAnItem()
{
    const ShownList shown;
    for (const int row : {0, 1, 2}) {
        const QPoint point = shown.middleOf(row);
        QCOMPARE(itemFromPoint(shown.list, packed(point.x(), point.y())), row);
    }
}

void tst_ListMessages::pointOnAScrolledItem()
{
    ShownList shown;
    shown.list.scrollToBottom();
    const QPoint point = shown.middleOf(19);
    QCOMPARE(itemFromPoint(shown.list, packed(point.x(), point.y())), 19);
}

void tst_ListMessages::pointOutsideGivesNearestItemAndMark_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("row");
    QTest::newRow("left of it") << -1 << 3 << 0;
    QTest::newRow("far to the right") << 32000 << 3 << 0;
    QTest::newRow("above it") << 5 << -200 << 0;
}

void tst_ListMessages::pointOutsideGivesNearestItemAndMark()
{
    QFETCH(const int, x);
    QFETCH(const int, y);
    QFETCH(const int, row);
    const ShownList shown;
    QCOMPARE(itemFromPoint(shown.list, packed(x, y)), row + OutsideClientArea);
    const int bottom = shown.list.viewport()->rect().bottom();
    const int lowest = shown.list.indexAt(QPoint(5, bottom)).row();
    QVERIFY(lowest > 0);
    QCOMPARE(itemFromPoint(shown.list, packed(5, bottom + 1)), lowest + OutsideClientArea);
}

void tst_ListMessages::pointBelowTheLastItemIsInside()
{
    ShownList shown;
    shown.model.setStringList({u"uno"_s, u"dos"_s});
    const int bottom = shown.list.viewport()->rect().bottom();
    QVERIFY(shown.list.visualRect(shown.model.index(1)).bottom() < bottom);
    QCOMPARE(itemFromPoint(shown.list, packed(5, bottom)), 1);
}

void tst_ListMessages::pointBetweenItems()
{
    ShownList shown;
    shown.list.setSpacing(8);
    QCoreApplication::processEvents();
    const int belowFirst = shown.list.visualRect(shown.model.index(0)).bottom() + 2;
    QVERIFY(!shown.list.indexAt(QPoint(20, belowFirst)).isValid());
    QCOMPARE(itemFromPoint(shown.list, packed(20, belowFirst)), 0);
}

void tst_ListMessages::emptyListHasNoItem()
{
    QListView list;
    QCOMPARE(itemFromPoint(list, packed(1, 1)), -1);
    QStringListModel model;
    list.setModel(&model);
    QCOMPARE(itemFromPoint(list, packed(1, 1)), -1);
}

QTEST_MAIN(tst_ListMessages)
#include "tst_ListMessages.moc"
