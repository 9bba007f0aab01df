#include "controls/ListContents.h"
#include "doubles/ThrownError.h"

#include <controls/ListView.h>

#include <QHeaderView>
#include <QLineEdit>
#include <QProxyStyle>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::doubles;
using controls::FillScope;
using controls::ListView;

namespace {

std::vector<controls::ListColumn> columns()
{
    return {{u"Código"_s, 12}, {u"Descripción"_s, 30}, {u"Cantidad"_s, 14, Qt::AlignRight}};
}

/// A style that has colours of its own for selected texts, which no palette tells: they are there when the style is
/// given the texts.
class OwnSelectionStyle : public QProxyStyle
{
public:
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        const auto* const item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
        if (element == CE_ItemViewItem && item != nullptr && item->state.testFlag(State_Selected)) {
            m_selectedTexts.append(item->text);
        }
        QProxyStyle::drawControl(element, option, painter, widget);
    }

    [[nodiscard]] QStringList takeSelectedTexts() { return std::exchange(m_selectedTexts, {}); }

private:
    mutable QStringList m_selectedTexts; // drawing is const
};

} // namespace

class tst_ListView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void columnsHaveTitlesWidthsAndAlignment();
    void cellsAreDisplayRole();
    void missingCellsAreEmpty();
    void colorIsForegroundOfSubItemsOnly();
    void iconIsDecorationOfFirstCellsOnly();
    void changedCellsTellTheView();
    void unknownRowsAndColumnsAreErrors();
    void selectedRowIsCurrentIndex();
    void keyboardMovesTheSelectedRow();
    void removedRowLeavesItsNeighbourSelected();
    void nothingIsEditedInPlace();

    void fillHidesTheListAndInsertsOnce();
    void fillSelectsTheFirstRow();
    void fillKeepsTheFocusWithoutTouchingOthers();
    void fillKeepsAListHiddenThatWasHidden();
    void fillInterruptedByAnErrorKeepsItsRows();
    void fillsNest();
    void hundredThousandRowsAreOneInsertion();

    void titlesDoNotSortUnlessAskedTo();
    void titleSortsAscendingAtEveryClick();
    void sortIsStableAndOrdersAsTheLanguageDoes();
    void selectionFollowsItsRowWhenSorted();
    void laterRowsAreSortedInUntilUnsorted();
    void sizesFollowTheFont();
    void theSelectedRowIsDrawnByTheStyle();
};

void tst_ListView::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_ListView::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

void tst_ListView::columnsHaveTitlesWidthsAndAlignment()
{
    const ListView list(columns());
    const QAbstractItemModel& model = *list.model();
    QCOMPARE(model.columnCount(), 3);
    QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), u"Descripción"_s);
    QCOMPARE(model.headerData(2, Qt::Horizontal, Qt::TextAlignmentRole).toInt(),
             int(Qt::AlignRight | Qt::AlignVCenter));
    QVERIFY(!model.headerData(3, Qt::Horizontal).isValid());
    QVERIFY(!model.headerData(0, Qt::Vertical).isValid());
    const int digit = list.fontMetrics().horizontalAdvance(u'0');
    QVERIFY(list.columnWidth(0) >= 12 * digit);
    QVERIFY(list.columnWidth(1) >= 30 * digit);
}

void tst_ListView::cellsAreDisplayRole()
{
    ListView list(columns());
    list.append({u"A1"_s, u"Alambre"_s, u"5"_s});
    const QAbstractItemModel& model = *list.model();
    QCOMPARE(model.index(0, 1).data().toString(), u"Alambre"_s);
    QCOMPARE(model.index(0, 2).data(Qt::TextAlignmentRole).toInt(), int(Qt::AlignRight | Qt::AlignVCenter));
    QCOMPARE(model.index(0, 0).data(Qt::TextAlignmentRole).toInt(), int(Qt::AlignLeft | Qt::AlignVCenter));
    QVERIFY(!model.index(0, 1).data(Qt::EditRole).isValid());
    QCOMPARE(list.text(0, 2), u"5"_s);
}

void tst_ListView::missingCellsAreEmpty()
{
    ListView list(columns());
    list.append({u"A1"_s});
    QCOMPARE(list.text(0, 2), QString());
    list.setText(0, 2, u"7"_s);
    QCOMPARE(list.text(0, 1), QString());
    QCOMPARE(list.text(0, 2), u"7"_s);
}

