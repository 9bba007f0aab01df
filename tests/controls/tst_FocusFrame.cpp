#include <controls/FocusFrame.h>

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <memory>

using namespace oVELDRA::controls;

namespace {

class Window final : public QWidget
{
public:
    Window() : frame(new FocusFrame(*this))
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(&box);
        layout->addWidget(&check);
        layout->addWidget(&group);
        auto* inside = new QVBoxLayout(&group);
        inside->addWidget(&button);
        resize(400, 300);
        show();
        if (!QTest::qWaitForWindowActive(this)) {
            qFatal("the window did not become active");
        }
    }

    [[nodiscard]] bool surrounds(const QWidget& control) const
    {
        const QRect place(control.mapTo(this, QPoint()), control.size());
        const int around = frame->reach();
        return frame->isVisible() && frame->geometry() == place.adjusted(-around, -around, around, around);
    }

    FocusFrame* frame;
    QLineEdit box;
    QCheckBox check;
    QGroupBox group;
    QPushButton button;
};

} // namespace

class tst_FocusFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followsTheFocus();
    void followsWhatMoves();
    void checkBoxIsSurroundedAsFarAsItIsDrawn();
    void goesWithTheFocus();
    void controlThatDies();
    void clicksGoThrough();
    void isSilent();
};

void tst_FocusFrame::followsTheFocus()
{
    Window window;
    window.box.setFocus();
    QVERIFY(window.surrounds(window.box));
    window.button.setFocus();
    QVERIFY(window.surrounds(window.button));
}

void tst_FocusFrame::followsWhatMoves()
{
    Window window;
    window.button.setFocus();
    window.resize(500, 400);
    QTest::qWait(0);
    QVERIFY(window.surrounds(window.button));
    window.box.hide(); // what is below moves up, the button with its group
    QTest::qWait(0);
    QVERIFY(window.surrounds(window.button));
}

void tst_FocusFrame::checkBoxIsSurroundedAsFarAsItIsDrawn()
{
    Window window;
    window.check.setText(QStringLiteral("Tres"));
    window.check.setFocus();
    QTest::qWait(0);
    QVERIFY(window.check.width() > 300);
    QVERIFY(window.frame->isVisible());
    QCOMPARE(window.frame->width(), window.check.sizeHint().width() + 2 * window.frame->reach());
}

void tst_FocusFrame::goesWithTheFocus()
{
    Window window;
    window.box.setFocus();
    window.box.clearFocus();
    QVERIFY(!window.frame->isVisible());
    window.box.setFocus();
    QVERIFY(window.frame->isVisible());
    window.box.hide();
    QVERIFY(!window.surrounds(window.box));
    QWidget other;
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QVERIFY(!window.frame->isVisible());
}

void tst_FocusFrame::controlThatDies()
{
    Window window;
    auto dying = std::make_unique<QLineEdit>(&window);
    dying->show();
    dying->setFocus();
    QVERIFY(window.surrounds(*dying));
    dying.reset();
    QVERIFY(!window.frame->isVisible() || QApplication::focusWidget() != nullptr);
    window.resize(450, 350);
    QTest::qWait(0);
    window.box.setFocus();
    QVERIFY(window.surrounds(window.box));
}

void tst_FocusFrame::clicksGoThrough()
{
    Window window;
    window.box.setFocus();
    QVERIFY(window.frame->isVisible());
    QCOMPARE(window.childAt(window.box.geometry().center()), &window.box);
    QVERIFY(window.childAt(window.frame->geometry().topLeft()) == nullptr);
    QCOMPARE(window.frame->focusPolicy(), Qt::NoFocus);
}

void tst_FocusFrame::isSilent()
{
    Window window;
    window.box.setFocus();
    QAccessibleInterface* top = QAccessible::queryAccessibleInterface(&window);
    for (int i = 0; i < top->childCount(); ++i) {
        QVERIFY(top->child(i)->object() != window.frame);
    }
    QVERIFY(top->childCount() >= 3);
}

QTEST_MAIN(tst_FocusFrame)
#include "tst_FocusFrame.moc"
