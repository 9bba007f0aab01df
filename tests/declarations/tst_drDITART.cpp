#include "controls/OpenForm.h"
#include "declarations/ArticlesStore.h"
#include "declarations/PdfText.h"
#include "doubles/TestComponent.h"
#include "doubles/ThrownError.h"

#include <declarations/PageView.h>
#include <declarations/drDITART.h>

#include <QFileDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QWheelEvent>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::declarations;
using namespace oVELDRA::doubles;

namespace {

/// The preview over a store; its dialogs answer from a script.
class Fixture
{
public:
    /// 300 articles are five pages.
    explicit Fixture(int articles = 300)
    {
        store.addMany(articles);
        ReportDialogs dialogs;
        dialogs.printer = [this](QWidget& owner, QPrinter& printer, int pages) {
            askedOver.append(owner.objectName());
            askedPages.append(pages);
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(answer);
            return !answer.isEmpty();
        };
        dialogs.pdfFile = [this](QWidget& owner, const QString& proposal) {
            askedOver.append(owner.objectName());
            proposals.append(proposal);
            return answer;
        };
        preview = std::make_unique<drDITART>(component, store.printed(), dialogs);
        answer = folder.filePath(u"salida.pdf"_s);
    }

    [[nodiscard]] PageView& view() const
    {
        return *static_cast<PageView*>(preview->findChild<QAbstractScrollArea*>(u"vwPagina"_s));
    }
    [[nodiscard]] QString position() const { return preview->findChild<QLabel*>(u"lbPagina"_s)->text(); }
    /// The number of the page that is shown, as the user reads it.
    [[nodiscard]] int page() const { return position().section(u' ', 1, 1).toInt(); }
    [[nodiscard]] int percent() const { return position().section(u' ', 5, 5).toInt(); }
    [[nodiscard]] QList<RecordedPrompts::Box> boxes() const { return component.prompts.boxes(); }

    ArticlesStore store;
    TestComponent component;
    QTemporaryDir folder;
    QString answer; ///< the file of the dialogs; empty when the user gives them up
    QStringList askedOver;
    QList<int> askedPages;
    QStringList proposals;
    std::unique_ptr<drDITART> preview;
};

/// What is seen of the page.
QImage seen(const PageView& view)
{
    return view.viewport()->grab().toImage();
}

/// One turn of a wheel, in eighths of a degree, away from the user if positive.
void turnWheel(PageView& view, int angle)
{
    const QPointF middle = view.viewport()->rect().center();
    QWheelEvent event(middle, view.viewport()->mapToGlobal(middle), {}, {0, angle}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.viewport(), &event);
}

/// Acts on the dialog that comes up next, and leaves it with Escape if it is still there then.
template <typename Dialog>
void inNextDialog(const std::function<void(Dialog&)>& actions)
{
    QTimer::singleShot(0, qApp, [actions] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || !QTest::qWaitForWindowActive(dialog)) {
            QTest::qFail("the dialog did not come up", __FILE__, __LINE__);
            return;
        }
        actions(*dialog);
        if (dialog->isVisible()) {
            QTest::keyClick(dialog, Qt::Key_Escape);
        }
    });
}

} // namespace

class tst_drDITART : public QObject
{
    Q_OBJECT

public:
    static void initMain();

private Q_SLOTS:
    void init();
    void cleanup();

    void windowHasItsCaptionAndControlsTheirNames();
    void everythingIsWithinTheWindowAndTheScreen();
    void opensOnTheFirstPageAcrossItsWidth();
    void everyOpeningStartsAnew();
    void pageKeysTurnPages_data();
    void pageKeysTurnPages();
    void onlyPageStaysWithEveryKey();
    void pagesLookDifferentAndTheSameAgain();
    void zoomKeysTakeRoundStepsWithinLimits();
    void wholePageIsSeenAtOnce();
    void pageWidthIsSeenAtOnce();
    void fittedPageFollowsTheWindow();
    void chosenZoomStaysWhenTheWindowChanges();
    void arrowsScrollAndTurnAtTheEnds();
    void wheelScrollsAndTurnsAtTheEnds();
    void paperIsWhiteInADarkTheme();
    void textIsAsLargeAsOnPaper();

