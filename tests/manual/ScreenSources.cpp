#include "ScreenSources.h"

#include "ManualPages.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace manual {

namespace {

const QString sourceFolder = QStringLiteral(SOURCE_FOLDER);

/// Where the texts are that a user can meet. The rest of the core speaks to hosts' developers.
const QStringList folders{u"catalog"_s, u"nomenclature"_s, u"declarations"_s, u"listings"_s, u"controls"_s, u"core"_s};
const QStringList furtherFiles{u"store/StoreError.cpp"_s, u"runtime/RuntimeError.cpp"_s,
                               u"dialect/StatementError.cpp"_s};
const QStringList filesForDevelopers{u"core/Application.cpp"_s, u"core/MemberTable.cpp"_s};

QStringList sourceFiles()
{
    QStringList files = furtherFiles;
    for (const QString& folder : folders) {
        const QDir place(sourceFolder + u'/' + folder);
        for (const QString& name : place.entryList({u"*.cpp"_s, u"*.h"_s}, QDir::Files, QDir::Name)) {
            files.append(folder + u'/' + name);
        }
    }
    for (const QString& file : filesForDevelopers) {
        files.removeOne(file);
    }
    return files;
}

} // namespace

QString FileText::place() const
{
    return u"%1:%2: %3"_s.arg(file).arg(text.line).arg(text.text);
}

QList<FileText> sourceTexts()
{
    QList<FileText> texts;
    for (const QString& file : sourceFiles()) {
        for (const SourceText& text : textsOf(sourceOf(file))) {
            texts.append({file, text});
        }
    }
    return texts;
}

QString pageOfScreen(const QString& sourceFile)
{
    const QString screen = QFileInfo(sourceFile).completeBaseName();
    return u"pantallas/%1.adoc"_s.arg(screen == u"drDITART" ? u"frmDITART"_s : screen);
}

QStringList screenFiles()
{
    QStringList files;
    for (const QString& file : sourceFiles()) {
        if (QFileInfo(file).fileName().startsWith(u"frm", Qt::CaseInsensitive) && file.endsWith(u".cpp")) {
            files.append(file);
        }
    }
    return files;
}

QString sourceOf(const QString& sourceFile)
{
    return contentOf(sourceFolder + u'/' + sourceFile);
}

} // namespace manual
