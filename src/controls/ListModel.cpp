#include "ListModel.h"

#include <oVELDRA/RuntimeError.h>

#include <QCollator>
#include <QLocale>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace oVELDRA::controls {

ListModel::ListModel(std::vector<ListColumn> columns, QObject* parent)
    : QAbstractTableModel(parent), m_columns(std::move(columns))
{}

void ListModel::clear()
{
    m_pending.clear();
    beginResetModel();
    m_records.reset();
    m_rows.clear();
    m_rowCount = 0;
    endResetModel();
}

void ListModel::append(QStringList cells, const std::optional<QColor>& color)
{
    m_pending.push_back({std::move(cells), color});
    if (m_fills == 0) {
        flush();
    }
}

void ListModel::append(std::unique_ptr<Recordset> records, RowReader read, qsizetype most)
{
    if (!records->isInMemory()) {
        for (qsizetype row = 0; row < most && !records->atEof(); ++row, records->moveNext()) {
            ListRow next = read(*records);
            append(std::move(next.cells), next.color);
        }
        return;
    }
    if (records->atEof() || most <= 0) {
        return;
    }
    ListRow first = read(*records); // a field that is not there shows here
    flush();
    readUpTo(static_cast<std::size_t>(m_rowCount));
    const auto count = static_cast<int>(std::min(records->recordCount(), most));
    beginInsertRows({}, m_rowCount, m_rowCount + count - 1);
    m_rows.push_back(std::move(first));
    m_rowCount += count;
    if (count > 1) {
        records->moveNext();
        m_records = std::move(records);
        m_read = std::move(read);
    }
    endInsertRows();
    if (m_sortColumn) {
        sort(*m_sortColumn);
    }
}

void ListModel::setText(int row, int column, const QString& text)
{
    requireCell(row, column);
    QStringList& cells = this->row(row).cells;
    while (cells.size() <= column) {
        cells.append(QString());
    }
    cells[column] = text;
    const QModelIndex cell = index(row, column);
    Q_EMIT dataChanged(cell, cell, {Qt::DisplayRole});
}

void ListModel::setColor(int row, const std::optional<QColor>& color)
{
    requireCell(row);
    this->row(row).color = color;
    Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1), {Qt::ForegroundRole});
}

void ListModel::removeRow(int row)
{
    requireCell(row);
    readUpTo(static_cast<std::size_t>(row) + 1);
    beginRemoveRows({}, row, row);
    m_rows.erase(m_rows.begin() + row);
    --m_rowCount;
    endRemoveRows();
}

const QString& ListModel::text(int row, int column) const
{
    requireCell(row, column);
    static const QString empty;
    const QStringList& cells = this->row(row).cells;
    return column < cells.size() ? cells.at(column) : empty;
}

void ListModel::setRowIcon(const QIcon& icon)
{
    m_rowIcon = icon;
    if (m_rowCount > 0) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::DecorationRole});
    }
}

void ListModel::beginFill()
{
    ++m_fills;
}

void ListModel::endFill()
{
    if (--m_fills == 0) {
        flush();
    }
}

void ListModel::sort(int column, Qt::SortOrder /*order*/)
{
    if (column < 0 || column >= columnCount()) {
        return;
    }
    m_sortColumn = column;
    readUpTo(static_cast<std::size_t>(m_rowCount));

    const QCollator collator{QLocale()};
    std::vector<QCollatorSortKey> keys;
    keys.reserve(m_rows.size());
    for (int row = 0; row < rowCount(); ++row) {
        keys.push_back(collator.sortKey(text(row, column)));
    }
    std::vector<std::size_t> order(m_rows.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&keys](std::size_t a, std::size_t b) { return keys[a].compare(keys[b]) < 0; });

    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    std::vector<ListRow> sorted;
    sorted.reserve(m_rows.size());
    std::vector<int> placeOf(m_rows.size());
    for (const std::size_t row : order) {
        placeOf[row] = static_cast<int>(sorted.size());
        sorted.push_back(std::move(m_rows[row]));
    }
    m_rows = std::move(sorted);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& cell : before) {
        after.append(index(placeOf[static_cast<std::size_t>(cell.row())], cell.column()));
    }
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

int ListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rowCount;
}

int ListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return text(index.row(), index.column());
    case Qt::DecorationRole:
        return index.column() == 0 && !m_rowIcon.isNull() ? QVariant(m_rowIcon) : QVariant();
    case Qt::ForegroundRole: {
        const std::optional<QColor>& color = row(index.row()).color;
        return color && index.column() > 0 ? QVariant(*color) : QVariant();
    }
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(m_columns[static_cast<std::size_t>(index.column())].alignment | Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return {};
    }
    const ListColumn& column = m_columns[static_cast<std::size_t>(section)];
    switch (role) {
    case Qt::DisplayRole:
        return column.title;
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(column.alignment | Qt::AlignVCenter);
    default:
        return {};
    }
}

void ListModel::flush()
{
    if (m_pending.empty()) {
        return;
    }
    readUpTo(static_cast<std::size_t>(m_rowCount));
    const auto added = static_cast<int>(m_pending.size());
    beginInsertRows({}, m_rowCount, m_rowCount + added - 1);
    m_rowCount += added;
    m_rows.insert(m_rows.end(), std::make_move_iterator(m_pending.begin()), std::make_move_iterator(m_pending.end()));
    m_pending.clear();
    endInsertRows();
    if (m_sortColumn) {
        sort(*m_sortColumn);
    }
}

void ListModel::requireCell(int row, int column) const
{
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount()) {
        throw RuntimeError(9);
    }
}

ListRow& ListModel::row(int row) const
{
    const auto place = static_cast<std::size_t>(row);
    readUpTo(place + 1);
    return m_rows[place];
}

void ListModel::readUpTo(std::size_t rows) const
{
    while (m_rows.size() < rows) {
        try {
            m_rows.push_back(m_read(*m_records));
        } catch (const RuntimeError& error) { // whoever asks may be the painting view, which can report nothing
            m_rows.push_back({{error.description()}});
        }
        if (m_rows.size() < static_cast<std::size_t>(m_rowCount)) {
            m_records->moveNext();
        } else {
            m_records.reset();
        }
    }
}

} // namespace oVELDRA::controls