    void savesAllPages();
    void proposesTheDocumentsName_data();
    void proposesTheDocumentsName();
    void existingFileIsReplacedOnlyWhenConfirmed_data();
    void existingFileIsReplacedOnlyWhenConfirmed();
    void givenUpFileDialogSavesNothing();
    void failedSaveIsReportedAndThePreviewStays();
    void printsThroughTheChosenPrinter();
    void givenUpPrintDialogPrintsNothing();
    void failedPrintIsReportedAndThePreviewStays();
    void pointerIsAnArrowInBoxesAndDialogs();
    void escapeClosesOtherKeysDoNot();

    void fileDialogSpeaksSpanishAndKnowsItsFormat();
    void printDialogComesUpWithThePagesRange();
};

void tst_drDITART::initMain()
{
    // The library's file dialog keeps its last folder in the user's settings.
    static const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
    qputenv("CUPS_SERVER", "127.0.0.1:1"); // no printers, whatever the machine has
}

void tst_drDITART::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_drDITART::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

// --- the window ---

void tst_drDITART::windowHasItsCaptionAndControlsTheirNames()
{
    const Fixture fixture;
    QCOMPARE(fixture.preview->objectName(), u"drDITART"_s);
    QCOMPARE(fixture.preview->windowTitle(), u"Rerporte DIT"_s);
    QCOMPARE(fixture.view().accessibleName(), u"Vista previa"_s);
    const auto* hint = fixture.preview->findChild<QLabel*>(u"lbTeclas"_s);
    QVERIFY(hint != nullptr);
    QCOMPARE(hint->text(), u"[AV PÁG] [RE PÁG] Página siguiente, anterior - [INICIO] [FIN] Primera, última - [+] [-] "
                           "Zoom - [0] Página entera - [1] Ancho de página - [F11] Guardar PDF - [F12] Imprimir - "
                           "[ESC] Salir"_s);
}

void tst_drDITART::everythingIsWithinTheWindowAndTheScreen()
{
    const Fixture fixture;
    QVERIFY(whileOpen(*fixture.preview, [&fixture] {
        const drDITART& preview = *fixture.preview;
        const QSize screen = preview.screen()->availableSize();
        QVERIFY2(preview.width() <= screen.width() && preview.height() <= screen.height(),
                 qPrintable(u"%1 x %2"_s.arg(preview.width()).arg(preview.height())));
        for (const QString& name : {u"lbPagina"_s, u"lbTeclas"_s}) {
            const auto* label = preview.findChild<QLabel*>(name);
            QVERIFY(preview.rect().contains(label->geometry()));
            QVERIFY(label->height() >= label->heightForWidth(label->width()));
        }
        QVERIFY(preview.rect().contains(fixture.view().geometry()));
        QVERIFY(fixture.view().height() > 5 * preview.fontMetrics().lineSpacing());
    }));
}

void tst_drDITART::opensOnTheFirstPageAcrossItsWidth()
{
    const Fixture fixture;
    QVERIFY(whileOpen(*fixture.preview, [&fixture] {
        QVERIFY(fixture.view().hasFocus());
        QCOMPARE(fixture.page(), 1);
        QVERIFY(fixture.position().startsWith(u"Página 1 de 5 - "_s));
        QCOMPARE(fixture.preview->findChild<QLabel*>(u"lbPagina"_s)->accessibleName(), fixture.position());
        QCOMPARE(fixture.view().horizontalScrollBar()->maximum(), 0);
        QCOMPARE(fixture.view().verticalScrollBar()->value(), 0);
    }));
}

void tst_drDITART::everyOpeningStartsAnew()
{
    const Fixture fixture;
    int percent = 0;
    QVERIFY(whileOpen(*fixture.preview, [&] {
        percent = fixture.percent();
        pressKey(Qt::Key_End);
        pressKey(Qt::Key_Plus);
    }));
    QVERIFY(whileOpen(*fixture.preview, [&] {
        QCOMPARE(fixture.page(), 1);
        QCOMPARE(fixture.percent(), percent);
    }));
}

