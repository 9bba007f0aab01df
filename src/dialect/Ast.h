#pragma once

#include <dialect/Lexer.h>

#include <QString>

#include <memory>
#include <variant>
#include <vector>

namespace oVELDRA::dialect {

enum class ExprKind : quint8 {
    Literal, ///< literal()
    True,
    False,
    Null,
    Column,   ///< name
    Star,     ///< the `*` of count(*)
    Function, ///< name, args
    Not,
    And, ///< two or more args
    Or,  ///< two or more args
    Negate,
    Add,
    Subtract,
    Multiply,
    Divide,
    Concatenate,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Like,    ///< args[0] like args[1]; negated
    In,      ///< args[0] in (args[1] …); negated
    Between, ///< args[0] between args[1] and args[2]; negated
    IsNull   ///< args[0] is null; negated
};

/// What an expression gives; Any when only the row can tell.
enum class ValueType : quint8 { Null, Text, Number, Boolean, Date, Any };

struct Expr;
using ExprPtr = std::unique_ptr<Expr>;

/// A node of an expression. The fields behind `args` are filled in by the resolver.
struct Expr
{
    ExprKind kind = ExprKind::Null;
    bool negated = false;   ///< not like, not in, not between, is not null
    bool bracketed = false; ///< a column written in brackets
    int depth = 1;          ///< height of the tree below, this node included
    int literal = -1;       ///< index into the statement's literals
    QString name;           ///< of a column or function, as written
    std::vector<ExprPtr> args;

    ValueType type = ValueType::Any;
    int column = -1;         ///< index into the table's columns
    int function = -1;       ///< index into the function table
    bool constant = false;   ///< no column below
    bool aggregate = false;  ///< an aggregate function
    bool aggregated = false; ///< this or something below is an aggregate
};

struct SelectItem
{
    ExprPtr expr; ///< null for `*`
    QString alias;
};

struct OrderItem
{
    ExprPtr expr;
    bool descending = false;
};

struct Select
{
    bool distinct = false;
    std::vector<SelectItem> items;
    QString table;
    ExprPtr where;
    std::vector<OrderItem> order;
};

struct Insert
{
    QString table;
    std::vector<QString> columns;
    std::vector<ExprPtr> values;
};

struct Assignment
{
    QString column;
    ExprPtr value;
};

struct Update
{
    QString table;
    std::vector<Assignment> assignments;
    ExprPtr where;
};

struct Delete
{
    QString table;
    ExprPtr where;
};

using Statement = std::variant<Select, Insert, Update, Delete>;

/// A statement with the literals that its tree refers to. The literals are views into the text that was parsed.
struct ParsedStatement
{
    Statement statement;
    Literals literals;
};

/// Whether two statements are the same tree with the same literal values (names without regard to case).
[[nodiscard]] bool sameTree(const ParsedStatement& a, const ParsedStatement& b);

} // namespace oVELDRA::dialect
