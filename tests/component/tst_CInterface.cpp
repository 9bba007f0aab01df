#include "Closer.h"

#include <oVELDRA/ConexionDB.h>
#include <oVELDRA/oveldra.h>

#include <component/ConnectionHandle.h>

#include <QApplication>
#include <QDate>
#include <QLocale>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

template <typename Handle, void (*release)(Handle*)>
struct Releaser
{
    void operator()(Handle* handle) const { release(handle); }
};
using Object = std::unique_ptr<oveldra_object, Releaser<oveldra_object, oveldra_release>>;
using Connection = std::unique_ptr<oveldra_connection, Releaser<oveldra_connection, oveldra_connection_release>>;
using Records = std::unique_ptr<oveldra_recordset, Releaser<oveldra_recordset, oveldra_recordset_release>>;

Object makeObject()
{
    oveldra_object* object = nullptr;
    return oveldra_create(&object) == 0 ? Object(object) : Object();
}

Connection makeInputs()
{
    oveldra_connection* connection = nullptr;
    return oveldra_connection_create("sqlite::memory:", OVELDRA_INPUTS, &connection) == 0 ? Connection(connection)
                                                                                          : Connection();
}

Records openRecords(oveldra_connection* connection, const char* sql)
{
    oveldra_recordset* records = nullptr;
    return oveldra_open(connection, sql, &records) == 0 ? Records(records) : Records();
}

oveldra_variant textVariant(const char* text)
{
    oveldra_variant variant{};
    variant.kind = OVELDRA_TEXT;
    variant.value.text = text;
    return variant;
}

oveldra_variant variantOf(qint32 kind, qint64 integer = 0)
{
    oveldra_variant variant{};
    variant.kind = kind;
    variant.value.integer = integer;
    return variant;
}

oveldra_variant connectionVariant(const Connection& connection)
{
    oveldra_variant variant{};
    variant.kind = OVELDRA_CONNECTION;
    variant.value.connection = connection.get();
    return variant;
}

QString lastDescription()
{
    return QString::fromUtf8(oveldra_error_description());
}

/// A host with one table in memory: a row is a list of fields by name.
struct MemoryHost
{
    using Row = std::map<std::string, oveldra_variant>;
    struct Cursor
    {
        MemoryHost* host;
        std::size_t row = 0;
    };

    std::vector<Row> rows;
    std::string sql;
    std::optional<qint32> failure; // what every statement ends with
    const char* failureText = nullptr;
    qint32 native = 0;
    qint64 affected = 0;
    int released = 0;
    int cursors = 0;
    QStringList bursts;

    static MemoryHost& of(void* host) { return *static_cast<MemoryHost*>(host); }
    static Cursor& cursor(void* records) { return *static_cast<Cursor*>(records); }

    [[nodiscard]] qint32 outcome() const
    {
        if (!failure) {
            return 0;
        }
        return failureText != nullptr ? oveldra_fail(*failure, native, failureText) : *failure;
    }

    static void release(void* host) { ++of(host).released; }
    static int32_t setSql(void* host, const char* text)
    {
        of(host).sql = text;
        return 0;
    }
    static int32_t open(void* host, void** records)
    {
        if (const qint32 number = of(host).outcome(); number != 0) {
            return number;
        }
        ++of(host).cursors;
        *records = new Cursor{&of(host)};
        return 0;
    }
    static int32_t execute(void* host, int64_t* affected)
    {
        *affected = of(host).affected;
        return of(host).outcome();
    }
    static int32_t begin(void* host, void** burst)
    {
        of(host).bursts.append(u"begin"_s);
        *burst = host;
        return of(host).outcome();
    }
    static int32_t commit(void* burst)
    {
        of(burst).bursts.append(u"commit"_s);
        return of(burst).outcome();
    }
    static void end(void* burst) { of(burst).bursts.append(u"end"_s); }
    static int32_t atEof(void* records, int32_t* eof)
    {
        *eof = cursor(records).row >= cursor(records).host->rows.size() ? 7 : 0;
        return 0;
    }
    static int32_t moveNext(void* records)
    {
        if (cursor(records).row >= cursor(records).host->rows.size()) {
            return 3021;
        }
        ++cursor(records).row;
        return 0;
    }
    static int32_t moveFirst(void* records)
    {
        cursor(records).row = 0;
        return cursor(records).host->rows.empty() ? 3021 : 0;
    }
    static int32_t count(void* records, int64_t* count)
    {
        *count = static_cast<int64_t>(cursor(records).host->rows.size());
        return 0;
    }
    static int32_t value(void* records, const char* field, oveldra_variant* value)
    {
        const Row& row = cursor(records).host->rows.at(cursor(records).row);
        const auto found = row.find(field);
        if (found == row.end()) {
            return oveldra_fail(3265, 0, nullptr);
        }
        *value = found->second;
        return 0;
    }
    static void releaseRecords(void* records)
    {
        --cursor(records).host->cursors;
        delete &cursor(records);
    }

