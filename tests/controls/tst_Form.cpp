#include "controls/OpenForm.h"
#include "doubles/TestComponent.h"
#include "doubles/ThrownError.h"

#include <oVELDRA/RuntimeError.h>

#include <controls/BusyPointer.h>
#include <controls/Form.h>
#include <controls/ListView.h>

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;

namespace {

/// A screen of each kind of control, that notes what its keys do.
class SampleForm final : public Form
{
public:
    explicit SampleForm(core::Component& component) : Form(component, u"frmMuestra"_s, u"Muestra"_s)
    {
        title = addTitle(u"Label1"_s, u"Título"_s);
        QFormLayout& fields = *addFields();
        txtUno = addTextBox(fields, u"txtUno"_s, u"Uno"_s, 10);
        txtDos = addTextBox(fields, u"txtDos"_s, u"Dos"_s, 10);
        chTres = addCheckBox(u"chTres"_s, u"Tres"_s);
        button = new QPushButton(u"Cuatro"_s, this);
        button->setDefault(true);
        body().addWidget(button);
        QObject::connect(button, &QPushButton::clicked, this, [this] { done.append(u"button"_s); });
        list = addList(u"lstV"_s, u"Lista"_s, {{u"Código"_s, 10}, {u"Texto"_s, 10}});
        hint = addHint(u"Label2"_s, u"[F11] Grabar - [ESC] Salir"_s);
    }

    void Form_Load() override
    {
        done.append(u"load"_s);
        bindTextBoxes({txtUno, txtDos});
        if (inLoad) {
            inLoad();
        }
    }

    [[nodiscard]] std::function<void()> note(const QString& what)
    {
        return [this, what] { done.append(what); };
    }

    using Form::body;
    using Form::setKeys;

    QStringList done;
    std::function<void()> inLoad;
    QLabel* title;
    QLabel* hint;
    QLineEdit* txtUno;
    QLineEdit* txtDos;
    QCheckBox* chTres;
    QPushButton* button;
    ListView* list;

private:
    void designState() override
    {
        done.append(u"design"_s);
        txtUno->setText(u"inicial"_s);
        txtUno->setFocus();
    }
};

} // namespace

class tst_Form : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyOpeningStartsFromTheDesignState();
    void showModalReturnsWhenUnloaded();
    void titleBarClosesTheForm();
    void errorOfFormLoadPassesThrough();
    void formStaysOverTheWindowThatOpenedIt();
    void focusOfTheDesignStateOutlastsAFill();

    void escapeAndEnterDoNothingOfTheirOwnAccord_data();
    void escapeAndEnterDoNothingOfTheirOwnAccord();
    void keysReachTheTableBeforeTheControls_data();
    void keysReachTheTableBeforeTheControls();
    void keysOfTheTableArriveFromEveryControl();
    void tableComesBeforeTheBinder();
    void otherKeysAreTheControls();
    void modifiersCountExactlyUnlessAnyWillDo();
    void keypadKeysCountAsTheirTwins();
    void firstFittingLineIsObeyed();
    void keysOfAControlNeedTheFocusInIt();
    void controlsAddedLaterAreWatched();
    void keysInAChildDialogAreNotTheForms();
    void keysAreClaimedFromShortcuts();
    void procedureMaySetAnotherTable();
    void everyHitRunsOnce();

    void namesAndAccessibleNames();
    void titleIsLargerAndHintIsLast();
    void sizesFollowTheFont();
    void openingShowsAllColumnsWhereTheScreenHasRoom();
    void sizeThatTheUserGaveStays();
    void textsStayWholeHoweverNarrowTheWindow();
    void valuesAreToldWithTheirLabels();
    void labelsShowTextsAsTheyStand();
    void bindersAreMadeAnewAtEachOpening();
    void busyPointerEndsWithItsScope();
};

void tst_Form::everyOpeningStartsFromTheDesignState()
{
    TestComponent component;
    SampleForm form(component);
    for (int opening = 0; opening < 2; ++opening) {
        form.done.clear();
        QVERIFY(whileOpen(form, [&form] {
            QCOMPARE(form.done, (QStringList{u"design"_s, u"load"_s}));
            QVERIFY(form.isModal());
            QVERIFY(form.txtUno->hasFocus());
            QCOMPARE(form.txtUno->text(), u"inicial"_s);
            typeText(u"otro"_s);
            QCOMPARE(form.txtUno->text(), u"otro"_s);
            pressKey(Qt::Key_Tab);
            QVERIFY(form.txtDos->hasFocus());
        }));
        QVERIFY(!form.isVisible());
    }
}

