#pragma once

#include "AccessCells.h"
#include "SourceTable.h"

#include <QString>

#include <memory>
#include <vector>

namespace oVELDRA::data {

class AccessPages;
struct PageSlot;

/// A table of an Access file. Its rows are read a page at a time, so that several tables of a file can be read in
/// turns.
class AccessTable final : public SourceTable
{
public:
    /// `definitionPage` is the page of the table's layout. Throws RuntimeError.
    AccessTable(std::shared_ptr<AccessPages> pages, const QString& name, quint32 definitionPage);
    ~AccessTable() override;

    [[nodiscard]] QString name() const override { return m_name; }
    [[nodiscard]] const QStringList& columns() const override { return m_columns; }
    [[nodiscard]] const std::vector<AccessKind>& kinds() const { return m_kinds; }
    /// Access writes 0 for a database that was not closed properly: then nothing.
    [[nodiscard]] std::optional<qint64> announcedRows() const override;
    [[nodiscard]] bool next(SourceRow& row) override;

private:
    struct Layout;

    [[nodiscard]] bool readNextPage();
    void readPageRows(quint32 page);
    void readMovedRow(const PageSlot& pointer, quint32 page);
    void readRow(int start, size_t size);
    /// Refuses a row whose own counts say that it is longer than it is.
    void checkLengths(Bytes row) const;
    [[nodiscard]] QString readCell(size_t column, Bytes bytes, dialect::Value& value);
    [[nodiscard]] QString readText(std::optional<QString> text, dialect::Value& value) const;
    [[nodiscard]] std::optional<QString> textOf(Bytes bytes) const;
    [[nodiscard]] SourceRow& newRow();

    std::shared_ptr<AccessPages> m_pages;
    QString m_name;
    std::unique_ptr<Layout> m_layout;
    QStringList m_columns;
    std::vector<AccessKind> m_kinds;

    // The rows of a page; rows are swapped out of it and their memory used again.
    std::vector<SourceRow> m_block;
    size_t m_blockRows = 0;
    size_t m_nextRow = 0;
    std::vector<quint32> m_pageNumbers; ///< of the table
    size_t m_nextPage = 0;
};

} // namespace oVELDRA::data
