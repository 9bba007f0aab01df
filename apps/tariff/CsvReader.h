#pragma once

#include <QStringList>
#include <QStringView>

#include <optional>

namespace tariff {

/// Reads comma-separated text row by row. A cell may stand in quotes; then it may hold commas, line ends and doubled
/// quotes. Lines end in LF or CR LF; empty lines are passed over.
class CsvReader
{
public:
    /// The text is not copied and must outlive the reader.
    explicit CsvReader(QStringView text);

    /// The next row, or nothing after the last one.
    [[nodiscard]] std::optional<QStringList> next();

private:
    [[nodiscard]] QString quotedCell();
    [[nodiscard]] QString plainCell();
    [[nodiscard]] bool atLineEnd() const;

    QStringView m_text;
    qsizetype m_at = 0;
};

} // namespace tariff
