#include "AccessCopy.h"
#include "doubles/ThrownError.h"

#include <QTemporaryFile>
#include <QtTest>

#include <bit>
#include <cmath>
#include <oveldra-datos/AccessCells.h>
#include <oveldra-datos/AccessError.h>
#include <oveldra-datos/AccessFile.h>
#include <oveldra-datos/AccessTable.h>
#include <random>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::data;
using dialect::ValueType;

namespace {

QString sample(const QString& name)
{
    return QStringLiteral(OVELDRA_TEST_DATA "/access/") + name;
}

std::vector<SourceRow> rowsOf(SourceTable& table)
{
    std::vector<SourceRow> rows;
    SourceRow row;
    while (table.next(row)) {
        rows.push_back(row);
    }
    return rows;
}

std::vector<SourceRow> rowsOf(const QString& file, const QString& table)
{
    return rowsOf(*AccessFile(file).openTable(table));
}

/// All rows of all tables of a file.
qint64 readEverything(const QString& path)
{
    AccessFile file(path);
    qint64 rows = 0;
    for (const QString& table : file.tables()) {
        rows += static_cast<qint64>(rowsOf(*file.openTable(table)).size());
    }
    return rows;
}

int troubleThrownBy(const std::function<void()>& body)
{
    const auto error = doubles::thrownBy(body);
    return error ? error->nativeNumber() : 0;
}

double sumOf(const std::vector<SourceRow>& rows, size_t column)
{
    double sum = 0;
    for (const SourceRow& row : rows) {
        sum += row.cells[column].number;
    }
    return sum;
}

/// Pages of long values at the end of a file. A row's place is its page number and, in the lowest byte, its number.
quint32 appendLongValue(AccessCopy& copy, const QByteArray& content)
{
    const auto page = static_cast<quint32>(copy.bytes().size() / AccessCopy::pageSize);
    QByteArray bytes(AccessCopy::pageSize, '\0');
    bytes[0] = 1;
    bytes.replace(4, 4, "LVAL");
    const auto start = static_cast<quint16>(AccessCopy::pageSize - content.size());
    bytes.replace(12, 2, AccessCopy::littleEndian(quint16{1}));
    bytes.replace(14, 2, AccessCopy::littleEndian(start));
    bytes.replace(start, content.size(), content);
    copy.bytes().append(bytes);
    return page << 8U;
}

/// The first memo of PRD ("SIN SUFIJOS", inside its row) says instead that its value is elsewhere.
void pointFirstMemo(AccessCopy& copy, quint32 marks, quint32 size, quint32 place)
{
    const qsizetype text = copy.find(insumos::prd, AccessCopy::utf16(u"SIN SUFIJOS"_s));
    copy.bytes().replace(text - 12, 4, AccessCopy::littleEndian(marks | size));
    copy.bytes().replace(text - 8, 4, AccessCopy::littleEndian(place));
}

QString firstMemo(AccessCopy& copy)
{
    constexpr size_t suffixes = 7;
    const SourceRow row = rowsOf(copy.path(), u"PRD"_s).front();
    return row.troubles.empty() ? row.cells[suffixes].text : row.troubles.front().reason;
}

/// What is written to standard error while this lives.
class ErrorOutput
{
public:
    ErrorOutput() : m_kept(dup(STDERR_FILENO))
    {
        if (m_file.open()) {
            dup2(m_file.handle(), STDERR_FILENO);
        }
    }
    ~ErrorOutput()
    {
        dup2(m_kept, STDERR_FILENO);
        close(m_kept);
    }
    ErrorOutput(const ErrorOutput&) = delete;
    ErrorOutput& operator=(const ErrorOutput&) = delete;

    [[nodiscard]] qint64 size() const { return m_file.size(); }

private:
    QTemporaryFile m_file;
    int m_kept;
};

constexpr quint32 inOneRow = 0x40000000;

} // namespace

