#include "Parser.h"

#include "Functions.h"
#include "StatementError.h"

#include <algorithm>
#include <array>

namespace oVELDRA::dialect {

using namespace Qt::StringLiterals;

namespace {

// Expressions nest this deep at most, so that walking a tree never runs out of stack; real statements need a handful.
constexpr int deepestExpression = 200;
// Reading one level of brackets passes three of the functions that count: expression, not, sign.
constexpr int deepestReading = 3 * deepestExpression + 10;
// Engines number their parameters; the smallest limit among them is 32,766.
constexpr qsizetype mostLiterals = 30000;

constexpr std::array reservedWords = {
    QStringView(u"select"), QStringView(u"distinct"), QStringView(u"from"),    QStringView(u"where"),
    QStringView(u"order"),  QStringView(u"by"),       QStringView(u"asc"),     QStringView(u"desc"),
    QStringView(u"insert"), QStringView(u"into"),     QStringView(u"values"),  QStringView(u"update"),
    QStringView(u"set"),    QStringView(u"delete"),   QStringView(u"and"),     QStringView(u"or"),
    QStringView(u"not"),    QStringView(u"in"),       QStringView(u"between"), QStringView(u"like"),
    QStringView(u"is"),     QStringView(u"null"),     QStringView(u"true"),    QStringView(u"false"),
    QStringView(u"as")};

ExprPtr makeExpr(ExprKind kind)
{
    auto expr = std::make_unique<Expr>();
    expr->kind = kind;
    return expr;
}

class Parser
{
public:
    explicit Parser(QStringView text) : m_scanner(text) { advance(); }

    ParsedStatement statement()
    {
        ParsedStatement result;
        if (takeWord(u"select")) {
            result.statement = select();
        } else if (takeWord(u"insert")) {
            result.statement = insert();
        } else if (takeWord(u"update")) {
            result.statement = update();
        } else if (takeWord(u"delete")) {
            result.statement = remove();
        } else {
            fail();
        }
        if (m_token.kind != TokenKind::End) {
            fail();
        }
        result.literals = std::move(m_literals);
        return result;
    }

private:
    /// Counts how deep the expression being read nests.
    class Nesting
    {
    public:
        explicit Nesting(Parser& parser) : m_parser(parser)
        {
            if (++m_parser.m_depth > deepestReading) {
                throw syntaxReason(m_parser.m_place, u"la expresión es demasiado compleja"_s);
            }
        }
        ~Nesting() { --m_parser.m_depth; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

    private:
        Parser& m_parser;
    };

    [[noreturn]] void fail() const { throw syntaxError(m_place, m_scanner.text(), m_token.begin); }

    void advance() { m_token = m_scanner.next(); }

    void adopt(Expr& parent, ExprPtr child) const
    {
        parent.depth = std::max(parent.depth, child->depth + 1);
        if (parent.depth > deepestExpression) {
            throw syntaxReason(m_place, u"la expresión es demasiado compleja"_s);
        }
        parent.args.push_back(std::move(child));
    }

    [[nodiscard]] ExprPtr makeNode(ExprKind kind, ExprPtr first, ExprPtr second = nullptr) const
    {
        ExprPtr expr = makeExpr(kind);
        adopt(*expr, std::move(first));
        if (second) {
            adopt(*expr, std::move(second));
        }
        return expr;
    }

    [[nodiscard]] QStringView tokenText() const
    {
        return m_scanner.text().mid(m_token.begin, m_token.end - m_token.begin);
    }

    [[nodiscard]] bool atWord(QStringView word) const
    {
        return m_token.kind == TokenKind::Word && tokenText().compare(word, Qt::CaseInsensitive) == 0;
    }

    bool takeWord(QStringView word)
    {
        if (!atWord(word)) {
            return false;
        }
        advance();
        return true;
    }

    void expectWord(QStringView word)
    {
        if (!takeWord(word)) {
            fail();
        }
    }

    [[nodiscard]] bool atSymbol(char16_t symbol) const
    {
        return m_token.kind == TokenKind::Symbol && m_token.symbol == symbol;
    }

    bool takeSymbol(char16_t symbol)
    {
        if (!atSymbol(symbol)) {
            return false;
        }
        advance();
        return true;
    }

    void expectSymbol(char16_t symbol)
    {
        if (!takeSymbol(symbol)) {
            fail();
        }
    }

    [[nodiscard]] bool atReservedWord() const
    {
        return m_token.kind == TokenKind::Word && std::any_of(reservedWords.begin(), reservedWords.end(),
                                                              [this](QStringView word) { return atWord(word); });
    }

