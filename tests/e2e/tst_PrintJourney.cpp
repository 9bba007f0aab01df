#include "Seat.h"
#include "declarations/PdfText.h"
#include "doubles/PrivateCups.h"

#include <QLocale>
#include <QStandardPaths>
#include <QTemporaryFile>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;
using oVELDRA::doubles::PrivateCups;

/// The discharges of a declaration go to a printer as pages, and to a raw queue as they are.
class tst_PrintJourney : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aListingIsPrintedInBothModesWithTheKeyboard();

private:
    static void openListing(e2e::Seat& seat);
    /// What the listing has to say of each discharge, cells set apart by one blank.
    [[nodiscard]] static QStringList expectedRecords(e2e::Seat& seat);
    [[nodiscard]] static QByteArrayList waitForDocument(const PrivateCups& cups, const QString& queue);
    static void checkPages(const QByteArray& pdf, const QStringList& records);
    static void checkRawText(const QByteArray& bytes, const QStringList& records);
};

namespace {

const QString& number()
{
    static const QString declaration = u"26001IT14000087H"_s;
    return declaration;
}

/// With the locale's separator and at least two digits before it.
QString padded(double value, int decimals)
{
    const QString text = QLocale().toString(value, 'f', decimals);
    return text.rightJustified(decimals + 3, u'0');
}

/// To two decimals, halves away from zero, as the value is written: 833.175 is no less than that.
double rounded(double value)
{
    constexpr double steps = 100;
    constexpr int digits = 15;
    return std::round(QString::number(value * steps, 'g', digits).toDouble()) / steps;
}

} // namespace

void tst_PrintJourney::initTestCase()
{
    QStringList missing = e2e::XDisplay::missingPrograms() + PrivateCups::missingPrograms();
    if (QStandardPaths::findExecutable(u"pdftotext"_s).isEmpty()) {
        missing.append(u"pdftotext"_s);
    }
    e2e::prepare(missing);
}

void tst_PrintJourney::aListingIsPrintedInBothModesWithTheKeyboard()
{
    PrivateCups cups;
    QVERIFY(cups.start());
    QVERIFY(cups.addQueue(u"Laser"_s) && cups.addQueue(u"Matriz"_s));
    e2e::Seat seat(u"print"_s);
    e2e::travel(seat, [&] {
        seat.sitDown([&cups](const QProcessEnvironment& base) { return cups.environment(base); });
        const QByteArray before = seat.storedInputs();
        openListing(seat);

        // The printers have the keyboard, none of them is picked; the first one is for pages, which is the mode.
        seat.keys({u"Down"_s});
        seat.shot(u"pages"_s);
        seat.keys({u"F12"_s});
        const QByteArrayList pages = waitForDocument(cups, u"Laser"_s);

        // Back to the modes, whichever of them has the keyboard then; the last one, and on to the second printer.
        seat.keys({u"shift+Tab"_s, u"Down"_s, u"space"_s, u"Tab"_s, u"Down"_s});
        seat.shot(u"raw"_s);
        seat.keys({u"F12"_s});
        const QByteArrayList raw = waitForDocument(cups, u"Matriz"_s);

        for (const QString& title : {u"Modificar DIT"_s, u"Listados de DIT's"_s, e2e::hostTitle()}) {
            seat.keys({u"Escape"_s});
            seat.expectWindow(title);
        }
        QVERIFY(seat.storedInputs() == before);
        seat.leave();

        const QStringList records = expectedRecords(seat);
        QVERIFY(!records.isEmpty());
        QCOMPARE(pages.size(), 1);
        checkPages(pages.constFirst(), records);
        QCOMPARE(raw.size(), 1);
        checkRawText(raw.constFirst(), records);
        QCOMPARE(cups.arrived(u"Laser"_s).size(), 1);
    });
}

void tst_PrintJourney::openListing(e2e::Seat& seat)
{
    seat.keys({u"F4"_s});
    seat.expectWindow(u"Listados de DIT's"_s);
    // The sample declarations are of 2026; the oldest is the first.
    seat.keys({u"shift+Tab"_s, u"shift+Tab"_s, u"ctrl+a"_s});
    seat.fill(u"01/01/2026"_s);
    seat.keys({u"ctrl+a"_s});
    seat.type(u"31/12/2026"_s);
    seat.keys({u"F11"_s, u"Tab"_s, u"Home"_s, u"Return"_s});
    seat.expectWindow(u"Modificar DIT"_s);
    seat.keys({u"F12"_s});
    seat.expectWindow(u"Listado de Descargas"_s);
}

QStringList tst_PrintJourney::expectedRecords(e2e::Seat& seat)
{
    // Texts that are too long for their columns are cut.
    constexpr qsizetype narrowColumn = 9;
    constexpr qsizetype invoiceColumn = 10;
    QStringList records;
    const auto rows = seat.rows(u"select * from DIP where ARTDCL = '%1' order by EXTFOF"_s.arg(number()));
    for (; !rows->atEof(); rows->moveNext()) {
        const auto text = [&rows](QStringView field) { return rows->value(field).toString(); };
        const auto value = [&rows](QStringView field) { return rows->value(field).toDouble(); };
        records.append(QStringList{text(u"EXTNOF"), text(u"ARTNRO"), padded(value(u"RIPCAN"), 6),
                                   padded(value(u"PRDMUL"), 2), padded(value(u"DIPCAN"), 6).left(narrowColumn),
                                   padded(value(u"RIPPER"), 6), padded(value(u"RIPMER"), 6),
                                   padded(value(u"ARTPRE"), 6), padded(rounded(value(u"ARTPRE") * value(u"RALCAN")), 2),
                                   text(u"EXTFAC").left(invoiceColumn)}
                           .join(u' '));
    }
    return records;
}

QByteArrayList tst_PrintJourney::waitForDocument(const PrivateCups& cups, const QString& queue)
{
    if (!QTest::qWaitFor([&] { return !cups.arrived(queue).isEmpty(); }, e2e::patience)) {
        throw e2e::JourneyStopped("nothing arrived at the printer " + queue.toStdString());
    }
    return cups.arrived(queue);
}

void tst_PrintJourney::checkPages(const QByteArray& pdf, const QStringList& records)
{
    QTemporaryFile file;
    QVERIFY(file.open() && file.write(pdf) == pdf.size() && file.flush());
    const QList<QStringList> pages = oVELDRA::declarations::pdfPages(file.fileName());
    QCOMPARE(pages.size(), 1);
    QVERIFY2(pages[0].value(0).startsWith(u"Pagina 1 de 1 - Fecha de Impresión "_s), qPrintable(pages[0].value(0)));
    QCOMPARE(pages[0].value(1), u"DIT NÚMERO: "_s + number());
    QCOMPARE(pages[0].value(2), u"FECHA OFICIALIZACIÓN: 19/01/2026"_s);
    QCOMPARE(pages[0].value(3), u"FECHA VENCIMIENTO: 19/01/2027"_s);
    constexpr qsizetype headingLines = 6; // with titles and rule
    QCOMPARE(pages[0].mid(headingLines), records);
}

void tst_PrintJourney::checkRawText(const QByteArray& bytes, const QStringList& records)
{
    // The records alone, without a heading.
    QVERIFY(bytes.endsWith("\r\n"));
    QStringList lines = QString::fromLatin1(bytes).split(u"\r\n"_s);
    lines.removeLast();
    for (QString& line : lines) {
        line = line.simplified();
    }
    QCOMPARE(lines, records);
}

QTEST_GUILESS_MAIN(tst_PrintJourney)
#include "tst_PrintJourney.moc"
