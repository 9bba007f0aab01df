#include "ManualPages.h"
#include "ScreenSources.h"
#include "SourceTexts.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <tornel/ScriptFile.h>

using namespace Qt::StringLiterals;
using namespace manual;

namespace {

const QString manualFolder = QStringLiteral(MANUAL_FOLDER);

/// Texts that no user meets, with the reason.
const QHash<QString, QString> unseen{
    {u"Error en la estructura de la posición"_s, u"no screen calls ProcesarNCM()"_s},
    {u"Posición no encontrada en Nomenclador"_s, u"no screen calls ProcesarNCM()"_s},
    {u"Posición no Encontrada."_s, u"no screen calls BuscarNCM()"_s},
    {u"No se puedo obtener la información"_s, u"the locale always has a separator"_s},
    {u"(desconocido) ‹›"_s, u"the import answers OK or ER"_s},
    {u"OK Verificar Integridad OK"_s, u"replaced before it is shown"_s},
    {u"Err_FrmSytr ‹›: ‹›"_s, u"no column of a listing has a negative width"_s},
    {u"Agrega Insumo"_s, u"replaced when the screen is loaded"_s},
    {u"Long Date"_s, u"a mask"_s},
    {u"Courier New"_s, u"a font"_s},
    {u"Liberation Mono"_s, u"a font"_s},
    {u"Liberation Sans"_s, u"a font"_s},
    {u"Tahoma"_s, u"a font"_s},
    {u"Arial"_s, u"a font"_s},
    {u"Helvetica"_s, u"a font"_s},
};

/// Whether nothing is left; what is left is told in full, which a failing check cuts short.
bool isNone(const QStringList& left)
{
    for (const QString& each : left) {
        qWarning("%s", qUtf8Printable(each));
    }
    return left.isEmpty();
}

} // namespace

/// The user manual against the sources and the scripts that make its pictures.
class tst_Manual : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void literalsAreJoinedAndCommentsPassedOver();
    void whatIsFilledInIsMarked();
    void statementsAndLocationsAreNotForUsers_data();
    void statementsAndLocationsAreNotForUsers();
    void aPageGivesItsMessagesHintsAndPictures();

    void everyMessageOfTheManualIsInTheSources();
    void everyTextOfTheSourcesIsInTheManual();
    void everyUnseenTextIsStillThere();
    void everyScreenHasItsPageUnderItsCaption();
    void hintsAreTheSame();
    void everyFileOfTheManualIsIncluded();

    void scriptsAreWellFormed();
    void picturesAreThoseThatAreShot();
    void lessonsSayWhatTheirScriptsType_data();
    void lessonsSayWhatTheirScriptsType();

    void theBookIsBuiltWithoutRemarks_data();
    void theBookIsBuiltWithoutRemarks();

private:
    [[nodiscard]] const Page* page(const QString& path) const
    {
        const auto found =
            std::find_if(m_pages.begin(), m_pages.end(), [&path](const Page& each) { return each.path == path; });
        return found == m_pages.end() ? nullptr : &*found;
    }

    QList<Page> m_pages;
    QList<FileText> m_texts;
    QHash<QString, tornel::ScriptFile> m_scripts; ///< by name without its ending
};

void tst_Manual::initTestCase()
{
    m_pages = pagesOf(manualFolder);
    m_texts = sourceTexts();
    const QDir pictures(manualFolder + u"/pictures"_s);
    for (const QString& name : pictures.entryList({u"*.script"_s}, QDir::Files)) {
        m_scripts.insert(QFileInfo(name).completeBaseName(), tornel::ScriptFile::load(pictures.filePath(name)));
    }
    QVERIFY(!m_pages.isEmpty());
    QVERIFY(!m_texts.isEmpty());
    QVERIFY(!m_scripts.isEmpty());
}

void tst_Manual::literalsAreJoinedAndCommentsPassedOver()
{
    const auto texts = textsOf(u"// u\"none\"\n"
                               "show(u\"Falta el \"_s /* u\"nor this\" */\n"
                               "     u\"código \\\"A\\\".\"_s, \"narrow\", 20'000, u\"Otro\\r\\n\\r\\ntexto\"_s);");
    QCOMPARE(texts.size(), 3);
    QCOMPARE(texts[0].text, u"Falta el código \"A\"."_s);
    QCOMPARE(texts[0].line, 2);
    QCOMPARE(texts[1].text, u"Otro"_s);
    QCOMPARE(texts[2].text, u"texto"_s);
}

void tst_Manual::whatIsFilledInIsMarked()
{
    const auto texts = textsOf(u"box(u\"El \"_s + Name::of(u\"X y\") + u\" ya \"_s + u\"existe\"_s, style);"
                               "box(text + u\" de más\"_s); box(u\"Página %1 de %2\"_s.arg(a).arg(b));");
    QCOMPARE(texts.size(), 4);
    QCOMPARE(texts[0].text, u"El ‹› ya existe"_s);
    QCOMPARE(texts[1].text, u"X y"_s);
    QCOMPARE(texts[2].text, u"‹› de más"_s);
    QCOMPARE(texts[3].text, u"Página ‹› de ‹›"_s);
}

