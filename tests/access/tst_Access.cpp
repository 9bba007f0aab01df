#include "EveryScreen.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QLocale>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QTest>
#include <QTreeView>

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::access;

namespace {

QAccessibleInterface& interfaceOf(QObject& object)
{
    QAccessibleInterface* found = QAccessible::queryAccessibleInterface(&object);
    if (found == nullptr) {
        qFatal("no accessible interface");
    }
    return *found;
}

/// What assistive technology calls a control.
QString nameOf(QObject& object)
{
    return interfaceOf(object).text(QAccessible::Name);
}

/// All visible interfaces below one whose object is a widget.
void visit(QAccessibleInterface& top, const std::function<void(QAccessibleInterface&, QWidget&)>& look)
{
    for (int i = 0; i < top.childCount(); ++i) {
        QAccessibleInterface* child = top.child(i);
        if (child == nullptr || child->state().invisible) {
            continue;
        }
        auto* widget = qobject_cast<QWidget*>(child->object());
        if (widget == nullptr || !widget->isVisible()) {
            continue; // the cells of lists have a test of their own
        }
        look(*child, *widget);
        visit(*child, look);
    }
}

/// The role of a control of the kinds that screens are made of; NoRole for parts of them and decoration.
QAccessible::Role roleOf(const QWidget& widget)
{
    using Kind = std::pair<const QMetaObject*, QAccessible::Role>;
    static const std::array kinds{Kind{&QLineEdit::staticMetaObject, QAccessible::EditableText},
                                  Kind{&QPlainTextEdit::staticMetaObject, QAccessible::EditableText},
                                  Kind{&QCheckBox::staticMetaObject, QAccessible::CheckBox},
                                  Kind{&QRadioButton::staticMetaObject, QAccessible::RadioButton},
                                  Kind{&QComboBox::staticMetaObject, QAccessible::ComboBox},
                                  Kind{&QTreeView::staticMetaObject, QAccessible::Tree},
                                  Kind{&QListView::staticMetaObject, QAccessible::List},
                                  Kind{&QProgressBar::staticMetaObject, QAccessible::ProgressBar},
                                  Kind{&QGroupBox::staticMetaObject, QAccessible::Grouping},
                                  Kind{&QLabel::staticMetaObject, QAccessible::StaticText}};
    const auto* const found = std::find_if(
        kinds.begin(), kinds.end(), [&widget](const Kind& kind) { return widget.metaObject()->inherits(kind.first); });
    return found != kinds.end() ? found->second : QAccessible::NoRole;
}

/// The label that introduces a control, as assistive technology is told; null without one.
QLabel* labelOf(QWidget& control)
{
    const auto relations = interfaceOf(control).relations(QAccessible::Label);
    for (const auto& [related, kind] : relations) {
        if (auto* label = qobject_cast<QLabel*>(related->object())) {
            return label;
        }
    }
    return nullptr;
}

/// Whether a control is read after another one: it is below it or, beside it, to its right.
bool comesAfter(const QRect& later, const QRect& earlier)
{
    return later.top() > earlier.bottom() || later.left() > earlier.right();
}

QRect placeOf(const QWidget& control)
{
    return {control.mapTo(control.window(), QPoint()), control.size()};
}

bool isReached(const ScreenCase& screen, const QWidget& control)
{
    return std::any_of(screen.stops.begin(), screen.stops.end(),
                       [&control](const Stop& stop) { return stop.name == control.objectName(); });
}

} // namespace

/// All screens as assistive technology and the Tab key know them.
class tst_Access : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void everyControlHasItsNameAndRole_data() { addScreensAndLocales(); }
    void everyControlHasItsNameAndRole();
    void labelsAreToldWithTheirControls_data() { addScreens(); }
    void labelsAreToldWithTheirControls();
    void textsAreToldAsTheyAreShown_data() { addScreensAndLocales(); }
    void textsAreToldAsTheyAreShown();
    void decorationIsSilent_data() { addScreens(); }
    void decorationIsSilent();
    void tabFollowsTheOrderOfReading_data() { addScreensAndLocales(); }
    void tabFollowsTheOrderOfReading();
    void cellsAreToldWithTheirTexts_data();
    void cellsAreToldWithTheirTexts();
    void statusIsToldWhenItChanges();

