#pragma once

#include <controls/ListView.h>

#include <QHeaderView>
#include <QString>
#include <QStringList>
#include <QTest>

namespace oVELDRA::controls {

/// The texts of a column, from the first row to the last.
[[nodiscard]] inline QStringList columnTexts(const ListView& list, int column)
{
    QStringList texts;
    for (int row = 0; row < list.rowCount(); ++row) {
        texts.append(list.text(row, column));
    }
    return texts;
}

/// The texts of a row, from the first column to the last.
[[nodiscard]] inline QStringList rowTexts(const ListView& list, int row)
{
    QStringList texts;
    for (int column = 0; column < list.model()->columnCount(); ++column) {
        texts.append(list.text(row, column));
    }
    return texts;
}

[[nodiscard]] inline QStringList columnTitles(const ListView& list)
{
    QStringList titles;
    for (int column = 0; column < list.model()->columnCount(); ++column) {
        titles.append(list.model()->headerData(column, Qt::Horizontal).toString());
    }
    return titles;
}

inline void clickTitle(ListView& list, int column)
{
    QHeaderView& header = *list.header();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                      QPoint(header.sectionViewportPosition(column) + 5, header.height() / 2));
}

} // namespace oVELDRA::controls