void tst_drDITART::pageKeysTurnPages_data()
{
    QTest::addColumn<QList<Qt::Key>>("keys");
    QTest::addColumn<int>("page");
    const auto next = Qt::Key_PageDown;
    const auto previous = Qt::Key_PageUp;
    QTest::newRow("next") << QList<Qt::Key>{next} << 2;
    QTest::newRow("next and back") << QList<Qt::Key>{next, next, previous} << 2;
    QTest::newRow("last") << QList<Qt::Key>{Qt::Key_End} << 5;
    QTest::newRow("beyond the last") << QList<Qt::Key>{Qt::Key_End, next, next} << 5;
    QTest::newRow("back from the last") << QList<Qt::Key>{Qt::Key_End, next, previous} << 4;
    QTest::newRow("first") << QList<Qt::Key>{Qt::Key_End, Qt::Key_Home} << 1;
    QTest::newRow("before the first") << QList<Qt::Key>{previous, previous} << 1;
}

void tst_drDITART::pageKeysTurnPages()
{
    QFETCH(const QList<Qt::Key>, keys);
    QFETCH(const int, page);
    const Fixture fixture;
    QVERIFY(whileOpen(*fixture.preview, [&] {
        for (const Qt::Key key : keys) {
            pressKey(key);
        }
        QCOMPARE(fixture.page(), page);
        QCOMPARE(fixture.view().page(), page - 1);
        QCOMPARE(fixture.view().verticalScrollBar()->value(), 0);
    }));
}

void tst_drDITART::onlyPageStaysWithEveryKey()
{
    const Fixture fixture(1);
    QVERIFY(whileOpen(*fixture.preview, [&fixture] {
        for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_End, Qt::Key_Home, Qt::Key_Up}) {
            pressKey(key);
            QVERIFY(fixture.position().startsWith(u"Página 1 de 1 - "_s));
        }
    }));
}

void tst_drDITART::pagesLookDifferentAndTheSameAgain()
{
    const Fixture fixture;
    QVERIFY(whileOpen(*fixture.preview, [&fixture] {
        const QImage first = seen(fixture.view());
        pressKey(Qt::Key_PageDown);
        const QImage second = seen(fixture.view());
        QVERIFY(first != second);
        pressKey(Qt::Key_PageDown);
        QVERIFY(seen(fixture.view()) != second);
        pressKey(Qt::Key_PageUp);
        QCOMPARE(seen(fixture.view()), second);
        pressKey(Qt::Key_Home);
        QCOMPARE(seen(fixture.view()), first);
    }));
}

// --- zoom ---

void tst_drDITART::zoomKeysTakeRoundStepsWithinLimits()
{
    const Fixture fixture;
    QVERIFY(whileOpen(*fixture.preview, [&fixture] {
        QList<int> larger;
        for (int step = 0; step < 20; ++step) {
            pressKey(Qt::Key_Plus);
            larger.append(fixture.percent());
        }
        QVERIFY(std::is_sorted(larger.begin(), larger.end()));
        QCOMPARE(larger.constLast(), 400);
        QList<int> smaller;
        for (int step = 0; step < 20; ++step) {
            pressKey(Qt::Key_Minus, Qt::KeypadModifier);
            smaller.append(fixture.percent());
        }
        QCOMPARE(smaller,
                 (QList{300, 250, 200, 175, 150, 125, 110, 100, 90, 75, 67, 50, 33, 25, 25, 25, 25, 25, 25, 25}));
        pressKey(Qt::Key_Plus, Qt::ShiftModifier);
        QCOMPARE(fixture.percent(), 33);
    }));
}