void tst_Manual::statementsAndLocationsAreNotForUsers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("forUsers");
    QTest::newRow("message") << u"Falta codigo de aduana."_s << true;
    QTest::newRow("message in capitals") << u"DIT NÚMERO: ‹›"_s << true;
    QTest::newRow("word") << u"Merma"_s << true;
    QTest::newRow("name") << u"txtMerma"_s << false;
    QTest::newRow("column") << u"ARTNRO"_s << false;
    QTest::newRow("query") << u"select * from CAT order by CATDES"_s << false;
    QTest::newRow("condition") << u"and PRDNRO = ‹›"_s << false;
    QTest::newRow("location") << u"Sección [oVELDRA.frmDIT.form_load]"_s << false;
    QTest::newRow("bare location") << u"- [oVELDRA.frmDITART.lp_Imprimir]"_s << false;
    QTest::newRow("mask") << u"00.000000"_s << false;
    QTest::newRow("signs") << u" - ‹›"_s << false;
}

void tst_Manual::statementsAndLocationsAreNotForUsers()
{
    QFETCH(const QString, text);
    QFETCH(const bool, forUsers);
    QCOMPARE(isForUsers(text), forUsers);
}

void tst_Manual::aPageGivesItsMessagesHintsAndPictures()
{
    const Page page{u"pantallas/x.adoc"_s,
                    u"<<<\n[.teclas%unbreakable]\n----\n[F11] Grabar\n[ESC] Salir\n----\n"
                    "|[.mensaje]`+No hay ‹cosa› en\n‹lugar›.+` o [.mensaje]`+Sí+` |*Vea* <<y,la otra>> con kbd:[F6]\n"
                    "image::a.png[A,{medida-a}]\ninclude::../b.adoc[]\n"_s};
    QCOMPARE(page.messages(), (QStringList{u"No hay ‹› en ‹›."_s, u"Sí"_s}));
    QCOMPARE(page.hints(), (QStringList{u"[F11] Grabar"_s, u"[ESC] Salir"_s}));
    QCOMPARE(page.pictures(), QStringList{u"a.png"_s});
    QCOMPARE(page.included(), QStringList{u"b.adoc"_s});
    QVERIFY(page.plainText().contains(u"No hay ‹cosa› en ‹lugar›. o Sí Vea la otra con F6"_s));
}

void tst_Manual::everyMessageOfTheManualIsInTheSources()
{
    QSet<QString> known;
    for (const FileText& each : m_texts) {
        known.insert(each.text.text);
    }
    QStringList unknown;
    for (const Page& page : m_pages) {
        for (const QString& message : page.messages()) {
            if (!known.contains(message)) {
                unknown.append(page.path + u": "_s + message);
            }
        }
    }
    QVERIFY2(isNone(unknown), "messages that the program does not have");
}

void tst_Manual::everyTextOfTheSourcesIsInTheManual()
{
    // A screen's texts are looked for on its own page, all others anywhere.
    QHash<QString, QStringList> messages;
    QHash<QString, QString> words;
    for (const Page& page : m_pages) {
        messages[page.path] = page.messages();
        words[page.path] = page.plainText();
        messages[{}] += page.messages();
        words[{}] += page.plainText() + u'\n';
    }
    QStringList missing;
    for (const FileText& each : m_texts) {
        const QString& text = each.text.text;
        if (!isForUsers(text) || isHint(text) || unseen.contains(text)) {
            continue;
        }
        const QString own = pageOfScreen(each.file);
        const QString place = words.contains(own) ? own : QString();
        // What the program fills in can be told from the manual's own words only in a marked message.
        const bool isThere =
            messages[place].contains(text) || (!text.contains(FilledIn) && words[place].contains(text));
        if (!isThere) {
            missing.append(each.place());
        }
    }
    QVERIFY2(isNone(missing), "texts that the manual does not have");
}

void tst_Manual::everyUnseenTextIsStillThere()
{
    QStringList gone = unseen.keys();
    for (const FileText& each : m_texts) {
        gone.removeOne(each.text.text);
    }
    QVERIFY2(isNone(gone), "exceptions for texts that are gone");
}

void tst_Manual::everyScreenHasItsPageUnderItsCaption()
{
    const QStringList screens = screenFiles();
    QVERIFY(screens.size() >= 14);
    for (const QString& file : screens) {
        const Page* page = this->page(pageOfScreen(file));
        QVERIFY2(page != nullptr, qUtf8Printable(u"no page for "_s + file));
        const QString caption = captionOf(sourceOf(file));
        QVERIFY2(!caption.isEmpty(), qUtf8Printable(file));
        QVERIFY2(page->markup.contains(u"\n=== "_s + caption + u'\n'), qUtf8Printable(page->path + u": "_s + caption));
    }
}