private:
    static void addScreensAndLocales();
};

void tst_Access::addScreensAndLocales()
{
    QTest::addColumn<QString>("screen");
    QTest::addColumn<QString>("locale");
    for (const ScreenCase& screen : everyScreen()) {
        for (const QString& locale : {u"es_AR"_s, u"en_US"_s}) {
            QTest::addRow("%s, %s", qPrintable(screen.name), qPrintable(locale)) << screen.name << locale;
        }
    }
}

void tst_Access::everyControlHasItsNameAndRole()
{
    QFETCH(const QString, screen);
    QFETCH(const QString, locale);
    QLocale::setDefault(QLocale(locale));
    const ScreenCase& expected = screenCase(screen);
    ScreenUnderTest tested(expected.make);
    tested.whileOpen([&] {
        QAccessibleInterface& form = interfaceOf(tested.form());
        QCOMPARE(form.role(), QAccessible::Dialog);
        QCOMPARE(form.text(QAccessible::Name), tested.form().windowTitle());
        for (const Stop& stop : expected.stops) {
            QAccessibleInterface& control = interfaceOf(tested.control(stop.name));
            QCOMPARE(tested.control(stop.name).accessibleName(), stop.caption);
            if (stop.role != QAccessible::ComboBox) { // Qt tells what it shows, and its caption as its label
                QCOMPARE(control.text(QAccessible::Name), stop.caption);
            }
            QCOMPARE(control.role(), stop.role);
            QVERIFY2(control.state().focusable, qPrintable(stop.name));
        }
        int seen = 0;
        visit(form, [&seen](QAccessibleInterface& told, QWidget& control) {
            const QAccessible::Role role = roleOf(control);
            if (role != QAccessible::NoRole) {
                QCOMPARE(told.role(), role);
            }
            if (role != QAccessible::NoRole && role != QAccessible::StaticText) {
                QVERIFY2(!told.text(QAccessible::Name).isEmpty(), qPrintable(control.objectName()));
                ++seen;
            }
        });
        // Nothing that Tab reaches is missing from the tree; the report's view is of no common kind.
        const auto known = std::count_if(expected.stops.begin(), expected.stops.end(),
                                         [](const Stop& stop) { return stop.role != QAccessible::Client; });
        QVERIFY(seen >= known);
    });
}

void tst_Access::labelsAreToldWithTheirControls()
{
    QFETCH(const QString, screen);
    const ScreenCase& expected = screenCase(screen);
    ScreenUnderTest tested(expected.make);
    tested.whileOpen([&] {
        for (const Stop& stop : expected.stops) {
            QWidget& control = tested.control(stop.name);
            QLabel* label = labelOf(control);
            if (stop.role == QAccessible::EditableText || stop.role == QAccessible::ComboBox) {
                QVERIFY2(label != nullptr, qPrintable(stop.name));
            }
            if (label != nullptr) {
                QCOMPARE(label->text(), stop.caption);
                QCOMPARE(label->buddy(), &control);
            }
        }
    });
}

void tst_Access::textsAreToldAsTheyAreShown()
{
    QFETCH(const QString, screen);
    QFETCH(const QString, locale);
    QLocale::setDefault(QLocale(locale));
    ScreenUnderTest tested(screenCase(screen).make);
    tested.whileOpen([&] {
        int shown = 0;
        visit(interfaceOf(tested.form()), [&shown](QAccessibleInterface& told, QWidget& control) {
            auto* label = qobject_cast<QLabel*>(&control);
            if (label == nullptr || label->text().isEmpty()) {
                return;
            }
            ++shown;
            if (const QLabel* caption = labelOf(*label)) { // a value, with its caption before it
                QCOMPARE(told.text(QAccessible::Name), caption->text());
                QCOMPARE(told.text(QAccessible::Description), label->text());
            } else {
                QCOMPARE(told.text(QAccessible::Name), label->text());
            }
        });
        QVERIFY(shown > 0);
    });
}