    static oveldra_host_connection functions()
    {
        oveldra_host_connection table{};
        table.size = sizeof table;
        table.release = release;
        table.set_sql = setSql;
        table.open_recordset = open;
        table.execute = execute;
        table.begin_burst = begin;
        table.commit_burst = commit;
        table.end_burst = end;
        table.at_eof = atEof;
        table.move_next = moveNext;
        table.move_first = moveFirst;
        table.record_count = count;
        table.value = value;
        table.release_recordset = releaseRecords;
        return table;
    }

    Connection connect()
    {
        const oveldra_host_connection table = functions();
        oveldra_connection* connection = nullptr;
        return oveldra_connection_from_host(&table, this, &connection) == 0 ? Connection(connection) : Connection();
    }
};

} // namespace

/// The component as a host in C sees it. (The functions themselves are called from C by the example host.)
class tst_CInterface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void tellsItsVersion();
    void propertiesByTheirOwnFunctions();
    void wrongHandlesAndTextsAreErrors();
    void membersByNameInAnyLetterCase();
    void membersBySlot();
    void lateBindingErrors_data();
    void lateBindingErrors();
    void argumentsBecomeTheMembersType_data();
    void argumentsBecomeTheMembersType();
    void conectarDBTakesConnectionsAndNull();
    void conectarDBReportsAnOmittedArgument();
    void conectarDBReportsWhatIsNoConnection_data();
    void conectarDBReportsWhatIsNoConnection();
    void storeErrorsKeepTheirNativeNumber();
    void rowsOfAStore();
    void fieldsOfAHostsRows();
    void aFieldOfNoKnownKindIsAWrongType();
    void aHostsErrorArrivesWithItsOwnWords();
    void aHostsBareNumberGetsTheRuntimesText();
    void anOldFailureIsNotTakenForTheHostsOwn();
    void aHostsBursts();
    void anIncompleteTableIsRefused_data();
    void anIncompleteTableIsRefused();
    void aHostsConnectionGoesWithItsLastRecordset();
    void theComponentHoldsAConnectionUntilItsLastObjectGoes();
    void operationsReturnWhenTheirScreenCloses();
    void aHostsErrorIsShownByTheScreen();
    void otherThreadsAreRefusedAndErrorsAreTheirOwn();
    void aReleaseFromAnotherThreadHappensLater();

private:
    QTemporaryDir m_config;
    std::unique_ptr<QApplication> m_application;
    std::array<char, 5> m_name{"host"};
    std::array<char*, 2> m_arguments{m_name.data(), nullptr};
    int m_count = 1;
};

void tst_CInterface::initTestCase()
{
    QVERIFY(m_config.isValid());
    qputenv("XDG_CONFIG_HOME", m_config.path().toLocal8Bit());
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Argentina));
    m_application = std::make_unique<QApplication>(m_count, m_arguments.data());
}

void tst_CInterface::tellsItsVersion()
{
    QCOMPARE(oveldra_interface(), OVELDRA_INTERFACE);
    QCOMPARE(QByteArray(oveldra_version()), QByteArray(PROJECT_VERSION));
}

void tst_CInterface::propertiesByTheirOwnFunctions()
{
    const Object object = makeObject();
    QVERIFY(object);
    int32_t ok = 7;
    QCOMPARE(oveldra_get_OK(object.get(), &ok), 0);
    QCOMPARE(ok, 0);
    double price = 7;
    QCOMPARE(oveldra_get_PRDPRE(object.get(), &price), 0);
    QCOMPARE(price, 0.0);
    for (auto* const get : {oveldra_get_CATNRO, oveldra_get_PRDDES, oveldra_get_PRDNCM, oveldra_get_PRDPAI,
                            oveldra_get_PRDSUF, oveldra_get_PRDUNI, oveldra_get_PRDNRO}) {
        char* text = nullptr;
        QCOMPARE(get(object.get(), &text), 0);
        QCOMPARE(QByteArray(text), QByteArray());
        oveldra_text_release(text);
    }
    for (auto* const put : {oveldra_put_BaseNcm, oveldra_put_BaseTornel, oveldra_put_BaseInsumos,
                            oveldra_put_Interno_Externo, oveldra_put_ADUANA}) {
        QCOMPARE(put(object.get(), "Ñandú"), 0);
    }
    QCOMPARE(oveldra_put_IdSUB(object.get(), "123"), 0);
}

