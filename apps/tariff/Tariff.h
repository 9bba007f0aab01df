#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace tariff {

/// One opening of the customs tariff. Rates are texts with a point as decimal separator, empty when unknown.
struct TariffPosition
{
    QString subheading; ///< 8471.30.12
    QString opening;    ///< 000
    QString control;    ///< one letter
    QString heading;    ///< text of the four-digit heading
    QString text;       ///< text of the opening
    QString unit;       ///< two-digit code
    QString refund;     ///< on export, %
    QString duty;       ///< on import, %
    QString remark;

    /// The position as it is written on declarations: 8471.30.12.000A.
    [[nodiscard]] QString joined() const;
};

/// One value suffix that a declared article must carry.
struct TariffSuffix
{
    QString selector; ///< 14 characters; blanks stand for digits that do not matter
    QString suffix;
    QString detail;
};

/// The customs tariff that comes with the programs (see data/README.md).
class Tariff
{
public:
    /// Reads the two files. Throws std::runtime_error when a header or a row is not as expected.
    Tariff(QStringView positionsCsv, QStringView suffixesCsv);

    /// The one that is built in.
    [[nodiscard]] static Tariff builtIn();

    /// In the order of the positions.
    [[nodiscard]] const std::vector<TariffPosition>& positions() const { return m_positions; }
    [[nodiscard]] const std::vector<TariffSuffix>& suffixes() const { return m_suffixes; }

    /// The first position whose written form begins with `prefix`. Throws std::out_of_range when there is none.
    [[nodiscard]] const TariffPosition& first(QStringView prefix) const;

    /// An entry for every suffix that applies to the position, in the form in which products keep them:
    /// "AA(…)-CA01-", or "SIN SUFIJOS".
    [[nodiscard]] QString sampleSuffixes(const TariffPosition& position) const;

private:
    std::vector<TariffPosition> m_positions;
    std::vector<TariffSuffix> m_suffixes;
};

} // namespace tariff
