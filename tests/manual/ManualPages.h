#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace manual {

/// A file of the manual.
struct Page
{
    QString path; ///< relative to the manual's folder
    QString markup;

    /// The texts that the page gives as messages, simplified; ‹what› the program fills in has become FilledIn.
    [[nodiscard]] QStringList messages() const;
    /// The lines of its blocks of hints.
    [[nodiscard]] QStringList hints() const;
    /// The files of its pictures.
    [[nodiscard]] QStringList pictures() const;
    /// The files that it includes, relative to the manual's folder.
    [[nodiscard]] QStringList included() const;
    /// What a reader reads, in one line, without marks of any kind.
    [[nodiscard]] QString plainText() const;
};

/// Every .adoc file below a folder, by path.
[[nodiscard]] QList<Page> pagesOf(const QString& folder);

/// The content of a UTF-8 file; ends the program when it cannot be read.
[[nodiscard]] QString contentOf(const QString& path);

} // namespace manual
