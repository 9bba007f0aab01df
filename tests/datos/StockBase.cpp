#include "StockBase.h"

#include <dialect/Plan.h>
#include <store/RowStream.h>
#include <store/Schema.h>

#include <QTest>

#include <numeric>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

StockBase::StockBase(QString url, Database schema, Keys keys)
    : m_url(std::move(url)), m_engine(store::openEngine(m_url, Access::ReadWrite, store::Opening::Create))
{
    if (keys == Keys::Unique) {
        store::createTables(*m_engine, schema);
    } else {
        for (const QByteArray& command : m_engine->printer().setUp()) {
            m_engine->run(command);
        }
        for (store::TableSchema table : store::schemaOf(schema)) {
            table.table.key.clear();
            for (const QByteArray& command : m_engine->printer().createTable(table.table, {})) {
                m_engine->run(command);
            }
        }
    }
    readTables();
}

void StockBase::add(QStringView table, std::initializer_list<QStringView> columns, std::initializer_list<Cell> values)
{
    const dialect::Table& target = *m_tables.find(table);
    std::vector<int> places;
    for (const QStringView column : columns) {
        places.push_back(target.find(column));
    }
    store::Bindings bindings;
    for (const Cell& value : values) {
        bindings.add(value.value());
    }
    m_engine->prepare(m_engine->printer().insertRows(target, places, 1))->execute(bindings);
}

void StockBase::header(const Cell& number, const Cell& expiry)
{
    add(u"INTINS", {u"INTNRO", u"INTDCL", u"INTADU", u"INTDES", u"INTVEN"},
        {u"TOR1", number, u"073", u"Acero, \"laminado\"", expiry});
}

void StockBase::article(const Cell& declaration, const Cell& item, const Cell& subitem, const Cell& declared,
                        const Cell& balance, const Cell& code, const Cell& price)
{
    add(u"INS", {u"INTDCL", u"ARTITM", u"ARTSBT", u"ARTCAT", u"ARTDSC", u"ARTNRO", u"ARTPRE"},
        {declaration, item, subitem, declared, balance, code, price});
}

void StockBase::discharge(const Cell& declaration, const Cell& item, const Cell& subitem, const Cell& quantity,
                          const Cell& code)
{
    add(u"DIP", {u"ARTDCL", u"ARTITM", u"ARTSBT", u"RALCAN", u"ARTNRO", u"EXTINT", u"EXTSBT", u"EXTNOF"},
        {declaration, item, subitem, quantity, code, u"EXP1", 7, u"26001EC01000001A"});
}

void StockBase::catalog(const Cell& code)
{
    add(u"CAT", {u"CATNRO"}, {code});
}

void StockBase::product(const Cell& catalog, const Cell& code, const Cell& position)
{
    add(u"PRD", {u"CATNRO", u"PRDNRO", u"PRDNCM"}, {catalog, code, position});
}

void StockBase::relation(const Cell& catalog, const Cell& product, const Cell& article)
{
    add(u"RIP", {u"CATNRO", u"PRDNRO", u"ARTNRO"}, {catalog, product, article});
}

void StockBase::position(const Cell& subheading, const Cell& opening, const Cell& control)
{
    add(u"NCM", {u"001", u"002", u"003"}, {subheading, opening, control});
}

QString StockBase::content()
{
    QString result;
    m_engine->beginSnapshot();
    for (const dialect::Table& table : m_tables.tables) {
        dialect::TableScan scan;
        scan.columns.resize(table.columns.size());
        std::iota(scan.columns.begin(), scan.columns.end(), 0);
        store::RowStream rows(*m_engine, table, scan);
        while (rows.next()) {
            result += table.name;
            for (size_t place = 0; place < scan.columns.size(); ++place) {
                const dialect::Value value = rows.value(place);
                result += value.isNull() ? u"|Null"_s : QString(u'|' + dialect::textOf(value, {}));
            }
            result += u'\n';
        }
    }
    m_engine->rollback();
    return result;
}

void FreshBases::addEngines()
{
    QTest::addColumn<QString>("engine");
    QTest::newRow("sqlite") << u"sqlite"_s;
    QTest::newRow("postgresql") << u"postgresql"_s;
}

QString FreshBases::url()
{
    QFETCH_GLOBAL(QString, engine);
    const QString name = u"base%1"_s.arg(++m_made);
    if (engine == u"sqlite"_s) {
        return u"sqlite:"_s + m_folder.filePath(name);
    }
    if (!m_server) {
        m_server = std::make_unique<doubles::PostgresServer>();
        m_server->start();
    }
    return m_server->url(name);
}

CommandRun::CommandRun(const Command& command, const QStringList& operands, const QMap<QString, QString>& options,
                       RecordedConsole::Format format)
    : console(format), exitCode(command.run({operands, options}, console))
{}

} // namespace oVELDRA::data