void tst_drDITART::wholePageIsSeenAtOnce()
{
    const Fixture fixture;
    QVERIFY(whileOpen(*fixture.preview, [&fixture] {
        pressKey(Qt::Key_0);
        const PageView& view = fixture.view();
        QCOMPARE(view.horizontalScrollBar()->maximum(), 0);
        QCOMPARE(view.verticalScrollBar()->maximum(), 0);
        const double page = view.zoom() * view.logicalDpiY() * 842 / 72;
        QVERIFY(page <= view.viewport()->height());
        QVERIFY(page > view.viewport()->height() * 0.8);
    }));
}

void tst_drDITART::pageWidthIsSeenAtOnce()
{
    const Fixture fixture;
    QVERIFY(whileOpen(*fixture.preview, [&fixture] {
        pressKey(Qt::Key_Plus);
        pressKey(Qt::Key_1);
        const PageView& view = fixture.view();
        QCOMPARE(view.horizontalScrollBar()->maximum(), 0);
        const double page = view.zoom() * view.logicalDpiY() * 595 / 72;
        QVERIFY(page <= view.viewport()->width());
        QVERIFY(page > view.viewport()->width() * 0.8);
    }));
}

void tst_drDITART::fittedPageFollowsTheWindow()
{
    const Fixture fixture;
    QVERIFY(whileOpen(*fixture.preview, [&fixture] {
        const QSize size = fixture.preview->size();
        for (const Qt::Key fit : {Qt::Key_0, Qt::Key_1}) {
            pressKey(fit);
            const int small = fixture.percent();
            fixture.preview->resize(size * 2);
            QTRY_VERIFY(fixture.percent() > small * 3 / 2);
            QCOMPARE(fixture.view().horizontalScrollBar()->maximum(), 0);
            const int large = fixture.percent();
            fixture.preview->resize(size);
            QTRY_VERIFY(fixture.percent() < large * 2 / 3);
            QCOMPARE(fixture.view().horizontalScrollBar()->maximum(), 0);
        }
    }));
}

void tst_drDITART::chosenZoomStaysWhenTheWindowChanges()
{
    const Fixture fixture;
    QVERIFY(whileOpen(*fixture.preview, [&fixture] {
        pressKey(Qt::Key_Plus);
        const int chosen = fixture.percent();
        const int before = fixture.view().width();
        fixture.preview->resize(fixture.preview->size() * 2);
        QTRY_VERIFY(fixture.view().width() > before);
        QCOMPARE(fixture.percent(), chosen);
    }));
}

void tst_drDITART::arrowsScrollAndTurnAtTheEnds()
{
    const Fixture fixture;
    QVERIFY(whileOpen(*fixture.preview, [&fixture] {
        const QScrollBar& bar = *fixture.view().verticalScrollBar();
        QVERIFY(bar.maximum() > 0);
        pressKey(Qt::Key_Up);
        QCOMPARE(fixture.page(), 1);
        pressKey(Qt::Key_Down);
        QVERIFY(bar.value() > 0);
        QCOMPARE(fixture.page(), 1);
        for (int step = 0; step < 200 && bar.value() < bar.maximum(); ++step) {
            pressKey(Qt::Key_Down);
        }
        QCOMPARE(fixture.page(), 1);
        pressKey(Qt::Key_Down);
        QCOMPARE(fixture.page(), 2);
        QCOMPARE(bar.value(), 0);
        pressKey(Qt::Key_Up);
        QCOMPARE(fixture.page(), 1);
        QCOMPARE(bar.value(), bar.maximum());
        pressKey(Qt::Key_End);
        pressKey(Qt::Key_0);
        pressKey(Qt::Key_Down);
        QCOMPARE(fixture.page(), 5);
    }));
}

void tst_drDITART::wheelScrollsAndTurnsAtTheEnds()
{
    const Fixture fixture;
    QVERIFY(whileOpen(*fixture.preview, [&fixture] {
        PageView& view = fixture.view();
        turnWheel(view, -120);
        QVERIFY(view.verticalScrollBar()->value() > 0);
        QCOMPARE(fixture.page(), 1);
        pressKey(Qt::Key_0); // nothing to scroll: both ends at once
        turnWheel(view, -120);
        QCOMPARE(fixture.page(), 2);
        turnWheel(view, 120);
        QCOMPARE(fixture.page(), 1);
        turnWheel(view, 120);
        QCOMPARE(fixture.page(), 1);
        // A touch pad's small turns make one page together.
        for (int turn = 0; turn < 12; ++turn) {
            QCOMPARE(fixture.page(), 1);
            turnWheel(view, -10);
        }
        QCOMPARE(fixture.page(), 2);
    }));
}

