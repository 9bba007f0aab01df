#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QIcon>
#include <QString>
#include <QStringList>

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

/// The rows of a list: text cells, an icon that all rows share, and a colour that a row's sub-items (the columns after
/// the first) may have.
class ListModel final : public QAbstractTableModel
{
public:
    explicit ListModel(std::vector<ListColumn> columns, QObject* parent = nullptr);

    [[nodiscard]] const std::vector<ListColumn>& columns() const { return m_columns; }

    void clear();
    /// Cells that are missing are empty.
    void append(const QStringList& cells, const std::optional<QColor>& color = std::nullopt);
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
    struct Row
    {
        QStringList cells;
        std::optional<QColor> color;
    };

    void flush();
    void requireCell(int row, int column = 0) const;

    std::vector<ListColumn> m_columns;
    std::vector<Row> m_rows;
    std::vector<Row> m_pending;
    QIcon m_rowIcon;
    std::optional<int> m_sortColumn;
    int m_fills = 0;
};

} // namespace oVELDRA::controls
