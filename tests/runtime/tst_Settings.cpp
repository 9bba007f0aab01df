#include "doubles/ThrownError.h"

#include <runtime/Settings.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using oVELDRA::doubles::numberThrownBy;
using oVELDRA::runtime::UserSettings;

class tst_Settings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void nothingStoredGivesTheFallback();
    void savedTextComesBack_data();
    void savedTextComesBack();
    void savedTextReplacesTheFormerOne();
    void applicationsSectionsAndKeysAreApart();
    void fileTypedByHand_data();
    void fileTypedByHand();
    void changeOfTheFileIsSeen();
    void namesDoNotEscape_data();
    void namesDoNotEscape();
    void namesWithSlashesStayApart();
    void emptyNamesAreRefused();
    void unwritablePlaceIsReported();
    void realPlaceIsTheUsersConfigurationFolder();

private:
    [[nodiscard]] QString folder() const { return m_place->path(); }
    void type(const QString& fileName, const QByteArray& content);

    std::unique_ptr<QTemporaryDir> m_place;
};

void tst_Settings::init()
{
    m_place = std::make_unique<QTemporaryDir>();
    QVERIFY(m_place->isValid());
}

void tst_Settings::type(const QString& fileName, const QByteArray& content)
{
    QFile file(QDir(folder()).filePath(fileName));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

void tst_Settings::nothingStoredGivesTheFallback()
{
    const UserSettings settings(folder());
    QCOMPARE(settings.get(u"oZENDALO"_s, u"CONFIG"_s, u"opVDE"_s, u"N"_s), u"N"_s);
    QCOMPARE(settings.get(u"oZENDALO"_s, u"CONFIG"_s, u"opVDE"_s), QString());
    QVERIFY2(QDir(folder()).isEmpty(), "reading must not make a file");
}

void tst_Settings::savedTextComesBack_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");

    QTest::newRow("plain") << u"opVDE"_s << u"S"_s;
    QTest::newRow("empty is not the fallback") << u"opVDE"_s << u""_s;
    QTest::newRow("null text is an empty one") << u"opVDE"_s << QString();
    QTest::newRow("key with a point") << u"VELDRA.RestarPerMer"_s << u"S"_s;
    QTest::newRow("key with a blank and ñ") << u"Tamaño Texto"_s << u"13"_s;
    QTest::newRow("comma and blank") << u"IMPNOM"_s << u"Oficina, planta baja"_s;
    QTest::newRow("comma alone") << u"IMPNOM"_s << u"a,b"_s;
    QTest::newRow("comma at the end") << u"IMPNOM"_s << u"a,"_s;
    QTest::newRow("quotes") << u"IMPNOM"_s << u"la \"nueva\", 'vieja'"_s;
    QTest::newRow("ñ and accents") << u"IMPNOM"_s << u"Impresora del baño nº 1 (ÁÉ)"_s;
    QTest::newRow("outside the first plane") << u"IMPNOM"_s << u"\U0001F5A8 €"_s;
    QTest::newRow("backslashes") << u"IMPNOM"_s << u"\\\\servidor\\tinta\\n"_s;
    QTest::newRow("semicolon and equals") << u"IMPNOM"_s << u"a=b;c"_s;
    QTest::newRow("at sign in front") << u"IMPNOM"_s << u"@Invalid()"_s;
    QTest::newRow("blanks around") << u"IMPNOM"_s << u"  a  "_s;
    QTest::newRow("lines") << u"IMPNOM"_s << u"a\r\nb\tc"_s;
    QTest::newRow("number") << u"IMPTAM"_s << u"10"_s;
    QTest::newRow("looks like a boolean") << u"IMPTAM"_s << u"true"_s;
    QTest::newRow("percent") << u"IMPTAM"_s << u"100%20"_s;
    QTest::newRow("long") << u"IMPNOM"_s << QString(10'000, u'ñ');
}

void tst_Settings::savedTextComesBack()
{
    QFETCH(const QString, key);
    QFETCH(const QString, value);
    UserSettings(folder()).save(u"TORNEL"_s, u"OBJ"_s, key, value);
    QCOMPARE(UserSettings(folder()).get(u"TORNEL"_s, u"OBJ"_s, key, u"otro"_s), value);
    QCOMPARE(QDir(folder()).entryList(QDir::Files), QStringList{u"TORNEL.ini"_s});
}

void tst_Settings::savedTextReplacesTheFormerOne()
{
    UserSettings settings(folder());
    settings.save(u"TORNEL"_s, u"OBJ"_s, u"K"_s, u"uno"_s);
    settings.save(u"TORNEL"_s, u"OBJ"_s, u"K"_s, u"dos"_s);
    QCOMPARE(settings.get(u"TORNEL"_s, u"OBJ"_s, u"K"_s), u"dos"_s);
}

void tst_Settings::applicationsSectionsAndKeysAreApart()
{
    UserSettings settings(folder());
    settings.save(u"A"_s, u"S"_s, u"K"_s, u"1"_s);
    settings.save(u"B"_s, u"S"_s, u"K"_s, u"2"_s);
    settings.save(u"A"_s, u"T"_s, u"K"_s, u"3"_s);
    settings.save(u"A"_s, u"S"_s, u"L"_s, u"4"_s);
    QCOMPARE(settings.get(u"A"_s, u"S"_s, u"K"_s), u"1"_s);
    QCOMPARE(settings.get(u"B"_s, u"S"_s, u"K"_s), u"2"_s);
    QCOMPARE(settings.get(u"A"_s, u"T"_s, u"K"_s), u"3"_s);
    QCOMPARE(settings.get(u"A"_s, u"S"_s, u"L"_s), u"4"_s);
    QCOMPARE(settings.get(u"B"_s, u"T"_s, u"K"_s, u"no"_s), u"no"_s);
}

void tst_Settings::fileTypedByHand_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");

    QTest::newRow("plain") << QByteArray("opVDE=S") << u"opVDE"_s << u"S"_s;
    QTest::newRow("blanks around the equals sign") << QByteArray("opVDE = S") << u"opVDE"_s << u"S"_s;
    QTest::newRow("key with a point") << QByteArray("VELDRA.RestarPerMer=S") << u"VELDRA.RestarPerMer"_s << u"S"_s;
    QTest::newRow("nothing behind the equals sign") << QByteArray("opVDE=") << u"opVDE"_s << u""_s;
    QTest::newRow("comma") << QByteArray("IMPNOM=a, b") << u"IMPNOM"_s << u"a, b"_s;
    QTest::newRow("several commas") << QByteArray("IMPNOM=a, b, c") << u"IMPNOM"_s << u"a, b, c"_s;
    QTest::newRow("quoted comma") << QByteArray("IMPNOM=\"a,b\"") << u"IMPNOM"_s << u"a,b"_s;
    QTest::newRow("ñ") << QByteArray("IMPNOM=baño") << u"IMPNOM"_s << u"baño"_s;
    QTest::newRow("Windows line end") << QByteArray("opVDE=S\r") << u"opVDE"_s << u"S"_s;
}