void tst_Form::showModalReturnsWhenUnloaded()
{
    TestComponent component;
    SampleForm form(component);
    form.setKeys({{Qt::Key_Escape, AnyModifiers, WholeForm, [&form] { form.unload(); }}});
    QVERIFY(!whileOpen(form, [] { pressKey(Qt::Key_Escape); }));
}

void tst_Form::titleBarClosesTheForm()
{
    TestComponent component;
    SampleForm form(component);
    QVERIFY(!whileOpen(form, [&form] { form.windowHandle()->close(); }));
}

void tst_Form::errorOfFormLoadPassesThrough()
{
    TestComponent component;
    SampleForm form(component);
    form.inLoad = [] { throw RuntimeError(3709); };
    QCOMPARE(numberThrownBy([&form] { form.showModal(); }), 3709);
    QVERIFY(!form.isVisible());
    form.inLoad = {};
    QVERIFY(whileOpen(form, [] {}));
}

void tst_Form::formStaysOverTheWindowThatOpenedIt()
{
    TestComponent component;
    SampleForm form(component);
    {
        QWidget host;
        host.show();
        QVERIFY(QTest::qWaitForWindowActive(&host));
        QVERIFY(whileOpen(form, [&] { QCOMPARE(form.windowHandle()->transientParent(), host.windowHandle()); }));
    }
    QVERIFY(whileOpen(form, [&] { QVERIFY(form.windowHandle()->transientParent() == nullptr); }));
}

void tst_Form::focusOfTheDesignStateOutlastsAFill()
{
    TestComponent component;
    SampleForm form(component);
    form.inLoad = [&form] {
        form.list->setFocus();
        const FillScope fill(*form.list);
        form.list->append({u"A"_s});
    };
    for (int opening = 0; opening < 2; ++opening) {
        QVERIFY(whileOpen(form, [&form] { QVERIFY(form.list->hasFocus()); }));
    }
}

void tst_Form::escapeAndEnterDoNothingOfTheirOwnAccord_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Escape") << Qt::Key_Escape;
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
}

void tst_Form::escapeAndEnterDoNothingOfTheirOwnAccord()
{
    QFETCH(const Qt::Key, key);
    TestComponent component;
    SampleForm form(component);
    QVERIFY(whileOpen(form, [&] {
        for (QWidget* control : {static_cast<QWidget*>(form.txtUno), static_cast<QWidget*>(form.chTres),
                                 static_cast<QWidget*>(form.list), static_cast<QWidget*>(&form)}) {
            control->setFocus();
            QTest::keyClick(control, key);
            QVERIFY(form.isVisible());
        }
        QCOMPARE(form.done, (QStringList{u"design"_s, u"load"_s}));
    }));
}

void tst_Form::keysReachTheTableBeforeTheControls_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Delete") << Qt::Key_Delete;
    QTest::newRow("Home") << Qt::Key_Home;
    QTest::newRow("Insert") << Qt::Key_Insert;
    QTest::newRow("F5") << Qt::Key_F5;
    QTest::newRow("F6") << Qt::Key_F6;
    QTest::newRow("F11") << Qt::Key_F11;
    QTest::newRow("F12") << Qt::Key_F12;
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Escape") << Qt::Key_Escape;
}

void tst_Form::keysReachTheTableBeforeTheControls()
{
    QFETCH(const Qt::Key, key);
    TestComponent component;
    SampleForm form(component);
    form.setKeys({{key, AnyModifiers, WholeForm, form.note(u"hit"_s)}});
    QVERIFY(whileOpen(form, [&] {
        form.txtUno->setFocus();
        form.txtUno->setCursorPosition(3);
        form.done.clear();
        pressKey(key);
        QCOMPARE(form.done, QStringList{u"hit"_s});
        QCOMPARE(form.txtUno->text(), u"inicial"_s);
        QCOMPARE(form.txtUno->cursorPosition(), 3);
        QVERIFY(form.txtUno->hasFocus());

        form.list->append({u"A"_s});
        form.list->append({u"B"_s});
        form.list->selectRow(1);
        form.list->setFocus();
        form.done.clear();
        pressKey(key);
        QCOMPARE(form.done, QStringList{u"hit"_s});
        QCOMPARE(form.list->currentRow(), 1);
    }));
}

