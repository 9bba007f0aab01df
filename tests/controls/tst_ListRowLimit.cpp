#include "doubles/ThrownError.h"

#include <controls/ListModel.h>

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;

namespace {

/// What happened to a recordset, which may be gone by then.
struct Reads
{
    int values = 0;
    bool alive = true;
};

/// Rows that hold their own number, in memory or not.
class NumberedRows final : public Recordset
{
public:
    NumberedRows(int rows, bool inMemory, Reads& reads) : m_rows(rows), m_inMemory(inMemory), m_reads(reads) {}
    NumberedRows(const NumberedRows&) = delete;
    NumberedRows& operator=(const NumberedRows&) = delete;
    ~NumberedRows() override { m_reads.alive = false; }

    [[nodiscard]] bool atEof() const override { return m_row == m_rows; }
    void moveNext() override
    {
        if (atEof()) {
            throw RuntimeError(3021);
        }
        ++m_row;
    }
    void moveFirst() override { m_row = 0; }
    [[nodiscard]] qsizetype recordCount() const override { return m_rows; }
    [[nodiscard]] QVariant value(QStringView) const override
    {
        if (atEof()) {
            throw RuntimeError(3021);
        }
        ++m_reads.values;
        return m_row;
    }
    [[nodiscard]] bool isInMemory() const override { return m_inMemory; }

private:
    int m_rows;
    bool m_inMemory;
    Reads& m_reads;
    int m_row = 0;
};

ListRow numberOf(const Recordset& record)
{
    return {{record.value(u"N").toString()}};
}

QStringList texts(const ListModel& model)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row) {
        texts.append(model.text(row, 0));
    }
    return texts;
}

ListRow failAtTwo(const Recordset& record)
{
    ListRow row = numberOf(record);
    if (row.cells.constFirst() == u"2") {
        throw RuntimeError(11);
    }
    return row;
}

} // namespace

class tst_ListRowLimit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesAtMostTheRowsAskedFor_data();
    void takesAtMostTheRowsAskedFor();
    void rowsInMemoryAreReadWhenTheyAreNeeded();
    void rowsPastTheLimitAreNeverRead();
    void recordsGoWithTheirLastRow_data();
    void recordsGoWithTheirLastRow();
    void rowsAppendedLaterStandBehindThoseWithinTheLimit();
    void removedRowsDoNotCountAgainstTheLimit();
    void sortingReadsNoMoreThanTheLimit();
    void failingRowLeavesTheRowsBefore();
    void rowThatFailsLaterShowsItsError();
};

void tst_ListRowLimit::takesAtMostTheRowsAskedFor_data()
{
    QTest::addColumn<bool>("inMemory");
    QTest::addColumn<int>("rows");
    QTest::addColumn<qsizetype>("most");
    QTest::addColumn<QStringList>("expected");
    for (const bool inMemory : {false, true}) {
        const auto row = [inMemory](const char* what) -> QTestData& {
            return QTest::addRow("%s, %s", what, inMemory ? "in memory" : "not in memory");
        };
        row("no limit") << inMemory << 3 << AllRows << QStringList{u"0"_s, u"1"_s, u"2"_s};
        row("limit above") << inMemory << 3 << qsizetype{4} << QStringList{u"0"_s, u"1"_s, u"2"_s};
        row("limit at the end") << inMemory << 3 << qsizetype{3} << QStringList{u"0"_s, u"1"_s, u"2"_s};
        row("limit within") << inMemory << 3 << qsizetype{2} << QStringList{u"0"_s, u"1"_s};
        row("one row") << inMemory << 3 << qsizetype{1} << QStringList{u"0"_s};
        row("no row") << inMemory << 3 << qsizetype{0} << QStringList{};
        row("empty") << inMemory << 0 << AllRows << QStringList{};
    }
}

void tst_ListRowLimit::takesAtMostTheRowsAskedFor()
{
    QFETCH(const bool, inMemory);
    QFETCH(const int, rows);
    QFETCH(const qsizetype, most);
    QFETCH(const QStringList, expected);
    ListModel model({{u"N"_s}});
    const QSignalSpy insertions(&model, &QAbstractItemModel::rowsInserted);
    Reads reads;
    model.beginFill();
    model.append(std::make_unique<NumberedRows>(rows, inMemory, reads), numberOf, most);
    model.endFill();
    QCOMPARE(model.rowCount(), static_cast<int>(expected.size()));
    QCOMPARE(insertions.size(), expected.isEmpty() ? 0 : 1);
    QCOMPARE(texts(model), expected);
}

