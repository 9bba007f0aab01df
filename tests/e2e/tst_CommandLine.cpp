#include <QTest>

#include <tornel/CommandLine.h>
#include <tornel/DataFolder.h>

using namespace Qt::StringLiterals;
using namespace tornel;
using Wish = CommandLine::Wish;

/// The options of the demonstration host.
class tst_CommandLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutOptions();
    void everyOption();
    void theLocaleIsArgentineUnlessTheSystemIsSpanish();
    void helpNamesEveryOptionInSpanish();
    void version();
    void mistakesAreRefused_data();
    void mistakesAreRefused();

private:
    static CommandLine parse(const QStringList& arguments, const QLocale& system = QLocale::c())
    {
        return CommandLine::parse(QStringList{u"tornel"_s} + arguments, u"1.2.3"_s, system);
    }
};

void tst_CommandLine::withoutOptions()
{
    const CommandLine line = parse({});
    QCOMPARE(line.wish, Wish::Run);
    QCOMPARE(line.dataFolder, DataFolder::standardPath());
    QCOMPARE(line.script, QString());
    QCOMPARE(line.outputFolder, u"out"_s);
    QVERIFY(!line.quitWhenPainted);
}

void tst_CommandLine::everyOption()
{
    const CommandLine line =
        parse({u"--datos"_s, u"/d"_s, u"--script"_s, u"a.script"_s, u"--salida"_s, u"/o"_s, u"--locale"_s, u"en_US"_s});
    QCOMPARE(line.wish, Wish::Run);
    QCOMPARE(line.dataFolder, u"/d"_s);
    QCOMPARE(line.script, u"a.script"_s);
    QCOMPARE(line.outputFolder, u"/o"_s);
    QCOMPARE(line.locale.name(), u"en_US"_s);
    QVERIFY(parse({u"--salir-al-mostrar"_s}).quitWhenPainted);
}

void tst_CommandLine::theLocaleIsArgentineUnlessTheSystemIsSpanish()
{
    QCOMPARE(parse({}, QLocale::c()).locale.name(), u"es_AR"_s);
    QCOMPARE(parse({}, QLocale(u"pt_BR"_s)).locale.name(), u"es_AR"_s);
    QCOMPARE(parse({}, QLocale(u"es_UY"_s)).locale.name(), u"es_UY"_s);
    QCOMPARE(parse({u"--locale"_s, u"en_US"_s}, QLocale(u"es_UY"_s)).locale.name(), u"en_US"_s);
}

void tst_CommandLine::helpNamesEveryOptionInSpanish()
{
    const CommandLine line = parse({u"--ayuda"_s});
    QCOMPARE(line.wish, Wish::Help);
    for (const QString& option : {u"--datos CARPETA"_s, u"--script ARCHIVO"_s, u"--salida CARPETA"_s,
                                  u"--locale NOMBRE"_s, u"--salir-al-mostrar"_s, u"--version"_s}) {
        QVERIFY2(line.message.contains(option), qPrintable(option));
    }
    QVERIFY(line.message.startsWith(u"Uso: tornel"_s));
    QCOMPARE(parse({u"-h"_s}).wish, Wish::Help);
}

void tst_CommandLine::version()
{
    const CommandLine line = parse({u"--version"_s});
    QCOMPARE(line.wish, Wish::Version);
    QCOMPARE(line.message, u"tornel 1.2.3\n"_s);
}

void tst_CommandLine::mistakesAreRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("unknown option") << QStringList{u"--rapido"_s} << u"Opción desconocida: rapido"_s;
    QTest::newRow("no value") << QStringList{u"--datos"_s} << u"Falta el valor de una opción."_s;
    QTest::newRow("positional") << QStringList{u"algo"_s} << u"Argumento de más: algo"_s;
    QTest::newRow("a script that would be cut off")
        << QStringList{u"--salir-al-mostrar"_s, u"--script"_s, u"a.script"_s}
        << u"--salir-al-mostrar no va con --script."_s;
    QTest::newRow("unknown locale") << QStringList{u"--locale"_s, u"zz_ZZ"_s}
                                    << u"Configuración regional desconocida: zz_ZZ"_s;
}

void tst_CommandLine::mistakesAreRefused()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, message);
    const CommandLine line = parse(arguments);
    QCOMPARE(line.wish, Wish::Refuse);
    QCOMPARE(line.message, message);
}

QTEST_GUILESS_MAIN(tst_CommandLine)
#include "tst_CommandLine.moc"
