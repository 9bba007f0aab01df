#include "Lexer.h"

#include "StatementError.h"

#include <algorithm>
#include <array>

namespace oVELDRA::dialect {

using namespace Qt::StringLiterals;

namespace {

// Marks that stand in a shape for literals. The scanner refuses control characters outside of literals, so a
// statement's own text can never hold them.
constexpr QChar textMark{u'\u0001'};
constexpr QChar numberMark{u'\u0002'};
constexpr QChar dateMark{u'\u0003'};

/// What an ASCII character can be at the start of a token, so that one look decides: lifting literals is on the way of
/// every statement.
enum CharacterClass : quint8 { Other, Blank, Letter, Digit, Sign };

constexpr std::array<CharacterClass, 128> characterClasses = [] {
    std::array<CharacterClass, 128> classes{};
    for (const char16_t c : {u' ', u'\t', u'\r', u'\n'}) {
        classes[c] = Blank;
    }
    for (size_t i = 0; i < 26; ++i) {
        classes['a' + i] = Letter;
        classes['A' + i] = Letter;
    }
    classes['_'] = Letter;
    for (size_t i = 0; i < 10; ++i) {
        classes['0' + i] = Digit;
    }
    for (const char16_t c : {u'=', u'<', u'>', u'(', u')', u',', u'*', u'/', u'+', u'-', u'&'}) {
        classes[c] = Sign;
    }
    return classes;
}();

CharacterClass classOf(char16_t c)
{
    if (c < characterClasses.size()) {
        return characterClasses[c];
    }
    return QChar(c).isLetter() ? Letter : Other;
}

constexpr bool isAsciiDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

bool isWordPart(char16_t c)
{
    const CharacterClass kind = classOf(c);
    return kind == Letter || kind == Digit;
}

constexpr QStringView wholeStatement = u"la instrucción";

} // namespace

QString Literal::text() const
{
    QString result = raw.toString();
    if (doubled) {
        const QChar mark{quote};
        result.replace(QString(2, mark), QString(mark));
    }
    return result;
}

Token Scanner::next()
{
    while (m_position < m_text.size() && classOf(m_text[m_position].unicode()) == Blank) {
        ++m_position;
    }
    if (m_position == m_text.size()) {
        return {TokenKind::End, 0, m_position, m_position, false};
    }
    const char16_t c = m_text[m_position].unicode();
    switch (classOf(c)) {
    case Letter:
        return word();
    case Digit:
        return number();
    case Sign:
        return symbol();
    default:
        break;
    }
    switch (c) {
    case u'\'':
    case u'"':
        return quotedText(c);
    case u'[':
        return bracketedName();
    case u'#':
        return dateLiteral();
    case u'.':
        if (m_position + 1 < m_text.size() && isAsciiDigit(m_text[m_position + 1].unicode())) {
            return number();
        }
        break;
    default:
        break;
    }
    throw syntaxError(wholeStatement, m_text, m_position);
}

Token Scanner::word()
{
    const qsizetype begin = m_position;
    const auto* const end =
        std::find_if_not(m_text.begin() + begin + 1, m_text.end(), [](QChar c) { return isWordPart(c.unicode()); });
    m_position = end - m_text.begin();
    return {TokenKind::Word, 0, begin, m_position, false};
}

Token Scanner::quotedText(char16_t quote)
{
    const qsizetype begin = m_position;
    const auto* at = m_text.begin() + begin + 1;
    for (bool doubled = false;; doubled = true) {
        at = std::find_if(at, m_text.end(), [quote](QChar c) { return c == QChar(quote) || c.isNull(); });
        if (at == m_text.end()) {
            throw syntaxError(u"un texto sin comilla de cierre", m_text, begin);
        }
        if (at->isNull()) {
            throw syntaxReason(wholeStatement, u"un texto contiene un carácter nulo"_s);
        }
        ++at;
        if (at == m_text.end() || *at != QChar(quote)) {
            m_position = at - m_text.begin();
            return {TokenKind::Text, quote, begin, m_position, doubled};
        }
        ++at;
    }
}

Token Scanner::bracketedName()
{
    const qsizetype begin = m_position++;
    for (; m_position < m_text.size(); ++m_position) {
        const char16_t c = m_text[m_position].unicode();
        if (c == u']' && m_position > begin + 1) {
            ++m_position;
            return {TokenKind::BracketedName, 0, begin, m_position, false};
        }
        if (c < u' ' || c == u'[' || c == u']') {
            break;
        }
    }
    throw syntaxError(u"un nombre entre corchetes", m_text, begin);
}

Token Scanner::dateLiteral()
{
    const qsizetype begin = m_position;
    const qsizetype close = m_text.indexOf(u'#', begin + 1);
    if (close < 0) {
        throw syntaxError(u"una fecha entre signos #", m_text, begin);
    }
    m_position = close + 1;
    return {TokenKind::Date, 0, begin, m_position, false};
}

Token Scanner::number()
{
    const qsizetype begin = m_position;
    const auto digits = [this] {
        while (m_position < m_text.size() && isAsciiDigit(m_text[m_position].unicode())) {
            ++m_position;
        }
    };
    digits();
    if (m_position > begin + 1 && m_text[begin] == u'0') {
        throw syntaxError(u"un número (los nombres de campo con cifras van entre corchetes)", m_text, begin);
    }
    if (m_position < m_text.size() && m_text[m_position] == u'.') {
        ++m_position;
        digits();
    }
    if (m_position < m_text.size() && (m_text[m_position] == u'e' || m_text[m_position] == u'E')) {
        qsizetype exponent = m_position + 1;
        if (exponent < m_text.size() && (m_text[exponent] == u'+' || m_text[exponent] == u'-')) {
            ++exponent;
        }
        if (exponent < m_text.size() && isAsciiDigit(m_text[exponent].unicode())) {
            m_position = exponent;
            digits();
        }
    }
    if (m_position < m_text.size() && isWordPart(m_text[m_position].unicode())) {
        throw syntaxError(u"un número", m_text, begin);
    }
    return {TokenKind::Number, 0, begin, m_position, false};
}

Token Scanner::symbol()
{
    const qsizetype begin = m_position;
    const char16_t c = m_text[begin].unicode();
    const char16_t following = begin + 1 < m_text.size() ? m_text[begin + 1].unicode() : u'\0';
    char16_t pair = 0;
    if (c == u'<' && following == u'=') {
        pair = symbolLessEqual;
    } else if (c == u'>' && following == u'=') {
        pair = symbolGreaterEqual;
    } else if (c == u'<' && following == u'>') {
        pair = symbolNotEqual;
    }
    if (pair != 0) {
        m_position += 2;
        return {TokenKind::Symbol, pair, begin, m_position, false};
    }
    if ((c == u'-' && following == u'-') || (c == u'/' && following == u'*')) {
        throw syntaxError(wholeStatement, m_text, begin); // the dialect has no comments
    }
    ++m_position;
    return {TokenKind::Symbol, c, begin, m_position, false};
}

Literal literalOf(QStringView statement, const Token& token)
{
    if (token.kind == TokenKind::Number) {
        return {token.kind, statement.mid(token.begin, token.end - token.begin), false, 0};
    }
    return {token.kind, statement.mid(token.begin + 1, token.end - token.begin - 2), token.doubled, token.symbol};
}

void liftLiterals(QStringView statement, QString& shape, Literals& literals)
{
    // A literal is at least as long as its mark, so the shape is no longer than the statement.
    shape.resize(statement.size());
    QChar* const out = shape.data();
    qsizetype written = 0;
    qsizetype copied = 0;
    const auto copyUpTo = [&](qsizetype end) {
        std::copy(statement.begin() + copied, statement.begin() + end, out + written);
        written += end - copied;
    };
    literals.clear();
    Scanner scanner(statement);
    for (Token token = scanner.next(); token.kind != TokenKind::End; token = scanner.next()) {
        QChar mark;
        switch (token.kind) {
        case TokenKind::Text:
            mark = textMark;
            break;
        case TokenKind::Number:
            mark = numberMark;
            break;
        case TokenKind::Date:
            mark = dateMark;
            break;
        default:
            continue;
        }
        copyUpTo(token.begin);
        out[written++] = mark;
        copied = token.end;
        literals.append(literalOf(statement, token));
    }
    copyUpTo(statement.size());
    shape.truncate(written);
}

bool literalsOfShape(QStringView statement, QStringView shape, Literals& literals)
{
    // Between the literals the statement must be the shape to the letter. The literals start where those of the first
    // statement of the shape started, so each is cut as it would be when reading from the start.
    literals.clear();
    qsizetype at = 0;
    qsizetype copied = 0;
    const auto sameText = [&](qsizetype end) {
        const qsizetype length = end - copied;
        const bool same = statement.mid(at, length) == shape.mid(copied, length);
        at += length;
        copied = end + 1;
        return same;
    };
    for (qsizetype i = 0; i < shape.size(); ++i) {
        const QChar mark = shape[i];
        if (mark > dateMark || mark < textMark) {
            continue;
        }
        if (!sameText(i) || at >= statement.size()) {
            return false;
        }
        const char16_t first = statement[at].unicode();
        const bool fits = mark == textMark   ? first == u'\'' || first == u'"'
                          : mark == dateMark ? first == u'#'
                                             : first == u'.' || isAsciiDigit(first);
        if (!fits) {
            return false;
        }
        Token token;
        try {
            token = Scanner(statement, at).next();
        } catch (const RuntimeError&) {
            return false; // whoever reads it from the start says what is wrong
        }
        literals.append(literalOf(statement, token));
        at = token.end;
    }
    return sameText(shape.size()) && at == statement.size();
}

} // namespace oVELDRA::dialect
