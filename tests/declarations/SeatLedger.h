#pragma once

#include <oVELDRA/ConexionDB.h>

#include <QList>
#include <QString>
#include <QStringList>

namespace oVELDRA::declarations {

// The host's declarations that busy seats import: TOR1 has one item, TOR2 two, and so on, each with the same number of
// subitems. What is imported carries a token of its own as its description.
constexpr int hostFiles = 6;
constexpr int subitemsOfItem = 3;

void fillHost(ConexionDB& host);

/// What busy seats wrote down, a list of words each:
///
/// ready NAME (once it is connected); tried TOKEN NUMBER (before an import), imported TOKEN NUMBER, renumbered OLD NEW,
/// deleted NUMBER, discharged EXPORT TOKEN, looked NUMBER; refused TASK TEXT (by the rules), failed TASK TEXT (by the
/// database); broken TEXT (something half done was seen).
class SeatLedger
{
public:
    /// Adds what a seat wrote.
    void read(const QString& name);

    /// How often this came of something.
    [[nodiscard]] qsizetype count(const QString& word) const { return entries(word).size(); }
    [[nodiscard]] QList<QStringList> entries(const QString& word) const;
    /// How often each word was written, for people.
    [[nodiscard]] QString summary() const;

    /// What in the stock contradicts what was written down, when all that was reported failed did nothing; empty for
    /// nothing. Every reported success must be there, unless a later one undid it, and nothing else.
    [[nodiscard]] QStringList faults(ConexionDB& stock) const;
    /// The same for seats that only imported and were cut off now and then: an import that was reported failed may be
    /// there, because its last word got lost, but then as a whole.
    [[nodiscard]] QStringList faultsAfterCuts(ConexionDB& stock) const;

private:
    [[nodiscard]] QStringList wrongNumbers(ConexionDB& stock) const;
    [[nodiscard]] QStringList wrongTokens(ConexionDB& stock, const QString& word) const;
    [[nodiscard]] QStringList missingDischarges(ConexionDB& stock) const;

    QList<QStringList> m_entries;
};

/// What is wrong with a declaration, which need not be there: missing articles, balances that do not fit its
/// discharges.
[[nodiscard]] QStringList faultsOfDeclaration(ConexionDB& stock, const QString& number);

} // namespace oVELDRA::declarations