    QString name()
    {
        QString result;
        if (m_token.kind == TokenKind::BracketedName) {
            result = tokenText().mid(1, tokenText().size() - 2).toString();
        } else if (m_token.kind == TokenKind::Word && !atReservedWord()) {
            result = tokenText().toString();
        } else {
            fail();
        }
        advance();
        return result;
    }

    Select select()
    {
        Select result;
        m_place = u"la instrucción SELECT";
        result.distinct = takeWord(u"distinct");
        do {
            result.items.push_back(selectItem());
        } while (takeSymbol(u','));
        m_place = u"la cláusula FROM";
        expectWord(u"from");
        result.table = name();
        result.where = whereClause();
        if (takeWord(u"order")) {
            m_place = u"la cláusula ORDER BY";
            expectWord(u"by");
            do {
                OrderItem item;
                item.expr = expression();
                item.descending = takeWord(u"desc");
                if (!item.descending) {
                    takeWord(u"asc");
                }
                result.order.push_back(std::move(item));
            } while (takeSymbol(u','));
        }
        return result;
    }

    SelectItem selectItem()
    {
        SelectItem item;
        if (takeSymbol(u'*')) {
            return item;
        }
        item.expr = expression();
        if (takeWord(u"as")) {
            item.alias = name();
        }
        return item;
    }

    ExprPtr whereClause()
    {
        if (!takeWord(u"where")) {
            return nullptr;
        }
        m_place = u"la cláusula WHERE";
        return expression();
    }

    Insert insert()
    {
        Insert result;
        m_place = u"la instrucción INSERT INTO";
        expectWord(u"into");
        result.table = name();
        expectSymbol(u'(');
        do {
            result.columns.push_back(name());
        } while (takeSymbol(u','));
        expectSymbol(u')');
        m_place = u"la cláusula VALUES";
        expectWord(u"values");
        expectSymbol(u'(');
        do {
            result.values.push_back(expression());
        } while (takeSymbol(u','));
        expectSymbol(u')');
        if (result.values.size() != result.columns.size()) {
            throw syntaxReason(m_place, u"el número de valores (%1) y el de campos de destino (%2) no coinciden"_s
                                            .arg(result.values.size())
                                            .arg(result.columns.size()));
        }
        return result;
    }

    Update update()
    {
        Update result;
        m_place = u"la instrucción UPDATE";
        result.table = name();
        expectWord(u"set");
        do {
            Assignment assignment;
            assignment.column = name();
            expectSymbol(u'=');
            assignment.value = expression();
            result.assignments.push_back(std::move(assignment));
        } while (takeSymbol(u','));
        result.where = whereClause();
        return result;
    }

    Delete remove()
    {
        Delete result;
        m_place = u"la instrucción DELETE";
        expectWord(u"from");
        result.table = name();
        result.where = whereClause();
        return result;
    }

    // One function per level of precedence, weakest first: or, and, not, comparisons, &, + and -, * and /, sign.
    ExprPtr expression()
    {
        const Nesting nesting(*this);
        return chain(u"or", ExprKind::Or, &Parser::conjunction);
    }

    ExprPtr conjunction() { return chain(u"and", ExprKind::And, &Parser::negation); }

    /// A run of one word's operands as a single node, however long, so that long conditions stay flat.
    ExprPtr chain(QStringView word, ExprKind kind, ExprPtr (Parser::*operand)())
    {
        ExprPtr first = (this->*operand)();
        if (!atWord(word)) {
            return first;
        }
        ExprPtr result = makeNode(kind, std::move(first));
        while (takeWord(word)) {
            adopt(*result, (this->*operand)());
        }
        return result;
    }

    ExprPtr negation()
    {
        const Nesting nesting(*this);
        if (takeWord(u"not")) {
            return makeNode(ExprKind::Not, negation());
        }
        return comparison();
    }

    ExprPtr comparison()
    {
        ExprPtr left = concatenation();
        while (ExprPtr tested = testOf(left)) {
            left = std::move(tested);
        }
        return left;
    }

    /// The comparison that follows an operand, or null when none does; takes the operand only then.
    ExprPtr testOf(ExprPtr& left)
    {
        if (m_token.kind == TokenKind::Symbol) {
            static constexpr std::array<std::pair<char16_t, ExprKind>, 6> symbols = {
                {{u'=', ExprKind::Equal},
                 {symbolNotEqual, ExprKind::NotEqual},
                 {u'<', ExprKind::Less},
                 {symbolLessEqual, ExprKind::LessEqual},
                 {u'>', ExprKind::Greater},
                 {symbolGreaterEqual, ExprKind::GreaterEqual}}};
            for (const auto& [symbol, kind] : symbols) {
                if (takeSymbol(symbol)) {
                    return makeNode(kind, std::move(left), concatenation());
                }
            }
            return nullptr;
        }
        if (takeWord(u"is")) {
            const bool negated = takeWord(u"not");
            expectWord(u"null");
            ExprPtr result = makeNode(ExprKind::IsNull, std::move(left));
            result->negated = negated;
            return result;
        }
        const bool negated = takeWord(u"not");
        ExprPtr result;
        if (takeWord(u"like")) {
            result = makeNode(ExprKind::Like, std::move(left), concatenation());
        } else if (takeWord(u"between")) {
            result = makeNode(ExprKind::Between, std::move(left), concatenation());
            expectWord(u"and");
            adopt(*result, concatenation());
        } else if (takeWord(u"in")) {
            result = makeNode(ExprKind::In, std::move(left));
            expectSymbol(u'(');
            do {
                adopt(*result, concatenation());
            } while (takeSymbol(u','));
            expectSymbol(u')');
        } else if (negated) {
            fail();
        }
        if (result) {
            result->negated = negated;
        }
        return result;
    }

