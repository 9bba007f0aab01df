#include "Bases.h"
#include "Command.h"
#include "Destination.h"
#include "Interruption.h"

#include <dialect/Value.h>
#include <store/BulkInsert.h>
#include <store/DatabaseName.h>
#include <store/Engines.h>
#include <store/Schema.h>

#include <QJsonArray>
#include <QLocale>

#include <numeric>
#include <tariff/Tariff.h>

using namespace Qt::StringLiterals;

namespace oVELDRA::data {

using dialect::Value;
using store::EngineConnection;

namespace {

Value textOrNull(const QString& text)
{
    return text.isEmpty() ? Value() : Value::ofText(text);
}

/// The tariff writes numbers with a point.
Value decimalOrNull(const QString& text)
{
    return text.isEmpty() ? Value() : Value::ofNumber(text.toDouble());
}

/// Writes rows into all columns of a table, with progress, and refuses what does not fit its column.
class TableFiller
{
public:
    TableFiller(EngineConnection& engine, const dialect::Table& table, size_t total, Console& console)
        : m_table(table), m_insert(engine, table, allColumns(table)), m_what(u"Escribiendo %1"_s.arg(table.name)),
          m_total(static_cast<qint64>(total)), m_console(console)
    {}

    void add(std::vector<Value> row)
    {
        for (size_t column = 0; column < row.size(); ++column) {
            row[column] = dialect::storedValue(std::move(row[column]), m_table.columns[column], m_separators);
        }
        m_insert.add(row);
        Interruption::check();
        m_console.progress(m_what, ++m_done, m_total);
    }

    void finish() { m_insert.finish(); }

private:
    [[nodiscard]] static std::vector<int> allColumns(const dialect::Table& table)
    {
        std::vector<int> columns(table.columns.size());
        std::iota(columns.begin(), columns.end(), 0);
        return columns;
    }

    const dialect::Table& m_table;
    store::BulkInsert m_insert;
    dialect::LazySeparators m_separators;
    QString m_what;
    qint64 m_total;
    qint64 m_done = 0;
    Console& m_console;
};

void fillTariff(EngineConnection& engine, const tariff::Tariff& tariff, Console& console)
{
    const dialect::Catalog tables = store::tablesOf(engine);
    TableFiller positions(engine, *tables.find(u"NCM"), tariff.positions().size(), console);
    for (const tariff::TariffPosition& row : tariff.positions()) {
        positions.add({Value::ofText(row.subheading), Value::ofText(row.opening), Value::ofText(row.control),
                       textOrNull(row.heading), textOrNull(row.text), textOrNull(row.unit), decimalOrNull(row.refund),
                       decimalOrNull(row.duty), textOrNull(row.remark)});
    }
    positions.finish();
    TableFiller suffixes(engine, *tables.find(u"sufidos"), tariff.suffixes().size(), console);
    for (const tariff::TariffSuffix& row : tariff.suffixes()) {
        suffixes.add({Value::ofText(row.selector), Value::ofText(row.suffix), textOrNull(row.detail)});
    }
    suffixes.finish();
}

/// Makes the tables and fills them, all or nothing.
void make(const QString& url, Database database, const std::optional<tariff::Tariff>& tariff, Console& console)
{
    Destination destination(url);
    EngineConnection& engine = destination.engine();
    engine.begin();
    store::createTables(engine, database);
    if (tariff) {
        fillTariff(engine, *tariff, console);
    }
    engine.commit();
    destination.keep();
}

void report(const QString& url, Database database, const std::optional<tariff::Tariff>& tariff, Console& console)
{
    QStringList tables;
    for (const store::TableSchema& schema : store::schemaOf(database)) {
        tables.append(schema.table.name);
    }
    console.say(u"Se creó la base %1 en %2"_s.arg(store::nameOf(database), url));
    console.say(u"Tablas: %1"_s.arg(tables.join(u", "_s)));
    QJsonObject result{
        {u"url"_s, url}, {u"database"_s, store::nameOf(database)}, {u"tables"_s, QJsonArray::fromStringList(tables)}};
    if (tariff) {
        const auto positions = static_cast<qint64>(tariff->positions().size());
        const auto suffixes = static_cast<qint64>(tariff->suffixes().size());
        const QLocale locale;
        console.say(
            u"Arancel: %1 posiciones y %2 sufijos"_s.arg(locale.toString(positions), locale.toString(suffixes)));
        result.insert(u"rows"_s, QJsonObject{{u"NCM"_s, positions}, {u"sufidos"_s, suffixes}});
    }
    console.result(result);
}

int runCrear(const Arguments& arguments, Console& console)
{
    const QString& url = arguments.operands[0];
    const Database database = baseOf(arguments.options.value(u"base"_s, store::nameOf(Database::Inputs)));
    std::optional<tariff::Tariff> tariff;
    if (arguments.has(u"con-arancel"_s)) {
        if (database != Database::Nomenclature) {
            throw BadUsageError(u"El arancel va en la base ncm: agregue --base ncm."_s);
        }
        tariff = tariff::Tariff::builtIn();
    }
    const Interruption interruption;
    make(url, database, tariff, console);
    report(url, database, tariff, console);
    return Success;
}

constexpr QStringView help = uR"(Las tablas y los índices son los que oVELDRA necesita:
  insumos   CAT, PRD, RIP, INTINS, INS, DIP   (se lee y se escribe)
  ncm       NCM, sufidos                      (el nomenclador)
  tornel    caratula, item, groupsubitems     (las declaraciones del sistema)

Nunca toca una tabla que ya existe: si la base de datos contiene alguna de las
que va a crear, la rechaza y no modifica nada. Otras tablas no le molestan, y
las tres bases pueden estar en un mismo archivo o esquema.

Con sqlite: crea el archivo, cuya carpeta tiene que existir; si algo falla, el
archivo no aparece. Con postgresql: crea el esquema si falta; la base del
servidor y el usuario tienen que existir (createdb, createuser), y la base
tiene que estar en UTF-8.

El arancel de --con-arancel es del 31/05/2022 y sirve para probar y aprender,
no para despachar: 33.110 posiciones, y cerca de un décimo de los sufijos.

Códigos de salida: 0 se creó; 2 línea de comandos mal escrita; 3 no se pudo.

Ejemplos:
  oveldra-datos crear sqlite:insumos.sqlite
  oveldra-datos crear sqlite:ncm.sqlite --base ncm --con-arancel
  oveldra-datos crear 'postgresql://oveldra@servidor/oveldra?schema=insumos'
)";

} // namespace

Command crear()
{
    return {u"crear"_s,
            u"Crea las tablas de una base, en un archivo o en el servidor."_s,
            {u"URL"_s},
            help.toString(),
            {{u"base"_s, u"NOMBRE"_s, u"Cuál de las tres bases: insumos (por omisión), ncm o tornel."_s},
             {u"con-arancel"_s, {}, u"Llena NCM y sufidos con el arancel que trae el programa (con --base ncm)."_s}},
            runCrear};
}

} // namespace oVELDRA::data