void tst_CInterface::wrongHandlesAndTextsAreErrors()
{
    const Object object = makeObject();
    int32_t ok = 0;
    QCOMPARE(oveldra_get_OK(nullptr, &ok), 91);
    QCOMPARE(oveldra_get_OK(object.get(), nullptr), 5);
    QCOMPARE(oveldra_put_ADUANA(object.get(), nullptr), 94);
    QCOMPARE(lastDescription(), u"Uso no válido de Null"_s);
    QCOMPARE(oveldra_put_ADUANA(object.get(), "\xC3("), 5);
    QCOMPARE(lastDescription(), u"El texto no está en UTF-8."_s);
    QCOMPARE(oveldra_put_IdSUB(object.get(), "abc"), 13);
    QCOMPARE(oveldra_error_number(), 13);
    QCOMPARE(lastDescription(), u"No coinciden los tipos"_s);
    QCOMPARE(oveldra_put_IdSUB(object.get(), "2147483648"), 6);
    QCOMPARE(oveldra_put_IdSUB(object.get(), "5"), 0);
    QCOMPARE(oveldra_error_number(), 6); // a success leaves the last failure as it was
    QCOMPARE(oveldra_create(nullptr), 5);
    QCOMPARE(oveldra_get_CATNRO(object.get(), nullptr), 5);
    QCOMPARE(oveldra_call(object.get(), "ConectarDB", nullptr, 1, nullptr), 5);
    oveldra_release(nullptr);
    oveldra_connection_release(nullptr);
    oveldra_recordset_release(nullptr);
    oveldra_text_release(nullptr);
    oveldra_variant_clear(nullptr);
}

void tst_CInterface::membersByNameInAnyLetterCase()
{
    const Object object = makeObject();
    oveldra_variant value{};
    QCOMPARE(oveldra_get(object.get(), "prdpre", &value), 0);
    QCOMPARE(value.kind, qint32{OVELDRA_DOUBLE});
    QCOMPARE(value.value.number, 0.0);
    QCOMPARE(oveldra_get(object.get(), "ok", &value), 0);
    QCOMPARE(value.kind, qint32{OVELDRA_BOOLEAN});
    QCOMPARE(value.value.integer, int64_t{0});
    QCOMPARE(oveldra_get(object.get(), "CatNro", &value), 0);
    QCOMPARE(value.kind, qint32{OVELDRA_TEXT});
    QCOMPARE(QByteArray(value.value.text), QByteArray());
    oveldra_variant_clear(&value);
    QCOMPARE(value.kind, qint32{OVELDRA_OMITTED});
    const oveldra_variant id = textVariant("123");
    QCOMPARE(oveldra_put(object.get(), "IDSUB", &id), 0);
}

void tst_CInterface::membersBySlot()
{
    oveldra_member member{};
    QCOMPARE(oveldra_member_at(1, &member), 0);
    QCOMPARE(QByteArray(member.name), QByteArray("OK"));
    QCOMPARE(member.kind, qint32{OVELDRA_GET});
    QCOMPARE(member.parameters, 0);
    QCOMPARE(oveldra_member_at(13, &member), 0);
    QCOMPARE(QByteArray(member.name), QByteArray("ConectarDB"));
    QCOMPARE(member.kind, qint32{OVELDRA_CALL});
    QCOMPARE(member.parameters, 3);
    QCOMPARE(member.required, 1);
    QCOMPARE(oveldra_member_at(20, &member), 0);
    QCOMPARE(QByteArray(member.name), QByteArray("IdSUB"));
    QCOMPARE(member.kind, qint32{OVELDRA_PUT});
    QCOMPARE(member.required, 1);
    QCOMPARE(oveldra_member_at(21, &member), 9);
    QCOMPARE(oveldra_member_at(0, &member), 9);
    QCOMPARE(oveldra_member_at(1, nullptr), 5);
}

