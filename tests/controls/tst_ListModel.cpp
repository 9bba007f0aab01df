#include "controls/ListContents.h"
#include "doubles/FakeConexionDB.h"
#include "doubles/TestStores.h"
#include "doubles/ThrownError.h"

#include <oVELDRA/Store.h>

#include <controls/ListView.h>

#include <QApplication>
#include <QIcon>
#include <QPixmap>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::doubles;
using controls::columnTexts;
using controls::FillScope;
using controls::ListRow;
using controls::ListView;

namespace {

constexpr int Many = 1000;

/// Catalogs in a real store, whose recordsets are in memory.
class StoredCatalogs
{
public:
    void add(const QString& code, const QString& description = u"catálogo"_s)
    {
        m_db->setSql(u"insert into CAT (CATNRO,CATDES) values ('%1','%2')"_s.arg(code, description));
        m_db->execute();
    }

    /// As many as a list has that is worth not being read: A0000, A0001 …
    void addMany()
    {
        const auto burst = m_db->beginBurst();
        for (int number = 0; number < Many; ++number) {
            add(codeOf(number));
        }
        burst->commit();
    }

    [[nodiscard]] static QString codeOf(int number) { return u"A%1"_s.arg(number, 4, 10, QLatin1Char('0')); }

    /// The catalogs whose codes begin so, in table order.
    [[nodiscard]] std::unique_ptr<Recordset> rows(const QString& beginning = {})
    {
        bool ok = false;
        m_db->setSql(u"select CATNRO,CATDES from CAT where CATNRO like '"_s + beginning + u"%'"_s);
        return m_db->openRecordset(ok);
    }

private:
    std::shared_ptr<ConexionDB> m_db = createStore(TestStores::newUrl(), Database::Inputs);
};

/// The same from a connection whose recordsets need not be in memory. A row without a code cannot be read.
std::unique_ptr<Recordset> distantRows(const QList<FakeConexionDB::Row>& rows)
{
    FakeConexionDB db;
    db.willGiveRows({}, {u"CATNRO"_s, u"CATDES"_s}, rows);
    bool ok = false;
    return db.openRecordset(ok);
}

/// Rows of a store that tell when they are given up.
class WatchedRows final : public Recordset
{
public:
    WatchedRows(std::unique_ptr<Recordset> rows, bool& givenUp) : m_rows(std::move(rows)), m_givenUp(givenUp) {}
    WatchedRows(const WatchedRows&) = delete;
    WatchedRows& operator=(const WatchedRows&) = delete;
    ~WatchedRows() override { m_givenUp = true; }

    [[nodiscard]] bool atEof() const override { return m_rows->atEof(); }
    void moveNext() override { m_rows->moveNext(); }
    void moveFirst() override { m_rows->moveFirst(); }
    [[nodiscard]] qsizetype recordCount() const override { return m_rows->recordCount(); }
    [[nodiscard]] QVariant value(QStringView field) const override { return m_rows->value(field); }
    [[nodiscard]] bool isInMemory() const override { return m_rows->isInMemory(); }

private:
    std::unique_ptr<Recordset> m_rows;
    bool& m_givenUp;
};

/// A list of catalogs that counts how many rows it reads.
struct CatalogList
{
    [[nodiscard]] controls::RowReader reader()
    {
        return [this](const Recordset& catalog) -> ListRow {
            const QVariant code = catalog.value(u"CATNRO");
            if (code.isNull()) {
                throw RuntimeError(94);
            }
            ++reads;
            return {{code.toString(), catalog.value(u"CATDES").toString()}};
        };
    }

    void append(std::unique_ptr<Recordset> records) { view.append(std::move(records), reader()); }
    [[nodiscard]] QStringList codes() const { return columnTexts(view, 0); }

    /// In a window with room for some of its rows.
    [[nodiscard]] bool show()
    {
        view.resize(600, 400);
        view.show();
        return QTest::qWaitForWindowActive(&view);
    }

    int reads = 0;
    ListView view{{{u"Código"_s, 12}, {u"Descripción"_s, 30}}};
};

/// A store of many catalogs, and a list that was given them.
struct LongList : CatalogList
{
    LongList()
    {
        store.addMany();
        append(store.rows());
    }

    StoredCatalogs store;
};

} // namespace

