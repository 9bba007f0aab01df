#pragma once

#include <controls/ListModel.h>

#include <QTreeView>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace oVELDRA::controls {

class ColumnWidths;

/// A flat list of whole rows for the keyboard: titles on top, one row selected, nothing edited in place.
///
/// The selected row is the current index. Columns are as wide as designed until the user draws them at their titles'
/// edges, or with the keys that list views have for it: Ctrl and + makes them all fit what they show, Ctrl and - puts
/// them back.
class ListView final : public QTreeView
{
public:
    explicit ListView(std::vector<ListColumn> columns, QWidget* parent = nullptr);

    void clear() { m_rows.clear(); }
    void append(const QStringList& cells, const std::optional<QColor>& color = std::nullopt)
    {
        m_rows.append(cells, color);
    }
    /// A row for each of the first `most` rows of a recordset. Rows of a recordset in memory are read when they are
    /// needed; when reading fails the rows before it stay.
    void append(std::unique_ptr<Recordset> records, RowReader read, qsizetype most = AllRows)
    {
        m_rows.append(std::move(records), std::move(read), most);
    }
    /// RuntimeError 9 for a row or column that is not there; so for all that follow.
    void setText(int row, int column, const QString& text) { m_rows.setText(row, column, text); }
    /// The colour of the row's sub-items (the columns after the first); none is the theme's own.
    void setColor(int row, const std::optional<QColor>& color) { m_rows.setColor(row, color); }
    /// The picture before the first cell of every row.
    void setRowIcon(const QIcon& icon) { m_rows.setRowIcon(icon); }
    /// The row after it (or before it, if it was the last) is selected then.
    void removeRow(int row) { m_rows.removeRow(row); }
    [[nodiscard]] QString text(int row, int column) const { return m_rows.text(row, column); }
    [[nodiscard]] int rowCount() const { return m_rows.rowCount(); }

    /// The selected row, -1 without one.
    [[nodiscard]] int currentRow() const { return currentIndex().row(); }
    void selectRow(int row);

    /// A click on a column's title sorts by it, ascending at every click. Rows that come later are sorted in, too.
    void setSortedByHeader(bool sorted);
    /// As the list was before the first click on a title.
    void unsort();

    /// What the user made of the columns.
    [[nodiscard]] ColumnWidths& widths() { return *m_widths; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    friend class FillScope;

    void keyPressEvent(QKeyEvent* event) override;
    [[nodiscard]] int characterWidth() const;
    [[nodiscard]] int rowHeight() const;
    [[nodiscard]] QSize sizeFor(int width, int rows) const;

    ListModel m_rows;
    ColumnWidths* m_widths;
};

/// Hides a list while it is cleared and filled, so that it is drawn once. Rows appended meanwhile come in together at
/// the end, also when an error ends the filling. Then the first row is selected, unless one is; the focus stays.
class FillScope
{
public:
    explicit FillScope(ListView& list);
    FillScope(const FillScope&) = delete;
    FillScope& operator=(const FillScope&) = delete;
    ~FillScope();

private:
    ListView& m_list;
    bool m_hadFocus;
    bool m_wasHidden;
};

} // namespace oVELDRA::controls