// --- the picture ---

void tst_drDITART::paperIsWhiteInADarkTheme()
{
    const QPalette before = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(40, 40, 40)));
    {
        const Fixture fixture;
        QVERIFY(whileOpen(*fixture.preview, [&fixture] {
            pressKey(Qt::Key_0);
            const QImage image = seen(fixture.view());
            const auto grayAt = [&image](double x, double y) {
                return qGray(image.pixel((QPointF(x, y) * image.devicePixelRatio()).toPoint()));
            };
            const double middle = image.deviceIndependentSize().width() / 2;
            QVERIFY(grayAt(middle, 2) < 100);
            QCOMPARE(grayAt(middle, 16), 255); // in the page's upper margin
        }));
    }
    QApplication::setPalette(before);
}

void tst_drDITART::textIsAsLargeAsOnPaper()
{
    const Fixture fixture;
    QVERIFY(whileOpen(*fixture.preview, [&fixture] {
        PageView& view = fixture.view();
        while (fixture.percent() > 100) {
            pressKey(Qt::Key_Minus);
        }
        while (fixture.percent() < 100) {
            pressKey(Qt::Key_Plus);
        }
        QCOMPARE(fixture.percent(), 100);
        fixture.preview->resize(1200, 1400);
        QTRY_VERIFY(view.viewport()->height() > 1200);
        // From the first rule to the last of the page, as far as on paper whatever the screen's scale.
        const QImage image = seen(view);
        const double pixelsPerPoint = view.logicalDpiY() / 72.0 * image.devicePixelRatio();
        QList<int> rules;
        for (int y = 0; y < image.height(); ++y) {
            int dark = 0;
            for (int x = 0; x < image.width(); ++x) {
                dark += qGray(image.pixel(x, y)) < 140 ? 1 : 0;
            }
            // The page's surroundings are not dark enough to count, nor is any line of letters long enough.
            if (dark > 500 * pixelsPerPoint && (rules.isEmpty() || y > rules.constLast() + 3 * pixelsPerPoint)) {
                rules.append(y);
            }
        }
        QCOMPARE(rules.size(), 3);
        QVERIFY(qAbs((rules.at(1) - rules.at(0)) / pixelsPerPoint - 15) < 1);
        QVERIFY(qAbs((rules.at(2) - rules.at(0)) / pixelsPerPoint - 730.9) < 1.5);
    }));
}

// --- saving ---

void tst_drDITART::savesAllPages()
{
    const Fixture fixture;
    fixture.preview->setCaption(u"lbDIT", u"Declaración nro.: 7"_s);
    QVERIFY(whileOpen(*fixture.preview, [] { pressKey(Qt::Key_F11); }));
    QCOMPARE(fixture.boxes(),
             QList({RecordedPrompts::Box{u"Se guardó el archivo "_s + fixture.answer, core::InformationBox, {}}}));
    QCOMPARE(fixture.askedOver, QStringList{u"drDITART"_s});
    const auto pages = pdfPages(fixture.answer);
    QCOMPARE(pages.size(), 5);
    QCOMPARE(pages.at(0).constFirst(), u"Declaración nro.: 7"_s);
    QVERIFY(pages.at(4).constLast().contains(u"Página 5 de 5"_s));
}

void tst_drDITART::proposesTheDocumentsName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file");
    QTest::newRow("number") << u"DIT 24073IT14000123A"_s << u"DIT 24073IT14000123A.pdf"_s;
    QTest::newRow("accents") << u"DIT Ñandú"_s << u"DIT Ñandú.pdf"_s;
    QTest::newRow("what no file name has") << u"DIT 1/2\\3:4*5?\"<>|"_s << u"DIT 1_2_3_4_5_____.pdf"_s;
}

