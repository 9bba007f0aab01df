#include "ManualPages.h"

#include "SourceTexts.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace manual {

namespace {

/// The first group of every match.
QStringList groups(const QString& text, const QRegularExpression& expression)
{
    QStringList found;
    for (auto matches = expression.globalMatch(text); matches.hasNext();) {
        found.append(matches.next().captured(1));
    }
    return found;
}

} // namespace

QStringList Page::messages() const
{
    static const QRegularExpression message(u"\\[\\.mensaje\\]`\\+(.*?)\\+`"_s,
                                            QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression filledIn(u"‹[^›]+›"_s);
    QStringList texts;
    for (const QString& text : groups(markup, message)) {
        texts.append(text.simplified().replace(filledIn, FilledIn.toString()));
    }
    return texts;
}

QStringList Page::hints() const
{
    static const QRegularExpression block(u"\\[\\.teclas[^\\]]*\\]\n----\n(.*?)\n----"_s,
                                          QRegularExpression::DotMatchesEverythingOption);
    QStringList lines;
    for (const QString& text : groups(markup, block)) {
        lines += text.split(u'\n');
    }
    return lines;
}

QStringList Page::pictures() const
{
    static const QRegularExpression picture(u"image::?([^\\[\\s]+)\\["_s);
    return groups(markup, picture);
}

QStringList Page::included() const
{
    static const QRegularExpression inclusion(u"^include::([^{\\[\\n]+)\\["_s, QRegularExpression::MultilineOption);
    QStringList paths;
    for (const QString& target : groups(markup, inclusion)) {
        paths.append(QDir::cleanPath(QFileInfo(path).path() + u'/' + target));
    }
    return paths;
}

QString Page::plainText() const
{
    static const QRegularExpression role(u"\\[\\.[\\w%]+\\]"_s);
    static const QRegularExpression reference(u"<<[^,>]+,?([^>]*)>>"_s);
    static const QRegularExpression key(u"kbd:\\[([^\\]]*)\\]"_s);
    QString text = markup;
    text.remove(u"<<<\n"_s).remove(role).replace(reference, u"\\1"_s).replace(key, u"\\1"_s);
    text.replace(u"`+"_s, u""_s).replace(u"+`"_s, u""_s);
    return text.remove(u'`').remove(u'*').replace(u'|', u' ').simplified();
}

QList<Page> pagesOf(const QString& folder)
{
    QList<Page> pages;
    for (QDirIterator files(folder, {u"*.adoc"_s}, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        const QString path = files.next();
        pages.append({QDir(folder).relativeFilePath(path), contentOf(path)});
    }
    std::sort(pages.begin(), pages.end(), [](const Page& left, const Page& right) { return left.path < right.path; });
    return pages;
}

QString contentOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("cannot read %s: %s", qUtf8Printable(path), qUtf8Printable(file.errorString()));
    }
    return QString::fromUtf8(file.readAll());
}

} // namespace manual