class tst_AccessFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Argentina)); }

    void tablesAreTheFilesOwn()
    {
        const AccessFile file(sample(u"insumos.mdb"_s));
        QCOMPARE(file.tables(), (QStringList{u"CAT"_s, u"PRD"_s, u"RIP"_s, u"INTINS"_s, u"INS"_s, u"DIP"_s}));
        QVERIFY(file.linkedTables().isEmpty());
    }

    void columnsHaveTheirKinds()
    {
        using enum AccessKind;
        AccessFile file(sample(u"insumos.mdb"_s));
        const auto headers = file.openTable(u"intins"_s);
        QCOMPARE(headers->columns(), (QStringList{u"INTNRO"_s, u"INTDCL"_s, u"INTFOF"_s, u"INTVEN"_s, u"INTDES"_s,
                                                  u"INTADU"_s, u"INTCTC"_s, u"INTIOK"_s}));
        QCOMPARE(headers->kinds(), (std::vector{Text, Text, Date, Date, Text, Text, Text, YesNo}));
        const auto discharges = file.openTable(u"DIP"_s);
        const std::vector<AccessKind>& kinds = discharges->kinds();
        QCOMPARE(kinds[2], Short);
        QCOMPARE(kinds[4], Double);
        QCOMPARE(kinds[7], Long);
        QCOMPARE(file.openTable(u"PRD"_s)->kinds()[7], Memo);
    }

    void everyRowIsRead_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("table");
        QTest::addColumn<qint64>("rows");
        const auto add = [](const QString& file, const QString& table, qint64 rows) {
            QTest::addRow("%s", qPrintable(table)) << file << table << rows;
        };
        add(u"insumos.mdb"_s, u"CAT"_s, 5);
        add(u"insumos.mdb"_s, u"PRD"_s, 240);
        add(u"insumos.mdb"_s, u"RIP"_s, 1086);
        add(u"insumos.mdb"_s, u"INTINS"_s, 36);
        add(u"insumos.mdb"_s, u"INS"_s, 914);
        add(u"insumos.mdb"_s, u"DIP"_s, 1582);
        add(u"tornel.mdb"_s, u"caratula"_s, 12);
        add(u"tornel.mdb"_s, u"item"_s, 168);
        add(u"tornel.mdb"_s, u"groupsubitems"_s, 468);
        add(u"ncm.mdb"_s, u"NCM"_s, 7204);
        add(u"ncm.mdb"_s, u"sufidos"_s, 2623);
    }

    void everyRowIsRead()
    {
        QFETCH(QString, file);
        QFETCH(QString, table);
        QFETCH(qint64, rows);
        AccessFile access(sample(file));
        const auto opened = access.openTable(table);
        QCOMPARE(opened->announcedRows(), std::optional(rows));
        const std::vector<SourceRow> read = rowsOf(*opened);
        QCOMPARE(static_cast<qint64>(read.size()), rows);
        for (const SourceRow& row : read) {
            QVERIFY(row.troubles.empty());
        }
    }

    void quantitiesAddUp()
    {
        const std::vector<SourceRow> articles = rowsOf(sample(u"insumos.mdb"_s), u"INS"_s);
        double cif = 0;
        for (const SourceRow& article : articles) {
            cif += article.cells[3].number * article.cells[4].number;
        }
        QCOMPARE(std::round(sumOf(articles, 3) * 100), 232626860.0);
        QCOMPARE(std::round(sumOf(articles, 5) * 100), 162165313.0);
        QCOMPARE(std::round(cif * 100), 34778797077.0);
        QCOMPARE(std::round(sumOf(rowsOf(sample(u"insumos.mdb"_s), u"DIP"_s), 5) * 100), 70461547.0);
    }

    void textsKeepTheirLetters()
    {
        const std::vector<SourceRow> catalogs = rowsOf(sample(u"insumos.mdb"_s), u"CAT"_s);
        QCOMPARE(catalogs[1].cells[1].text, u"Válvulas industriales"_s);
        QCOMPARE(catalogs[2].cells[1].text, u"Tableros eléctricos – año 2025"_s);
        QCOMPARE(catalogs[3].cells[1].text, u"Piezas plásticas Ñandú"_s);
        QCOMPARE(rowsOf(sample(u"insumos.mdb"_s), u"RIP"_s)[2].cells[3].text, u"Cable Ø 2,5 mm tipo A"_s);
    }

    void nullIsNotAnEmptyText()
    {
        const std::vector<SourceRow> catalogs = rowsOf(sample(u"insumos.mdb"_s), u"CAT"_s);
        QCOMPARE(catalogs[4].cells[0].text, u"VACIO"_s);
        QVERIFY(catalogs[4].cells[1].isNull());

        AccessCopy copy(u"insumos.mdb"_s);
        // The end of the description becomes its start: the offsets stand behind it, the last one first.
        const QByteArray text = AccessCopy::utf16(u"Válvulas industriales"_s);
        const qsizetype end = copy.bytes().indexOf(text) + text.size();
        copy.bytes().replace(end, 2, copy.bytes().mid(end + 2, 2));
        const SourceRow emptied = rowsOf(copy.path(), u"CAT"_s)[1];
        QCOMPARE(emptied.cells[1].type, ValueType::Text);
        QCOMPARE(emptied.cells[1].text, QString());
    }

    void datesAndYesNo()
    {
        const std::vector<SourceRow> headers = rowsOf(sample(u"insumos.mdb"_s), u"INTINS"_s);
        QCOMPARE(headers[0].cells[2].date, QDate(2024, 5, 11));
        QCOMPARE(headers[0].cells[3].date, QDate(2025, 5, 6));
        QCOMPARE(std::count_if(headers.begin(), headers.end(),
                               [](const SourceRow& row) {
                                   return row.cells[7].type == ValueType::Boolean && row.cells[7].number == -1;
                               }),
                 26);
        QCOMPARE(headers[6].cells[7].number, 0.0);
    }

    void doublesKeepEveryBit()
    {
        const SourceRow second = rowsOf(sample(u"insumos.mdb"_s), u"DIP"_s)[1];
        QVERIFY(second.cells[14].number == 0.8661799999999999);
        AccessCopy copy(u"insumos.mdb"_s);
        const double exact = std::nextafter(4501.15, 5000);
        copy.replace(insumos::ins, AccessCopy::littleEndian(4501.15), AccessCopy::littleEndian(exact));
        QVERIFY(rowsOf(copy.path(), u"INS"_s)[0].cells[3].number == exact);
    }

    void memosInsideTheirRowAndInPagesOfTheirOwn()
    {
        QCOMPARE(rowsOf(sample(u"insumos.mdb"_s), u"PRD"_s)[1].cells[7].text, u"AA(MARCA)-AB(MODELO 2)-"_s);

        AccessCopy single(u"insumos.mdb"_s);
        const QByteArray text = AccessCopy::utf16(u"Ñandú – "_s.repeated(200));
        pointFirstMemo(single, inOneRow, static_cast<quint32>(text.size()), appendLongValue(single, text));
        QCOMPARE(firstMemo(single), u"Ñandú – "_s.repeated(200));

        AccessCopy chained(u"insumos.mdb"_s);
        const quint32 last = appendLongValue(chained, AccessCopy::littleEndian(quint32{0}) + text);
        const quint32 first = appendLongValue(chained, AccessCopy::littleEndian(last) + text);
        pointFirstMemo(chained, 0, static_cast<quint32>(2 * text.size()), first);
        QCOMPARE(firstMemo(chained), u"Ñandú – "_s.repeated(400));
    }

    void damagedMemosAreTroubleOfTheirRow()
    {
        const QByteArray text = AccessCopy::utf16(u"abc"_s);
        AccessCopy shorter(u"insumos.mdb"_s);
        pointFirstMemo(shorter, inOneRow, 100, appendLongValue(shorter, text));
        QCOMPARE(firstMemo(shorter), u"el texto está dañado"_s);

        AccessCopy outside(u"insumos.mdb"_s);
        pointFirstMemo(outside, inOneRow, 6, 0x00FFFF00);
        QCOMPARE(firstMemo(outside), u"el texto está dañado"_s);

        AccessCopy circle(u"insumos.mdb"_s);
        const auto next = static_cast<quint32>(circle.bytes().size() / AccessCopy::pageSize) << 8U;
        const quint32 self = appendLongValue(circle, AccessCopy::littleEndian(next) + text);
        QCOMPARE(self, next);
        pointFirstMemo(circle, 0, 1 << 20U, self);
        QVERIFY(firstMemo(circle).size() <= 1 << 20U); // it ends, with what it turned round to or with trouble
    }

    void aCompressedTextIsRead()
    {
        AccessCopy copy(u"insumos.mdb"_s);
        copy.replace(insumos::intins, AccessCopy::utf16(u"Cobre"_s),
                     "\xFF\xFE"
                     "Aluminio");
        QCOMPARE(rowsOf(copy.path(), u"INTINS"_s)[1].cells[4].text, u"Aluminio"_s);
    }

    void aColumnOfAnotherKindIsTrouble()
    {
        AccessCopy copy(u"insumos.mdb"_s);
        // In the table's definition the columns begin behind the header; the kind is the first byte of each.
        const qsizetype definition = insumos::ins * AccessCopy::pageSize;
        const auto indexes = qFromLittleEndian<qint32>(copy.bytes().constData() + definition + 51);
        const qsizetype kind = definition + 63 + qsizetype{12} * indexes + qsizetype{3} * 25;
        QCOMPARE(copy.bytes()[kind], '\x07'); // ARTCAT
        copy.bytes()[kind] = '\x0B';
        const SourceRow row = rowsOf(copy.path(), u"INS"_s).front();
        QVERIFY(row.cells[3].isNull());
        QCOMPARE(row.troubles.size(), size_t{1});
        QCOMPARE(row.troubles[0].column, size_t{3});
        QCOMPARE(row.troubles[0].reason, u"su tipo de dato no se admite"_s);
        copy.bytes()[kind] = '\x05';
        QCOMPARE(rowsOf(copy.path(), u"INS"_s).front().cells[3].number,
                 std::round(double(std::bit_cast<qint64>(4501.15))) / 10000);
    }

    void tablesAreReadInTurns()
    {
        AccessFile file(sample(u"insumos.mdb"_s));
        const auto articles = file.openTable(u"INS"_s);
        const auto discharges = file.openTable(u"DIP"_s);
        SourceRow row;
        double quantity = 0;
        for (int i = 0; i < 914; ++i) {
            QVERIFY(articles->next(row));
            quantity += row.cells[3].number;
            QVERIFY(discharges->next(row));
        }
        QVERIFY(!articles->next(row));
        QCOMPARE(std::round(quantity * 100), 232626860.0);
    }

    void anUnknownTableIsRefused()
    {
        AccessFile file(sample(u"insumos.mdb"_s));
        QCOMPARE(doubles::numberThrownBy([&] { static_cast<void>(file.openTable(u"NCM"_s)); }), -2147217865);
    }

    void aLaterFormatIsRead()
    {
        AccessCopy copy(u"insumos.mdb"_s);
        copy.bytes().replace(4, 15, "Standard ACE DB");
        copy.bytes()[0x14] = 2;
        QCOMPARE(readEverything(copy.path()), 5 + 240 + 1086 + 36 + 914 + 1582);
        copy.bytes()[0x299] = 1; // there is a cipher
        QCOMPARE(troubleThrownBy([&] { AccessFile(copy.path()); }), static_cast<int>(AccessTrouble::Password));
    }

    void aPasswordIsRespected()
    {
        AccessCopy copy(u"insumos.mdb"_s);
        copy.bytes()[0x42] = static_cast<char>(copy.bytes()[0x42] ^ 'x');
        const auto error = doubles::thrownBy([&] { AccessFile(copy.path()); });
        QVERIFY(error);
        QCOMPARE(error->nativeNumber(), static_cast<int>(AccessTrouble::Password));
        QVERIFY(error->description().startsWith(u"El archivo de Access está protegido con contraseña o cifrado."_s));
    }

    void whatIsNoAccessFileIsRefused()
    {
        QTemporaryDir folder;
        const auto trouble = [](const QString& path) { return troubleThrownBy([&] { AccessFile{path}; }); };
        QCOMPARE(trouble(folder.filePath(u"nada.mdb"_s)), static_cast<int>(AccessTrouble::NoFile));
        QCOMPARE(trouble(folder.path()), static_cast<int>(AccessTrouble::NoFile));
        AccessCopy copy(u"insumos.mdb"_s);
        copy.bytes() = {};
        QCOMPARE(trouble(copy.path()), static_cast<int>(AccessTrouble::NoAccessFile));
        copy.bytes() = QByteArray(100000, 'x');
        QCOMPARE(trouble(copy.path()), static_cast<int>(AccessTrouble::NoAccessFile));
    }

    void aTruncatedFileIsDamaged()
    {
        for (const qsizetype kept : {2500, 9000, 300000, 500000, 1000000}) {
            AccessCopy cut(u"insumos.mdb"_s);
            cut.bytes().truncate(kept);
            QCOMPARE(troubleThrownBy([&] { readEverything(cut.path()); }), static_cast<int>(AccessTrouble::Damaged));
        }
    }

    void aDamagedPageIsSaid()
    {
        AccessCopy definition(u"insumos.mdb"_s);
        definition.bytes().replace(insumos::ins * AccessCopy::pageSize, 100, QByteArray(100, '\0'));
        QCOMPARE(troubleThrownBy([&] { readEverything(definition.path()); }), static_cast<int>(AccessTrouble::Damaged));

        AccessCopy rows(u"insumos.mdb"_s);
        rows.bytes().replace(rows.firstDataPage(insumos::ins) + 12, 2, "\xFF\xFF");
        QCOMPARE(troubleThrownBy([&] { readEverything(rows.path()); }), static_cast<int>(AccessTrouble::Damaged));

        AccessCopy row(u"insumos.mdb"_s);
        const qsizetype page = row.firstDataPage(insumos::ins);
        const auto start = qFromLittleEndian<quint16>(row.bytes().constData() + page + 14);
        row.bytes().replace(page + start, 2, "\xFF\xFF"); // so many columns
        QCOMPARE(troubleThrownBy([&] { readEverything(row.path()); }), static_cast<int>(AccessTrouble::Damaged));

        AccessCopy texts(u"insumos.mdb"_s);
        // The page's first row ends with it: the count of its texts, and two bytes of marks of Null.
        constexpr qsizetype countOfTexts = AccessCopy::pageSize - 4;
        texts.bytes().replace(page + countOfTexts, 2, AccessCopy::littleEndian(quint16{100}));
        QCOMPARE(troubleThrownBy([&] { readEverything(texts.path()); }), static_cast<int>(AccessTrouble::Damaged));
    }

    void anyDamageGivesRowsOrAnErrorAndNoWordsOfTheLibrary()
    {
        constexpr qsizetype header = 0x98; // what makes it an Access file
        const ErrorOutput output;
        std::mt19937 random(20240511);
        int refused = 0;
        for (int run = 0; run < 200; ++run) {
            AccessCopy copy(u"insumos.mdb"_s);
            const qsizetype size = copy.bytes().size();
            std::uniform_int_distribution<qsizetype> anywhere(0, size - 1);
            std::uniform_int_distribution<int> byte(0, 255);
            for (int i = 0; i < 2 * (run + 1); ++i) {
                // Every third where a page says what it is, which leads furthest astray.
                const qsizetype hit = anywhere(random);
                const qsizetype place = i % 3 == 0 ? hit - hit % AccessCopy::pageSize + hit % 64 : hit;
                if (place >= header) {
                    copy.bytes()[place] = static_cast<char>(i % 4 == 0 ? 0xFF : byte(random));
                }
            }
            refused += doubles::thrownBy([&] { readEverything(copy.path()); }) ? 1 : 0;
        }
        QCOMPARE(output.size(), 0);
        QVERIFY(refused > 20);
    }
};

QTEST_GUILESS_MAIN(tst_AccessFile)
#include "tst_AccessFile.moc"
