#pragma once

#include <oVELDRA/Recordset.h>

#include <QAbstractTableModel>
#include <QColor>
#include <QIcon>
#include <QString>
#include <QStringList>

#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

namespace oVELDRA::controls {

/// A column of a list: its title, its width in characters, and where its texts stand (numbers to the right).
struct ListColumn
{
    QString title;
    int characters = 10;
    Qt::AlignmentFlag alignment = Qt::AlignLeft;
};

/// The texts of a row, and the colour of its sub-items (the columns after the first); none is the theme's own.
struct ListRow
{
    QStringList cells;
    std::optional<QColor> color = std::nullopt;
};

/// The row of a list for the current row of a recordset. A RuntimeError reaches the caller of append() only for rows
/// that are read at once; a row that fails later shows the error's description in its first cell.
using RowReader = std::function<ListRow(const Recordset&)>;

/// No limit to the rows that are taken from a recordset.
inline constexpr qsizetype AllRows = std::numeric_limits<qsizetype>::max();

/// The rows of a list: text cells, an icon that all rows share, and a colour that a row's sub-items (the columns after
/// the first) may have.
class ListModel final : public QAbstractTableModel
{
public:
    explicit ListModel(std::vector<ListColumn> columns, QObject* parent = nullptr);

    [[nodiscard]] const std::vector<ListColumn>& columns() const { return m_columns; }

    void clear();
    /// Cells that are missing are empty.
    void append(QStringList cells, const std::optional<QColor>& color = std::nullopt);
    /// A row for each of the first `most` rows of a recordset, which stands on its first. Of a recordset in memory only
    /// that one is read at once, the others up to a row when that is first needed: most rows of a long list are never
    /// looked at, and those past `most` are never read. When reading fails the rows before it stay.
    void append(std::unique_ptr<Recordset> records, RowReader read, qsizetype most = AllRows);
    /// RuntimeError 9 for a row or column that is not there; so for all that follow.
    void setText(int row, int column, const QString& text);
    void setColor(int row, const std::optional<QColor>& color);
    void removeRow(int row);
    [[nodiscard]] const QString& text(int row, int column) const;
    /// The picture before the first cell of every row; none is none.
    void setRowIcon(const QIcon& icon);

    /// Between the two, appended rows are held back; they come in at once, in one change of the model, with the end.
    void beginFill();
    void endFill();

    /// Rows in ascending order of a column's texts, as the user's language orders them; equal ones keep their order.
    /// Always ascending, whatever is asked for. Rows that come later are put in their places until unsort().
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;
    /// Later rows are again put at the end.
    void unsort() { m_sortColumn.reset(); }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void flush();
    void requireCell(int row, int column = 0) const;
    /// A row, read from its recordset now if it was not yet.
    [[nodiscard]] ListRow& row(int row) const;
    void readUpTo(std::size_t rows) const;

    std::vector<ListColumn> m_columns;
    mutable std::vector<ListRow> m_rows;          ///< those read so far, from the first
    mutable std::unique_ptr<Recordset> m_records; ///< stands on the first row not read; null when all are
    RowReader m_read;
    int m_rowCount = 0;
    std::vector<ListRow> m_pending;
    QIcon m_rowIcon;
    std::optional<int> m_sortColumn;
    int m_fills = 0;
};

} // namespace oVELDRA::controls
