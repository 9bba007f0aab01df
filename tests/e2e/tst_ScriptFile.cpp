#include <QTest>

#include <tornel/ScriptFile.h>

using namespace Qt::StringLiterals;
using namespace tornel;

/// The grammar of scripts.
class tst_ScriptFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commentsAndBlankLinesAreNoSteps();
    void everyStepIsRead();
    void aPartOfATextIsMarked();
    void quotedTextsTakeEscapes();
    void aNumberSignInsideQuotesIsText();
    void mistakesNameTheirLine_data();
    void mistakesNameTheirLine();
    void allMistakesAreReported();
    void aMissingFileIsAProblem();

private:
    template <typename Step>
    static Step only(const QString& line)
    {
        const ScriptFile script = ScriptFile::parse(line);
        if (!script.problems.empty() || script.steps.size() != 1) {
            qFatal("not one step: %s %s", qUtf8Printable(line), qUtf8Printable(script.describeProblems(u"x"_s)));
        }
        return std::get<Step>(script.steps.front().action);
    }
};

void tst_ScriptFile::commentsAndBlankLinesAreNoSteps()
{
    const ScriptFile script = ScriptFile::parse(u"# one\n\n   \n  # two\npress btn # three\n");
    QVERIFY(script.problems.empty());
    QCOMPARE(script.steps.size(), std::size_t{1});
    QCOMPARE(script.steps.front().line, 5);
}

void tst_ScriptFile::everyStepIsRead()
{
    const auto field = only<step::HostField>(u"host txtInterno \"IT 1\""_s);
    QCOMPARE(field.field, u"txtInterno"_s);
    QCOMPARE(field.value, u"IT 1"_s);
    QCOMPARE(only<step::Press>(u"press btnImportar"_s).button, u"btnImportar"_s);
    QCOMPARE(only<step::Screen>(u"screen frmImportar"_s).name, u"frmImportar"_s);
    QCOMPARE(only<step::Key>(u"key Ctrl+Return"_s).key, QKeyCombination(Qt::ControlModifier, Qt::Key_Return));
    QCOMPARE(only<step::Key>(u"key F11"_s).key, QKeyCombination(Qt::Key_F11));
    QCOMPARE(only<step::Key>(u"key Esc"_s).key, QKeyCombination(Qt::Key_Escape));
    QCOMPARE(only<step::Type>(u"type \"a b\""_s).text, u"a b"_s);
    QCOMPARE(only<step::Type>(u"type 12/3"_s).text, u"12/3"_s);
    QCOMPARE(only<step::Focus>(u"focus txtVEN"_s).name, u"txtVEN"_s);
    QCOMPARE(only<step::File>(u"file \"un reporte.pdf\""_s).name, u"un reporte.pdf"_s);
    only<step::Clear>(u"clear"_s);
    const auto box = only<step::Box>(u"box exclamation \"Falta\""_s);
    QCOMPARE(box.icon, BoxIcon::Exclamation);
    QCOMPARE(box.text, (TextMatch{u"Falta"_s, false}));
    QCOMPARE(only<step::Input>(u"input \"Valor\""_s).prompt.text, u"Valor"_s);
    QCOMPARE(only<step::Answer>(u"answer no"_s).button, BoxButton::No);
    QCOMPARE(only<step::ExpectTitle>(u"expect title \"T\""_s).text.text, u"T"_s);
    const auto text = only<step::ExpectText>(u"expect text lbTexto \"OK\""_s);
    QCOMPARE(text.name, u"lbTexto"_s);
    QCOMPARE(text.text.text, u"OK"_s);
    QCOMPARE(only<step::ExpectChecked>(u"expect checked chOK true"_s).checked, true);
    QCOMPARE(only<step::ExpectChecked>(u"expect checked chOK false"_s).checked, false);
    QCOMPARE(only<step::ExpectFocus>(u"expect focus txtVEN"_s).name, u"txtVEN"_s);
    QCOMPARE(only<step::ExpectRows>(u"expect rows lstView 3"_s).rows, 3);
    const auto cell = only<step::ExpectCell>(u"expect cell lstView 1 2 \"x\""_s);
    QCOMPARE(cell.row, 1);
    QCOMPARE(cell.column, 2);
    QCOMPARE(cell.text.text, u"x"_s);
    const auto count = only<step::ExpectCount>(u"expect count inputs \"select * from INS\" 0"_s);
    QCOMPARE(count.database, ScriptDatabase::Inputs);
    QCOMPARE(count.statement, u"select * from INS"_s);
    QCOMPARE(count.rows, 0);
    const auto value = only<step::ExpectValue>(u"expect value host \"select 1\" FOB \"1,5\""_s);
    QCOMPARE(value.database, ScriptDatabase::Host);
    QCOMPARE(value.column, u"FOB"_s);
    QCOMPARE(value.text.text, u"1,5"_s);
    QCOMPARE(only<step::Shot>(u"shot uno.png"_s).file, u"uno.png"_s);
    QCOMPARE(only<step::Deadline>(u"deadline 90"_s).time, std::chrono::seconds(90));
}