class tst_ListModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void onlyTheFirstRowIsReadAtOnce();
    void rowsAreReadUpToTheOneNeededAndNoneTwice();
    void shownListReadsTheRowsInSight();
    void iconsAndAlignmentsReadNothing();
    void rowsOutliveTheConnection();
    void recordsetIsGivenUpWithItsLastRow();

    void rowsBeforeAndBehindKeepTheirOrder_data();
    void rowsBeforeAndBehindKeepTheirOrder();
    void recordsetBehindAnotherKeepsTheOrder();
    void fillSelectsTheFirstRowAndReadsNoOther();
    void emptyRecordsetAddsNothing_data();
    void emptyRecordsetAddsNothing();
    void unknownFieldIsAnErrorAtOnceAndTheListStays_data();
    void unknownFieldIsAnErrorAtOnceAndTheListStays();

    void textOfARowNotReadIsSet();
    void colorOfARowNotReadIsSet();
    void rowNotReadIsRemoved();
    void allRowsAreRemovedFromTheFirst();
    void clearDropsTheRowsNotRead();
    void unknownRowsAreErrorsBeforeAndAfterReading();

    void sortTakesInTheRowsNotRead();
    void sortedListTakesARecordsetIn();

    void recordsetNotInMemoryIsReadAtOnce();
    void recordsetNotInMemoryIsReadFromItsCurrentRow();
    void errorInTheMiddleLeavesTheRowsBefore_data();
    void errorInTheMiddleLeavesTheRowsBefore();

    void typingFindsARowFarDown();
    void endSelectsTheLastRow();
};

void tst_ListModel::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_ListModel::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

// --- when rows are read ---

void tst_ListModel::onlyTheFirstRowIsReadAtOnce()
{
    CatalogList list;
    StoredCatalogs store;
    store.addMany();
    const QSignalSpy insertions(list.view.model(), &QAbstractItemModel::rowsInserted);
    list.append(store.rows());
    QCOMPARE(list.reads, 1);
    QCOMPARE(list.view.rowCount(), Many);
    QCOMPARE(insertions.size(), 1);
    QCOMPARE(insertions.at(0).at(1).toInt(), 0);
    QCOMPARE(insertions.at(0).at(2).toInt(), Many - 1);
}

void tst_ListModel::rowsAreReadUpToTheOneNeededAndNoneTwice()
{
    LongList list;
    QCOMPARE(list.view.text(9, 0), StoredCatalogs::codeOf(9));
    QCOMPARE(list.reads, 10);
    QCOMPARE(list.view.text(5, 0), StoredCatalogs::codeOf(5));
    QCOMPARE(list.view.text(9, 1), u"catálogo"_s);
    QCOMPARE(list.reads, 10);
    QCOMPARE(list.view.model()->index(19, 0).data().toString(), StoredCatalogs::codeOf(19));
    QCOMPARE(list.reads, 20);
    QCOMPARE(list.view.text(Many - 1, 0), StoredCatalogs::codeOf(Many - 1));
    QCOMPARE(list.view.text(0, 0), StoredCatalogs::codeOf(0));
    QCOMPARE(list.reads, Many);
}

void tst_ListModel::shownListReadsTheRowsInSight()
{
    LongList list;
    QVERIFY(list.show());
    const int inSight = 1 + list.view.indexAt(list.view.viewport()->rect().bottomLeft()).row();
    QVERIFY(inSight > 5);
    QVERIFY(inSight < 100);
    QTRY_VERIFY(list.reads >= inSight);
    QCOMPARE_LE(list.reads, inSight + 1); // it may be that the next one just shows
}

void tst_ListModel::iconsAndAlignmentsReadNothing()
{
    LongList list;
    QPixmap picture(16, 16);
    picture.fill(Qt::red);
    list.view.setRowIcon(QIcon(picture));
    const QModelIndex last = list.view.model()->index(Many - 1, 0);
    QVERIFY(!last.data(Qt::DecorationRole).value<QIcon>().isNull());
    QVERIFY(last.data(Qt::TextAlignmentRole).isValid());
    QCOMPARE(list.reads, 1);
}

void tst_ListModel::rowsOutliveTheConnection()
{
    CatalogList list;
    {
        StoredCatalogs store;
        store.addMany();
        list.append(store.rows());
    }
    QCOMPARE(list.reads, 1);
    QCOMPARE(list.view.text(Many - 1, 0), StoredCatalogs::codeOf(Many - 1));
}

void tst_ListModel::recordsetIsGivenUpWithItsLastRow()
{
    bool givenUp = false;
    CatalogList list;
    StoredCatalogs store;
    store.addMany();
    list.append(std::make_unique<WatchedRows>(store.rows(), givenUp));
    QCOMPARE(list.view.text(Many - 2, 0), StoredCatalogs::codeOf(Many - 2));
    QVERIFY(!givenUp);
    QCOMPARE(list.view.text(Many - 1, 0), StoredCatalogs::codeOf(Many - 1));
    QVERIFY(givenUp);
}

