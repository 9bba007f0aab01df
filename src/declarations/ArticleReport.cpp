#include "ArticleReport.h"

#include <runtime/Dates.h>

#include <iterator>

using namespace Qt::StringLiterals;

namespace oVELDRA::declarations {

namespace {

constexpr double millimetre = 72 / 25.4;
constexpr double sheetWidth = 210 * millimetre;
constexpr double sheetHeight = 297 * millimetre;
constexpr double margin = 36;
constexpr double printWidth = sheetWidth - 2 * margin;
constexpr double fontSize = 7.5;
constexpr double gap = 6; // between two columns

/// A column: its title, its field and its width. Numbers stand to the right.
struct Column
{
    QStringView title;
    QStringView field;
    double width;
    Qt::AlignmentFlag alignment;
};

// Together with the gaps they fill the width between the margins. A code of twenty characters fits.
constexpr Column columns[] = {
    {u"Item", u"pARTITM", 19, Qt::AlignRight},       {u"SubIt", u"pARTSBT", 22, Qt::AlignRight},
    {u"Nro Articulo", u"ARTNRO", 94, Qt::AlignLeft}, {u"Unid", u"ARTUNI", 22, Qt::AlignLeft},
    {u"Cantidad", u"pARTCAT", 52, Qt::AlignRight},   {u"Unitario", u"pARTPRE", 52, Qt::AlignRight},
    {u"Disponible", u"pARTDSC", 52, Qt::AlignRight}, {u"Disp %", u"pPROC", 30, Qt::AlignRight},
    {u"Posición", u"ARTNCM", 64, Qt::AlignLeft},     {u"Nro CTC", u"ARTCTC", 62, Qt::AlignLeft}};

constexpr double widthOfColumns()
{
    double width = (std::size(columns) - 1) * gap;
    for (const Column& column : columns) {
        width += column.width;
    }
    return width;
}
static_assert(widthOfColumns() <= printWidth);

BandDesign reportHeader()
{
    return {24, {{u"lbDIT"_s, Caption{u"DIT: "_s}, 0, printWidth, Qt::AlignLeft, 0, 11, true}}};
}

BandDesign pageHeader()
{
    BandDesign band{20, {}, {0, 15}};
    double left = 0;
    for (const Column& column : columns) {
        band.texts.push_back(
            {{}, Caption{column.title.toString()}, left, column.width, column.alignment, 3, fontSize, true});
        left += column.width + gap;
    }
    return band;
}

BandDesign detail()
{
    BandDesign band{11.5};
    double left = 0;
    for (const Column& column : columns) {
        band.texts.push_back({column.field.toString(), Field{column.field.toString()}, left, column.width,
                              column.alignment, 0, fontSize});
        left += column.width + gap;
    }
    return band;
}

BandDesign pageFooter(QDate printed)
{
    constexpr double third = printWidth / 3;
    return {20,
            {{u"lbComponente"_s, Caption{u"oVELDRA"_s}, 0, third, Qt::AlignLeft, 8, fontSize},
             {u"lbPagina"_s, PageNumber{}, third, third, Qt::AlignHCenter, 8, fontSize},
             {u"lbFecha"_s, Caption{u"Impreso el "_s + runtime::FormatDate(printed, u"dd/mm/yyyy")}, 2 * third, third,
              Qt::AlignRight, 8, fontSize}},
            {5}};
}

} // namespace

ReportDesign articleReport(QDate printed)
{
    return {{sheetWidth, sheetHeight},
            {margin, margin, margin, margin},
            {{Band::ReportHeader, reportHeader()},
             {Band::PageHeader, pageHeader()},
             {Band::Detail, detail()},
             {Band::PageFooter, pageFooter(printed)}}};
}

} // namespace oVELDRA::declarations
