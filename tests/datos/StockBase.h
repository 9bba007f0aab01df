#pragma once

#include "RecordedConsole.h"
#include "doubles/PostgresServer.h"

#include <dialect/Value.h>
#include <store/Engines.h>

#include <QTemporaryDir>

#include <initializer_list>
#include <memory>
#include <oveldra-datos/Command.h>

namespace oVELDRA::data {

/// A value of a row: a text, a number, a date, or nothing for Null.
class Cell
{
public:
    Cell() = default;
    Cell(const char16_t* text) : m_value(dialect::Value::ofText(QStringView(text).toString())) {}
    Cell(QString text) : m_value(dialect::Value::ofText(std::move(text))) {}
    Cell(double number) : m_value(dialect::Value::ofNumber(number)) {}
    Cell(int number) : m_value(dialect::Value::ofNumber(number)) {}
    Cell(QDate date) : m_value(dialect::Value::ofDate(date)) {}

    [[nodiscard]] const dialect::Value& value() const { return m_value; }

private:
    dialect::Value m_value;
};

/// Whether a database has the unique indexes of its keys, as ours have, or was made by a program that has none.
enum class Keys { Unique, None };

/// A database that rows are written into as they are, without any of the program's rules.
class StockBase
{
public:
    /// Makes the tables of a schema.
    StockBase(QString url, Database schema, Keys keys = Keys::Unique);

    [[nodiscard]] const QString& url() const { return m_url; }
    [[nodiscard]] store::EngineConnection& engine() { return *m_engine; }

    /// To be called when the test has changed the tables.
    void readTables() { m_tables = m_engine->catalog(); }

    void add(QStringView table, std::initializer_list<QStringView> columns, std::initializer_list<Cell> values);

    void header(const Cell& number, const Cell& expiry = {});
    void article(const Cell& declaration, const Cell& item, const Cell& subitem, const Cell& declared,
                 const Cell& balance, const Cell& code = u"AC-1", const Cell& price = 2);
    void discharge(const Cell& declaration, const Cell& item, const Cell& subitem, const Cell& quantity,
                   const Cell& code = u"AC-1");
    void catalog(const Cell& code);
    void product(const Cell& catalog, const Cell& code, const Cell& position = u"8471.30.12.000A");
    void relation(const Cell& catalog, const Cell& product, const Cell& article);
    void position(const Cell& subheading, const Cell& opening, const Cell& control);

    /// Everything that is in the tables, one row a line, to be compared with another time's.
    [[nodiscard]] QString content();

private:
    QString m_url;
    std::unique_ptr<store::EngineConnection> m_engine;
    dialect::Catalog m_tables;
};

/// Makes an empty database of a named engine each time: a file, or a schema on the test's server.
class FreshBases
{
public:
    /// A row of global test data for each engine; the column is "engine".
    static void addEngines();

    /// The URL of a database that is not there yet, on the engine of the current row of test data.
    [[nodiscard]] QString url();

private:
    QTemporaryDir m_folder;
    std::unique_ptr<doubles::PostgresServer> m_server; ///< started when first needed
    int m_made = 0;
};

/// A command run as the program would, with what it said.
struct CommandRun
{
    CommandRun(const Command& command, const QStringList& operands, const QMap<QString, QString>& options = {},
               RecordedConsole::Format format = RecordedConsole::Format::Text);

    RecordedConsole console;
    int exitCode;
};

} // namespace oVELDRA::data
