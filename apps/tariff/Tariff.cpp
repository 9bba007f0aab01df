#include "Tariff.h"

#include "CsvReader.h"

#include <QFile>
#include <QStringList>

#include <algorithm>
#include <array>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tariff {

namespace {

const QStringList& expectHeader(const std::optional<QStringList>& row, const QStringList& header)
{
    if (!row || *row != header) {
        throw std::runtime_error("the tariff file does not begin with " + header.join(u',').toStdString());
    }
    return header;
}

QStringList expectCells(QStringList row, qsizetype count)
{
    if (row.size() != count) {
        throw std::runtime_error("a row of the tariff file has a wrong number of cells: " +
                                 row.join(u',').toStdString());
    }
    return row;
}

QString resourceText(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("the tariff is not built into the program: " + path.toStdString());
    }
    return QString::fromUtf8(file.readAll());
}

} // namespace

QString TariffPosition::joined() const
{
    return subheading + u'.' + opening + control;
}

Tariff::Tariff(QStringView positionsCsv, QStringView suffixesCsv)
{
    CsvReader positions(positionsCsv);
    const qsizetype width = expectHeader(positions.next(), u"001,002,003,004,010,012,019,020,059"_s.split(u',')).size();
    while (auto row = positions.next()) {
        const QStringList cells = expectCells(*std::move(row), width);
        m_positions.push_back(
            {cells[0], cells[1], cells[2], cells[3], cells[4], cells[5], cells[6], cells[7], cells[8]});
    }
    CsvReader suffixes(suffixesCsv);
    const qsizetype suffixWidth = expectHeader(suffixes.next(), u"sim,sufijo,detalle"_s.split(u',')).size();
    while (auto row = suffixes.next()) {
        const QStringList cells = expectCells(*std::move(row), suffixWidth);
        m_suffixes.push_back({cells[0], cells[1], cells[2]});
    }
}

Tariff Tariff::builtIn()
{
    return {resourceText(u":/tariff/ncm.csv"_s), resourceText(u":/tariff/sufidos.csv"_s)};
}

const TariffPosition& Tariff::first(QStringView prefix) const
{
    const auto found = std::lower_bound(
        m_positions.begin(), m_positions.end(), prefix,
        [](const TariffPosition& position, QStringView text) { return QStringView(position.joined()) < text; });
    if (found == m_positions.end() || !found->joined().startsWith(prefix)) {
        throw std::out_of_range("no tariff position begins with " + prefix.toString().toStdString());
    }
    return *found;
}

QString Tariff::sampleSuffixes(const TariffPosition& position) const
{
    const QString full = position.joined().left(14);
    const std::array<QString, 4> selectors{full.left(2) + u"  .  .  .   "_s, full.left(4) + u".  .  .   "_s,
                                           full.left(7) + u".  .   "_s, full};
    QStringList entries;
    QStringList groups;
    for (const TariffSuffix& rule : m_suffixes) {
        const QString group = rule.suffix.left(2);
        if (groups.contains(group) || std::find(selectors.begin(), selectors.end(), rule.selector) == selectors.end()) {
            continue;
        }
        groups.append(group);
        if (rule.suffix.size() > 2) {
            entries.append(rule.suffix);
        } else if (group.startsWith(u'Z')) {
            entries.append(group + u"(000150)"_s);
        } else {
            entries.append(group + u"(MUESTRA)"_s);
        }
    }
    return entries.isEmpty() ? u"SIN SUFIJOS"_s : entries.join(u'-') + u'-';
}

} // namespace tariff
