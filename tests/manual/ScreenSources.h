#pragma once

#include "SourceTexts.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace manual {

/// A text and where it stands.
struct FileText
{
    QString file; ///< relative to the sources
    SourceText text;

    /// file:line: text
    [[nodiscard]] QString place() const;
};

/// Every text of the sources that speak to users.
[[nodiscard]] QList<FileText> sourceTexts();

/// The sources of the screens that are a class of their own, relative to the sources: frmX.cpp and FrmX.cpp.
[[nodiscard]] QStringList screenFiles();

/// The manual's page of the screen that a source file is of, or of the screen that opens it as its preview. There is
/// no such page when the file is none of a screen.
[[nodiscard]] QString pageOfScreen(const QString& sourceFile);

/// The content of a source file.
[[nodiscard]] QString sourceOf(const QString& sourceFile);

} // namespace manual