void tst_Form::keysOfTheTableArriveFromEveryControl()
{
    TestComponent component;
    SampleForm form(component);
    form.setKeys({{Qt::Key_F11, AnyModifiers, WholeForm, form.note(u"F11"_s)}});
    QVERIFY(whileOpen(form, [&] {
        for (QWidget* control : {static_cast<QWidget*>(form.txtUno), static_cast<QWidget*>(form.txtDos),
                                 static_cast<QWidget*>(form.chTres), static_cast<QWidget*>(form.button),
                                 static_cast<QWidget*>(form.list)}) {
            form.done.clear();
            control->setFocus();
            pressKey(Qt::Key_F11);
            QCOMPARE(form.done, QStringList{u"F11"_s});
        }
        form.done.clear();
        QTest::keyClick(&form, Qt::Key_F11);
        QCOMPARE(form.done, QStringList{u"F11"_s});
    }));
}

void tst_Form::tableComesBeforeTheBinder()
{
    TestComponent component;
    SampleForm form(component);
    form.setKeys({{Qt::Key_Return, AnyModifiers, form.txtUno, form.note(u"Enter"_s)}});
    QVERIFY(whileOpen(form, [&form] {
        pressKey(Qt::Key_Return);
        QCOMPARE(form.done.constLast(), u"Enter"_s);
        QVERIFY(form.txtUno->hasFocus());
        form.txtDos->setFocus();
        pressKey(Qt::Key_Return);
        QVERIFY(form.chTres->hasFocus());
    }));
}

void tst_Form::otherKeysAreTheControls()
{
    TestComponent component;
    SampleForm form(component);
    form.setKeys({{Qt::Key_F11, AnyModifiers, WholeForm, form.note(u"F11"_s)}});
    QVERIFY(whileOpen(form, [&form] {
        form.txtUno->setFocus();
        form.txtUno->setText(u"abc"_s);
        pressKey(Qt::Key_Home);
        pressKey(Qt::Key_Delete);
        typeText(u"x"_s);
        QCOMPARE(form.txtUno->text(), u"xbc"_s);
        form.chTres->setFocus();
        pressKey(Qt::Key_Space);
        QVERIFY(form.chTres->isChecked());
        QCOMPARE(form.done, (QStringList{u"design"_s, u"load"_s}));
    }));
}

void tst_Form::modifiersCountExactlyUnlessAnyWillDo()
{
    TestComponent component;
    SampleForm form(component);
    form.setKeys({{Qt::Key_Return, Qt::NoModifier, form.list, form.note(u"Enter"_s)},
                  {Qt::Key_Return, Qt::ControlModifier, form.list, form.note(u"Ctrl+Enter"_s)},
                  {Qt::Key_F6, AnyModifiers, form.list, form.note(u"F6"_s)}});
    QVERIFY(whileOpen(form, [&form] {
        form.list->setFocus();
        form.done.clear();
        pressKey(Qt::Key_Return);
        pressKey(Qt::Key_Return, Qt::ControlModifier);
        pressKey(Qt::Key_Return, Qt::ShiftModifier);
        pressKey(Qt::Key_Return, Qt::ControlModifier | Qt::ShiftModifier);
        pressKey(Qt::Key_F6, Qt::AltModifier);
        QCOMPARE(form.done, (QStringList{u"Enter"_s, u"Ctrl+Enter"_s, u"F6"_s}));
    }));
}

void tst_Form::keypadKeysCountAsTheirTwins()
{
    TestComponent component;
    SampleForm form(component);
    form.setKeys({{Qt::Key_Return, Qt::NoModifier, form.list, form.note(u"Enter"_s)},
                  {Qt::Key_Delete, Qt::NoModifier, form.list, form.note(u"Delete"_s)}});
    QVERIFY(whileOpen(form, [&form] {
        form.list->setFocus();
        form.done.clear();
        pressKey(Qt::Key_Enter, Qt::KeypadModifier);
        pressKey(Qt::Key_Delete, Qt::KeypadModifier);
        QCOMPARE(form.done, (QStringList{u"Enter"_s, u"Delete"_s}));
    }));
}

