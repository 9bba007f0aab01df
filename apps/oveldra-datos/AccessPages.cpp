#include "AccessPages.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

namespace {

// Marks in the table of a page's rows.
constexpr int hiddenMark = 0x8000;
constexpr int pointerMark = 0x4000;
constexpr int startMask = 0x1FFF;

constexpr qsizetype smallestPage = 2048;
constexpr int ownerOffset = 4;
constexpr int mostColumns = 255;

// In the header of Jet 3 and 4, once it is readable: the password, as many bytes of it, and the day from which Jet 4
// makes the pattern that hides it.
constexpr size_t passwordOffset = 0x42;
constexpr size_t passwordSize3 = 20;
constexpr size_t passwordSize4 = 40;
constexpr size_t headerDateOffset = 0x72;
constexpr size_t cipherSizeOffset = 0x299;

quint16 word(const unsigned char* bytes)
{
    return qFromLittleEndian<quint16>(bytes);
}

void checkFile(const QString& path)
{
    const QFileInfo info(path);
    if (!info.isFile()) {
        throw accessError(AccessTrouble::NoFile, path);
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw accessError(AccessTrouble::NoPermission, path);
    }
    const QByteArray start = file.read(smallestPage);
    const QByteArray name = start.mid(ownerOffset, 15);
    if (start.size() < smallestPage || (name != "Standard Jet DB" && name != "Standard ACE DB")) {
        throw accessError(AccessTrouble::NoAccessFile, path);
    }
}

bool hasPassword(const MdbHandle& handle)
{
    const unsigned char* const header = handle.pg_buf;
    const bool access97 = handle.f->jet_version == MDB_VER_JET3;
    std::array<unsigned char, 4> pattern{};
    if (!access97) {
        const auto day = static_cast<qint32>(qFromLittleEndian<double>(header + headerDateOffset));
        qToLittleEndian(day, pattern.data());
    }
    for (size_t i = 0; i < (access97 ? passwordSize3 : passwordSize4); ++i) {
        if (header[passwordOffset + i] != pattern[i % pattern.size()]) {
            return true;
        }
    }
    return false;
}

/// Page `first` and those behind it, as far as their bits are set.
void addPages(quint32 first, Bytes bits, std::vector<quint32>& pages)
{
    for (size_t i = 0; i < bits.size() * 8; ++i) {
        if ((bits[i / 8] >> (i % 8) & 1) != 0) {
            pages.push_back(static_cast<quint32>(first + i));
        }
    }
}

} // namespace

Hushed::Hushed() : m_kept(dup(STDERR_FILENO))
{
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere >= 0) {
        dup2(nowhere, STDERR_FILENO);
        close(nowhere);
    }
}

Hushed::~Hushed()
{
    if (m_kept >= 0) {
        dup2(m_kept, STDERR_FILENO);
        close(m_kept);
    }
}

AccessPages::AccessPages(const QString& path) : m_path(path)
{
    checkFile(path);
    // Names come as this says; left to the user's environment they could come as anything.
    qputenv("MDBICONV", "UTF-8");
    const Hushed hushed;
    m_handle.reset(mdb_open(QFile::encodeName(path).constData(), MDB_NOFLAGS));
    if (!m_handle) {
        throw accessError(AccessTrouble::Unsupported, path);
    }
    m_fileSize = QFileInfo(path).size();
    checkPassword();
}

void AccessPages::checkPassword()
{
    // Until 2003 a password stands in the header. From 2007 on the header says how long the description of the cipher
    // is that all other pages are written in.
    const bool jet = m_handle->f->jet_version <= MDB_VER_JET4;
    const bool enciphered = !jet && word(m_handle->pg_buf + cipherSizeOffset) != 0;
    if (enciphered || (jet && hasPassword(*m_handle))) {
        throw accessError(AccessTrouble::Password, m_path);
    }
}

TableDefinition AccessPages::readDefinition(MdbCatalogEntry& entry)
{
    const Hushed hushed;
    checkDefinition(static_cast<quint32>(entry.table_pg));
    TableDefinition definition(mdb_read_table(&entry));
    if (!definition || !mdb_read_columns(definition.get())) {
        throw damaged();
    }
    return definition;
}

void AccessPages::checkDefinition(quint32 page)
{
    const MdbFormatConstants& format = *m_handle->fmt;
    read(page);
    const unsigned char* const bytes = m_handle->pg_buf;
    if (bytes[0] != MDB_PAGE_TABLE || word(bytes + format.tab_num_cols_offset) > mostColumns) {
        throw damaged();
    }
    const std::array maps = {qFromLittleEndian<quint32>(bytes + format.tab_usage_map_offset),
                             qFromLittleEndian<quint32>(bytes + format.tab_free_map_offset)};
    for (const quint32 map : maps) {
        const int row = static_cast<int>(map & 0xFFU);
        read(map >> 8U);
        if (row >= slotCount() || slot(row).hidden || slot(row).pointer || slot(row).size == 0) {
            throw damaged();
        }
    }
}

