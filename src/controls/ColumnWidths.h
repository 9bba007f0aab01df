#pragma once

#include <QObject>
#include <QString>

#include <optional>
#include <vector>

class QHeaderView;

namespace oVELDRA::controls {

/// Which columns of a list the user gave another width than the designed one, and how wide they are.
///
/// Widths are counted in characters, so that they outlive a change of font, scale or screen. As a text they stand in
/// the columns' order, separated by `;`, with a point before decimals; a column that is as designed is empty:
/// `18;;7.5`.
class ColumnWidths final : public QObject
{
public:
    /// `designed` are the columns' widths in characters; each column gets its own, or more where its title needs it.
    /// The header is the parent.
    ColumnWidths(QHeaderView& header, std::vector<double> designed);

    /// Whether the user has changed anything since the text was set or taken as kept.
    [[nodiscard]] bool isChanged() const { return m_changed; }
    /// What is kept somewhere is what text() says now.
    void setKept() { m_changed = false; }
    /// Empty when all columns are as designed.
    [[nodiscard]] QString text() const;
    /// A text that is not of this list's columns, or widths that nobody would give, change nothing.
    void setText(const QString& text);

    /// As wide as what is seen in them; counts as the user's doing. Double clicks on titles' edges do it for one
    /// column.
    void fitToContents();
    /// As designed; counts as the user's doing.
    void reset();

private:
    using Widths = std::vector<std::optional<double>>;

    bool eventFilter(QObject* watched, QEvent* event) override;
    void noteResized(int column, int width);
    void apply(int column);
    [[nodiscard]] int lastColumn() const { return static_cast<int>(m_designed.size()) - 1; }
    [[nodiscard]] double characterWidth() const;
    [[nodiscard]] static std::optional<Widths> parsed(const QString& text, std::size_t columns);

    QHeaderView& m_header;
    std::vector<double> m_designed;
    Widths m_given;
    bool m_changed = false;
    bool m_mouseDown = false;
    bool m_otherMoved = false; ///< a column before the last, since the button went down
};

} // namespace oVELDRA::controls