void tst_CInterface::lateBindingErrors_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("number");
    QTest::newRow("unknown name") << u"get"_s << QByteArray("CATNR") << 0 << 438;
    QTest::newRow("reading a write-only property") << u"get"_s << QByteArray("IdSUB") << 0 << 438;
    QTest::newRow("reading an operation") << u"get"_s << QByteArray("Mostrar") << 0 << 438;
    QTest::newRow("writing a read-only property") << u"put"_s << QByteArray("CATNRO") << 1 << 438;
    QTest::newRow("writing an operation") << u"put"_s << QByteArray("Importar") << 1 << 438;
    QTest::newRow("calling a property") << u"call"_s << QByteArray("CATNRO") << 0 << 438;
    QTest::newRow("calling what is not there") << u"call"_s << QByteArray("Cerrar") << 0 << 438;
    QTest::newRow("arguments for an operation without any") << u"call"_s << QByteArray("Mostrar") << 1 << 450;
    QTest::newRow("too few") << u"call"_s << QByteArray("ConectarDB") << 0 << 450;
    QTest::newRow("too many") << u"call"_s << QByteArray("ConectarDB") << 4 << 450;
}

void tst_CInterface::lateBindingErrors()
{
    QFETCH(const QString, kind);
    QFETCH(const QByteArray, name);
    QFETCH(const int, count);
    QFETCH(const int, number);
    const Object object = makeObject();
    const std::array<oveldra_variant, 4> arguments{textVariant("a"), textVariant("b"), textVariant("c"),
                                                   textVariant("d")};
    oveldra_variant result = variantOf(OVELDRA_INTEGER, 7);
    qint32 answer = 0;
    if (kind == u"get") {
        answer = oveldra_get(object.get(), name.constData(), &result);
    } else if (kind == u"put") {
        answer = oveldra_put(object.get(), name.constData(), arguments.data());
    } else {
        answer = oveldra_call(object.get(), name.constData(), arguments.data(), static_cast<size_t>(count), &result);
    }
    QCOMPARE(answer, number);
    QCOMPARE(oveldra_error_number(), number);
    QCOMPARE(result.kind, qint32{OVELDRA_INTEGER}); // what it was to give is left as it was
    QCOMPARE(result.value.integer, int64_t{7});
}

void tst_CInterface::argumentsBecomeTheMembersType_data()
{
    QTest::addColumn<qint32>("kind");
    QTest::addColumn<double>("number");
    QTest::addColumn<int>("outcome");
    QTest::newRow("a whole number") << qint32{OVELDRA_INTEGER} << 123.0 << 0;
    QTest::newRow("a number beyond 32 bits") << qint32{OVELDRA_INTEGER} << 3e9 << 6;
    QTest::newRow("a fraction, rounded") << qint32{OVELDRA_DOUBLE} << 2.25 << 0;
    QTest::newRow("Null") << qint32{OVELDRA_NULL} << 0.0 << 94;
    QTest::newRow("omitted") << qint32{OVELDRA_OMITTED} << 0.0 << 13;
    QTest::newRow("an object") << qint32{OVELDRA_OBJECT} << 0.0 << 13;
    QTest::newRow("an unknown kind") << qint32{99} << 0.0 << 5;
}

void tst_CInterface::argumentsBecomeTheMembersType()
{
    QFETCH(const qint32, kind);
    QFETCH(const double, number);
    QFETCH(const int, outcome);
    const Object object = makeObject();
    oveldra_variant value = variantOf(kind, static_cast<qint64>(number));
    if (kind == OVELDRA_DOUBLE) {
        value.value.number = number;
    }
    QCOMPARE(oveldra_put(object.get(), "IdSUB", &value), outcome);
}

void tst_CInterface::conectarDBTakesConnectionsAndNull()
{
    const Object object = makeObject();
    const Connection inputs = makeInputs();
    int32_t connected = 0;
    QCOMPARE(oveldra_ConectarDB(object.get(), inputs.get(), nullptr, nullptr, &connected), 0);
    QCOMPARE(connected, 1);
    QCOMPARE(inputs->connection.use_count(), 2);

    const std::array arguments{connectionVariant(inputs), variantOf(OVELDRA_NULL), variantOf(OVELDRA_NULL)};
    oveldra_variant answer{};
    QCOMPARE(oveldra_call(object.get(), "conectardb", arguments.data(), arguments.size(), &answer), 0);
    QCOMPARE(answer.kind, qint32{OVELDRA_BOOLEAN});
    QCOMPARE(answer.value.integer, int64_t{1});
}