quint32 AccessPages::pageCount() const
{
    return static_cast<quint32>(m_fileSize / m_handle->fmt->pg_size);
}

std::vector<quint32> AccessPages::pagesOf(const MdbTableDef& definition)
{
    constexpr unsigned char bitsOfPages = 0;
    constexpr unsigned char listOfMaps = 1;
    constexpr size_t bitsOffset = 5;
    constexpr size_t mapBitsOffset = 4;
    const Bytes map(definition.usage_map, definition.map_sz);
    std::vector<quint32> pages;
    if (map[0] == bitsOfPages && map.size() >= bitsOffset) {
        addPages(qFromLittleEndian<quint32>(map.data() + 1), map.subspan(bitsOffset), pages);
    } else if (map[0] == listOfMaps) {
        const size_t bitBytes = static_cast<size_t>(m_handle->fmt->pg_size) - mapBitsOffset;
        for (size_t i = 0; 1 + 4 * (i + 1) <= map.size(); ++i) {
            const auto page = qFromLittleEndian<quint32>(map.data() + 1 + 4 * i);
            if (page == 0) {
                continue; // none of these pages is the table's
            }
            read(page);
            if (m_handle->pg_buf[0] != MDB_PAGE_MAP) {
                throw damaged();
            }
            addPages(static_cast<quint32>(i * bitBytes * 8), bytes(mapBitsOffset, bitBytes), pages);
        }
    } else {
        throw damaged();
    }
    return pages;
}

void AccessPages::read(quint32 page)
{
    if (page >= pageCount() || mdb_read_pg(m_handle.get(), page) != m_handle->fmt->pg_size) {
        throw damaged();
    }
}

bool AccessPages::hasRowsOf(const MdbCatalogEntry& entry) const
{
    return m_handle->pg_buf[0] == MDB_PAGE_DATA &&
           qFromLittleEndian<quint32>(m_handle->pg_buf + ownerOffset) == entry.table_pg;
}

int AccessPages::slotCount() const
{
    const int offset = m_handle->fmt->row_count_offset;
    const int count = word(m_handle->pg_buf + offset);
    if (offset + 2 * (count + 1) > m_handle->fmt->pg_size) {
        throw damaged();
    }
    return count;
}

PageSlot AccessPages::slot(int row) const
{
    const unsigned char* const entry = m_handle->pg_buf + m_handle->fmt->row_count_offset + 2 * (qsizetype{row} + 1);
    const int marked = word(entry);
    const int end = row == 0 ? static_cast<int>(m_handle->fmt->pg_size) : word(entry - 2) & startMask;
    const int start = marked & startMask;
    if (start > end || end > m_handle->fmt->pg_size) {
        throw damaged();
    }
    return {start, static_cast<size_t>(end - start), (marked & hiddenMark) != 0, (marked & pointerMark) != 0};
}

Bytes AccessPages::bytes(int start, size_t size) const
{
    return {m_handle->pg_buf + start, size};
}

Bytes AccessPages::longValueRow(quint32 place)
{
    void* page = nullptr;
    int start = 0;
    size_t size = 0;
    const bool there = place >> 8U < pageCount() &&
                       mdb_find_pg_row(m_handle.get(), static_cast<int>(place), &page, &start, &size) == 0;
    if (!there || (start & startMask) + static_cast<qsizetype>(size) > m_handle->fmt->pg_size) {
        return {};
    }
    return {static_cast<unsigned char*>(page) + (start & startMask), size};
}

std::optional<std::vector<unsigned char>> AccessPages::longValue(Bytes cell)
{
    constexpr quint32 inCell = 0x80000000;
    constexpr quint32 inOneRow = 0x40000000;
    constexpr size_t place = 4;
    if (cell.size() < MDB_MEMO_OVERHEAD) {
        return std::nullopt;
    }
    const auto marked = qFromLittleEndian<quint32>(cell.data());
    const size_t size = marked & ~(inCell | inOneRow);
    std::vector<unsigned char> value;
    const auto take = [&value, size](Bytes part) {
        const Bytes wanted = part.first(std::min(part.size(), size - value.size()));
        value.insert(value.end(), wanted.begin(), wanted.end());
    };
    if (marked & inCell) {
        take(cell.subspan(MDB_MEMO_OVERHEAD));
    } else if (marked & inOneRow) {
        take(longValueRow(qFromLittleEndian<quint32>(cell.data() + place)));
    } else {
        auto next = qFromLittleEndian<quint32>(cell.data() + place);
        while (next != 0 && value.size() < size) {
            const Bytes row = longValueRow(next);
            if (row.size() <= place) {
                return std::nullopt; // also keeps rows that point to each other from going on forever
            }
            next = qFromLittleEndian<quint32>(row.data());
            take(row.subspan(place));
        }
    }
    if (value.size() != size) {
        return std::nullopt;
    }
    return value;
}

} // namespace oVELDRA::data