void tst_Form::firstFittingLineIsObeyed()
{
    TestComponent component;
    SampleForm form(component);
    form.setKeys({{Qt::Key_F5, AnyModifiers, form.list, form.note(u"list"_s)},
                  {Qt::Key_F5, AnyModifiers, WholeForm, form.note(u"form"_s)}});
    QVERIFY(whileOpen(form, [&form] {
        form.done.clear();
        form.list->setFocus();
        pressKey(Qt::Key_F5);
        form.txtUno->setFocus();
        pressKey(Qt::Key_F5);
        QCOMPARE(form.done, (QStringList{u"list"_s, u"form"_s}));
    }));
}

void tst_Form::keysOfAControlNeedTheFocusInIt()
{
    TestComponent component;
    SampleForm form(component);
    auto* group = new QGroupBox(&form);
    auto* groupLayout = new QVBoxLayout(group);
    auto* inGroup = new QLineEdit(group);
    groupLayout->addWidget(inGroup);
    form.body().addWidget(group);
    form.setKeys({{Qt::Key_Delete, AnyModifiers, form.list, form.note(u"list"_s)},
                  {Qt::Key_F6, AnyModifiers, group, form.note(u"group"_s)}});
    QVERIFY(whileOpen(form, [&] {
        form.done.clear();
        form.txtUno->setFocus();
        pressKey(Qt::Key_Delete);
        QCOMPARE(form.txtUno->text(), QString()); // it was all selected
        pressKey(Qt::Key_F6);
        QCOMPARE(form.done, QStringList());
        form.list->setFocus();
        pressKey(Qt::Key_Delete);
        inGroup->setFocus();
        pressKey(Qt::Key_F6);
        QCOMPARE(form.done, (QStringList{u"list"_s, u"group"_s}));
    }));
}

void tst_Form::controlsAddedLaterAreWatched()
{
    TestComponent component;
    SampleForm form(component);
    form.setKeys({{Qt::Key_Delete, AnyModifiers, WholeForm, form.note(u"Delete"_s)}});
    QVERIFY(whileOpen(form, [&form] {
        auto* group = new QGroupBox;
        auto* groupLayout = new QVBoxLayout(group);
        auto* early = new QLineEdit(u"abc"_s, group);
        groupLayout->addWidget(early);
        form.body().addWidget(group); // with a child that it already had
        auto* late = new QLineEdit(u"def"_s);
        groupLayout->addWidget(late);
        for (QLineEdit* box : {early, late}) {
            form.done.clear();
            box->show();
            box->setFocus();
            QVERIFY(box->hasFocus());
            box->setCursorPosition(0);
            pressKey(Qt::Key_Delete);
            QCOMPARE(form.done, QStringList{u"Delete"_s});
            QCOMPARE(box->text().size(), 3);
        }
    }));
}

void tst_Form::keysInAChildDialogAreNotTheForms()
{
    TestComponent component;
    SampleForm form(component);
    form.setKeys({{Qt::Key_F11, AnyModifiers, WholeForm, form.note(u"F11"_s)}});
    QVERIFY(whileOpen(form, [&form] {
        form.done.clear();
        QDialog dialog(&form);
        auto* box = new QLineEdit(&dialog);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QTest::keyClick(box, Qt::Key_F11);
        QCOMPARE(form.done, QStringList());
    }));
}

void tst_Form::keysAreClaimedFromShortcuts()
{
    TestComponent component;
    SampleForm form(component);
    form.setKeys({{Qt::Key_F11, AnyModifiers, WholeForm, form.note(u"F11"_s)}});
    QVERIFY(whileOpen(form, [&form] {
        QAction shortcut;
        shortcut.setShortcut(QKeySequence(Qt::Key_F11));
        shortcut.setShortcutContext(Qt::ApplicationShortcut);
        QObject::connect(&shortcut, &QAction::triggered, &form, form.note(u"shortcut"_s));
        form.addAction(&shortcut);
        form.done.clear();
        QTest::keyClick(form.windowHandle(), Qt::Key_F11);
        QCOMPARE(form.done, QStringList{u"F11"_s});
    }));
}

