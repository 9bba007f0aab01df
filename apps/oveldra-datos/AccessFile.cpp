#include "AccessFile.h"

#include "AccessPages.h"
#include "AccessTable.h"

#include <dialect/StatementError.h>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 catalogPage = 2;
constexpr quint32 pageMask = 0x00FFFFFF;
constexpr quint32 systemFlags = 0x80000002;

// Kinds of objects in the catalog.
constexpr int localTable = 1;
constexpr int serverTable = 4;
constexpr int linkedTable = 6;

} // namespace

AccessFile::AccessFile(const QString& path) : m_pages(std::make_shared<AccessPages>(path))
{
    readCatalog();
}

AccessFile::~AccessFile() = default;

void AccessFile::readCatalog()
{
    AccessTable catalog(m_pages, u"MSysObjects"_s, catalogPage);
    const auto place = [&catalog, this](const QString& column) {
        const qsizetype found = catalog.columns().indexOf(column);
        if (found < 0) {
            throw m_pages->damaged();
        }
        return static_cast<size_t>(found);
    };
    const size_t id = place(u"Id"_s);
    const size_t name = place(u"Name"_s);
    const size_t kind = place(u"Type"_s);
    const size_t flags = place(u"Flags"_s);
    SourceRow row;
    while (catalog.next(row)) {
        const QString table = row.cells[name].text;
        const auto type = static_cast<int>(row.cells[kind].number);
        const auto marks = static_cast<quint32>(static_cast<qint64>(row.cells[flags].number));
        if ((marks & systemFlags) != 0 || table.startsWith(u'~')) {
            continue; // of Access itself, or a temporary one
        }
        if (type == localTable) {
            m_tables.append(table);
            m_definitionPages.insert(table.toLower(),
                                     static_cast<quint32>(static_cast<qint64>(row.cells[id].number)) & pageMask);
        } else if (type == linkedTable || type == serverTable) {
            m_linkedTables.append(table);
        }
    }
}

std::unique_ptr<SourceTable> AccessFile::open(const QString& table)
{
    return openTable(table);
}

std::unique_ptr<AccessTable> AccessFile::openTable(const QString& table)
{
    const auto found = m_definitionPages.constFind(table.toLower());
    if (found == m_definitionPages.constEnd()) {
        throw dialect::unknownTable(table);
    }
    return std::make_unique<AccessTable>(m_pages, table, found.value());
}

} // namespace oVELDRA::data
