#pragma once

#include <QString>
#include <QStringView>
#include <QVarLengthArray>

namespace oVELDRA::dialect {

enum class TokenKind : quint8 { End, Word, BracketedName, Text, Number, Date, Symbol };

/// A piece of a statement; positions count UTF-16 units of its text.
struct Token
{
    TokenKind kind = TokenKind::End;
    char16_t symbol = 0;  ///< the symbol; `<=`, `>=` and `<>` are the constants below
    qsizetype begin = 0;  ///< first character, quotes and brackets included
    qsizetype end = 0;    ///< behind the last character
    bool doubled = false; ///< a text with doubled quotes inside
};

inline constexpr char16_t symbolLessEqual = u'\u2264';
inline constexpr char16_t symbolGreaterEqual = u'\u2265';
inline constexpr char16_t symbolNotEqual = u'\u2260';

/// A literal of a statement: what is left of it when the literals are lifted out are its shape and these.
struct Literal
{
    TokenKind kind = TokenKind::Text; ///< Text, Number or Date
    QStringView raw;                  ///< between the quotes or number signs; a view into the statement's text
    bool doubled = false;             ///< `raw` still holds doubled quotes
    char16_t quote = u'\'';

    /// The text that a Text literal stands for.
    [[nodiscard]] QString text() const;
};

using Literals = QVarLengthArray<Literal, 16>;

/// Cuts a statement into tokens. The text must outlive it.
class Scanner
{
public:
    explicit Scanner(QStringView text, qsizetype from = 0) : m_text(text), m_position(from) {}

    /// The next token; End at the end. Throws RuntimeError -2147217900 for what is no token (an open quote, a control
    /// character, a comment mark) .
    [[nodiscard]] Token next();

    [[nodiscard]] QStringView text() const { return m_text; }

private:
    Token quotedText(char16_t quote);
    Token bracketedName();
    Token dateLiteral();
    Token number();
    Token word();
    Token symbol();

    QStringView m_text;
    qsizetype m_position;
};

/// The literal of a literal token.
[[nodiscard]] Literal literalOf(QStringView statement, const Token& token);

/// Splits a statement into its shape (the text with a mark in place of each literal) and its literals, in order.
/// Statements that differ in their literals only have the same shape, which is what plans are kept under.
void liftLiterals(QStringView statement, QString& shape, Literals& literals);

/// The same for a statement that is expected to have a known shape; much faster. False when it has another one (or is
/// no statement at all); `literals` then means nothing.
[[nodiscard]] bool literalsOfShape(QStringView statement, QStringView shape, Literals& literals);

} // namespace oVELDRA::dialect
