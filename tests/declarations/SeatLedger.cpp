#include "SeatLedger.h"

#include "StoredDeclaration.h"

#include <core/Module1.h>
#include <dialect/TextComparison.h>

#include <QFile>
#include <QMap>
#include <QSet>

#include <utility>

namespace oVELDRA::declarations {

using namespace Qt::StringLiterals;
using core::quoted;
using core::rowsOf;

namespace {

QString field(const Recordset& row, QStringView name)
{
    return row.value(name).toString();
}

/// The cells of a column, in table order.
QStringList cells(ConexionDB& stock, const QString& column, const QString& table)
{
    QStringList result;
    for (const auto rows = rowsOf(stock, u"select "_s + column + u" from " + table); !rows->atEof(); rows->moveNext()) {
        result << field(*rows, column);
    }
    return result;
}

QMap<QString, double> dischargedOf(ConexionDB& stock, const QString& number, const QString& token, QStringList& faults)
{
    QMap<QString, double> quantities;
    const auto rows = rowsOf(stock, u"select * from DIP where ARTDCL = "_s + quoted(number));
    for (; !rows->atEof(); rows->moveNext()) {
        quantities[field(*rows, u"ARTITM") + u'/' + field(*rows, u"ARTSBT")] += rows->value(u"RALCAN").toDouble();
        if (field(*rows, u"EXTINT") != token) {
            faults << u"a discharge of %1 is under %2 of %3"_s.arg(field(*rows, u"EXTINT"), number, token);
        }
    }
    return quantities;
}

/// Rows whose declaration is not there.
QStringList orphans(ConexionDB& stock, const QString& column, const QString& table)
{
    QSet<QString> numbers;
    for (const QString& number : cells(stock, u"INTDCL"_s, u"INTINS"_s)) {
        numbers << dialect::folded(number);
    }
    QStringList faults;
    for (const QString& number : cells(stock, column, table)) {
        if (!numbers.contains(dialect::folded(number))) {
            faults << u"a row of %1 has no declaration %2"_s.arg(table, number);
        }
    }
    return faults;
}

QStringList halfDone(ConexionDB& stock)
{
    QStringList faults = orphans(stock, u"INTDCL"_s, u"INS"_s) + orphans(stock, u"ARTDCL"_s, u"DIP"_s);
    for (const QString& number : cells(stock, u"INTDCL"_s, u"INTINS"_s)) {
        faults += faultsOfDeclaration(stock, number);
    }
    return faults;
}

} // namespace

void fillHost(ConexionDB& host)
{
    for (int file = 1; file <= hostFiles; ++file) {
        addDeclaration(host, u"TOR%1"_s.arg(file), file, subitemsOfItem);
    }
}

void SeatLedger::read(const QString& name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("cannot read %ls", qUtf16Printable(name));
    }
    const QString text = QString::fromUtf8(file.readAll());
    QStringList lines = text.split(u'\n');
    lines.removeLast(); // behind the last end of a line: nothing, or what is just being written
    for (const QString& line : lines) {
        m_entries << line.split(u'\t');
    }
}

QList<QStringList> SeatLedger::entries(const QString& word) const
{
    QList<QStringList> result;
    for (const QStringList& entry : m_entries) {
        if (entry.constFirst() == word) {
            result << entry.mid(1);
        }
    }
    return result;
}

QString SeatLedger::summary() const
{
    QMap<QString, int> counts;
    for (const QStringList& entry : m_entries) {
        const bool failure = entry.constFirst() == u"refused" || entry.constFirst() == u"failed";
        ++counts[failure ? QString(entry.constFirst() + u' ' + entry.value(1)) : entry.constFirst()];
    }
    QStringList words;
    for (const auto& [word, times] : std::as_const(counts).asKeyValueRange()) {
        words << u"%1 %2"_s.arg(times).arg(word);
    }
    return words.join(u", "_s);
}

QStringList SeatLedger::faults(ConexionDB& stock) const
{
    QStringList faults =
        halfDone(stock) + wrongNumbers(stock) + wrongTokens(stock, u"imported"_s) + missingDischarges(stock);
    for (const QStringList& broken : entries(u"broken"_s)) {
        faults << broken.constFirst();
    }
    return faults;
}

