#pragma once

#include "doubles/PostgresServer.h"

#include <oVELDRA/Store.h>

#include <store/Engines.h>
#include <store/RowStream.h>

#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <numeric>
#include <vector>

namespace oVELDRA::data {

using Rows = std::vector<std::vector<dialect::Value>>;

/// Places for databases of a test, on every engine; the server is started when a test first needs it.
class DatabasePlaces
{
public:
    /// A column "engine" with a row for each engine.
    static void addEngines()
    {
        QTest::addColumn<QString>("engine");
        QTest::newRow("sqlite") << QStringLiteral("sqlite");
        QTest::newRow("postgresql") << QStringLiteral("postgresql");
    }

    /// The URL of a database that is not there yet.
    [[nodiscard]] QString fresh(const QString& engine)
    {
        const QString name = QStringLiteral("base%1").arg(++m_used);
        if (engine == QStringLiteral("sqlite")) {
            return QStringLiteral("sqlite:") + m_folder.filePath(name);
        }
        if (!m_server) {
            m_server = std::make_unique<doubles::PostgresServer>();
            m_server->start();
        }
        return m_server->url(name);
    }

    [[nodiscard]] QString file(const QString& name) const { return m_folder.filePath(name); }
    /// What is in the folder of the files.
    [[nodiscard]] QStringList files() const { return QDir(m_folder.path()).entryList(QDir::Files); }

    /// All rows of a table, in table order.
    [[nodiscard]] static Rows rowsOf(const QString& url, const QString& table)
    {
        const auto engine = store::openEngine(url, Access::ReadOnly, store::Opening::Existing);
        engine->beginSnapshot();
        const dialect::Catalog tables = store::tablesOf(*engine);
        const dialect::Table* const found = tables.find(table);
        Rows rows;
        if (found) {
            std::vector<int> all(found->columns.size());
            std::iota(all.begin(), all.end(), 0);
            store::RowStream stream(*engine, *found, {all, {}});
            while (stream.next()) {
                auto& row = rows.emplace_back();
                for (size_t i = 0; i < all.size(); ++i) {
                    row.push_back(stream.value(i));
                }
            }
        }
        engine->rollback();
        return rows;
    }

    [[nodiscard]] static size_t countOf(const QString& url, const QString& table) { return rowsOf(url, table).size(); }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<doubles::PostgresServer> m_server;
    int m_used = 0;
};

/// Whether two values are the same to the last bit.
[[nodiscard]] inline bool same(const dialect::Value& a, const dialect::Value& b)
{
    return a.type == b.type && a.number == b.number && a.text == b.text && a.date == b.date;
}

[[nodiscard]] inline bool same(const Rows& a, const Rows& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& left, const auto& right) {
        return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                          [](const auto& x, const auto& y) { return same(x, y); });
    });
}

} // namespace oVELDRA::data