void tst_ScriptFile::aPartOfATextIsMarked()
{
    const auto box = only<step::Box>(u"box critical contains \"3021\""_s);
    QCOMPARE(box.text, (TextMatch{u"3021"_s, true}));
    QVERIFY(box.text.matches(u"error 3021 - D"));
    QVERIFY(!box.text.matches(u"error 302"));
    // In quotes it is the text itself.
    QCOMPARE(only<step::ExpectTitle>(u"expect title \"contains\""_s).text, (TextMatch{u"contains"_s, false}));
}

void tst_ScriptFile::quotedTextsTakeEscapes()
{
    QCOMPARE(only<step::Type>(u"type \"a\\\"b\\\\c\\nd\""_s).text, u"a\"b\\c\nd"_s);
    QCOMPARE(only<step::Type>(u"type \"\""_s).text, QString());
}

void tst_ScriptFile::aNumberSignInsideQuotesIsText()
{
    QCOMPARE(only<step::Type>(u"type \"n # 3\" # a comment"_s).text, u"n # 3"_s);
}

void tst_ScriptFile::mistakesNameTheirLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("message");
    QTest::newRow("unknown step") << u"jump 3"_s << u"el paso debe ser"_s;
    QTest::newRow("missing argument") << u"press"_s << u"falta el botón"_s;
    QTest::newRow("too many arguments") << u"clear all"_s << u"sobra «all»"_s;
    QTest::newRow("unclosed quotes") << u"type \"abc"_s << u"faltan las comillas de cierre"_s;
    QTest::newRow("text after quotes") << u"type \"a\"b"_s << u"falta un blanco después de las comillas"_s;
    QTest::newRow("unknown escape") << u"type \"\\x\""_s << u"después de \\ va"_s;
    QTest::newRow("unknown key") << u"key Fernando"_s << u"«Fernando» no es una tecla"_s;
    QTest::newRow("unknown icon") << u"box warning \"x\""_s << u"el icono debe ser"_s;
    QTest::newRow("unknown answer") << u"answer maybe"_s << u"la respuesta debe ser"_s;
    QTest::newRow("unknown expectation") << u"expect joy"_s << u"lo que se espera debe ser"_s;
    QTest::newRow("unknown database") << u"expect count mine \"select\" 1"_s << u"la base de datos debe ser"_s;
    QTest::newRow("rows not a number") << u"expect rows lst many"_s << u"no «many»"_s;
    QTest::newRow("cells count from one") << u"expect cell lst 0 1 \"x\""_s << u"desde 1"_s;
    QTest::newRow("truth") << u"expect checked ch yes"_s << u"el valor debe ser true, false"_s;
    QTest::newRow("contains without a text") << u"box plain contains"_s << u"falta el texto"_s;
    QTest::newRow("shot outside the folder") << u"shot ../a.png"_s << u"no es un nombre de archivo PNG"_s;
    QTest::newRow("shot of another kind") << u"shot a.jpg"_s << u"no es un nombre de archivo PNG"_s;
    QTest::newRow("no time") << u"deadline 0"_s << u"desde 1"_s;
}

void tst_ScriptFile::mistakesNameTheirLine()
{
    QFETCH(const QString, line);
    QFETCH(const QString, message);
    const ScriptFile script = ScriptFile::parse(QString(u"# first\n"_s + line));
    QVERIFY(script.steps.empty());
    QCOMPARE(script.problems.size(), std::size_t{1});
    QCOMPARE(script.problems.front().line, 2);
    QVERIFY2(script.problems.front().message.contains(message), qPrintable(script.problems.front().message));
}

void tst_ScriptFile::allMistakesAreReported()
{
    const ScriptFile script = ScriptFile::parse(u"jump\nclear\npress\n");
    QCOMPARE(script.problems.size(), std::size_t{2});
    const QString text = script.describeProblems(u"a.script"_s);
    QVERIFY(text.contains(u"a.script:1: "_s));
    QVERIFY(text.contains(u"a.script:3: "_s));
}

void tst_ScriptFile::aMissingFileIsAProblem()
{
    const ScriptFile script = ScriptFile::load(u"/nowhere/at/all.script"_s);
    QVERIFY(script.steps.empty());
    QCOMPARE(script.problems.size(), std::size_t{1});
    QCOMPARE(script.problems.front().line, 0);
}

QTEST_GUILESS_MAIN(tst_ScriptFile)
#include "tst_ScriptFile.moc"
