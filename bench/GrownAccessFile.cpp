#include "GrownAccessFile.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace bench {

namespace {

// Jet 4: where things are in its pages.
constexpr qsizetype pageSize = 4096;
constexpr char dataPage = 0x01;
constexpr char mapPage = 0x05;
constexpr qsizetype owner = 4;
constexpr qsizetype rowsOnPage = 12;
constexpr qsizetype rowTable = 14;
constexpr quint16 startMask = 0x1FFF;
constexpr qsizetype rowsOfTable = 16;
constexpr qsizetype ownedPagesMap = 55;
constexpr qsizetype bitmapOfMapPage = 4;
constexpr qsizetype pagesOfMapPage = (pageSize - bitmapOfMapPage) * 8;
constexpr char mapOfMapPages = 1;

[[noreturn]] void fail(const char* what)
{
    std::fprintf(stderr, "%s\n", what);
    std::exit(2);
}

class GrownFile
{
public:
    GrownFile(const QString& sample, quint32 definition) : m_definition(definition)
    {
        QFile file(sample);
        if (!file.open(QIODevice::ReadOnly)) {
            fail("no sample");
        }
        m_bytes = file.readAll();
        for (qsizetype page = 0; page < pages(); ++page) {
            if (at(page)[0] == dataPage && number<quint32>(page, owner) == definition) {
                checkRows(page);
                m_rowPages.push_back(page);
            }
        }
        if (m_rowPages.empty()) {
            fail("the table has no rows");
        }
    }

    void grow(quint32 rows)
    {
        auto there = number<quint32>(m_definition, rowsOfTable);
        const std::vector<qsizetype> originals = m_rowPages;
        for (size_t next = 0; there < rows; next = (next + 1) % originals.size()) {
            const QByteArray copy = m_bytes.mid(originals[next] * pageSize, pageSize);
            m_rowPages.push_back(pages());
            m_bytes.append(copy);
            const auto taken = std::min<quint32>(number<quint16>(originals[next], rowsOnPage), rows - there);
            put(m_rowPages.back(), rowsOnPage, static_cast<quint16>(taken));
            there += taken;
        }
        put(m_definition, rowsOfTable, there);
        mapRowPages();
    }

    void write(const QString& target) const
    {
        QFile file(target);
        if (!file.open(QIODevice::WriteOnly) || file.write(m_bytes) != m_bytes.size()) {
            fail("cannot write the grown file");
        }
    }

private:
    [[nodiscard]] qsizetype pages() const { return m_bytes.size() / pageSize; }
    [[nodiscard]] char* at(qsizetype page) { return m_bytes.data() + page * pageSize; }

    template <typename Number>
    [[nodiscard]] Number number(qsizetype page, qsizetype offset)
    {
        return qFromLittleEndian<Number>(at(page) + offset);
    }
    template <typename Number>
    void put(qsizetype page, qsizetype offset, Number value)
    {
        qToLittleEndian(value, at(page) + offset);
    }

    /// A copy of a deleted or moved row would not be a row.
    void checkRows(qsizetype page)
    {
        for (qsizetype row = 0; row < number<quint16>(page, rowsOnPage); ++row) {
            if (number<quint16>(page, rowTable + 2 * row) & static_cast<quint16>(~startMask)) {
                fail("the table has deleted or moved rows");
            }
        }
    }

    /// The table's map has a bit for each of a few pages. It becomes a list of pages that hold the bits of all.
    void mapRowPages()
    {
        const auto place = number<quint32>(m_definition, ownedPagesMap);
        const auto page = static_cast<qsizetype>(place >> 8U);
        const auto row = static_cast<qsizetype>(place & 0xFFU);
        const qsizetype start = number<quint16>(page, rowTable + 2 * row) & startMask;
        const qsizetype end = row == 0 ? pageSize : number<quint16>(page, rowTable + 2 * (row - 1)) & startMask;
        const qsizetype mapPages = (pages() + pagesOfMapPage) / pagesOfMapPage;
        if (start + 1 + 4 * mapPages > end) {
            fail("too many rows");
        }
        std::fill(at(page) + start, at(page) + end, '\0');
        at(page)[start] = mapOfMapPages;
        const qsizetype first = pages();
        m_bytes.append(QByteArray(mapPages * pageSize, '\0'));
        for (qsizetype map = 0; map < mapPages; ++map) {
            at(first + map)[0] = mapPage;
            at(first + map)[1] = 1;
            put(page, start + 1 + 4 * map, static_cast<quint32>(first + map));
        }
        for (const qsizetype rowPage : m_rowPages) {
            char& bits = at(first + rowPage / pagesOfMapPage)[bitmapOfMapPage + rowPage % pagesOfMapPage / 8];
            bits = static_cast<char>(bits | (1 << (rowPage % 8)));
        }
    }

    quint32 m_definition;
    QByteArray m_bytes;
    std::vector<qsizetype> m_rowPages;
};

} // namespace

void growAccessFile(const QString& sample, quint32 definition, quint32 rows, const QString& target)
{
    GrownFile file(sample, definition);
    file.grow(rows);
    file.write(target);
}

} // namespace bench