// --- several sources ---

void tst_ListModel::rowsBeforeAndBehindKeepTheirOrder_data()
{
    QTest::addColumn<bool>("filling");
    QTest::newRow("one by one") << false;
    QTest::newRow("in a fill") << true;
}

void tst_ListModel::rowsBeforeAndBehindKeepTheirOrder()
{
    QFETCH(const bool, filling);
    CatalogList list;
    StoredCatalogs store;
    for (const auto& code : {u"B1"_s, u"B2"_s, u"B3"_s, u"A1"_s, u"A2"_s}) {
        store.add(code);
    }
    {
        std::optional<FillScope> fill;
        if (filling) {
            fill.emplace(list.view);
        }
        list.view.append({u"first"_s});
        list.append(store.rows(u"B"_s));
        list.view.append({u"between"_s});
        list.append(store.rows(u"A"_s));
        list.append(distantRows({{u"far"_s, {}}}));
        list.view.append({u"last"_s});
    }
    QCOMPARE(list.codes(),
             (QStringList{u"first"_s, u"B1"_s, u"B2"_s, u"B3"_s, u"between"_s, u"A1"_s, u"A2"_s, u"far"_s, u"last"_s}));
    QCOMPARE(list.reads, 6);
}

void tst_ListModel::recordsetBehindAnotherKeepsTheOrder()
{
    LongList list;
    list.store.add(u"B1"_s);
    list.store.add(u"B2"_s);
    list.append(list.store.rows(u"B"_s));
    QCOMPARE(list.view.rowCount(), Many + 2);
    QCOMPARE(list.reads, Many + 1); // the one before is read to its end, the new one is not
    QCOMPARE(list.codes().mid(Many - 1), (QStringList{StoredCatalogs::codeOf(Many - 1), u"B1"_s, u"B2"_s}));
}

void tst_ListModel::fillSelectsTheFirstRowAndReadsNoOther()
{
    CatalogList list;
    StoredCatalogs store;
    store.addMany();
    {
        const FillScope fill(list.view);
        list.view.clear();
        list.append(store.rows());
    }
    QCOMPARE(list.view.currentRow(), 0);
    QCOMPARE(list.view.rowCount(), Many);
    QCOMPARE(list.reads, 1);
}

void tst_ListModel::emptyRecordsetAddsNothing_data()
{
    QTest::addColumn<bool>("inMemory");
    QTest::newRow("in memory") << true;
    QTest::newRow("not in memory") << false;
}

void tst_ListModel::emptyRecordsetAddsNothing()
{
    QFETCH(const bool, inMemory);
    LongList list;
    const QSignalSpy insertions(list.view.model(), &QAbstractItemModel::rowsInserted);
    auto empty = inMemory ? list.store.rows(u"none"_s) : distantRows({});
    QCOMPARE(empty->isInMemory(), inMemory);
    list.append(std::move(empty));
    QCOMPARE(insertions.size(), 0);
    QCOMPARE(list.view.rowCount(), Many);
    QCOMPARE(list.reads, 1); // neither from it nor, because of it, from the one before
    QCOMPARE(list.view.text(Many - 1, 0), StoredCatalogs::codeOf(Many - 1));
}

void tst_ListModel::unknownFieldIsAnErrorAtOnceAndTheListStays_data()
{
    rowsBeforeAndBehindKeepTheirOrder_data();
}

void tst_ListModel::unknownFieldIsAnErrorAtOnceAndTheListStays()
{
    QFETCH(const bool, filling);
    LongList list;
    const QSignalSpy insertions(list.view.model(), &QAbstractItemModel::rowsInserted);
    {
        std::optional<FillScope> fill;
        if (filling) {
            fill.emplace(list.view);
            list.view.append({u"held back"_s});
        }
        const auto append = [&] {
            list.view.append(list.store.rows(), [](const Recordset& catalog) -> ListRow {
                return {{catalog.value(u"PRDNRO").toString()}};
            });
        };
        QCOMPARE(numberThrownBy(append), 3265);
        QCOMPARE(list.view.rowCount(), Many);
        QCOMPARE(insertions.size(), 0);
        QCOMPARE(list.reads, 1);
    }
    QCOMPARE(list.view.text(Many - 1, 0), StoredCatalogs::codeOf(Many - 1));
    if (filling) {
        QCOMPARE(list.view.rowCount(), Many + 1);
        QCOMPARE(list.view.text(Many, 0), u"held back"_s);
    } else {
        QCOMPARE(list.view.rowCount(), Many);
    }
}

// --- changes to rows that were not read ---

