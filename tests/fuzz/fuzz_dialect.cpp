// Any text through the whole way of a statement: reading, printing and reading again, planning and running on an empty
// database. Only RuntimeError may come out, and a printed statement must read back as the same tree.

#include <oVELDRA/Store.h>

#include <dialect/JetPrinter.h>
#include <dialect/Parser.h>

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
        runAsQueryAndAsCommand(text);
    } catch (const RuntimeError&) {
        return 0;
    }
    return 0;
}
