#include "BoxDriver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QEvent>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::doubles {

namespace {

bool isBox(const QObject* object)
{
    return qobject_cast<const QMessageBox*>(object) != nullptr || qobject_cast<const QInputDialog*>(object) != nullptr;
}

BoxDriver::Seen look(const QDialog& dialog)
{
    BoxDriver::Seen seen;
    seen.title = dialog.windowTitle();
    seen.parent = dialog.parentWidget();
    if (const auto* box = qobject_cast<const QMessageBox*>(&dialog)) {
        seen.text = box->text();
        seen.icon = box->icon();
        seen.format = box->textFormat();
    } else if (const auto* input = qobject_cast<const QInputDialog*>(&dialog)) {
        seen.input = true;
        seen.text = input->labelText();
        seen.proposal = input->textValue();
        if (const auto* label = input->findChild<QLabel*>()) {
            seen.format = label->textFormat();
        }
    }
    auto buttons = dialog.findChild<QDialogButtonBox*>()->buttons();
    std::sort(buttons.begin(), buttons.end(),
              [](const QAbstractButton* a, const QAbstractButton* b) { return a->x() < b->x(); });
    for (const QAbstractButton* button : std::as_const(buttons)) {
        seen.buttons.append(button->text());
        const auto* pushButton = qobject_cast<const QPushButton*>(button);
        if (pushButton != nullptr && pushButton->isDefault()) {
            seen.focusedButton = button->text();
        }
    }
    return seen;
}

void send(const QDialog& dialog, Qt::Key key, const QString& text, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::sendKeyEvent(QTest::Click, dialog.windowHandle(), key, text, modifiers);
}

} // namespace

BoxDriver::BoxDriver(std::chrono::milliseconds deadline, Failure onFailure) : m_onFailure(std::move(onFailure))
{
    m_deadline.setInterval(deadline);
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] {
        giveUp(m_answered ? u"the box did not close: %1"_s.arg(m_seen.constLast().text)
                          : u"%1 boxes did not come up in time"_s.arg(m_answers.size()));
    });
    qApp->installEventFilter(this);
}

BoxDriver::~BoxDriver()
{
    if (!done()) {
        giveUp(u"%1 boxes did not come up"_s.arg(m_answers.size()));
    }
}

void BoxDriver::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    expect([key, modifiers](QDialog& dialog) { send(dialog, key, {}, modifiers); });
}

void BoxDriver::type(const QString& text, Qt::Key end)
{
    expect([this, text, end](QDialog& dialog) {
        if (!m_seen.constLast().input) {
            report(u"not an input dialog: %1"_s.arg(m_seen.constLast().text));
        }
        for (const QChar c : text) {
            send(dialog, static_cast<Qt::Key>(c.toUpper().unicode()), QString(c));
        }
        send(dialog, end, {});
    });
}

void BoxDriver::close()
{
    expect([](QDialog& dialog) { dialog.windowHandle()->close(); });
}

QStringList BoxDriver::texts() const
{
    QStringList texts;
    for (const Seen& seen : m_seen) {
        texts.append(seen.text);
    }
    return texts;
}

bool BoxDriver::eventFilter(QObject* watched, QEvent* event)
{
    if (isBox(watched)) {
        // Queued: only inside the box's own event loop can an answer end it.
        if (event->type() == QEvent::Show || event->type() == QEvent::WindowActivate) {
            QMetaObject::invokeMethod(
                this, [this] { answerActiveBox(); }, Qt::QueuedConnection);
        } else if (event->type() == QEvent::Hide && watched == m_answered) {
            boxClosed();
        }
    }
    return QObject::eventFilter(watched, event);
}

void BoxDriver::expect(Answer answer)
{
    m_answers.append(std::move(answer));
    m_deadline.start();
}

void BoxDriver::answerActiveBox()
{
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!isBox(dialog) || dialog == m_answered || !dialog->isActiveWindow()) {
        return; // its activation will call again; the deadline stands behind that
    }
    m_seen.append(look(*dialog));
    if (m_answers.isEmpty()) {
        giveUp(u"a box without an answer: %1"_s.arg(m_seen.constLast().text));
        return;
    }
    m_answered = dialog;
    m_deadline.start();
    if (const auto look = std::exchange(m_look, {})) {
        look();
    }
    m_answers.takeFirst()(*dialog);
}

void BoxDriver::boxClosed()
{
    m_answered.clear();
    if (m_answers.isEmpty()) {
        m_deadline.stop();
    } else {
        m_deadline.start();
    }
}

void BoxDriver::giveUp(const QString& why)
{
    m_answers.clear();
    m_deadline.stop();
    report(why);
    // The windows stay modal until their loops have run; each is told once.
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        auto* dialog = qobject_cast<QDialog*>(window);
        if (dialog != nullptr && dialog->isModal() && dialog->isVisible()) {
            dialog->done(QDialog::Rejected);
        }
    }
    m_answered.clear();
}

void BoxDriver::report(const QString& why)
{
    if (m_onFailure) {
        m_onFailure(why);
        return;
    }
    QFAIL(qPrintable(u"BoxDriver: "_s + why));
}

} // namespace oVELDRA::doubles
