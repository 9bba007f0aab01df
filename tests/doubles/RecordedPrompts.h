#pragma once

#include <core/Prompts.h>

#include <QList>
#include <QString>

#include <functional>

namespace oVELDRA::doubles {

/// Prompts that open no window: they note what was asked and answer from a script.
///
/// Boxes with one button answer OK. A Yes/No box takes the next scripted answer, and No when there is none, so that a
/// test that forgot about a confirmation sees nothing happen. An input box takes the next scripted text, and the empty
/// text of a cancelled one when there is none.
class RecordedPrompts final : public core::Prompts
{
public:
    struct Box
    {
        QString text;
        core::BoxStyle style = core::PlainBox;
        QString title;
        bool operator==(const Box&) const = default;
    };
    struct InputBox
    {
        QString prompt;
        QString title;
        QString proposal;
        bool operator==(const InputBox&) const = default;
    };

    /// The answer to the next Yes/No box that has none yet.
    void willAnswer(core::BoxAnswer answer) { m_answers.append(answer); }
    /// The text typed into the next input box that has none yet.
    void willType(const QString& text) { m_texts.append(text); }

    /// What was shown, in order.
    [[nodiscard]] const QList<Box>& boxes() const { return m_boxes; }
    [[nodiscard]] const QList<InputBox>& inputBoxes() const { return m_inputBoxes; }
    /// Only the texts of boxes(), for a quick comparison.
    [[nodiscard]] QStringList texts() const;
    /// Whether every scripted answer and text was asked for.
    [[nodiscard]] bool allAnswered() const { return m_answers.isEmpty() && m_texts.isEmpty(); }
    /// Forgets what was shown; scripted answers stay.
    void clear();

    /// Called while a box of either kind is up, for what must hold (or happen) at that moment.
    std::function<void()> whileShown;

    core::BoxAnswer messageBox(const QString& text, core::BoxStyle style = core::PlainBox,
                               const QString& title = {}) override;
    QString inputBox(const QString& prompt, const QString& title, const QString& proposal = {}) override;

private:
    QList<core::BoxAnswer> m_answers;
    QStringList m_texts;
    QList<Box> m_boxes;
    QList<InputBox> m_inputBoxes;
};

} // namespace oVELDRA::doubles