    using Operators = std::initializer_list<std::pair<char16_t, ExprKind>>;

    /// A run of binary operators of one level, read from left to right.
    ExprPtr binaryRun(Operators operators, ExprPtr (Parser::*operand)())
    {
        ExprPtr left = (this->*operand)();
        while (true) {
            const auto* const found = std::find_if(operators.begin(), operators.end(),
                                                   [this](const auto& entry) { return atSymbol(entry.first); });
            if (found == operators.end()) {
                return left;
            }
            advance();
            left = makeNode(found->second, std::move(left), (this->*operand)());
        }
    }

    ExprPtr concatenation() { return binaryRun({{u'&', ExprKind::Concatenate}}, &Parser::sum); }

    ExprPtr sum() { return binaryRun({{u'+', ExprKind::Add}, {u'-', ExprKind::Subtract}}, &Parser::product); }

    ExprPtr product() { return binaryRun({{u'*', ExprKind::Multiply}, {u'/', ExprKind::Divide}}, &Parser::sign); }

    ExprPtr sign()
    {
        const Nesting nesting(*this);
        if (takeSymbol(u'-')) {
            return makeNode(ExprKind::Negate, sign());
        }
        if (takeSymbol(u'+')) {
            return sign();
        }
        return primary();
    }

    ExprPtr primary()
    {
        switch (m_token.kind) {
        case TokenKind::Text:
        case TokenKind::Number:
        case TokenKind::Date:
            return literal();
        case TokenKind::BracketedName: {
            ExprPtr column = makeExpr(ExprKind::Column);
            column->bracketed = true;
            column->name = name();
            return column;
        }
        case TokenKind::Symbol: {
            expectSymbol(u'(');
            ExprPtr inner = expression();
            expectSymbol(u')');
            return inner;
        }
        case TokenKind::Word:
            return wordOperand();
        case TokenKind::End:
            break;
        }
        fail();
    }

    ExprPtr literal()
    {
        if (m_literals.size() == mostLiterals) {
            throw syntaxReason(m_place, u"la instrucción tiene demasiados valores"_s);
        }
        ExprPtr result = makeExpr(ExprKind::Literal);
        result->literal = static_cast<int>(m_literals.size());
        m_literals.append(literalOf(m_scanner.text(), m_token));
        advance();
        return result;
    }

    ExprPtr wordOperand()
    {
        if (takeWord(u"null")) {
            return makeExpr(ExprKind::Null);
        }
        if (takeWord(u"true")) {
            return makeExpr(ExprKind::True);
        }
        if (takeWord(u"false")) {
            return makeExpr(ExprKind::False);
        }
        const Token token = m_token;
        ExprPtr result = makeExpr(ExprKind::Column);
        result->name = name();
        if (!takeSymbol(u'(')) {
            return result;
        }
        result->kind = ExprKind::Function;
        result->function = findFunction(result->name);
        if (result->function < 0) {
            throw syntaxError(m_place, m_scanner.text(), token.begin);
        }
        const Function& function = functionTable()[static_cast<size_t>(result->function)];
        if (function.id == FunctionId::Count && takeSymbol(u'*')) {
            adopt(*result, makeExpr(ExprKind::Star));
        } else {
            do {
                adopt(*result, expression());
            } while (takeSymbol(u','));
        }
        expectSymbol(u')');
        const auto count = static_cast<int>(result->args.size());
        if (count < function.fewestArguments || count > function.mostArguments) {
            throw syntaxReason(m_place, u"número de argumentos equivocado en la función '%1'"_s.arg(result->name));
        }
        return result;
    }

    Scanner m_scanner;
    Token m_token;
    Literals m_literals;
    QStringView m_place = u"la instrucción";
    int m_depth = 0;
};

} // namespace

ParsedStatement parse(QStringView text)
{
    return Parser(text).statement();
}

} // namespace oVELDRA::dialect
