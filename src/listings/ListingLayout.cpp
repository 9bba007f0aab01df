#include "ListingLayout.h"

#include <core/Module1.h>
#include <runtime/Numbers.h>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace oVELDRA::listings {

namespace {

struct Column
{
    QStringView title;
    int width;
    int wideWidth;
    bool left; ///< its texts stand to the left
};

constexpr std::array columns{
    Column{u"EXPO", 16, 16, true},     Column{u"Insumo", 20, 20, true},        Column{u"Rel Ins-Prod", 12, 15, false},
    Column{u"Conv Unid", 9, 9, false}, Column{u"Cant Ins", 9, 15, false},      Column{u"Perdida", 13, 16, false},
    Column{u"Merma", 13, 16, false},   Column{u"CIF Unitario", 12, 12, false}, Column{u"CIF Total", 12, 12, false},
    Column{u"Factura", 10, 10, false},
};

using Cells = std::array<QString, columns.size()>;

int widthOf(const Column& column, bool wide)
{
    return wide ? column.wideWidth : column.width;
}

QString lineOf(const Cells& cells, bool wide)
{
    qsizetype width = 1; // of the line's end; a cell and the character behind it each
    for (const Column& column : columns) {
        width += widthOf(column, wide) + 1;
    }
    QString line(width, u' ');
    auto* next = line.begin();
    for (size_t i = 0; i < columns.size(); ++i) {
        const QString cell = core::FormatoCampo(cells[i], columns[i].left, widthOf(columns[i], wide));
        next = std::copy(cell.begin(), cell.end(), next) + 1;
    }
    *(next - 1) = u'\r';
    *next = u'\n';
    return line;
}

} // namespace

QString ListingLayout::titleLine() const
{
    Cells titles;
    for (size_t i = 0; i < columns.size(); ++i) {
        titles[i] = columns[i].title.toString();
    }
    return lineOf(titles, wide);
}

QString ListingLayout::ruleLine() const
{
    QString line;
    for (const Column& column : columns) {
        line += QString(widthOf(column, wide), u'-') + u' ';
    }
    return line;
}

QString ListingLayout::line(const DischargeLine& discharge) const
{
    const auto separators = runtime::Separators::current();
    const auto number = [&separators](double value, QStringView mask) {
        return runtime::Format(value, mask, separators);
    };
    return lineOf({discharge.exportNumber, discharge.input, number(discharge.relation, quantityFormat),
                   number(discharge.conversion, u"00.00"),
                   runtime::Format(QVariant(discharge.quantity), quantityFormat, separators),
                   number(discharge.loss, lossFormat), number(discharge.waste, lossFormat),
                   number(discharge.cifUnit, u"00.000000"), number(discharge.cifTotal, u"00.00"), discharge.invoice},
                  wide);
}

} // namespace oVELDRA::listings