void tst_Form::procedureMaySetAnotherTable()
{
    TestComponent component;
    SampleForm form(component);
    const auto second = form.note(u"second"_s);
    form.setKeys({{Qt::Key_F5, AnyModifiers, WholeForm, [&form, second] {
                       form.setKeys({{Qt::Key_F5, AnyModifiers, WholeForm, second}});
                       form.done.append(u"first"_s);
                   }}});
    QVERIFY(whileOpen(form, [&form] {
        form.done.clear();
        pressKey(Qt::Key_F5);
        pressKey(Qt::Key_F5);
        QCOMPARE(form.done, (QStringList{u"first"_s, u"second"_s}));
    }));
}

void tst_Form::everyHitRunsOnce()
{
    TestComponent component;
    SampleForm form(component);
    form.setKeys({{Qt::Key_F5, AnyModifiers, WholeForm, form.note(u"F5"_s)}});
    QVERIFY(whileOpen(form, [&form] {
        form.done.clear();
        form.list->setFocus();
        QTest::keyClick(form.windowHandle(), Qt::Key_F5); // as the window system delivers it
        QCOMPARE(form.done, QStringList{u"F5"_s});
    }));
}

void tst_Form::namesAndAccessibleNames()
{
    TestComponent component;
    const SampleForm form(component);
    QCOMPARE(form.objectName(), u"frmMuestra"_s);
    QCOMPARE(form.windowTitle(), u"Muestra"_s);
    QCOMPARE(form.txtUno->objectName(), u"txtUno"_s);
    QCOMPARE(form.txtUno->accessibleName(), u"Uno"_s);
    QCOMPARE(form.chTres->accessibleName(), u"Tres"_s);
    QCOMPARE(form.list->accessibleName(), u"Lista"_s);
    QCOMPARE(form.title->accessibleName(), u"Título"_s);
    const auto labels = form.findChildren<QLabel*>();
    const auto label = std::find_if(labels.begin(), labels.end(), [](const QLabel* l) { return l->text() == u"Uno"; });
    QVERIFY(label != labels.end());
    QCOMPARE((*label)->buddy(), form.txtUno);
}

void tst_Form::titleIsLargerAndHintIsLast()
{
    TestComponent component;
    SampleForm form(component);
    QVERIFY(whileOpen(form, [&form] {
        QVERIFY(form.title->fontInfo().pointSizeF() > form.hint->fontInfo().pointSizeF());
        const auto widgets = form.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        for (const QWidget* widget : widgets) {
            QVERIFY(widget->y() >= form.title->y());
            QVERIFY(widget->geometry().bottom() <= form.hint->geometry().bottom());
        }
        QVERIFY(form.list->y() > form.txtDos->y());
        QCOMPARE(form.hint->text(), u"[F11] Grabar - [ESC] Salir"_s);
    }));
}

void tst_Form::sizesFollowTheFont()
{
    TestComponent component;
    const QFont before = QApplication::font();
    const int narrow = SampleForm(component).txtUno->minimumWidth();
    QFont big = before;
    big.setPointSizeF(before.pointSizeF() * 2);
    QApplication::setFont(big);
    const int wide = SampleForm(component).txtUno->minimumWidth();
    QApplication::setFont(before);
    QVERIFY(wide > narrow * 3 / 2);
}

void tst_Form::openingShowsAllColumnsWhereTheScreenHasRoom()
{
    class WideForm final : public Form
    {
    public:
        WideForm(core::Component& component, int characters) : Form(component, u"frmAncha"_s, u"Ancha"_s)
        {
            list = addList(u"lstV"_s, u"Lista"_s, {{u"A"_s, characters}, {u"B"_s, characters}});
        }
        ListView* list;
    };
    TestComponent component;
    const QSize available = QGuiApplication::primaryScreen()->availableSize();
    const int digit = QFontMetrics(QApplication::font()).horizontalAdvance(u'0');
    WideForm fitting(component, available.width() * 8 / 10 / digit / 2);
    QVERIFY(whileOpen(fitting, [&] {
        QVERIFY(fitting.width() > available.width() * 2 / 3);
        QCOMPARE(fitting.list->horizontalScrollBar()->maximum(), 0);
    }));
    WideForm tooWide(component, available.width() / digit);
    QVERIFY(whileOpen(tooWide, [&] { QVERIFY(tooWide.width() <= available.width()); }));
}