void tst_ListRowLimit::rowsInMemoryAreReadWhenTheyAreNeeded()
{
    Reads reads;
    ListModel model({{u"N"_s}});
    model.append(std::make_unique<NumberedRows>(100'000, true, reads), numberOf);
    QCOMPARE(model.rowCount(), 100'000);
    QCOMPARE(reads.values, 1);
    QCOMPARE(model.text(9, 0), u"9"_s);
    QCOMPARE(reads.values, 10);
    QCOMPARE(model.text(3, 0), u"3"_s);
    QCOMPARE(reads.values, 10);
}

void tst_ListRowLimit::rowsPastTheLimitAreNeverRead()
{
    for (const bool inMemory : {false, true}) {
        Reads reads;
        ListModel model({{u"N"_s}});
        model.append(std::make_unique<NumberedRows>(10, inMemory, reads), numberOf, 4);
        QCOMPARE(texts(model).size(), 4);
        QCOMPARE(reads.values, 4);
    }
}

void tst_ListRowLimit::recordsGoWithTheirLastRow_data()
{
    QTest::addColumn<qsizetype>("most");
    QTest::addColumn<int>("shown");
    QTest::newRow("all rows") << AllRows << 5;
    QTest::newRow("some rows") << qsizetype{2} << 2;
    QTest::newRow("one row") << qsizetype{1} << 1;
}

void tst_ListRowLimit::recordsGoWithTheirLastRow()
{
    QFETCH(const qsizetype, most);
    QFETCH(const int, shown);
    Reads reads;
    ListModel model({{u"N"_s}});
    model.append(std::make_unique<NumberedRows>(5, true, reads), numberOf, most);
    QCOMPARE(reads.alive, shown > 1);
    QCOMPARE(texts(model).size(), shown);
    QVERIFY(!reads.alive);
}

void tst_ListRowLimit::rowsAppendedLaterStandBehindThoseWithinTheLimit()
{
    Reads first;
    Reads second;
    ListModel model({{u"N"_s}});
    model.append({u"antes"_s});
    model.append(std::make_unique<NumberedRows>(9, true, first), numberOf, 2);
    model.append(std::make_unique<NumberedRows>(9, true, second), numberOf, 3);
    model.append({u"después"_s});
    QCOMPARE(texts(model), (QStringList{u"antes"_s, u"0"_s, u"1"_s, u"0"_s, u"1"_s, u"2"_s, u"después"_s}));
}

void tst_ListRowLimit::removedRowsDoNotCountAgainstTheLimit()
{
    Reads reads;
    ListModel model({{u"N"_s}});
    model.append(std::make_unique<NumberedRows>(9, true, reads), numberOf, 4);
    model.removeRow(1);
    QCOMPARE(texts(model), (QStringList{u"0"_s, u"2"_s, u"3"_s}));
    QCOMPARE(reads.values, 4);
}

void tst_ListRowLimit::sortingReadsNoMoreThanTheLimit()
{
    Reads reads;
    ListModel model({{u"N"_s}});
    model.append({u"00"_s});
    model.sort(0);
    model.append(std::make_unique<NumberedRows>(9, true, reads), numberOf, 3);
    QCOMPARE(texts(model), (QStringList{u"0"_s, u"00"_s, u"1"_s, u"2"_s}));
    QCOMPARE(reads.values, 3);
    QVERIFY(!reads.alive);
}

void tst_ListRowLimit::failingRowLeavesTheRowsBefore()
{
    Reads reads;
    ListModel model({{u"N"_s}});
    QCOMPARE(numberThrownBy([&] { model.append(std::make_unique<NumberedRows>(9, false, reads), failAtTwo); }), 11);
    QCOMPARE(texts(model), (QStringList{u"0"_s, u"1"_s}));
}

void tst_ListRowLimit::rowThatFailsLaterShowsItsError()
{
    Reads reads;
    ListModel model({{u"N"_s}});
    model.append(std::make_unique<NumberedRows>(4, true, reads), failAtTwo);
    QCOMPARE(texts(model), (QStringList{u"0"_s, u"1"_s, u"División por cero"_s, u"3"_s}));
    // The first row is read at once, so its error is the caller's and nothing is added.
    const auto fail = [](const Recordset&) -> ListRow { throw RuntimeError(11); };
    QCOMPARE(numberThrownBy([&] { model.append(std::make_unique<NumberedRows>(4, true, reads), fail); }), 11);
    QCOMPARE(model.rowCount(), 4);
}

QTEST_MAIN(tst_ListRowLimit)
#include "tst_ListRowLimit.moc"
