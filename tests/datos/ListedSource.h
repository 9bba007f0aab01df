#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <oveldra-datos/SourceTable.h>
#include <vector>

namespace oVELDRA::data {

/// A table of a ListedSource.
struct ListedTable
{
    QString name;
    QStringList columns;
    std::vector<SourceRow> rows;
    std::optional<qint64> announced;

    /// Adds a row without trouble.
    void add(std::vector<dialect::Value> cells) { rows.push_back({std::move(cells), {}}); }
};

/// A source whose tables a test has written down.
class ListedSource final : public Source
{
public:
    [[nodiscard]] const QStringList& tables() const override { return m_names; }
    [[nodiscard]] std::unique_ptr<SourceTable> open(const QString& table) override
    {
        return std::make_unique<Reader>(*m_tables[static_cast<size_t>(m_names.indexOf(table))]);
    }

    ListedTable& add(const QString& name, const QStringList& columns)
    {
        m_names.append(name);
        m_tables.push_back(std::make_unique<ListedTable>(ListedTable{name, columns, {}, {}}));
        return *m_tables.back();
    }

private:
    class Reader final : public SourceTable
    {
    public:
        explicit Reader(const ListedTable& table) : m_table(table) {}

        [[nodiscard]] QString name() const override { return m_table.name; }
        [[nodiscard]] const QStringList& columns() const override { return m_table.columns; }
        [[nodiscard]] std::optional<qint64> announcedRows() const override { return m_table.announced; }
        [[nodiscard]] bool next(SourceRow& row) override
        {
            if (m_next == m_table.rows.size()) {
                return false;
            }
            row = m_table.rows[m_next++];
            return true;
        }

    private:
        const ListedTable& m_table;
        size_t m_next = 0;
    };

    QStringList m_names;
    std::vector<std::unique_ptr<ListedTable>> m_tables;
};

} // namespace oVELDRA::data
