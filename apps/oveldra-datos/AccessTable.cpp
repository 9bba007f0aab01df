#include "AccessTable.h"

#include "AccessPages.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Value;

namespace {

AccessKind kindOf(const MdbColumn& column)
{
    switch (column.col_type) {
    case MDB_BOOL:
        return AccessKind::YesNo;
    case MDB_BYTE:
        return AccessKind::Byte;
    case MDB_INT:
        return AccessKind::Short;
    case MDB_LONGINT:
        return AccessKind::Long;
    case MDB_MONEY:
        return AccessKind::Currency;
    case MDB_FLOAT:
        return AccessKind::Single;
    case MDB_DOUBLE:
        return AccessKind::Double;
    case MDB_DATETIME:
        return AccessKind::Date;
    case MDB_TEXT:
        return AccessKind::Text;
    case MDB_MEMO:
        return AccessKind::Memo;
    case MDB_NUMERIC:
        return AccessKind::Decimal;
    default:
        return AccessKind::Other;
    }
}

} // namespace

/// What libmdb knows of the table.
struct AccessTable::Layout
{
    MdbCatalogEntry entry{};
    TableDefinition definition;
    std::vector<MdbField> fields; ///< of the row being read

    [[nodiscard]] const MdbColumn& column(size_t place) const
    {
        return *static_cast<const MdbColumn*>(definition->columns->pdata[place]);
    }
};

AccessTable::AccessTable(std::shared_ptr<AccessPages> pages, const QString& name, quint32 definitionPage)
    : m_pages(std::move(pages)), m_name(name), m_layout(std::make_unique<Layout>())
{
    MdbCatalogEntry& entry = m_layout->entry;
    entry.mdb = &m_pages->handle();
    entry.object_type = MDB_TABLE;
    entry.table_pg = definitionPage;
    qstrncpy(entry.object_name, name.toUtf8().constData(), sizeof entry.object_name);
    m_layout->definition = m_pages->readDefinition(entry);
    const size_t columns = m_layout->definition->num_cols;
    m_layout->fields.resize(columns);
    for (size_t i = 0; i < columns; ++i) {
        m_columns.append(QString::fromUtf8(m_layout->column(i).name));
        m_kinds.push_back(kindOf(m_layout->column(i)));
    }
    m_pageNumbers = m_pages->pagesOf(*m_layout->definition);
}

AccessTable::~AccessTable() = default;

std::optional<qint64> AccessTable::announcedRows() const
{
    const unsigned rows = m_layout->definition->num_rows;
    return rows == 0 ? std::nullopt : std::optional<qint64>(rows);
}

bool AccessTable::next(SourceRow& row)
{
    while (m_nextRow == m_blockRows) {
        if (!readNextPage()) {
            return false;
        }
    }
    std::swap(row, m_block[m_nextRow++]);
    return true;
}

bool AccessTable::readNextPage()
{
    if (m_nextPage == m_pageNumbers.size()) {
        return false;
    }
    const Hushed hushed;
    const quint32 page = m_pageNumbers[m_nextPage++];
    m_pages->read(page);
    m_blockRows = 0;
    m_nextRow = 0;
    // A page that a table once had may be listed for it still.
    if (m_pages->hasRowsOf(m_layout->entry)) {
        readPageRows(page);
    }
    return true;
}

void AccessTable::readPageRows(quint32 page)
{
    const int slots = m_pages->slotCount();
    for (int i = 0; i < slots; ++i) {
        const PageSlot slot = m_pages->slot(i);
        if (slot.hidden) {
            continue;
        }
        if (slot.pointer) {
            readMovedRow(slot, page);
        } else {
            readRow(slot.start, slot.size);
        }
    }
}

void AccessTable::readMovedRow(const PageSlot& pointer, quint32 page)
{
    if (pointer.size < sizeof(quint32)) {
        throw m_pages->damaged();
    }
    const auto place = qFromLittleEndian<quint32>(m_pages->bytes(pointer.start, pointer.size).data());
    m_pages->read(place >> 8U);
    const int row = static_cast<int>(place & 0xFFU);
    if (!m_pages->hasRowsOf(m_layout->entry) || row >= m_pages->slotCount()) {
        throw m_pages->damaged();
    }
    const PageSlot slot = m_pages->slot(row);
    readRow(slot.start, slot.size);
    m_pages->read(page);
}

