// Any text through the whole way of a statement: reading, printing and reading again, planning and running on an empty
// database, and writing for the other engine. Only RuntimeError may come out, and a printed statement must read back as
// the same tree.

#include <oVELDRA/Store.h>

#include <dialect/JetPrinter.h>
#include <dialect/Parser.h>
#include <dialect/PostgresPrinter.h>
#include <store/Schema.h>

#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace oVELDRA;

namespace {

void checkRoundTrip(const QString& text)
{
    const dialect::ParsedStatement tree = dialect::parse(text);
    const QString printed = dialect::printJet(tree);
    const dialect::ParsedStatement again = dialect::parse(printed);
    if (!dialect::sameTree(tree, again)) {
        std::abort();
    }
}

/// Either the server gets a text for the statement, or rows are fetched for it.
void writeForServer(const QString& text)
{
    static const dialect::Catalog catalog = [] {
        dialect::Catalog tables;
        for (const store::TableSchema& table : store::schemaOf(Database::Inputs)) {
            tables.tables.push_back(table.table);
            tables.tables.back().rowMark = dialect::PostgresPrinter::rowMark;
        }
        return tables;
    }();
    const auto plan = dialect::makePlan(text, catalog);
    dialect::PostgresPrinter().print(*plan);
    for (const dialect::EngineText& engineText : plan->texts) {
        const QByteArray last = '$' + QByteArray::number(engineText.parameters.size());
        if (engineText.sql.isEmpty() || (!engineText.parameters.empty() && !engineText.sql.contains(last))) {
            std::abort();
        }
    }
}

void runAsQueryAndAsCommand(const QString& text)
{
    static const std::shared_ptr<ConexionDB> database = [] {
        auto made = createStore(u"sqlite::memory:"_s, Database::Inputs);
        made->setSql(u"insert into CAT (CATNRO,CATDES) values ('A','Ñandú')"_s);
        made->execute();
        return made;
    }();
    bool ok = false;
    database->setSql(text);
    if (const auto rows = database->openRecordset(ok)) {
        static_cast<void>(rows->recordCount());
    }
    database->execute();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = QString::fromUtf8(QByteArrayView(data, static_cast<qsizetype>(size)));
    try {
        checkRoundTrip(text);
        writeForServer(text);
        runAsQueryAndAsCommand(text);
    } catch (const RuntimeError&) {
        return 0;
    }
    return 0;
}
