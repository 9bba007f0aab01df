#include "JetPrinter.h"

#include <utility>

namespace oVELDRA::dialect {

using namespace Qt::StringLiterals;

namespace {

QStringView operatorText(ExprKind kind)
{
    switch (kind) {
    case ExprKind::And:
        return u" and ";
    case ExprKind::Or:
        return u" or ";
    case ExprKind::Add:
        return u" + ";
    case ExprKind::Subtract:
        return u" - ";
    case ExprKind::Multiply:
        return u" * ";
    case ExprKind::Divide:
        return u" / ";
    case ExprKind::Concatenate:
        return u" & ";
    case ExprKind::Equal:
        return u" = ";
    case ExprKind::NotEqual:
        return u" <> ";
    case ExprKind::Less:
        return u" < ";
    case ExprKind::LessEqual:
        return u" <= ";
    case ExprKind::Greater:
        return u" > ";
    case ExprKind::GreaterEqual:
        return u" >= ";
    default:
        return u" like ";
    }
}

QString bracketed(const QString& name)
{
    return u'[' + name + u']';
}

class Writer
{
public:
    explicit Writer(const Literals& literals) : m_literals(literals) {}

    QString operator()(const Select& select) const
    {
        QString result = select.distinct ? u"select distinct "_s : u"select "_s;
        QStringView separator;
        for (const SelectItem& item : select.items) {
            result += separator;
            separator = u", ";
            result += item.expr ? written(*item.expr) : u"*"_s;
            if (!item.alias.isEmpty()) {
                result += u" as " + bracketed(item.alias);
            }
        }
        result += u" from " + bracketed(select.table) + where(select.where);
        separator = u" order by ";
        for (const OrderItem& item : select.order) {
            result += separator;
            separator = u", ";
            result += written(*item.expr) + (item.descending ? u" desc"_s : QString());
        }
        return result;
    }

    QString operator()(const Insert& insert) const
    {
        QString columns;
        for (const QString& column : insert.columns) {
            columns += (columns.isEmpty() ? u""_s : u", "_s) + bracketed(column);
        }
        return u"insert into " + bracketed(insert.table) + u" (" + columns + u") values (" + list(insert.values, 0) +
               u')';
    }

    QString operator()(const Update& update) const
    {
        QString result = u"update " + bracketed(update.table);
        QStringView separator = u" set ";
        for (const Assignment& assignment : update.assignments) {
            result += separator;
            separator = u", ";
            result += bracketed(assignment.column) + u" = " + written(*assignment.value);
        }
        return result + where(update.where);
    }

    QString operator()(const Delete& remove) const
    {
        return u"delete from " + bracketed(remove.table) + where(remove.where);
    }

private:
    [[nodiscard]] QString where(const ExprPtr& condition) const
    {
        return condition ? u" where " + written(*condition) : QString();
    }

    [[nodiscard]] QString list(const std::vector<ExprPtr>& items, size_t from) const
    {
        QString result;
        for (size_t i = from; i < items.size(); ++i) {
            result += (i > from ? u", "_s : QString()) + written(*items[i]);
        }
        return result;
    }

    /// Every operation in brackets of its own, so that no rule of precedence is needed to read it back.
    [[nodiscard]] QString written(const Expr& expr) const
    {
        switch (expr.kind) {
        case ExprKind::Literal:
            return literal(m_literals[expr.literal]);
        case ExprKind::True:
            return u"True"_s;
        case ExprKind::False:
            return u"False"_s;
        case ExprKind::Null:
            return u"Null"_s;
        case ExprKind::Star:
            return u"*"_s;
        case ExprKind::Column:
            return bracketed(expr.name);
        case ExprKind::Function:
            return expr.name + u'(' + list(expr.args, 0) + u')';
        case ExprKind::Not:
            return u"(not " + written(*expr.args[0]) + u')';
        case ExprKind::Negate:
            return u"(- " + written(*expr.args[0]) + u')';
        case ExprKind::IsNull:
            return u'(' + written(*expr.args[0]) + (expr.negated ? u" is not null)"_s : u" is null)"_s);
        case ExprKind::In:
            return u'(' + written(*expr.args[0]) + negation(expr) + u" in (" + list(expr.args, 1) + u"))";
        case ExprKind::Between:
            return u'(' + written(*expr.args[0]) + negation(expr) + u" between " + written(*expr.args[1]) + u" and " +
                   written(*expr.args[2]) + u')';
        default:
            return run(expr);
        }
    }

    [[nodiscard]] static QString negation(const Expr& expr) { return expr.negated ? u" not"_s : QString(); }

    [[nodiscard]] QString run(const Expr& expr) const
    {
        QString result = u'(' + written(*expr.args[0]);
        for (size_t i = 1; i < expr.args.size(); ++i) {
            result += negation(expr) + operatorText(expr.kind) + written(*expr.args[i]);
        }
        return result + u')';
    }

    static QString literal(const Literal& literal)
    {
        if (literal.kind == TokenKind::Number) {
            return literal.raw.toString();
        }
        if (literal.kind == TokenKind::Date) {
            return u'#' + literal.raw.toString() + u'#';
        }
        return u'\'' + literal.text().replace(u'\'', u"''"_s) + u'\'';
    }

    const Literals& m_literals;
};

} // namespace

QString printJet(const ParsedStatement& parsed)
{
    return std::visit(Writer(parsed.literals), parsed.statement);
}

} // namespace oVELDRA::dialect