void tst_Settings::fileTypedByHand()
{
    QFETCH(const QByteArray, line);
    QFETCH(const QString, key);
    type(u"TORNEL.ini"_s, "; de la oficina\n[OBJ]\n" + line + "\n");
    QTEST(UserSettings(folder()).get(u"TORNEL"_s, u"OBJ"_s, key, u"otro"_s), "value");
}

void tst_Settings::changeOfTheFileIsSeen()
{
    const UserSettings settings(folder());
    type(u"oZENDALO.ini"_s, "[CONFIG]\nopVDE=N\n");
    QCOMPARE(settings.get(u"oZENDALO"_s, u"CONFIG"_s, u"opVDE"_s), u"N"_s);
    type(u"oZENDALO.ini"_s, "[CONFIG]\nopVDE=SI\n");
    QCOMPARE(settings.get(u"oZENDALO"_s, u"CONFIG"_s, u"opVDE"_s), u"SI"_s);
}

void tst_Settings::namesDoNotEscape_data()
{
    QTest::addColumn<QString>("application");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");

    QTest::newRow("application above") << u"../fuera"_s << u"S"_s << u"K"_s;
    QTest::newRow("application far above") << u"../../../../../../tmp/fuera"_s << u"S"_s << u"K"_s;
    QTest::newRow("application that is the folder above") << u".."_s << u"S"_s << u"K"_s;
    QTest::newRow("absolute application") << u"/tmp/fuera"_s << u"S"_s << u"K"_s;
    QTest::newRow("application with backslashes") << u"..\\fuera"_s << u"S"_s << u"K"_s;
    QTest::newRow("application with a zero character") << u"a\0b"_s << u"S"_s << u"K"_s;
    QTest::newRow("application with a drive") << u"C:fuera"_s << u"S"_s << u"K"_s;
    QTest::newRow("section above") << u"A"_s << u"../B"_s << u"K"_s;
    QTest::newRow("section with slashes") << u"A"_s << u"/S/T/"_s << u"K"_s;
    QTest::newRow("key with slashes") << u"A"_s << u"S"_s << u"/../K\\L"_s;
}

