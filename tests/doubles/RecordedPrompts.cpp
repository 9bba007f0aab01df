#include "RecordedPrompts.h"

namespace oVELDRA::doubles {

QStringList RecordedPrompts::texts() const
{
    QStringList texts;
    for (const Box& box : m_boxes) {
        texts.append(box.text);
    }
    return texts;
}

void RecordedPrompts::clear()
{
    m_boxes.clear();
    m_inputBoxes.clear();
}

core::BoxAnswer RecordedPrompts::messageBox(const QString& text, core::BoxStyle style, const QString& title)
{
    m_boxes.append(Box{text, style, title});
    if (whileShown) {
        whileShown();
    }
    if (style != core::QuestionBox) {
        return core::AnswerOk;
    }
    return m_answers.isEmpty() ? core::AnswerNo : m_answers.takeFirst();
}

QString RecordedPrompts::inputBox(const QString& prompt, const QString& title, const QString& proposal)
{
    m_inputBoxes.append(InputBox{prompt, title, proposal});
    if (whileShown) {
        whileShown();
    }
    return m_texts.isEmpty() ? QString() : m_texts.takeFirst();
}

} // namespace oVELDRA::doubles
