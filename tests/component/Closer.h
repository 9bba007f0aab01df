#pragma once

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

/// Closes each dialog as soon as it is shown and keeps track of it. Needs the application.
class Closer final : public QObject
{
public:
    Closer() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (auto* dialog = qobject_cast<QDialog*>(watched); dialog != nullptr && event->type() == QEvent::Show) {
            shown.append(dialog);
            if (const auto* box = qobject_cast<QMessageBox*>(dialog)) {
                boxText = box->text();
            }
            QMetaObject::invokeMethod(
                dialog,
                [this, dialog] {
                    if (beforeClosing) {
                        beforeClosing();
                    }
                    dialog->close();
                },
                Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

    QList<QPointer<QDialog>> shown;
    QString boxText;                     ///< of the last one that was a message box
    std::function<void()> beforeClosing; ///< runs while the dialog is open
};
