#include "Prompts.h"

#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace oVELDRA::core {

namespace {

/// The window that the user is working in. When another program has the focus, a modal form is still the one to stand
/// over; without a parent the box could come up behind it.
QWidget* windowBelow()
{
    QWidget* active = QApplication::activeWindow();
    return active != nullptr ? active : QApplication::activeModalWidget();
}

QString titleOrDefault(const QString& title)
{
    return title.isEmpty() ? u"oVELDRA"_s : title;
}

QMessageBox::Icon iconOf(BoxStyle style)
{
    switch (style) {
    case CriticalBox:
        return QMessageBox::Critical;
    case QuestionBox:
        return QMessageBox::Question;
    case ExclamationBox:
        return QMessageBox::Warning;
    case InformationBox:
        return QMessageBox::Information;
    case PlainBox:
        break;
    }
    return QMessageBox::NoIcon;
}

/// The texts are set here and not left to Qt's translations: the component speaks Spanish in every host.
void name(QMessageBox& box, QMessageBox::StandardButton which, const QString& text, Qt::Key key)
{
    auto* button = qobject_cast<QPushButton*>(box.button(which));
    button->setText(text);
    button->setShortcut(QKeySequence(Qt::ALT | key));
}

} // namespace

BoxAnswer ScreenPrompts::messageBox(const QString& text, BoxStyle style, const QString& title)
{
    QMessageBox box(iconOf(style), titleOrDefault(title), text, QMessageBox::NoButton, windowBelow());
    // Codes and descriptions of the user's data come as they are, whatever markup they look like.
    box.setTextFormat(Qt::PlainText);
    if (style == QuestionBox) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        name(box, QMessageBox::Yes, u"Sí"_s, Qt::Key_S);
        name(box, QMessageBox::No, u"No"_s, Qt::Key_N);
        box.setDefaultButton(QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
        return box.exec() == QMessageBox::Yes ? AnswerYes : AnswerNo;
    }
    box.setStandardButtons(QMessageBox::Ok);
    name(box, QMessageBox::Ok, u"Aceptar"_s, Qt::Key_A);
    box.exec();
    return AnswerOk;
}

QString ScreenPrompts::inputBox(const QString& prompt, const QString& title, const QString& proposal)
{
    QInputDialog dialog(windowBelow());
    dialog.setWindowTitle(titleOrDefault(title));
    dialog.setInputMode(QInputDialog::TextInput);
    dialog.setLabelText(prompt);
    dialog.setTextValue(proposal);
    dialog.setOkButtonText(u"Aceptar"_s);
    dialog.setCancelButtonText(u"Cancelar"_s);
    if (auto* label = dialog.findChild<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
    }
    return dialog.exec() == QDialog::Accepted ? dialog.textValue() : QString();
}

} // namespace oVELDRA::core
