#pragma once

#include "Dice.h"
#include "StatementParts.h"

namespace oVELDRA::histories {

/// The values that a history is written with: few codes in many spellings, so that they meet.
class HistoryWords
{
public:
    explicit HistoryWords(Dice& dice) : m_dice(dice) {}

    [[nodiscard]] QString catalog();
    [[nodiscard]] QString product();
    [[nodiscard]] QString article();
    [[nodiscard]] QString unit();
    [[nodiscard]] QString position();
    [[nodiscard]] QString interno();
    [[nodiscard]] QString office();
    [[nodiscard]] QString export_();
    /// A declaration number, in one of its spellings.
    [[nodiscard]] QString declaration();
    [[nodiscard]] QString description();
    [[nodiscard]] QDate date();
    /// Not negative, with at most that many decimals.
    [[nodiscard]] double number(int decimals);

    /// The same code with other letter case or trailing blanks, or as it is.
    [[nodiscard]] QString spelling(const QString& code);
    /// A value for a column, of a kind that the column can keep.
    [[nodiscard]] Said valueFor(const dialect::Column& column);
    /// A pattern of `like` that a text of a column may match.
    [[nodiscard]] QString pattern(const QString& text);
    /// The text in a column of any row, or the other text when there is none.
    [[nodiscard]] QString presentText(const ReferenceModel& model, const QString& table, const QString& column,
                                      const QString& otherwise);
    /// A condition on a table that often holds for some of its rows.
    [[nodiscard]] Condition condition(const ReferenceModel& model, const QString& table);

private:
    [[nodiscard]] QString word();
    [[nodiscard]] Said likelyValue(const ReferenceModel& model, const QString& table, const dialect::Column& column);
    [[nodiscard]] Condition simpleCondition(const ReferenceModel& model, const QString& table);
    [[nodiscard]] Condition textCondition(const ReferenceModel& model, const QString& table,
                                          const dialect::Column& column);

    Dice& m_dice;
};

} // namespace oVELDRA::histories
