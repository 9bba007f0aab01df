#pragma once

#include <QString>
#include <QStringView>

#include <optional>
#include <string>
#include <string_view>

namespace oVELDRA::dialect {

// How the store compares texts: without regard to letter case and trailing blanks, but to accents and Ñ.

/// Without its trailing blanks (U+0020).
[[nodiscard]] QStringView withoutTrailingBlanks(QStringView text);

/// Whether all characters are ASCII.
[[nodiscard]] bool isAscii(QStringView text);

/// A form of the text that is equal for texts that compare equal.
[[nodiscard]] QString folded(QStringView text);

/// Whether two texts compare equal.
[[nodiscard]] bool equalTexts(QStringView a, QStringView b);

/// Spanish alphabetical order (ñ behind n, accents only tell apart what is otherwise equal): negative, 0 or positive.
[[nodiscard]] int spanishOrder(QStringView a, QStringView b);

/// The same for UTF-8.
[[nodiscard]] int spanishOrderUtf8(std::string_view a, std::string_view b);

/// A pattern of `like`: `%` any run, `_` one character, `[a-f]` and `[!a-f]` lists; letters without regard to case.
class LikePattern
{
public:
    explicit LikePattern(QStringView pattern);

    [[nodiscard]] bool matches(QStringView text) const;
    [[nodiscard]] bool matchesUtf8(std::string_view text) const;

    /// The ordinary characters that every match begins with, as written.
    [[nodiscard]] static QStringView prefixOf(QStringView pattern);

    /// The pattern as a regular expression in POSIX's extended words with escapes by backslash, for texts in lower
    /// case.
    [[nodiscard]] QString expression() const;

private:
    template <typename Text>
    [[nodiscard]] bool matchesUnits(const Text& text) const;
    /// An element of the pattern that is a list of characters; `begin` and `end` are those of what it lists.
    struct List
    {
        qsizetype begin;
        qsizetype end;
        bool excluded;
    };
    [[nodiscard]] std::optional<List> listAt(qsizetype at) const;
    [[nodiscard]] QString listExpression(const List& list) const;
    [[nodiscard]] bool matchesOne(qsizetype at, char16_t c, qsizetype& next) const;

    QString m_pattern; ///< case folded
    bool m_everything = false;
};

} // namespace oVELDRA::dialect
