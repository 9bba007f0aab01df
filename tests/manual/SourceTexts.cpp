#include "SourceTexts.h"

#include <QRegularExpression>
#include <QStringList>

#include <vector>

using namespace Qt::StringLiterals;

namespace manual {

namespace {

struct Token
{
    enum class Kind { Text, Narrow, Word, Sign };

    Kind kind = Kind::Sign;
    QString text;
    int line = 0;

    [[nodiscard]] bool isSign(QStringView sign) const { return kind == Kind::Sign && text == sign; }
};

bool isWordPart(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}

/// Cuts code into tokens. Comments and blanks are none; a character literal counts as a narrow text.
class Tokenizer
{
public:
    explicit Tokenizer(QStringView code) : m_code(code) {}

    std::vector<Token> run()
    {
        while (m_at < m_code.size()) {
            step();
        }
        return std::move(m_tokens);
    }

private:
    [[nodiscard]] bool begins(QStringView with) const { return m_code.mid(m_at).startsWith(with); }

    void step()
    {
        const QChar c = m_code.at(m_at);
        if (begins(u"//")) {
            skipTo(u"\n");
        } else if (begins(u"/*")) {
            skipTo(u"*/");
        } else if (c == u'\n') {
            ++m_line;
            ++m_at;
        } else if (c.isSpace()) {
            ++m_at;
        } else if (begins(u"u\"")) {
            ++m_at;
            readLiteral(Token::Kind::Text, u'"');
        } else if (c == u'"' || c == u'\'') {
            readLiteral(Token::Kind::Narrow, c);
        } else if (begins(u"u'")) {
            ++m_at;
            readLiteral(Token::Kind::Narrow, u'\'');
        } else if (isWordPart(c)) {
            readWord();
        } else if (begins(u"::")) {
            m_tokens.push_back({Token::Kind::Sign, u"::"_s, m_line});
            m_at += 2;
        } else {
            m_tokens.push_back({Token::Kind::Sign, QString(c), m_line});
            ++m_at;
        }
    }

    void skipTo(QStringView end)
    {
        const qsizetype found = m_code.indexOf(end, m_at);
        const qsizetype stop = found < 0 ? m_code.size() : found;
        m_line += static_cast<int>(m_code.mid(m_at, stop - m_at).count(u'\n'));
        m_at = end == u"\n" ? stop : stop + end.size();
    }

    void readWord()
    {
        const qsizetype begin = m_at;
        const bool isNumber = m_code.at(m_at).isDigit();
        while (m_at < m_code.size() && (isWordPart(m_code.at(m_at)) || (isNumber && m_code.at(m_at) == u'\''))) {
            ++m_at;
        }
        m_tokens.push_back({Token::Kind::Word, m_code.mid(begin, m_at - begin).toString(), m_line});
    }

    void readLiteral(Token::Kind kind, QChar quote)
    {
        Token token{kind, {}, m_line};
        for (++m_at; m_at < m_code.size() && m_code.at(m_at) != quote; ++m_at) {
            const bool escaped = m_code.at(m_at) == u'\\' && m_at + 1 < m_code.size();
            token.text += escaped ? meaningOf(m_code.at(++m_at)) : m_code.at(m_at);
        }
        ++m_at;
        m_tokens.push_back(std::move(token));
    }

    static QChar meaningOf(QChar escaped)
    {
        switch (escaped.unicode()) {
        case u'n':
            return u'\n';
        case u'r':
            return u'\r';
        case u't':
            return u'\t';
        default:
            return escaped;
        }
    }

    QStringView m_code;
    qsizetype m_at = 0;
    int m_line = 1;
    std::vector<Token> m_tokens;
};

/// Joins adjacent literals into one token of the first one's kind, and drops their suffixes.
std::vector<Token> joined(const std::vector<Token>& tokens)
{
    std::vector<Token> result;
    bool inText = false;
    for (const Token& token : tokens) {
        const bool isLiteral = token.kind == Token::Kind::Text || token.kind == Token::Kind::Narrow;
        if (isLiteral && inText) {
            result.back().text += token.text;
            continue;
        }
        if (inText && token.kind == Token::Kind::Word && token.text == u"_s") {
            continue;
        }
        inText = isLiteral;
        result.push_back(token);
    }
    return result;
}

bool opens(const Token& token)
{
    return token.isSign(u"(") || token.isSign(u"[") || token.isSign(u"{");
}

bool closes(const Token& token)
{
    return token.isSign(u")") || token.isSign(u"]") || token.isSign(u"}");
}

/// Puts texts together over `+`, and remembers which literals have become part of one.
class Concatenation
{
public:
    explicit Concatenation(const std::vector<Token>& tokens) : m_tokens(tokens), m_used(tokens.size(), false) {}