QStringList SeatLedger::faultsAfterCuts(ConexionDB& stock) const
{
    QStringList faults = halfDone(stock) + wrongTokens(stock, u"tried"_s);
    const QStringList present = cells(stock, u"INTDES"_s, u"INTINS"_s);
    const QSet<QString> tokens(present.begin(), present.end());
    for (const QStringList& import : entries(u"imported"_s)) {
        if (!tokens.contains(import.at(0))) {
            faults << u"the import %1 as %2 is lost"_s.arg(import.at(0), import.at(1));
        }
    }
    return faults;
}

/// A number that seats brought declarations to as often as they took them away from it is free; once more, and it is
/// in use. That holds in whatever order they did it.
QStringList SeatLedger::wrongNumbers(ConexionDB& stock) const
{
    QMap<QString, int> uses;
    for (const QStringList& import : entries(u"imported"_s)) {
        ++uses[dialect::folded(import.at(1))];
    }
    for (const QStringList& renumbering : entries(u"renumbered"_s)) {
        --uses[dialect::folded(renumbering.at(0))];
        ++uses[dialect::folded(renumbering.at(1))];
    }
    for (const QStringList& deletion : entries(u"deleted"_s)) {
        --uses[dialect::folded(deletion.at(0))];
    }
    for (const QString& number : cells(stock, u"INTDCL"_s, u"INTINS"_s)) {
        --uses[dialect::folded(number)];
    }
    QStringList faults;
    for (const auto& [number, difference] : std::as_const(uses).asKeyValueRange()) {
        if (difference != 0) {
            faults << u"%1 was reported %2 times more often than it is there"_s.arg(number).arg(difference);
        }
    }
    return faults;
}

/// Declarations that nobody wrote down with that word, or that are there twice.
QStringList SeatLedger::wrongTokens(ConexionDB& stock, const QString& word) const
{
    QSet<QString> known;
    for (const QStringList& entry : entries(word)) {
        known << entry.constFirst();
    }
    QStringList faults;
    for (const QString& token : cells(stock, u"INTDES"_s, u"INTINS"_s)) {
        if (!known.remove(token)) {
            faults << u"nobody %1 %2, or it is there twice"_s.arg(word, token);
        }
    }
    return faults;
}

/// A discharge lasts as long as its declaration, under whatever number.
QStringList SeatLedger::missingDischarges(ConexionDB& stock) const
{
    const QStringList tokens = cells(stock, u"INTDES"_s, u"INTINS"_s);
    const QStringList exports = cells(stock, u"EXTNOF"_s, u"DIP"_s);
    QStringList faults;
    QSet<QString> reported;
    for (const QStringList& discharge : entries(u"discharged"_s)) {
        reported << discharge.at(0);
        if (tokens.contains(discharge.at(1)) && exports.count(discharge.at(0)) != 1) {
            faults << u"the discharge %1 of %2 is lost or doubled"_s.arg(discharge.at(0), discharge.at(1));
        }
    }
    for (const QString& discharge : exports) {
        if (!reported.contains(discharge)) {
            faults << u"nobody reported the discharge "_s + discharge;
        }
    }
    return faults;
}

QStringList faultsOfDeclaration(ConexionDB& stock, const QString& number)
{
    const auto header = rowsOf(stock, u"select INTNRO,INTDES from INTINS where INTDCL = "_s + quoted(number));
    if (header->atEof()) {
        return {};
    }
    QStringList faults;
    const qsizetype items = field(*header, u"INTNRO").mid(3).toLongLong();
    const auto articles = rowsOf(stock, u"select * from INS where INTDCL = "_s + quoted(number));
    if (articles->recordCount() != items * subitemsOfItem) {
        faults << u"%1 has %2 articles of %3 items"_s.arg(number).arg(articles->recordCount()).arg(items);
    }
    const QMap<QString, double> discharged = dischargedOf(stock, number, field(*header, u"INTDES"), faults);
    QSet<QString> places;
    for (; !articles->atEof(); articles->moveNext()) {
        const QString place = field(*articles, u"ARTITM") + u'/' + field(*articles, u"ARTSBT");
        places << place;
        const double balance = articles->value(u"ARTDSC").toDouble();
        if (articles->value(u"ARTCAT").toDouble() - discharged.value(place) != balance || balance < 0) {
            faults << u"the balance %1 of %2 in %3 is wrong"_s.arg(balance).arg(place, number);
        }
    }
    for (const QString& place : discharged.keys()) {
        if (!places.contains(place)) {
            faults << u"a discharge of %1 has no article %2"_s.arg(number, place);
        }
    }
    return faults;
}

} // namespace oVELDRA::declarations
