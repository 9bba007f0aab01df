#include "Ast.h"

#include <algorithm>

namespace oVELDRA::dialect {

namespace {

bool sameName(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

/// Compares trees below two statements; it knows both sets of literals.
class TreeComparison
{
public:
    TreeComparison(const Literals& a, const Literals& b) : m_a(a), m_b(b) {}

    [[nodiscard]] bool same(const ExprPtr& a, const ExprPtr& b) const
    {
        if (!a || !b) {
            return !a && !b;
        }
        if (a->kind != b->kind || a->negated != b->negated || !sameName(a->name, b->name) ||
            a->args.size() != b->args.size()) {
            return false;
        }
        if (a->kind == ExprKind::Literal) {
            const Literal& left = m_a[a->literal];
            const Literal& right = m_b[b->literal];
            return left.kind == right.kind && left.text() == right.text();
        }
        return std::equal(a->args.begin(), a->args.end(), b->args.begin(),
                          [this](const ExprPtr& x, const ExprPtr& y) { return same(x, y); });
    }

    [[nodiscard]] bool same(const Select& a, const Select& b) const
    {
        return a.distinct == b.distinct && sameName(a.table, b.table) && same(a.where, b.where) &&
               std::equal(a.items.begin(), a.items.end(), b.items.begin(), b.items.end(),
                          [this](const SelectItem& x, const SelectItem& y) {
                              return sameName(x.alias, y.alias) && same(x.expr, y.expr);
                          }) &&
               std::equal(a.order.begin(), a.order.end(), b.order.begin(), b.order.end(),
                          [this](const OrderItem& x, const OrderItem& y) {
                              return x.descending == y.descending && same(x.expr, y.expr);
                          });
    }

    [[nodiscard]] bool same(const Insert& a, const Insert& b) const
    {
        return sameName(a.table, b.table) &&
               std::equal(a.columns.begin(), a.columns.end(), b.columns.begin(), b.columns.end(), sameName) &&
               std::equal(a.values.begin(), a.values.end(), b.values.begin(), b.values.end(),
                          [this](const ExprPtr& x, const ExprPtr& y) { return same(x, y); });
    }

    [[nodiscard]] bool same(const Update& a, const Update& b) const
    {
        return sameName(a.table, b.table) && same(a.where, b.where) &&
               std::equal(a.assignments.begin(), a.assignments.end(), b.assignments.begin(), b.assignments.end(),
                          [this](const Assignment& x, const Assignment& y) {
                              return sameName(x.column, y.column) && same(x.value, y.value);
                          });
    }

    [[nodiscard]] bool same(const Delete& a, const Delete& b) const
    {
        return sameName(a.table, b.table) && same(a.where, b.where);
    }

private:
    const Literals& m_a;
    const Literals& m_b;
};

} // namespace

bool sameTree(const ParsedStatement& a, const ParsedStatement& b)
{
    if (a.statement.index() != b.statement.index()) {
        return false;
    }
    const TreeComparison comparison(a.literals, b.literals);
    return std::visit(
        [&](const auto& left) { return comparison.same(left, std::get<std::decay_t<decltype(left)>>(b.statement)); },
        a.statement);
}

} // namespace oVELDRA::dialect