void tst_Settings::namesDoNotEscape()
{
    QFETCH(const QString, application);
    QFETCH(const QString, section);
    QFETCH(const QString, key);
    const QDir outer(folder());
    QVERIFY(outer.mkdir(u"dentro"_s));
    const QString inner = outer.filePath(u"dentro"_s);

    UserSettings(inner).save(application, section, key, u"valor"_s);
    QCOMPARE(UserSettings(inner).get(application, section, key), u"valor"_s);
    QCOMPARE(outer.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList{u"dentro"_s});
    const QFileInfoList files = QDir(inner).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    QCOMPARE(files.size(), 1);
    QVERIFY(files.first().isFile());
    QCOMPARE(files.first().suffix(), u"ini"_s);
}

void tst_Settings::namesWithSlashesStayApart()
{
    UserSettings settings(folder());
    settings.save(u"A"_s, u"S/T"_s, u"K"_s, u"1"_s);
    settings.save(u"A"_s, u"S"_s, u"T/K"_s, u"2"_s);
    settings.save(u"A"_s, u"S%2FT"_s, u"K"_s, u"3"_s);
    QCOMPARE(settings.get(u"A"_s, u"S/T"_s, u"K"_s), u"1"_s);
    QCOMPARE(settings.get(u"A"_s, u"S"_s, u"T/K"_s), u"2"_s);
    QCOMPARE(settings.get(u"A"_s, u"S%2FT"_s, u"K"_s), u"3"_s);
}

void tst_Settings::emptyNamesAreRefused()
{
    UserSettings settings(folder());
    QCOMPARE(numberThrownBy([&] { settings.save({}, u"S"_s, u"K"_s, u"1"_s); }), 5);
    QCOMPARE(numberThrownBy([&] { settings.save(u"A"_s, {}, u"K"_s, u"1"_s); }), 5);
    QCOMPARE(numberThrownBy([&] { settings.save(u"A"_s, u"S"_s, {}, u"1"_s); }), 5);
    QCOMPARE(numberThrownBy([&] { return settings.get(u"A"_s, u"S"_s, {}, u"1"_s); }), 5);
    QVERIFY(QDir(folder()).isEmpty());
}

void tst_Settings::unwritablePlaceIsReported()
{
    type(u"archivo"_s, "no es una carpeta");
    UserSettings settings(QDir(folder()).filePath(u"archivo"_s));
    QCOMPARE(numberThrownBy([&] { settings.save(u"A"_s, u"S"_s, u"K"_s, u"1"_s); }), 75);
    QCOMPARE(settings.get(u"A"_s, u"S"_s, u"K"_s, u"N"_s), u"N"_s);
}

void tst_Settings::realPlaceIsTheUsersConfigurationFolder()
{
    QStandardPaths::setTestModeEnabled(true);
    const QString place = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const QString file = QDir(place).filePath(u"tst_Settings.ini"_s);
    QFile::remove(file);

    UserSettings().save(u"tst_Settings"_s, u"OBJ"_s, u"VELDRA.RestarPerMer"_s, u"S"_s);
    QVERIFY(QFileInfo::exists(file));
    QCOMPARE(UserSettings(place).get(u"tst_Settings"_s, u"OBJ"_s, u"VELDRA.RestarPerMer"_s), u"S"_s);
    QCOMPARE(UserSettings().get(u"tst_Settings"_s, u"OBJ"_s, u"VELDRA.RestarPerMer"_s), u"S"_s);

    QVERIFY(QFile::remove(file));
    QStandardPaths::setTestModeEnabled(false);
}

QTEST_GUILESS_MAIN(tst_Settings)
#include "tst_Settings.moc"