void tst_ListView::colorIsForegroundOfSubItemsOnly()
{
    ListView list(columns());
    list.append({u"A1"_s, u"Alambre"_s, u"5"_s}, QColor(Qt::red));
    list.append({u"A2"_s, u"Bulón"_s, u"6"_s});
    const QAbstractItemModel& model = *list.model();
    QVERIFY(!model.index(0, 0).data(Qt::ForegroundRole).isValid());
    QCOMPARE(model.index(0, 1).data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
    QCOMPARE(model.index(0, 2).data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
    QVERIFY(!model.index(1, 1).data(Qt::ForegroundRole).isValid());
    list.setColor(0, std::nullopt);
    list.setColor(1, QColor(Qt::blue));
    QVERIFY(!model.index(0, 1).data(Qt::ForegroundRole).isValid());
    QCOMPARE(model.index(1, 1).data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::blue));
}

void tst_ListView::iconIsDecorationOfFirstCellsOnly()
{
    ListView list(columns());
    list.append({u"A"_s, u"a"_s});
    QVERIFY(!list.model()->index(0, 0).data(Qt::DecorationRole).isValid());

    QPixmap picture(16, 16);
    picture.fill(Qt::red);
    const QSignalSpy changes(list.model(), &QAbstractItemModel::dataChanged);
    list.setRowIcon(QIcon(picture));
    QCOMPARE(changes.size(), 1);
    list.append({u"B"_s, u"b"_s});
    for (int row = 0; row < 2; ++row) {
        const auto icon = list.model()->index(row, 0).data(Qt::DecorationRole).value<QIcon>();
        QCOMPARE(icon.pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::red));
        QVERIFY(!list.model()->index(row, 1).data(Qt::DecorationRole).isValid());
    }
    QCOMPARE(list.text(1, 0), u"B"_s);
}

void tst_ListView::changedCellsTellTheView()
{
    ListView list(columns());
    list.append({u"A1"_s, u"Alambre"_s, u"5"_s});
    const QSignalSpy changes(list.model(), &QAbstractItemModel::dataChanged);
    list.setText(0, 1, u"Alambre fino"_s);
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.at(0).at(0).toModelIndex(), list.model()->index(0, 1));
    list.setColor(0, QColor(Qt::red));
    QCOMPARE(changes.size(), 2);
    QCOMPARE(changes.at(1).at(1).toModelIndex(), list.model()->index(0, 2));
}

void tst_ListView::unknownRowsAndColumnsAreErrors()
{
    ListView list(columns());
    list.append({u"A1"_s});
    QCOMPARE(numberThrownBy([&] { (void)list.text(1, 0); }), 9);
    QCOMPARE(numberThrownBy([&] { (void)list.text(0, 3); }), 9);
    QCOMPARE(numberThrownBy([&] { (void)list.text(-1, 0); }), 9);
    QCOMPARE(numberThrownBy([&] { list.setText(1, 0, u"x"_s); }), 9);
    QCOMPARE(numberThrownBy([&] { list.setColor(1, QColor(Qt::red)); }), 9);
    QCOMPARE(numberThrownBy([&] { list.removeRow(1); }), 9);
    QCOMPARE(numberThrownBy([&] { list.selectRow(1); }), 9);
}

void tst_ListView::selectedRowIsCurrentIndex()
{
    ListView list(columns());
    QCOMPARE(list.currentRow(), -1);
    list.append({u"A1"_s});
    list.append({u"A2"_s});
    list.selectRow(1);
    QCOMPARE(list.currentRow(), 1);
    QCOMPARE(list.currentIndex().row(), 1);
    QCOMPARE(list.selectionModel()->selectedRows().size(), 1);
    QCOMPARE(list.selectionModel()->selectedRows().constFirst().row(), 1);
    list.clear();
    QCOMPARE(list.currentRow(), -1);
    QCOMPARE(list.rowCount(), 0);
}

