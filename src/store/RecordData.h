#pragma once

#include <dialect/Value.h>

#include <QVariant>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace oVELDRA::store {

using ColumnKinds = std::vector<dialect::ColumnKind>;

/// The cells of a result, packed: sixteen bytes a cell, in blocks that never move, and texts in one UTF-8 buffer.
class RecordData
{
public:
    explicit RecordData(std::shared_ptr<const ColumnKinds> kinds);

    // Cells are added row by row, column by column; endRow() after each row.
    void addNull() { static_cast<void>(newCell()); }
    void addInteger(qint64 integer);
    void addReal(double real);
    void addText(std::string_view utf8);
    void addValue(const dialect::Value& value);
    void endRow() { ++m_rows; }

    [[nodiscard]] qsizetype rows() const { return m_rows; }
    [[nodiscard]] dialect::ColumnKind kind(size_t column) const { return (*m_kinds)[column]; }
    [[nodiscard]] size_t columnCount() const { return m_kinds->size(); }
    /// A cell in the form that Recordset::value() promises for its column's kind.
    [[nodiscard]] QVariant variant(qsizetype row, size_t column) const;
    /// A cell for expressions.
    [[nodiscard]] dialect::Value value(qsizetype row, size_t column) const;
    /// Copies a cell of another result.
    void addCell(const RecordData& other, qsizetype row, size_t column);

private:
    static constexpr size_t blockSize = 4096;

    enum class Kind : quint8 { Null, Integer, Real, Text };

    struct Cell
    {
        Kind kind = Kind::Null;
        quint32 length = 0;
        union {
            qint64 integer = 0;
            double real;
            size_t offset;
        };
    };

    [[nodiscard]] const Cell& cell(qsizetype row, size_t column) const
    {
        const size_t place = static_cast<size_t>(row) * m_kinds->size() + column;
        return m_blocks[place / blockSize][place % blockSize];
    }
    Cell& newCell();
    [[nodiscard]] std::string_view textOf(const Cell& cell) const
    {
        return {m_texts.data() + cell.offset, cell.length};
    }

    std::shared_ptr<const ColumnKinds> m_kinds;
    std::vector<std::vector<Cell>> m_blocks;
    std::string m_texts;
    qsizetype m_rows = 0;
};

/// The value of an engine's cell, given as text, for a column of that kind.
[[nodiscard]] dialect::Value valueOfText(QString text, dialect::ColumnKind kind);

/// The value of an engine's cell, given as number, for a column of that kind.
[[nodiscard]] dialect::Value valueOfNumber(double number, dialect::ColumnKind kind);

} // namespace oVELDRA::store