void tst_drDITART::proposesTheDocumentsName()
{
    QFETCH(const QString, name);
    QFETCH(const QString, file);
    Fixture fixture;
    fixture.answer.clear();
    fixture.preview->setDocumentName(name);
    QVERIFY(whileOpen(*fixture.preview, [] { pressKey(Qt::Key_F11); }));
    QCOMPARE(fixture.proposals.size(), 1);
    QCOMPARE(QFileInfo(fixture.proposals.constFirst()).fileName(), file);
    QVERIFY(QFileInfo(fixture.proposals.constFirst()).isAbsolute());
}

void tst_drDITART::existingFileIsReplacedOnlyWhenConfirmed_data()
{
    QTest::addColumn<core::BoxAnswer>("answer");
    QTest::addColumn<bool>("replaced");
    QTest::newRow("yes") << core::AnswerYes << true;
    QTest::newRow("no") << core::AnswerNo << false;
}

void tst_drDITART::existingFileIsReplacedOnlyWhenConfirmed()
{
    QFETCH(const core::BoxAnswer, answer);
    QFETCH(const bool, replaced);
    Fixture fixture;
    QFile file(fixture.answer);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("antes");
    file.close();
    fixture.component.prompts.willAnswer(answer);
    QVERIFY(whileOpen(*fixture.preview, [] { pressKey(Qt::Key_F11); }));
    QCOMPARE(fixture.boxes().constFirst(),
             (RecordedPrompts::Box{
                 u"El archivo "_s + fixture.answer + u" ya existe. Confirma reemplazarlo?"_s, core::QuestionBox, {}}));
    QCOMPARE(fixture.boxes().size(), replaced ? 2 : 1);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll() != "antes", replaced);
}

void tst_drDITART::givenUpFileDialogSavesNothing()
{
    Fixture fixture;
    fixture.answer.clear();
    QVERIFY(whileOpen(*fixture.preview, [] { pressKey(Qt::Key_F11); }));
    QVERIFY(fixture.boxes().isEmpty());
    QVERIFY(QDir(fixture.folder.path()).isEmpty());
}

void tst_drDITART::failedSaveIsReportedAndThePreviewStays()
{
    Fixture fixture;
    fixture.answer = fixture.folder.filePath(u"no/hay/salida.pdf"_s);
    QVERIFY(whileOpen(*fixture.preview, [] { pressKey(Qt::Key_F11); }));
    QCOMPARE(fixture.boxes().size(), 1);
    QCOMPARE(fixture.boxes().constFirst().style, core::CriticalBox);
    QVERIFY(fixture.boxes().constFirst().text.startsWith(u"No se pudo guardar el archivo salida.pdf: "_s));
    QVERIFY(fixture.boxes().constFirst().text.endsWith(u"\r\n\r\n75 - Sección [oVELDRA.drDITART.savePdf]"_s));
}

// --- printing ---

void tst_drDITART::printsThroughTheChosenPrinter()
{
    const Fixture fixture;
    QVERIFY(whileOpen(*fixture.preview, [] { pressKey(Qt::Key_F12); }));
    QVERIFY(fixture.boxes().isEmpty());
    QCOMPARE(fixture.askedOver, QStringList{u"drDITART"_s});
    QCOMPARE(fixture.askedPages, QList{5});
    QCOMPARE(pdfPages(fixture.answer).size(), 5);
}

void tst_drDITART::givenUpPrintDialogPrintsNothing()
{
    Fixture fixture;
    fixture.answer.clear();
    QVERIFY(whileOpen(*fixture.preview, [] { pressKey(Qt::Key_F12); }));
    QCOMPARE(fixture.askedPages.size(), 1);
    QVERIFY(fixture.boxes().isEmpty());
    QVERIFY(QDir(fixture.folder.path()).isEmpty());
}