void tst_ListView::keyboardMovesTheSelectedRow()
{
    ListView list(columns());
    for (const auto& code : {u"A1"_s, u"A2"_s, u"A3"_s}) {
        list.append({code});
    }
    list.selectRow(0);
    list.show();
    QVERIFY(QTest::qWaitForWindowActive(&list));
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(list.currentRow(), 1);
    QVERIFY(list.selectionModel()->isRowSelected(1));
    QTest::keyClick(&list, Qt::Key_End);
    QCOMPARE(list.currentRow(), 2);
    QTest::keyClick(&list, Qt::Key_Home);
    QCOMPARE(list.currentRow(), 0);
    QTest::keyClick(&list, Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(list.selectionModel()->selectedRows().size(), 1);
}

void tst_ListView::removedRowLeavesItsNeighbourSelected()
{
    ListView list(columns());
    for (const auto& code : {u"A1"_s, u"A2"_s, u"A3"_s}) {
        list.append({code});
    }
    list.selectRow(1);
    list.removeRow(1);
    QCOMPARE(columnTexts(list, 0), (QStringList{u"A1"_s, u"A3"_s}));
    QCOMPARE(list.text(list.currentRow(), 0), u"A3"_s);
    list.removeRow(1);
    QCOMPARE(list.text(list.currentRow(), 0), u"A1"_s);
    list.removeRow(0);
    QCOMPARE(list.currentRow(), -1);
}

void tst_ListView::nothingIsEditedInPlace()
{
    ListView list(columns());
    list.append({u"A1"_s, u"Alambre"_s});
    list.selectRow(0);
    list.show();
    QVERIFY(QTest::qWaitForWindowActive(&list));
    QTest::keyClick(&list, Qt::Key_F2);
    QTest::keyClicks(&list, u"xyz"_s);
    QVERIFY(list.findChildren<QLineEdit*>().isEmpty());
    QCOMPARE(list.text(0, 0), u"A1"_s);
}

void tst_ListView::fillHidesTheListAndInsertsOnce()
{
    ListView list(columns());
    list.append({u"viejo"_s});
    list.show();
    const QSignalSpy insertions(list.model(), &QAbstractItemModel::rowsInserted);
    {
        const FillScope fill(list);
        QVERIFY(!list.isVisible());
        list.clear();
        list.append({u"A1"_s});
        list.append({u"A2"_s});
        QCOMPARE(insertions.size(), 0);
    }
    QVERIFY(list.isVisible());
    QCOMPARE(insertions.size(), 1);
    QCOMPARE(columnTexts(list, 0), (QStringList{u"A1"_s, u"A2"_s}));
    {
        const FillScope empty(list);
        list.clear();
    }
    QVERIFY(list.isVisible());
    QCOMPARE(list.rowCount(), 0);
    QCOMPARE(insertions.size(), 1);
}

void tst_ListView::fillSelectsTheFirstRow()
{
    ListView list(columns());
    {
        const FillScope fill(list);
        list.append({u"A1"_s});
        list.append({u"A2"_s});
    }
    QCOMPARE(list.currentRow(), 0);
    list.selectRow(1);
    {
        const FillScope more(list);
        list.append({u"A3"_s});
    }
    QCOMPARE(list.currentRow(), 1);
}

void tst_ListView::fillKeepsTheFocusWithoutTouchingOthers()
{
    bool boxWasEntered = false;
    QWidget screen;
    auto* layout = new QVBoxLayout(&screen);
    auto* box = new QLineEdit(u"texto"_s, &screen);
    auto* list = new ListView(columns(), &screen);
    layout->addWidget(list);
    layout->addWidget(box);
    screen.show();
    list->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&screen));
    QVERIFY(list->hasFocus());
    QObject::connect(
        qApp, &QApplication::focusChanged, &screen,
        [&boxWasEntered, box](const QWidget*, const QWidget* now) { boxWasEntered = boxWasEntered || now == box; });
    {
        const FillScope fill(*list);
        list->append({u"A1"_s});
    }
    QVERIFY(list->hasFocus());
    QVERIFY(!boxWasEntered);

    box->setFocus();
    {
        const FillScope fill(*list);
    }
    QVERIFY(box->hasFocus());
}

void tst_ListView::fillKeepsAListHiddenThatWasHidden()
{
    ListView list(columns());
    list.setHidden(true);
    {
        const FillScope fill(list);
        list.append({u"A1"_s});
    }
    QVERIFY(list.isHidden());
}

void tst_ListView::fillInterruptedByAnErrorKeepsItsRows()
{
    ListView list(columns());
    list.show();
    const auto fillAndFail = [&list] {
        const FillScope fill(list);
        list.append({u"A1"_s});
        throw RuntimeError(11);
    };
    QCOMPARE(numberThrownBy(fillAndFail), 11);
    QVERIFY(list.isVisible());
    QCOMPARE(columnTexts(list, 0), QStringList{u"A1"_s});
}

void tst_ListView::fillsNest()
{
    ListView list(columns());
    list.show();
    const QSignalSpy insertions(list.model(), &QAbstractItemModel::rowsInserted);
    {
        const FillScope outer(list);
        list.append({u"A1"_s});
        {
            const FillScope inner(list);
            list.append({u"A2"_s});
        }
        QVERIFY(!list.isVisible());
        QCOMPARE(insertions.size(), 0);
    }
    QVERIFY(list.isVisible());
    QCOMPARE(insertions.size(), 1);
    QCOMPARE(list.rowCount(), 2);
}