void tst_CInterface::conectarDBReportsAnOmittedArgument()
{
    const Object object = makeObject();
    const Connection inputs = makeInputs();
    Closer closer;
    const oveldra_variant argument = connectionVariant(inputs);
    oveldra_variant answer = variantOf(OVELDRA_NULL);
    QCOMPARE(oveldra_call(object.get(), "ConectarDB", &argument, 1, &answer), 0);
    QCOMPARE(answer.kind, qint32{OVELDRA_BOOLEAN});
    QCOMPARE(answer.value.integer, int64_t{0});
    QCOMPARE(closer.shown.size(), 1);
    QVERIFY2(closer.boxText.contains(u"Sección [oVELDRA.cloVELDRAMain.ConectarDB]"), qPrintable(closer.boxText));
    QCOMPARE(inputs->connection.use_count(), 2); // assigned before the error
}

void tst_CInterface::conectarDBReportsWhatIsNoConnection_data()
{
    QTest::addColumn<qint32>("kind");
    QTest::addColumn<QString>("number");
    QTest::newRow("Null for the first") << qint32{OVELDRA_NULL} << u"424"_s;
    QTest::newRow("a number") << qint32{OVELDRA_INTEGER} << u"424"_s;
    QTest::newRow("another object") << qint32{OVELDRA_OBJECT} << u"430"_s;
    QTest::newRow("nothing where a connection is meant") << qint32{OVELDRA_CONNECTION} << u"91"_s;
}

void tst_CInterface::conectarDBReportsWhatIsNoConnection()
{
    QFETCH(const qint32, kind);
    QFETCH(const QString, number);
    const Object object = makeObject();
    Closer closer;
    oveldra_variant argument{};
    argument.kind = kind;
    const std::array arguments{argument, variantOf(OVELDRA_NULL), variantOf(OVELDRA_NULL)};
    oveldra_variant answer{};
    QCOMPARE(oveldra_call(object.get(), "ConectarDB", arguments.data(), arguments.size(), &answer), 0);
    QCOMPARE(answer.value.integer, int64_t{0});
    QVERIFY2(closer.boxText.startsWith(number), qPrintable(closer.boxText));
}

void tst_CInterface::storeErrorsKeepTheirNativeNumber()
{
    oveldra_connection* connection = nullptr;
    const QByteArray missing = "sqlite:" + m_config.filePath(u"no hay.sqlite"_s).toUtf8();
    QCOMPARE(oveldra_connection_open(missing.constData(), OVELDRA_READ_ONLY, &connection), -2147467259);
    QCOMPARE(oveldra_error_native(), 3024);
    QVERIFY(connection == nullptr);
    QCOMPARE(oveldra_connection_open("nothing:like/this", OVELDRA_READ_ONLY, &connection), 5);
    QCOMPARE(oveldra_connection_open(missing.constData(), 2, &connection), 5);
    QCOMPARE(oveldra_connection_create("sqlite::memory:", 3, &connection), 5);
    const QByteArray path = m_config.filePath(u"hay.sqlite"_s).toUtf8();
    const QByteArray url = "sqlite:" + path;
    QCOMPARE(oveldra_connection_create(url.constData(), OVELDRA_INPUTS, nullptr), 5);
    QVERIFY(!QFile::exists(QString::fromUtf8(path))); // nothing was made that nobody could have held
}