void AccessTable::checkLengths(Bytes row) const
{
    // libmdb keeps these lengths inside the page only; beyond its own end a row would take bytes of others for its own.
    const bool access97 = m_pages->isOfAccess97();
    const size_t countSize = access97 ? 1 : 2;
    const auto count = [&row, countSize](size_t at) {
        return countSize == 1 ? size_t{row[at]} : size_t{qFromLittleEndian<quint16>(row.data() + at)};
    };
    if (row.size() <= countSize) {
        throw m_pages->damaged();
    }
    const size_t mask = (count(0) + 7) / 8;
    size_t needed = countSize + mask;
    if (m_layout->definition->num_var_cols > 0) {
        needed += countSize; // of the texts and memos, whose ends stand before it
        if (needed <= row.size()) {
            const size_t jumps = access97 ? (row.size() - 1) / 256 : 0;
            needed += jumps + (count(row.size() - mask - countSize) + 1) * countSize;
        }
    }
    if (needed > row.size()) {
        throw m_pages->damaged();
    }
}

SourceRow& AccessTable::newRow()
{
    if (m_blockRows == m_block.size()) {
        m_block.emplace_back();
    }
    SourceRow& row = m_block[m_blockRows++];
    row.cells.resize(m_kinds.size());
    row.troubles.clear();
    return row;
}

void AccessTable::readRow(int start, size_t size)
{
    const Bytes bytes = m_pages->bytes(start, size);
    checkLengths(bytes);
    if (mdb_crack_row(m_layout->definition.get(), start, size, m_layout->fields.data()) < 0) {
        throw m_pages->damaged();
    }
    SourceRow& row = newRow();
    for (size_t i = 0; i < m_kinds.size(); ++i) {
        const MdbField& field = m_layout->fields[i];
        Value& value = row.cells[i];
        value = {};
        if (m_kinds[i] == AccessKind::YesNo) {
            value = Value::ofBoolean(!field.is_null); // it has no bytes of its own: the mark of Null is its value
            continue;
        }
        if (field.is_null) {
            continue;
        }
        const int offset = field.start - start;
        if (offset < 0 || field.siz < 0 || static_cast<size_t>(offset) + static_cast<size_t>(field.siz) > size) {
            throw m_pages->damaged();
        }
        const QString reason =
            readCell(i, bytes.subspan(static_cast<size_t>(offset), static_cast<size_t>(field.siz)), value);
        if (!reason.isNull()) {
            row.troubles.push_back({i, reason});
        }
    }
}

QString AccessTable::readCell(size_t column, Bytes bytes, Value& value)
{
    switch (m_kinds[column]) {
    case AccessKind::Text:
        return readText(textOf(bytes), value);
    case AccessKind::Memo: {
        const auto content = m_pages->longValue(bytes);
        return readText(content ? textOf(*content) : std::nullopt, value);
    }
    case AccessKind::Other:
        return u"su tipo de dato no se admite"_s;
    default:
        return readAccessCell(m_kinds[column], bytes, m_layout->column(column).col_scale, value);
    }
}

QString AccessTable::readText(std::optional<QString> text, Value& value) const
{
    if (!text) {
        return u"el texto está dañado"_s;
    }
    value = Value::ofText(std::move(*text));
    return {};
}

std::optional<QString> AccessTable::textOf(Bytes bytes) const
{
    if (!m_pages->isOfAccess97()) {
        return accessText(bytes);
    }
    // Before Access 2000 texts are in the code page of the file, which libmdb knows; a byte gives three at most.
    QByteArray utf8(static_cast<qsizetype>(3 * bytes.size() + 1), '\0');
    const int length = mdb_unicode2ascii(&m_pages->handle(), reinterpret_cast<const char*>(bytes.data()), bytes.size(),
                                         utf8.data(), static_cast<size_t>(utf8.size()));
    return QString::fromUtf8(utf8.constData(), length);
}

} // namespace oVELDRA::data