void tst_drDITART::failedPrintIsReportedAndThePreviewStays()
{
    Fixture fixture;
    fixture.answer = fixture.folder.filePath(u"no/hay/salida.pdf"_s);
    QVERIFY(whileOpen(*fixture.preview, [] { pressKey(Qt::Key_F12); }));
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(fixture.boxes().constFirst().text.endsWith(u"\r\n\r\n482 - Sección [oVELDRA.drDITART.print]"_s));
}

void tst_drDITART::pointerIsAnArrowInBoxesAndDialogs()
{
    Fixture fixture;
    QList<bool> busy;
    fixture.component.prompts.whileShown = [&busy] { busy.append(QGuiApplication::overrideCursor() != nullptr); };
    QVERIFY(whileOpen(*fixture.preview, [&fixture] {
        pressKey(Qt::Key_F11);
        fixture.answer = fixture.folder.filePath(u"no/hay/salida.pdf"_s);
        pressKey(Qt::Key_F11);
        pressKey(Qt::Key_F12);
    }));
    QCOMPARE(busy, (QList{false, false, false}));
}

void tst_drDITART::escapeClosesOtherKeysDoNot()
{
    const Fixture fixture;
    QVERIFY(whileOpen(*fixture.preview, [] {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_F5, Qt::Key_F6, Qt::Key_Delete, Qt::Key_A, Qt::Key_2}) {
            pressKey(key);
        }
    }));
    QVERIFY(!whileOpen(*fixture.preview, [] { pressKey(Qt::Key_Escape); }));
    QVERIFY(fixture.boxes().isEmpty());
}

// --- the system's dialogs ---

void tst_drDITART::fileDialogSpeaksSpanishAndKnowsItsFormat()
{
    const QTemporaryDir folder;
    QWidget owner;
    owner.show();
    QVERIFY(QTest::qWaitForWindowActive(&owner));
    const auto look = [&folder](QFileDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), u"Guardar como PDF"_s);
        QCOMPARE(dialog.acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(dialog.directory().absolutePath(), folder.path());
        QCOMPARE(dialog.findChild<QLineEdit*>(u"fileNameEdit"_s)->text(), u"DIT 7.pdf"_s);
        QCOMPARE(dialog.labelText(QFileDialog::Accept), u"Guardar"_s);
        QCOMPARE(dialog.labelText(QFileDialog::Reject), u"Cancelar"_s);
    };
    inNextDialog<QFileDialog>(look);
    QCOMPARE(askForPdfFile(owner, folder.filePath(u"DIT 7.pdf"_s)), QString());

    // An ending that was not typed is put behind; nobody asks whether the file may be replaced.
    QFile existing(folder.filePath(u"otro.pdf"_s));
    QVERIFY(existing.open(QIODevice::WriteOnly));
    existing.close();
    inNextDialog<QFileDialog>([](QFileDialog& dialog) {
        auto* name = dialog.findChild<QLineEdit*>(u"fileNameEdit"_s);
        name->setFocus();
        name->selectAll();
        QTest::keyClicks(name, u"otro"_s);
        QTest::keyClick(name, Qt::Key_Return);
        QVERIFY(!dialog.isVisible());
    });
    QCOMPARE(askForPdfFile(owner, folder.filePath(u"DIT 7.pdf"_s)), folder.filePath(u"otro.pdf"_s));
}

void tst_drDITART::printDialogComesUpWithThePagesRange()
{
    QWidget owner;
    owner.show();
    QVERIFY(QTest::qWaitForWindowActive(&owner));
    QPrinter printer(QPrinter::HighResolution);
    inNextDialog<QPrintDialog>([](QPrintDialog& dialog) {
        QCOMPARE(dialog.windowTitle(), u"Imprimir"_s);
        QCOMPARE(dialog.minPage(), 1);
        QCOMPARE(dialog.maxPage(), 5);
        QVERIFY(dialog.testOption(QAbstractPrintDialog::PrintPageRange));
    });
    QVERIFY(!askForPrinter(owner, printer, 5));
}

QTEST_MAIN(tst_drDITART)
#include "tst_drDITART.moc"