void tst_Form::sizeThatTheUserGaveStays()
{
    TestComponent component;
    SampleForm form(component);
    QSize given;
    QVERIFY(whileOpen(form, [&] {
        given = form.size() + QSize(40, 30);
        form.resize(given);
    }));
    QVERIFY(whileOpen(form, [&] { QCOMPARE(form.size(), given); }));
}

void tst_Form::textsStayWholeHoweverNarrowTheWindow()
{
    class TalkativeForm final : public Form
    {
    public:
        explicit TalkativeForm(core::Component& component) : Form(component, u"frmLarga"_s, u"Larga"_s)
        {
            box = addTextBox(*addFields(), u"txtUno"_s, u"Uno"_s, 70);
            hint = addHint({}, u"[F5] Copiar - [F6] Modificar - [F11] Grabar - [F12] Imprimir - [ESC] Salir"_s);
        }
        QLineEdit* box;
        QLabel* hint;
    };
    TestComponent component;
    TalkativeForm form(component);
    QVERIFY(whileOpen(form, [&form] {
        const int oneLine = form.fontMetrics().lineSpacing();
        QVERIFY(form.hint->height() < 2 * oneLine);
        QVERIFY(form.box->width() > 70 * form.fontMetrics().horizontalAdvance(u'0'));
        const int lowest = form.minimumHeight();
        form.resize(1, 1);
        QTRY_VERIFY(form.hint->height() >= 2 * oneLine);
        QVERIFY(form.hint->height() >= form.hint->heightForWidth(form.hint->width()));
        QVERIFY(form.minimumHeight() > lowest); // wide, it may be lower
        QVERIFY(form.rect().contains(form.box->geometry()));
    }));
}

void tst_Form::valuesAreToldWithTheirLabels()
{
    class ShowingForm final : public Form
    {
    public:
        explicit ShowingForm(core::Component& component) : Form(component, u"frmValor"_s, u"Valor"_s)
        {
            value = addValue(*addFields(), u"lbUno"_s, u"Uno"_s);
            showValue(*value, u"<b>1</b>"_s);
        }
        QLabel* value;
    };
    TestComponent component;
    const ShowingForm form(component);
    QCOMPARE(form.value->text(), u"<b>1</b>"_s);
    QCOMPARE(form.value->textFormat(), Qt::PlainText);
    QCOMPARE(form.value->accessibleName(), u"Uno"_s);
    QCOMPARE(form.value->accessibleDescription(), u"<b>1</b>"_s);
}

void tst_Form::labelsShowTextsAsTheyStand()
{
    TestComponent component;
    const SampleForm form(component);
    QCOMPARE(form.title->textFormat(), Qt::PlainText);
    QCOMPARE(form.hint->textFormat(), Qt::PlainText);
}

void tst_Form::bindersAreMadeAnewAtEachOpening()
{
    TestComponent component;
    SampleForm form(component);
    const auto typed = [&form] {
        form.txtDos->setFocus();
        QTest::keyClick(form.txtDos, Qt::Key_Period, Qt::KeypadModifier);
        return form.txtDos->text();
    };
    QLocale::setDefault(QLocale(u"es_AR"_s));
    QVERIFY(whileOpen(form, [&] { QCOMPARE(typed(), u","_s); }));
    QLocale::setDefault(QLocale(u"en_US"_s));
    QVERIFY(whileOpen(form, [&] { QCOMPARE(typed(), u"."_s); }));
    QLocale::setDefault(QLocale::c());
}

void tst_Form::busyPointerEndsWithItsScope()
{
    try {
        const BusyPointer busy;
        QVERIFY(QGuiApplication::overrideCursor() != nullptr);
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        throw RuntimeError(11);
    } catch (const RuntimeError&) {
        QVERIFY(QGuiApplication::overrideCursor() == nullptr);
    }
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
}

QTEST_MAIN(tst_Form)
#include "tst_Form.moc"
