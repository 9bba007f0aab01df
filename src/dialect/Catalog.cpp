#include "Catalog.h"

#include <algorithm>

namespace oVELDRA::dialect {

int Table::find(QStringView column) const
{
    for (size_t i = 0; i < columns.size(); ++i) {
        if (column.compare(columns[i].name, Qt::CaseInsensitive) == 0) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

const Table* Catalog::find(QStringView table) const
{
    const auto found = std::find_if(tables.begin(), tables.end(), [table](const Table& candidate) {
        return table.compare(candidate.name, Qt::CaseInsensitive) == 0;
    });
    return found == tables.end() ? nullptr : &*found;
}

} // namespace oVELDRA::dialect