void tst_ListView::hundredThousandRowsAreOneInsertion()
{
    ListView list(columns());
    list.resize(600, 400);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    const QSignalSpy insertions(list.model(), &QAbstractItemModel::rowsInserted);
    {
        const FillScope fill(list);
        for (int row = 0; row < 100'000; ++row) {
            list.append({QString::number(row), u"descripción"_s, u"1,000000"_s});
        }
    }
    QCOMPARE(insertions.size(), 1);
    QCOMPARE(list.rowCount(), 100'000);
    list.selectRow(99'999);
    QVERIFY(list.viewport()->rect().intersects(list.visualRect(list.currentIndex())));
}

void tst_ListView::titlesDoNotSortUnlessAskedTo()
{
    ListView list(columns());
    list.append({u"B"_s});
    list.append({u"A"_s});
    list.resize(700, 300);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    clickTitle(list, 0);
    QCOMPARE(columnTexts(list, 0), (QStringList{u"B"_s, u"A"_s}));
}

void tst_ListView::titleSortsAscendingAtEveryClick()
{
    ListView list(columns());
    list.setSortedByHeader(true);
    list.append({u"B"_s, u"uno"_s});
    list.append({u"C"_s, u"dos"_s});
    list.append({u"A"_s, u"tres"_s});
    list.resize(700, 300);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    for (int click = 0; click < 3; ++click) {
        clickTitle(list, 0);
        QCOMPARE(columnTexts(list, 0), (QStringList{u"A"_s, u"B"_s, u"C"_s}));
        QVERIFY(list.header()->isSortIndicatorShown());
        QCOMPARE(list.header()->sortIndicatorOrder(), Qt::AscendingOrder);
    }
    clickTitle(list, 1);
    QCOMPARE(columnTexts(list, 1), (QStringList{u"dos"_s, u"tres"_s, u"uno"_s}));
    QCOMPARE(list.header()->sortIndicatorSection(), 1);
}

void tst_ListView::sortIsStableAndOrdersAsTheLanguageDoes()
{
    ListView list(columns());
    const QList<QStringList> rows{{u"Zeta"_s, u"1"_s},  {u"ñandú"_s, u"2"_s}, {u"oso"_s, u"3"_s},
                                  {u"nube"_s, u"4"_s},  {u"árbol"_s, u"5"_s}, {u"nube"_s, u"6"_s},
                                  {u"Barco"_s, u"7"_s}, {u"nube"_s, u"8"_s}};
    for (const QStringList& row : rows) {
        list.append(row);
    }
    list.model()->sort(0, Qt::DescendingOrder); // always ascending, whatever is asked for
    QCOMPARE(columnTexts(list, 0),
             (QStringList{u"árbol"_s, u"Barco"_s, u"nube"_s, u"nube"_s, u"nube"_s, u"ñandú"_s, u"oso"_s, u"Zeta"_s}));
    QCOMPARE(columnTexts(list, 1), (QStringList{u"5"_s, u"7"_s, u"4"_s, u"6"_s, u"8"_s, u"2"_s, u"3"_s, u"1"_s}));
}

void tst_ListView::selectionFollowsItsRowWhenSorted()
{
    ListView list(columns());
    for (const auto& code : {u"C"_s, u"A"_s, u"B"_s}) {
        list.append({code}, code == u"A"_s ? std::optional(QColor(Qt::red)) : std::nullopt);
    }
    list.selectRow(0);
    list.model()->sort(0);
    QCOMPARE(list.currentRow(), 2);
    QCOMPARE(list.text(list.currentRow(), 0), u"C"_s);
    QVERIFY(list.selectionModel()->isRowSelected(2));
    QCOMPARE(list.model()->index(0, 1).data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::red));
}

void tst_ListView::laterRowsAreSortedInUntilUnsorted()
{
    ListView list(columns());
    list.append({u"B"_s});
    list.model()->sort(0);
    {
        const FillScope fill(list);
        list.clear();
        list.append({u"D"_s});
        list.append({u"C"_s});
    }
    QCOMPARE(columnTexts(list, 0), (QStringList{u"C"_s, u"D"_s}));
    list.unsort();
    list.append({u"A"_s});
    QCOMPARE(columnTexts(list, 0), (QStringList{u"C"_s, u"D"_s, u"A"_s}));
    QVERIFY(!list.header()->isSortIndicatorShown());
}

void tst_ListView::sizesFollowTheFont()
{
    const QFont before = QApplication::font();
    const QSize small = ListView(columns()).sizeHint();
    QFont big = before;
    big.setPointSizeF(before.pointSizeF() * 2);
    QApplication::setFont(big);
    const QSize large = ListView(columns()).sizeHint();
    QApplication::setFont(before);
    QVERIFY(large.width() > small.width() * 3 / 2);
    QVERIFY(large.height() > small.height() * 3 / 2);
}

void tst_ListView::theSelectedRowIsDrawnByTheStyle()
{
    OwnSelectionStyle style;
    ListView list(columns());
    list.setStyle(&style);
    list.append({u"A"_s, u"Tornillo"_s, u"2,00"_s});
    list.append({u"B"_s, u"Tuerca"_s, u"3,00"_s});
    list.selectRow(1);
    list.resize(list.sizeHint());

    list.grab();

    QCOMPARE(style.takeSelectedTexts(), (QStringList{u"B"_s, u"Tuerca"_s, u"3,00"_s}));
}

QTEST_MAIN(tst_ListView)
#include "tst_ListView.moc"
