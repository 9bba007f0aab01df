#pragma once

#include <QString>

namespace oVELDRA::core {

/// Style values of message boxes: an icon plus a set of buttons.
enum BoxStyle : int {
    PlainBox = 0,        ///< no icon, OK
    CriticalBox = 16,    ///< critical icon, OK
    QuestionBox = 36,    ///< question icon, Yes and No
    ExclamationBox = 48, ///< exclamation icon, OK
    InformationBox = 64  ///< information icon, OK
};

/// Answers of message boxes.
enum BoxAnswer : int { AnswerOk = 1, AnswerYes = 6, AnswerNo = 7 };

/// How the component speaks to the user: message boxes and one-line questions.
class Prompts
{
public:
    Prompts() = default;
    Prompts(const Prompts&) = delete;
    Prompts& operator=(const Prompts&) = delete;
    virtual ~Prompts() = default;

    /// Shows a modal box and waits for its answer. An empty title stands for the application's default, "oVELDRA".
    /// Closing a Yes/No box without choosing answers No.
    virtual BoxAnswer messageBox(const QString& text, BoxStyle style = PlainBox, const QString& title = {}) = 0;

    /// Asks for a line of text. Cancel gives an empty text.
    virtual QString inputBox(const QString& prompt, const QString& title, const QString& proposal = {}) = 0;
};

/// The real boxes: a QMessageBox and a QInputDialog over the active window.
class ScreenPrompts final : public Prompts
{
public:
    BoxAnswer messageBox(const QString& text, BoxStyle style = PlainBox, const QString& title = {}) override;
    QString inputBox(const QString& prompt, const QString& title, const QString& proposal = {}) override;
};

} // namespace oVELDRA::core