void tst_Access::decorationIsSilent()
{
    QFETCH(const QString, screen);
    const ScreenCase& expected = screenCase(screen);
    ScreenUnderTest tested(expected.make);
    tested.whileOpen([&] {
        visit(interfaceOf(tested.form()), [&expected](QAccessibleInterface& told, QWidget& control) {
            const bool isPart = qobject_cast<const QRadioButton*>(&control) != nullptr || // the others of a group
                                control.objectName().startsWith(u"qt_"); // of a control made of several
            if (!isReached(expected, control) && !isPart) {
                QVERIFY2((control.focusPolicy() & Qt::TabFocus) == 0 || !control.isEnabled(),
                         qPrintable(control.objectName()));
            }
            if (control.inherits("QFrame") && roleOf(control) == QAccessible::NoRole &&
                control.objectName().isEmpty()) {
                QCOMPARE(told.text(QAccessible::Name), QString());
            }
        });
    });
}

void tst_Access::tabFollowsTheOrderOfReading()
{
    QFETCH(const QString, screen);
    QFETCH(const QString, locale);
    QLocale::setDefault(QLocale(locale));
    const ScreenCase& expected = screenCase(screen);
    ScreenUnderTest tested(expected.make);
    tested.whileOpen([&] {
        QAccessibleInterface& form = interfaceOf(tested.form());
        tested.control(expected.stops.first().name).setFocus();
        const QWidget* before = nullptr;
        for (const Stop& stop : expected.stops) {
            QAccessibleInterface* focus = form.focusChild();
            QVERIFY2(focus != nullptr, qPrintable(stop.name));
            while (focus->object() == nullptr) { // a cell, of its list
                focus = focus->parent();
            }
            QCOMPARE(focus->object()->objectName(), stop.name);
            QVERIFY2(focus->state().focused, qPrintable(stop.name));
            const QWidget& control = tested.control(stop.name);
            QVERIFY2(before == nullptr || comesAfter(placeOf(control), placeOf(*before)), qPrintable(stop.name));
            before = &control;
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(QApplication::focusWidget()->objectName(), expected.stops.first().name);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget()->objectName(), expected.stops.last().name);
    });
}

void tst_Access::cellsAreToldWithTheirTexts_data()
{
    QTest::addColumn<QString>("screen");
    for (const ScreenCase& screen : everyScreen()) {
        if (!screen.list.isEmpty()) {
            QTest::newRow(qPrintable(screen.name)) << screen.name;
        }
    }
}

void tst_Access::cellsAreToldWithTheirTexts()
{
    QFETCH(const QString, screen);
    const ScreenCase& expected = screenCase(screen);
    ScreenUnderTest tested(expected.make);
    tested.whileOpen([&] {
        auto& list = static_cast<QAbstractItemView&>(tested.control(expected.list));
        const QAbstractItemModel& model = *list.model();
        QCOMPARE(model.rowCount(), 2);
        QAccessibleTableInterface* table = interfaceOf(list).tableInterface();
        QVERIFY(table != nullptr);
        QCOMPARE(table->rowCount(), model.rowCount());
        QCOMPARE(table->columnCount(), model.columnCount());
        for (int row = 0; row < model.rowCount(); ++row) {
            for (int column = 0; column < model.columnCount(); ++column) {
                const QAccessibleInterface* cell = table->cellAt(row, column);
                QVERIFY(cell != nullptr);
                QCOMPARE(cell->text(QAccessible::Name), model.index(row, column).data().toString());
            }
        }
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_Home);
        QTest::keyClick(&list, Qt::Key_Down);
        const QAccessibleInterface* second = table->cellAt(1, 0);
        QVERIFY(second->state().selected);
        QVERIFY(!table->cellAt(0, 0)->state().selected);
    });
}

void tst_Access::statusIsToldWhenItChanges()
{
    ScreenUnderTest tested(screenCase(u"frmImportar"_s).make);
    tested.whileOpen([&] {
        static_cast<QLineEdit&>(tested.control(u"txtINTDCL"_s)).setText(u"26001IT14000655K"_s);
        static_cast<QLineEdit&>(tested.control(u"txtVEN"_s)).setText(u"16/11/2027"_s);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F11);
        QWidget& status = tested.control(u"lbTexto"_s);
        QCOMPARE(nameOf(status), u"ER ERROR 1 - Rechazada"_s);
        QCOMPARE(interfaceOf(status).role(), QAccessible::StaticText);
    });
}

QTEST_MAIN(tst_Access)
#include "tst_Access.moc"