void tst_CInterface::rowsOfAStore()
{
    const Connection inputs = makeInputs();
    int64_t affected = 0;
    QCOMPARE(oveldra_execute(inputs.get(),
                             "insert into INTINS (INTNRO,INTDCL,INTFOF,INTIOK) values "
                             "('Ñ1','26001IT14000655K',datevalue('16/11/2026'),-1)",
                             &affected),
             0);
    QCOMPARE(affected, int64_t{1});
    QCOMPARE(oveldra_execute(inputs.get(), "insert into NADA (A) values (1)", &affected), -2147217865);
    QCOMPARE(oveldra_execute(inputs.get(), "delete from INTINS", nullptr), 5);

    const Records records = openRecords(inputs.get(), "select * from INTINS");
    QVERIFY(records);
    QCOMPARE(oveldra_execute(inputs.get(), "delete from INTINS", &affected), 0);
    int64_t count = 0;
    QCOMPARE(oveldra_record_count(records.get(), &count), 0);
    QCOMPARE(count, int64_t{1}); // a snapshot
    oveldra_variant value{};
    QCOMPARE(oveldra_value(records.get(), "intnro", &value), 0);
    QCOMPARE(value.kind, qint32{OVELDRA_TEXT});
    QCOMPARE(QByteArray(value.value.text), QByteArray("Ñ1"));
    oveldra_variant_clear(&value);
    QCOMPARE(oveldra_value(records.get(), "INTFOF", &value), 0);
    QCOMPARE(value.kind, qint32{OVELDRA_DATE});
    QCOMPARE(QByteArray(value.value.text), QByteArray("2026-11-16"));
    oveldra_variant_clear(&value);
    QCOMPARE(oveldra_value(records.get(), "INTVEN", &value), 0);
    QCOMPARE(value.kind, qint32{OVELDRA_NULL});
    QCOMPARE(oveldra_value(records.get(), "INTIOK", &value), 0);
    QCOMPARE(value.kind, qint32{OVELDRA_BOOLEAN});
    QCOMPARE(value.value.integer, int64_t{-1});
    QCOMPARE(oveldra_value(records.get(), "NADA", &value), 3265);
    int32_t eof = 7;
    QCOMPARE(oveldra_at_eof(records.get(), &eof), 0);
    QCOMPARE(eof, 0);
    QCOMPARE(oveldra_move_next(records.get()), 0);
    QCOMPARE(oveldra_at_eof(records.get(), &eof), 0);
    QCOMPARE(eof, 1);
    QCOMPARE(oveldra_move_next(records.get()), 3021);
    QCOMPARE(oveldra_move_first(records.get()), 0);
    QVERIFY(!openRecords(inputs.get(), "select * from"));
    QCOMPARE(oveldra_error_number(), -2147217900);
    QCOMPARE(oveldra_open(inputs.get(), "select * from CAT", nullptr), 5);
}