void tst_ListModel::textOfARowNotReadIsSet()
{
    LongList list;
    const QSignalSpy changes(list.view.model(), &QAbstractItemModel::dataChanged);
    list.view.setText(500, 1, u"otro"_s);
    QCOMPARE(list.reads, 501);
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.at(0).at(0).toModelIndex(), list.view.model()->index(500, 1));
    QCOMPARE(list.view.text(500, 0), StoredCatalogs::codeOf(500));
    QCOMPARE(list.view.text(500, 1), u"otro"_s);
    QCOMPARE(list.view.text(501, 1), u"catálogo"_s);
}

void tst_ListModel::colorOfARowNotReadIsSet()
{
    LongList list;
    list.view.setColor(500, QColor(Qt::red));
    QCOMPARE(list.reads, 501);
    const QAbstractItemModel& model = *list.view.model();
    QCOMPARE(model.index(500, 1).data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
    QVERIFY(!model.index(499, 1).data(Qt::ForegroundRole).isValid());
    QVERIFY(!model.index(501, 1).data(Qt::ForegroundRole).isValid());
    QCOMPARE(list.view.text(500, 0), StoredCatalogs::codeOf(500));
}

void tst_ListModel::rowNotReadIsRemoved()
{
    LongList list;
    list.view.removeRow(500);
    QCOMPARE(list.reads, 501);
    QCOMPARE(list.view.rowCount(), Many - 1);
    QCOMPARE(list.view.text(499, 0), StoredCatalogs::codeOf(499));
    QCOMPARE(list.view.text(500, 0), StoredCatalogs::codeOf(501));
    list.view.removeRow(Many - 2); // the last one
    QCOMPARE(list.view.rowCount(), Many - 2);
    QCOMPARE(list.view.text(Many - 3, 0), StoredCatalogs::codeOf(Many - 2));
}

void tst_ListModel::allRowsAreRemovedFromTheFirst()
{
    CatalogList list;
    StoredCatalogs store;
    for (const auto& code : {u"A1"_s, u"A2"_s, u"A3"_s}) {
        store.add(code);
    }
    list.append(store.rows());
    QStringList removed;
    while (list.view.rowCount() > 0) {
        removed.append(list.view.text(0, 0));
        list.view.removeRow(0);
    }
    QCOMPARE(removed, (QStringList{u"A1"_s, u"A2"_s, u"A3"_s}));
    list.append(store.rows());
    QCOMPARE(list.codes(), removed);
}

void tst_ListModel::clearDropsTheRowsNotRead()
{
    bool givenUp = false;
    CatalogList list;
    StoredCatalogs store;
    store.addMany();
    list.append(std::make_unique<WatchedRows>(store.rows(), givenUp));
    QVERIFY(!givenUp);
    list.view.clear();
    QVERIFY(givenUp);
    QCOMPARE(list.view.rowCount(), 0);
    QCOMPARE(list.reads, 1);
    store.add(u"B1"_s);
    store.add(u"B2"_s);
    list.append(store.rows(u"B"_s));
    list.view.append({u"last"_s});
    QCOMPARE(list.codes(), (QStringList{u"B1"_s, u"B2"_s, u"last"_s}));
    QCOMPARE(list.reads, 3);
}

void tst_ListModel::unknownRowsAreErrorsBeforeAndAfterReading()
{
    LongList list;
    for (int pass = 0; pass < 2; ++pass) {
        QCOMPARE(numberThrownBy([&] { (void)list.view.text(Many, 0); }), 9);
        QCOMPARE(numberThrownBy([&] { (void)list.view.text(-1, 0); }), 9);
        QCOMPARE(numberThrownBy([&] { list.view.setText(Many, 0, {}); }), 9);
        QCOMPARE(numberThrownBy([&] { list.view.setColor(Many, {}); }), 9);
        QCOMPARE(numberThrownBy([&] { list.view.removeRow(Many); }), 9);
        QCOMPARE(list.reads, pass == 0 ? 1 : Many);
        QCOMPARE(list.view.text(Many - 1, 0), StoredCatalogs::codeOf(Many - 1));
    }
}

// --- sorting ---

void tst_ListModel::sortTakesInTheRowsNotRead()
{
    CatalogList list;
    StoredCatalogs store;
    for (const auto& code : {u"oso"_s, u"Ñandú"_s, u"nube"_s, u"Árbol"_s}) {
        store.add(code);
    }
    list.append(store.rows());
    list.view.selectRow(2);
    list.view.model()->sort(0);
    QCOMPARE(list.reads, 4);
    QCOMPARE(list.codes(), (QStringList{u"Árbol"_s, u"nube"_s, u"Ñandú"_s, u"oso"_s}));
    QCOMPARE(list.view.currentRow(), 1); // still "nube"
}

void tst_ListModel::sortedListTakesARecordsetIn()
{
    CatalogList list;
    StoredCatalogs store;
    for (const auto& code : {u"D"_s, u"A"_s, u"C"_s}) {
        store.add(code);
    }
    list.view.append({u"B"_s});
    list.view.model()->sort(0);
    list.append(store.rows());
    QCOMPARE(list.codes(), (QStringList{u"A"_s, u"B"_s, u"C"_s, u"D"_s}));
    QCOMPARE(list.reads, 3);
    {
        const FillScope fill(list.view);
        list.view.clear();
        list.append(store.rows());
        list.view.append({u"BB"_s});
    }
    QCOMPARE(list.codes(), (QStringList{u"A"_s, u"BB"_s, u"C"_s, u"D"_s}));

    list.view.unsort();
    list.append(store.rows());
    QCOMPARE(list.codes(), (QStringList{u"A"_s, u"BB"_s, u"C"_s, u"D"_s, u"D"_s, u"A"_s, u"C"_s}));
}

// --- recordsets that are not in memory ---

void tst_ListModel::recordsetNotInMemoryIsReadAtOnce()
{
    CatalogList list;
    list.append(distantRows({{u"A1"_s, u"uno"_s}, {u"A2"_s, u"dos"_s}, {u"A3"_s, {}}}));
    QCOMPARE(list.reads, 3);
    QCOMPARE(list.codes(), (QStringList{u"A1"_s, u"A2"_s, u"A3"_s}));
    QCOMPARE(columnTexts(list.view, 1), (QStringList{u"uno"_s, u"dos"_s, QString()}));
    QCOMPARE(list.reads, 3);
}

void tst_ListModel::recordsetNotInMemoryIsReadFromItsCurrentRow()
{
    CatalogList list;
    auto rows = distantRows({{u"A1"_s, {}}, {u"A2"_s, {}}, {u"A3"_s, {}}});
    rows->moveNext();
    list.append(std::move(rows));
    QCOMPARE(list.codes(), (QStringList{u"A2"_s, u"A3"_s}));
}

void tst_ListModel::errorInTheMiddleLeavesTheRowsBefore_data()
{
    rowsBeforeAndBehindKeepTheirOrder_data();
}

void tst_ListModel::errorInTheMiddleLeavesTheRowsBefore()
{
    QFETCH(const bool, filling);
    CatalogList list;
    const auto fill = [&] {
        std::optional<FillScope> scope;
        if (filling) {
            scope.emplace(list.view);
        }
        list.view.append({u"first"_s});
        list.append(distantRows({{u"A1"_s, {}}, {u"A2"_s, {}}, {{}, {}}, {u"A4"_s, {}}}));
    };
    QVERIFY(list.show());
    QCOMPARE(numberThrownBy(fill), 94);
    QCOMPARE(list.codes(), (QStringList{u"first"_s, u"A1"_s, u"A2"_s}));
    QVERIFY(list.view.isVisible());
}

// --- the keyboard ---

void tst_ListModel::typingFindsARowFarDown()
{
    // However slowly the keys come, they are one text.
    const int interval = QApplication::keyboardInputInterval();
    const auto restored = qScopeGuard([interval] { QApplication::setKeyboardInputInterval(interval); });
    QApplication::setKeyboardInputInterval(600'000);
    LongList list;
    list.view.selectRow(0);
    QVERIFY(list.show());
    QTest::keyClicks(&list.view, StoredCatalogs::codeOf(800));
    QCOMPARE(list.view.currentRow(), 800);
    QVERIFY(list.view.selectionModel()->isRowSelected(800));
    QVERIFY(list.view.viewport()->rect().intersects(list.view.visualRect(list.view.currentIndex())));
    QCOMPARE_LT(list.reads, Many);
}

void tst_ListModel::endSelectsTheLastRow()
{
    LongList list;
    list.view.selectRow(0);
    QVERIFY(list.show());
    QTest::keyClick(&list.view, Qt::Key_End);
    QCOMPARE(list.view.currentRow(), Many - 1);
    QVERIFY(list.view.selectionModel()->isRowSelected(Many - 1));
    QCOMPARE(list.view.text(list.view.currentRow(), 0), StoredCatalogs::codeOf(Many - 1));
    QVERIFY(list.view.viewport()->rect().intersects(list.view.visualRect(list.view.currentIndex())));
    QTest::keyClick(&list.view, Qt::Key_Home);
    QCOMPARE(list.view.currentRow(), 0);
}

QTEST_MAIN(tst_ListModel)
#include "tst_ListModel.moc"
