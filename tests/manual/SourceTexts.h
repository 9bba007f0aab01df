#pragma once

#include <QList>
#include <QString>
#include <QStringView>

namespace manual {

/// What stands for a part of a text that the program fills in.
inline constexpr QStringView FilledIn = u"‹›";

/// One line of a text that a source file holds.
struct SourceText
{
    QString text; ///< with FilledIn for every part that is not a literal; blanks around it are gone
    int line = 0; ///< from 1
};

/// Every line of every UTF-16 text of C++ source code. Adjacent literals are one text, and so are literals that `+`
/// joins, with FilledIn for what stands between them; so does a place marker such as %1. Comments hold no texts.
[[nodiscard]] QList<SourceText> textsOf(QStringView code);

/// Whether a text is one that the user reads: words. Statements, locations of errors and masks are not.
[[nodiscard]] bool isForUsers(const QString& text);

/// Whether a text tells keys: [F11] Grabar - [ESC] Salir
[[nodiscard]] bool isHint(const QString& text);

/// The caption that a form's constructor gives its base; empty when there is none.
[[nodiscard]] QString captionOf(QStringView code);

} // namespace manual