void tst_CInterface::fieldsOfAHostsRows()
{
    MemoryHost host;
    oveldra_variant price{};
    price.kind = OVELDRA_DOUBLE;
    price.value.number = 38.333333;
    oveldra_variant day = textVariant("2026-02-28");
    day.kind = OVELDRA_DATE;
    host.rows = {{{"texto", textVariant("año")},
                  {"nulo", variantOf(OVELDRA_NULL)},
                  {"marca", variantOf(OVELDRA_BOOLEAN, -1)},
                  {"entero", variantOf(OVELDRA_INTEGER, 9'000'000'000)},
                  {"precio", price},
                  {"fecha", day}},
                 {}};
    const Connection connection = host.connect();
    connection->connection->setSql(u"select 'ñ' from caratula"_s);
    QCOMPARE(host.sql, std::string("select 'ñ' from caratula"));
    bool ok = false;
    const auto records = connection->connection->openRecordset(ok);
    QVERIFY(ok);
    QCOMPARE(records->recordCount(), 2);
    QCOMPARE(records->value(u"texto"), QVariant(u"año"_s));
    QVERIFY(!records->value(u"nulo").isValid());
    QCOMPARE(records->value(u"marca"), QVariant(-1));
    QCOMPARE(records->value(u"entero"), QVariant::fromValue<qlonglong>(9'000'000'000));
    QCOMPARE(records->value(u"precio"), QVariant(38.333333));
    QCOMPARE(records->value(u"fecha"), QVariant(QDate(2026, 2, 28)));
    QVERIFY(!records->atEof());
    records->moveNext();
    records->moveNext();
    QVERIFY(records->atEof());
    QVERIFY_THROWS_EXCEPTION(oVELDRA::RuntimeError, records->moveNext());
    records->moveFirst();
    QVERIFY(!records->atEof());
}

void tst_CInterface::aFieldOfNoKnownKindIsAWrongType()
{
    MemoryHost host;
    host.rows = {{{"omitido", variantOf(OVELDRA_OMITTED)},
                  {"objeto", variantOf(OVELDRA_OBJECT)},
                  {"marca", variantOf(OVELDRA_BOOLEAN, 9'000'000'000)},
                  {"texto", textVariant("\xFF")}}};
    const Connection connection = host.connect();
    const Records records = openRecords(connection.get(), "select * from caratula");
    oveldra_variant value{};
    QCOMPARE(oveldra_value(records.get(), "omitido", &value), 13);
    QCOMPARE(oveldra_value(records.get(), "objeto", &value), 13);
    QCOMPARE(oveldra_value(records.get(), "marca", &value), 6);
    QCOMPARE(oveldra_value(records.get(), "texto", &value), 5);
    QCOMPARE(oveldra_value(records.get(), "otro", &value), 3265);
}

void tst_CInterface::aHostsErrorArrivesWithItsOwnWords()
{
    MemoryHost host;
    host.failure = -2147467259;
    host.native = 3218;
    host.failureText = "La tabla está bloqueada";
    const Connection connection = host.connect();
    oveldra_recordset* records = nullptr;
    QCOMPARE(oveldra_open(connection.get(), "select * from item", &records), -2147467259);
    QVERIFY(records == nullptr);
    QCOMPARE(lastDescription(), u"La tabla está bloqueada"_s);
    QCOMPARE(oveldra_error_native(), 3218);
    int64_t affected = 7;
    QCOMPARE(oveldra_execute(connection.get(), "delete from item", &affected), -2147467259);
    QCOMPARE(lastDescription(), u"La tabla está bloqueada"_s);
    QCOMPARE(affected, int64_t{7});
}

void tst_CInterface::aHostsBareNumberGetsTheRuntimesText()
{
    MemoryHost host;
    host.failure = 3709;
    const Connection connection = host.connect();
    QVERIFY(!openRecords(connection.get(), "select * from item"));
    QCOMPARE(oveldra_error_number(), 3709);
    QVERIFY2(lastDescription().startsWith(u"La conexión no se puede usar"), qPrintable(lastDescription()));
}

void tst_CInterface::anOldFailureIsNotTakenForTheHostsOwn()
{
    MemoryHost host;
    host.failure = 3709;
    const Connection connection = host.connect();
    QCOMPARE(oveldra_fail(3709, 12, "de otra vez"), 3709);
    int64_t affected = 0;
    QCOMPARE(oveldra_execute(connection.get(), "delete from item", &affected), 3709);
    QVERIFY2(lastDescription().startsWith(u"La conexión no se puede usar"), qPrintable(lastDescription()));
    QCOMPARE(oveldra_error_native(), 0);
    QCOMPARE(oveldra_fail(0, 0, "sin número"), 5); // 0 would say that all is well
}

void tst_CInterface::aHostsBursts()
{
    MemoryHost host;
    const Connection connection = host.connect();
    {
        const auto burst = connection->connection->beginBurst();
        burst->commit();
        burst->commit();
    }
    QCOMPARE(host.bursts, QStringList({u"begin"_s, u"commit"_s, u"end"_s}));
    host.bursts.clear();
    {
        const auto burst = connection->connection->beginBurst();
    }
    QCOMPARE(host.bursts, QStringList({u"begin"_s, u"end"_s}));
    host.bursts.clear();
    host.failure = -2147467259;
    QVERIFY_THROWS_EXCEPTION(oVELDRA::RuntimeError, std::ignore = connection->connection->beginBurst());
    QCOMPARE(host.bursts, QStringList(u"begin"_s)); // what did not begin does not end
}

void tst_CInterface::anIncompleteTableIsRefused_data()
{
    QTest::addColumn<int>("change");
    QTest::newRow("an older, shorter table") << 0;
    QTest::newRow("without set_sql") << 1;
    QTest::newRow("without value") << 2;
    QTest::newRow("half a burst") << 3;
}

void tst_CInterface::anIncompleteTableIsRefused()
{
    QFETCH(const int, change);
    MemoryHost host;
    oveldra_host_connection table = MemoryHost::functions();
    switch (change) {
    case 0:
        table.size -= sizeof(void*);
        break;
    case 1:
        table.set_sql = nullptr;
        break;
    case 2:
        table.value = nullptr;
        break;
    default:
        table.commit_burst = nullptr;
        break;
    }
    oveldra_connection* connection = nullptr;
    QCOMPARE(oveldra_connection_from_host(&table, &host, &connection), 5);
    QVERIFY(connection == nullptr);
    QCOMPARE(host.released, 0); // still the host's own
    QCOMPARE(oveldra_connection_from_host(nullptr, &host, &connection), 5);
}

void tst_CInterface::aHostsConnectionGoesWithItsLastRecordset()
{
    MemoryHost host;
    host.rows = {{}};
    Connection connection = host.connect();
    Records records = openRecords(connection.get(), "select * from item");
    QCOMPARE(host.cursors, 1);
    connection.reset();
    QCOMPARE(host.released, 0);
    int64_t count = 0;
    QCOMPARE(oveldra_record_count(records.get(), &count), 0);
    QCOMPARE(count, int64_t{1});
    records.reset();
    QCOMPARE(host.cursors, 0);
    QCOMPARE(host.released, 1);
}

void tst_CInterface::theComponentHoldsAConnectionUntilItsLastObjectGoes()
{
    MemoryHost host;
    Object object = makeObject();
    {
        const Connection connection = host.connect();
        int32_t connected = 0;
        QCOMPARE(oveldra_ConectarDB(object.get(), connection.get(), nullptr, nullptr, &connected), 0);
        QCOMPARE(connected, 1);
    }
    QCOMPARE(host.released, 0);
    object.reset();
    QCOMPARE(host.released, 1);
}

void tst_CInterface::operationsReturnWhenTheirScreenCloses()
{
    const Object object = makeObject();
    const Connection inputs = makeInputs();
    int32_t connected = 0;
    QCOMPARE(oveldra_ConectarDB(object.get(), inputs.get(), nullptr, nullptr, &connected), 0);
    Closer closer;
    qint32 second = 0;
    closer.beforeClosing = [&] { second = oveldra_VerINSxSBT(object.get()); };
    QCOMPARE(oveldra_VerINSxSBT(object.get()), 0);
    QCOMPARE(closer.shown.size(), 1);
    QCOMPARE(closer.shown.first()->objectName(), u"frmVerINSxSBT"_s);
    QCOMPARE(second, 400); // it was open already
    closer.beforeClosing = {};
    QCOMPARE(oveldra_put_Interno_Externo(object.get(), ""), 0); // an earlier object's value lives on
    QCOMPARE(oveldra_Importar(object.get()), 0);
    QCOMPARE(closer.boxText, u"El parametro sInternoExt esta vacío"_s);
    QCOMPARE(oveldra_MostrarDIT(object.get()), 0);
    QCOMPARE(closer.shown.last()->objectName(), u"frmDIT"_s);
    QCOMPARE(oveldra_Mostrar(object.get()), 0);
    QCOMPARE(closer.shown.last()->objectName(), u"frmProducto"_s);
}

void tst_CInterface::aHostsErrorIsShownByTheScreen()
{
    MemoryHost host;
    host.failure = -2147467259;
    host.failureText = "El servidor del anfitrión no responde";
    const Object object = makeObject();
    const Connection connection = host.connect();
    int32_t connected = 0;
    QCOMPARE(oveldra_ConectarDB(object.get(), connection.get(), nullptr, nullptr, &connected), 0);
    Closer closer;
    QCOMPARE(oveldra_VerINSxSBT(object.get()), 0);
    QVERIFY2(closer.boxText.contains(u"El servidor del anfitrión no responde"), qPrintable(closer.boxText));
}

void tst_CInterface::otherThreadsAreRefusedAndErrorsAreTheirOwn()
{
    const Object object = makeObject();
    QCOMPARE(oveldra_put_IdSUB(object.get(), "abc"), 13);
    const Connection inputs = makeInputs();
    const Records records = openRecords(inputs.get(), "select * from CAT");
    std::vector<qint32> answers;
    qint32 kept = 0;
    std::thread([&] {
        int32_t number = 0;
        int64_t many = 0;
        oveldra_connection* connection = nullptr;
        oveldra_object* another = nullptr;
        answers = {oveldra_get_OK(object.get(), &number),
                   oveldra_put_ADUANA(object.get(), "001"),
                   oveldra_MostrarDIT(object.get()),
                   oveldra_create(&another),
                   oveldra_connection_open("sqlite::memory:", OVELDRA_READ_WRITE, &connection),
                   oveldra_execute(inputs.get(), "delete from CAT", &many),
                   oveldra_at_eof(records.get(), &number)};
        kept = oveldra_error_number();
    }).join();
    QCOMPARE(answers, std::vector<qint32>(answers.size(), 5));
    QCOMPARE(answers.size(), std::size_t{7});
    QCOMPARE(kept, 5);
    QCOMPARE(oveldra_error_number(), 13); // this thread's last
}

void tst_CInterface::aReleaseFromAnotherThreadHappensLater()
{
    MemoryHost host;
    Connection connection = host.connect();
    std::thread([&] { connection.reset(); }).join();
    QCOMPARE(host.released, 0);
    QTRY_COMPARE(host.released, 1);
}

QTEST_APPLESS_MAIN(tst_CInterface)
#include "tst_CInterface.moc"
