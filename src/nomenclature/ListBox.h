#pragma once

#include <QListView>
#include <QStringListModel>

namespace oVELDRA::nomenclature {

/// How the lines of a list box are laid out.
enum class LineLayout {
    OneHeight, ///< all lines are short and of about one length; the only one for tens of thousands
    Wrapped    ///< long lines go on below
};

/// A list of texts for the keyboard; the selected line is the current index. Typing finds lines by their beginning.
class ListBox final : public QListView
{
public:
    /// How much it shows without scrolling where the window has room for it.
    ListBox(const QString& name, const QString& accessibleName, LineLayout layout, QSize charactersAndLines);

    /// All lines at once, none of them selected.
    void setLines(const QStringList& lines) { m_lines.setStringList(lines); }
    [[nodiscard]] int lineCount() const { return m_lines.rowCount(); }

    /// Nothing happens in an empty list.
    void selectFirstLine();
    /// The selected line; empty without one.
    [[nodiscard]] QString selectedLine() const { return currentIndex().data().toString(); }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    [[nodiscard]] QSize sizeFor(QSize charactersAndLines) const;

    QStringListModel m_lines;
    QSize m_charactersAndLines;
};

} // namespace oVELDRA::nomenclature
