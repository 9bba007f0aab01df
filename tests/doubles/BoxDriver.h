#pragma once

#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <chrono>
#include <functional>

class QDialog;

namespace oVELDRA::doubles {

/// The user in front of real message boxes and input dialogs.
///
/// Give it the answers before the code that opens the boxes runs; boxes are answered in order, each one as soon as it
/// is the active modal window, with key events that go through its window like a keyboard's. Other modal windows (the
/// forms themselves) are left alone.
///
///     BoxDriver user;
///     user.press(Qt::Key_Return);             // the confirmation
///     user.type(u"24001IT14000001A"_s);       // the question after it
///     form.lp_Renumerar();
///     QVERIFY(user.done());
///     QCOMPARE(user.seen().first().text, u"…"_s);
///
/// It fails the test for a box without an answer, for an answer whose box has not come up and closed within the
/// deadline (counted anew from each box) and for answers left over at its end. Whatever fails, boxes and modal windows
/// that are still open are closed, so that no test hangs.
class BoxDriver final : private QObject
{
public:
    /// A box as the user saw it.
    struct Seen
    {
        QString title;
        QString text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QStringList buttons;                  ///< the texts on the buttons, from left to right
        QString focusedButton;                ///< the text of the one that Enter presses
        bool input = false;                   ///< an input dialog
        QString proposal;                     ///< what stood in its line
        Qt::TextFormat format = Qt::AutoText; ///< how the text was shown
        QPointer<QWidget> parent;             ///< the window that it stood over
    };
    using Failure = std::function<void(const QString&)>;

    /// `onFailure` stands in for failing the running test, for tests of the driver itself.
    explicit BoxDriver(std::chrono::milliseconds deadline = std::chrono::seconds(10), Failure onFailure = {});
    BoxDriver(const BoxDriver&) = delete;
    BoxDriver& operator=(const BoxDriver&) = delete;
    ~BoxDriver() override;

    /// The next box is answered with this key.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// The next box is an input dialog: this text is typed over its proposal, then `end` pressed.
    void type(const QString& text, Qt::Key end = Qt::Key_Return);
    /// The next box is closed by its window's close button.
    void close();
    /// Called when the next box that has no answer yet is up, before it is answered.
    void beforeNext(std::function<void()> look) { m_look = std::move(look); }

    [[nodiscard]] const QList<Seen>& seen() const { return m_seen; }
    [[nodiscard]] QStringList texts() const;
    /// Whether every answer was given and its box has closed.
    [[nodiscard]] bool done() const { return m_answers.isEmpty() && m_answered.isNull(); }

private:
    using Answer = std::function<void(QDialog&)>;

    bool eventFilter(QObject* watched, QEvent* event) override;
    void expect(Answer answer);
    void answerActiveBox();
    void boxClosed();
    void giveUp(const QString& why);
    void report(const QString& why);

    Failure m_onFailure;
    QList<Answer> m_answers;
    QList<Seen> m_seen;
    std::function<void()> m_look;
    QPointer<QDialog> m_answered; // answered, perhaps not closed yet
    QTimer m_deadline;
};

} // namespace oVELDRA::doubles
