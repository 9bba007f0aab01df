#pragma once

#include "AccessCells.h"
#include "AccessError.h"

#include <QString>

#include <mdbtools.h>
#include <memory>
#include <vector>

namespace oVELDRA::data {

/// Keeps libmdb from talking to the user: what it says to standard error is lost while this lives.
class Hushed
{
public:
    Hushed();
    ~Hushed();
    Hushed(const Hushed&) = delete;
    Hushed& operator=(const Hushed&) = delete;

private:
    int m_kept;
};

struct FreeTableDefinition
{
    void operator()(MdbTableDef* definition) const { mdb_free_tabledef(definition); }
};
using TableDefinition = std::unique_ptr<MdbTableDef, FreeTableDefinition>;

/// Where a row lies in the page that is in memory, and how it is marked.
struct PageSlot
{
    int start = 0;
    size_t size = 0;
    bool hidden = false;  ///< deleted, or the moved content of a row of another page
    bool pointer = false; ///< the row's content was moved: four bytes say where it is
};

/// The pages of an Access file that is open for reading. Everything throws RuntimeError (see AccessTrouble), also where
/// libmdb would say something and go on.
class AccessPages
{
public:
    explicit AccessPages(const QString& path);

    [[nodiscard]] MdbHandle& handle() { return *m_handle; }
    [[nodiscard]] bool isOfAccess97() const { return m_handle->f->jet_version == MDB_VER_JET3; }
    [[nodiscard]] qint64 fileSize() const { return m_fileSize; }
    [[nodiscard]] RuntimeError damaged() const { return accessError(AccessTrouble::Damaged, m_path); }

    /// The layout of a table whose catalog entry stays where it is for as long as the definition lives.
    [[nodiscard]] TableDefinition readDefinition(MdbCatalogEntry& entry);
    /// The pages of a table, in order. Not all of them need have rows.
    [[nodiscard]] std::vector<quint32> pagesOf(const MdbTableDef& definition);

    /// Brings a page into memory.
    void read(quint32 page);
    /// Whether the page in memory has rows of the table.
    [[nodiscard]] bool hasRowsOf(const MdbCatalogEntry& entry) const;
    [[nodiscard]] int slotCount() const;
    [[nodiscard]] PageSlot slot(int row) const;
    /// The bytes in the page in memory; they change with it.
    [[nodiscard]] Bytes bytes(int start, size_t size) const;

    /// A long value (a memo), given the bytes of its cell. Leaves the page in memory as it is. Nothing when it is
    /// damaged.
    [[nodiscard]] std::optional<std::vector<unsigned char>> longValue(Bytes cell);

private:
    struct CloseHandle
    {
        void operator()(MdbHandle* handle) const { mdb_close(handle); }
    };

    void checkPassword();
    /// Refuses what would lead libmdb out of its buffers.
    void checkDefinition(quint32 page);
    [[nodiscard]] quint32 pageCount() const;
    /// The bytes of a long value's row, which lies in the second page buffer; empty when there is no such row.
    [[nodiscard]] Bytes longValueRow(quint32 place);

    QString m_path;
    qint64 m_fileSize = 0;
    std::unique_ptr<MdbHandle, CloseHandle> m_handle;
};

} // namespace oVELDRA::data