    /// The whole text that the literal at `begin` starts, empty when it is part of an earlier one.
    QString from(std::size_t begin)
    {
        if (m_used[begin]) {
            return {};
        }
        QString text = begin > 0 && m_tokens[begin - 1].isSign(u"+") ? FilledIn.toString() : QString();
        std::size_t at = begin;
        while (at < m_tokens.size()) {
            if (m_tokens[at].kind == Token::Kind::Text) {
                m_used[at] = true;
                text += m_tokens[at].text;
                ++at;
            } else if (!text.endsWith(FilledIn)) {
                text += FilledIn;
            }
            at = endOfOperand(at);
            if (at < m_tokens.size() && !m_tokens[at].isSign(u"+")) {
                break;
            }
            ++at;
        }
        return text;
    }

private:
    [[nodiscard]] std::size_t endOfOperand(std::size_t at) const
    {
        int depth = 0;
        for (; at < m_tokens.size(); ++at) {
            const Token& token = m_tokens[at];
            const bool ends = token.isSign(u"+") || token.isSign(u",") || token.isSign(u";") || token.isSign(u":") ||
                              token.isSign(u"?") || closes(token);
            if (depth == 0 && ends) {
                return at;
            }
            depth += opens(token) ? 1 : 0;
            depth -= closes(token) ? 1 : 0;
        }
        return at;
    }

    const std::vector<Token>& m_tokens;
    std::vector<bool> m_used;
};

} // namespace

QList<SourceText> textsOf(QStringView code)
{
    static const QRegularExpression marker(u"%[1-9]"_s);
    const std::vector<Token> tokens = joined(Tokenizer(code).run());
    Concatenation whole(tokens);
    QList<SourceText> texts;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].kind != Token::Kind::Text) {
            continue;
        }
        const QString text = whole.from(i).remove(u'\r').replace(marker, FilledIn.toString());
        for (const QString& line : text.split(u'\n')) {
            if (const QString shown = line.trimmed(); !shown.isEmpty()) {
                texts.append({shown, tokens[i].line});
            }
        }
    }
    return texts;
}

bool isForUsers(const QString& text)
{
    static const QRegularExpression words(u"\\p{L}{2}"_s);
    static const QRegularExpression oneWord(u"^\\p{Lu}\\p{Ll}+[.:]?$"_s);
    static const QRegularExpression statement(
        u"=|\\b(select|insert into|delete from|update \\p{Lu}+|where|order by|datevalue|values)\\b| (and|in) ?[(\\[ ]"_s);
    static const QRegularExpression location(u"\\[(oVELDRA|oveldra|oZENDALO|Morvesta)\\b|\\[\\]"_s);
    if (!words.match(text).hasMatch() || statement.match(text).hasMatch() || location.match(text).hasMatch()) {
        return false;
    }
    return text.contains(u' ') || oneWord.match(text).hasMatch();
}

bool isHint(const QString& text)
{
    static const QRegularExpression key(u"\\[(ESC|ENTER|INS|DEL|F[0-9]+|AV PÁG|CTRL)\\b|^INS \\["_s);
    return key.match(text).hasMatch();
}

QString captionOf(QStringView code)
{
    const std::vector<Token> tokens = joined(Tokenizer(code).run());
    // Form ( component , name , caption
    constexpr std::size_t captionBehind = 6;
    for (std::size_t i = 0; i + captionBehind < tokens.size(); ++i) {
        const bool isBase = tokens[i].kind == Token::Kind::Word && tokens[i].text == u"Form" &&
                            tokens[i + 1].isSign(u"(") && tokens[i + 3].isSign(u",") &&
                            tokens[i + 4].kind == Token::Kind::Text &&
                            tokens[i + captionBehind].kind == Token::Kind::Text;
        if (isBase) {
            return tokens[i + captionBehind].text.trimmed();
        }
    }
    return {};
}

} // namespace manual
