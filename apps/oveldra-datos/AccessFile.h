#pragma once

#include "SourceTable.h"

#include <QHash>
#include <QString>

#include <memory>

namespace oVELDRA::data {

class AccessPages;
class AccessTable;

/// An Access file (.mdb of Access 97 to 2003, .accdb), open for reading. It is never written to.
///
/// Errors are RuntimeErrors with number -2147467259 and the native numbers of AccessTrouble.
class AccessFile final : public Source
{
public:
    explicit AccessFile(const QString& path);
    ~AccessFile() override;

    /// The tables that the file holds itself, without those of Access.
    [[nodiscard]] const QStringList& tables() const override { return m_tables; }
    /// Tables that are only linked: their rows are in another file.
    [[nodiscard]] const QStringList& linkedTables() const { return m_linkedTables; }
    [[nodiscard]] std::unique_ptr<SourceTable> open(const QString& table) override;
    /// The same, in any letter case, as what it is.
    [[nodiscard]] std::unique_ptr<AccessTable> openTable(const QString& table);

private:
    void readCatalog();

    std::shared_ptr<AccessPages> m_pages;
    QStringList m_tables;
    QStringList m_linkedTables;
    QHash<QString, quint32> m_definitionPages; ///< by table name in lower case
};

} // namespace oVELDRA::data
