#pragma once

#include <dialect/Catalog.h>

#include <QString>
#include <QVariant>

#include <functional>
#include <optional>
#include <vector>

namespace oVELDRA::histories {

/// The cells of a row in the order of its table's columns, of the types that Recordset::value() gives.
using Row = std::vector<QVariant>;

/// What a statement is refused with; it leaves nothing then.
struct Refusal
{
    int number;
    int nativeNumber = 0;
};

constexpr int databaseError = -2147467259;
constexpr int typeMismatch = -2147217913;

/// A table of the model, its rows in table order.
struct ModelTable
{
    dialect::Table definition;
    std::vector<Row> rows;

    [[nodiscard]] size_t place(QStringView column) const;
    [[nodiscard]] QVariant cell(const Row& row, QStringView column) const { return row[place(column)]; }
};

using Truth = std::optional<bool>; ///< without a value: unknown, because of a Null
using RowTest = std::function<Truth(const Row&)>;

struct Write
{
    size_t place;
    std::function<QVariant(const Row&)> value;
};

/// The inputs database as plain vectors, with the rules that the store keeps on every engine: rows stay in the order
/// in which they came, a key is unique whatever its letter case and trailing blanks, and a statement that would break
/// that does nothing.
class ReferenceModel
{
public:
    ReferenceModel();

    [[nodiscard]] const std::vector<ModelTable>& tables() const { return m_tables; }
    [[nodiscard]] const ModelTable& table(QStringView name) const;
    /// The rows of a table that a condition holds for.
    [[nodiscard]] std::vector<Row> rowsOf(QStringView name, const RowTest& which) const;

    // Each works on the table of that name and answers the rows affected, or throws a Refusal.
    qint64 insert(QStringView name, Row row);
    qint64 update(QStringView name, const RowTest& which, const std::vector<Write>& writes);
    qint64 remove(QStringView name, const RowTest& which);

private:
    [[nodiscard]] ModelTable& changing(QStringView name);
    static void requireUniqueKeys(const ModelTable& table);

    std::vector<ModelTable> m_tables;
};

/// A value as a column of that kind keeps it.
[[nodiscard]] QVariant keptBy(dialect::ColumnKind kind, const QVariant& value);

/// A cell as a text that tells all values and types apart.
[[nodiscard]] QString cellText(const QVariant& cell);

/// Whether two texts are the same to the store.
[[nodiscard]] bool sameText(const QString& a, const QString& b);

/// Spanish alphabetical order of the characters that histories are written with, without regard to letter case and
/// trailing blanks: negative, 0 or positive.
[[nodiscard]] int spanishOrder(const QString& a, const QString& b);

/// The order of cells: Null first, texts in Spanish.
[[nodiscard]] int cellOrder(const QVariant& a, const QVariant& b);

/// Whether a text matches a pattern of `like`.
[[nodiscard]] bool isLike(QStringView text, QStringView pattern);

} // namespace oVELDRA::histories
