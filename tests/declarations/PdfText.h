#pragma once

#include <QList>
#include <QProcess>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QTest>
#include <QXmlStreamReader>

namespace oVELDRA::declarations {

/// What pdftotext makes of a file. Fails the test when it cannot be read.
inline QString pdftotext(const QString& fileName, const QString& option)
{
    QProcess process;
    process.start(QStringLiteral("pdftotext"),
                  {option, QStringLiteral("-enc"), QStringLiteral("UTF-8"), fileName, QStringLiteral("-")});
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        const QString why = process.errorString() + QString::fromLocal8Bit(process.readAllStandardError());
        QTest::qFail(qPrintable(why), __FILE__, __LINE__);
        return {};
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// The lines of each page that are not empty, cells set apart by one blank.
inline QList<QStringList> pdfPages(const QString& fileName)
{
    QList<QStringList> pages;
    const QStringList texts = pdftotext(fileName, QStringLiteral("-layout")).split(QChar(u'\f'));
    for (const QString& text : texts) {
        QStringList lines;
        for (const QString& line : text.split(QChar(u'\n'))) {
            if (!line.trimmed().isEmpty()) {
                lines.append(line.simplified());
            }
        }
        pages.append(lines);
    }
    pages.removeLast(); // behind the last page's form feed
    return pages;
}

/// A word and where it stands, in points from the sheet's top left corner.
struct PdfWord
{
    QString text;
    QRectF box;
    int page = 0;
};

inline QList<PdfWord> pdfWords(const QString& fileName)
{
    QList<PdfWord> words;
    QXmlStreamReader xml(pdftotext(fileName, QStringLiteral("-bbox")));
    int page = -1;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement()) {
            continue;
        }
        if (xml.name() == QLatin1String("page")) {
            ++page;
        } else if (xml.name() == QLatin1String("word")) {
            const auto at = [attributes = xml.attributes()](const char* name) {
                return attributes.value(QLatin1String(name)).toDouble();
            };
            const QRectF box(QPointF(at("xMin"), at("yMin")), QPointF(at("xMax"), at("yMax")));
            words.append({xml.readElementText(), box, page});
        }
    }
    if (xml.hasError()) {
        QTest::qFail(qPrintable(xml.errorString()), __FILE__, __LINE__);
    }
    return words;
}

} // namespace oVELDRA::declarations