void tst_Manual::hintsAreTheSame()
{
    QHash<QString, QStringList> ofPages;
    for (const FileText& each : m_texts) {
        if (isHint(each.text.text)) {
            ofPages[pageOfScreen(each.file)].append(each.text.text);
        }
    }
    QVERIFY(ofPages.size() >= 14);
    for (auto hints = ofPages.begin(); hints != ofPages.end(); ++hints) {
        const Page* page = this->page(hints.key());
        QVERIFY2(page != nullptr, qUtf8Printable(hints.key()));
        QStringList onPage = page->hints();
        onPage.sort();
        hints->sort();
        QCOMPARE(onPage, *hints);
    }
}

void tst_Manual::everyFileOfTheManualIsIncluded()
{
    QStringList left;
    for (const Page& page : m_pages) {
        left.append(page.path);
    }
    left.removeOne(u"manual.adoc"_s);
    left.removeOne(u"tarjeta.adoc"_s);
    for (const Page& page : m_pages) {
        for (const QString& included : page.included()) {
            left.removeOne(included);
        }
    }
    QVERIFY2(isNone(left), "files that no other includes");
}

void tst_Manual::scriptsAreWellFormed()
{
    for (auto script = m_scripts.begin(); script != m_scripts.end(); ++script) {
        QVERIFY2(script->problems.empty(), qUtf8Printable(script->describeProblems(script.key())));
        QVERIFY(!script->steps.empty());
    }
}

void tst_Manual::picturesAreThoseThatAreShot()
{
    QStringList shots;
    for (const tornel::ScriptFile& script : std::as_const(m_scripts)) {
        for (const tornel::ScriptStep& each : script.steps) {
            if (const auto* shot = std::get_if<tornel::step::Shot>(&each.action)) {
                QVERIFY2(!shots.contains(shot->file), qUtf8Printable(u"shot twice: "_s + shot->file));
                shots.append(shot->file);
            }
        }
    }
    QStringList unshot;
    QStringList unused = shots;
    for (const Page& page : m_pages) {
        for (const QString& picture : page.pictures()) {
            unused.removeOne(picture);
            if (!shots.contains(picture)) {
                unshot.append(page.path + u": "_s + picture);
            }
        }
    }
    QVERIFY2(isNone(unshot), "pictures that no script shoots");
    QVERIFY2(isNone(unused), "shots that the manual does not show");
}

void tst_Manual::lessonsSayWhatTheirScriptsType_data()
{
    QTest::addColumn<QString>("lesson");
    const QStringList lessons = QDir(manualFolder + u"/lecciones"_s).entryList({u"*.adoc"_s}, QDir::Files, QDir::Name);
    QCOMPARE(lessons.size(), 5);
    for (const QString& file : lessons) {
        const QString name = QFileInfo(file).completeBaseName();
        QTest::newRow(qUtf8Printable(name)) << name;
    }
}

void tst_Manual::lessonsSayWhatTheirScriptsType()
{
    QFETCH(const QString, lesson);
    QVERIFY(m_scripts.contains(lesson));
    const Page* page = this->page(u"lecciones/%1.adoc"_s.arg(lesson));
    QVERIFY(page != nullptr);
    const auto says = [page](const QString& text) { return page->markup.contains(u'`' + text + u'`'); };
    QStringList unsaid;
    for (const tornel::ScriptStep& each : m_scripts.value(lesson).steps) {
        if (const auto* type = std::get_if<tornel::step::Type>(&each.action); type && !says(type->text)) {
            unsaid.append(type->text);
        }
        if (const auto* field = std::get_if<tornel::step::HostField>(&each.action); field && !says(field->value)) {
            unsaid.append(field->value);
        }
    }
    QVERIFY2(isNone(unsaid), "what the script types and the lesson does not say");
}

void tst_Manual::theBookIsBuiltWithoutRemarks_data()
{
    QTest::addColumn<QString>("book");
    QTest::newRow("manual") << u"manual.adoc"_s;
    QTest::newRow("card") << u"tarjeta.adoc"_s;
}

void tst_Manual::theBookIsBuiltWithoutRemarks()
{
    QFETCH(const QString, book);
    const QString program = QStandardPaths::findExecutable(u"asciidoctor"_s);
    if (program.isEmpty()) {
        QSKIP("asciidoctor is not installed: scripts/setup docs");
    }
    const QTemporaryDir folder;
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, {u"--verbose"_s, u"--failure-level=INFO"_s, u"-o"_s, folder.filePath(u"book.html"_s),
                            manualFolder + u'/' + book});
    QVERIFY(process.waitForFinished());
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0, process.readAll().constData());
    QVERIFY(QFileInfo(folder.filePath(u"book.html"_s)).size() > 0);
}

QTEST_GUILESS_MAIN(tst_Manual)
#include "tst_Manual.moc"
