#include <controls/Contrast.h>

#include <QAccessible>
#include <QApplication>
#include <QFocusFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <tornel/DataFolder.h>
#include <tornel/FirstStart.h>
#include <tornel/HostLooks.h>
#include <tornel/HostSession.h>
#include <tornel/HostWindow.h>

using namespace Qt::StringLiterals;
using namespace tornel;
using oVELDRA::controls::contrastRatio;
using oVELDRA::controls::ReadableContrast;

namespace {

QAccessibleInterface& interfaceOf(QObject* object)
{
    QAccessibleInterface* found = QAccessible::queryAccessibleInterface(object);
    if (found == nullptr) {
        qFatal("no accessible interface");
    }
    return *found;
}

QRect placeOf(const QWidget& control)
{
    return {control.mapTo(control.window(), QPoint()), control.size()};
}

} // namespace

/// The host's window as assistive technology and the Tab key know it, and as it is seen.
class tst_HostAccess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void controlsHaveRolesAndLabels_data();
    void controlsHaveRolesAndLabels();
    void resultsAreToldWithTheirCaptions();
    void tablesTellTheirCells();
    void tabFollowsTheOrderOfReading();
    void focusHasALineAroundIt();
    void nothingIsCutOnASmallScreen();
    void selectionIsReadable_data();
    void selectionIsReadable();
    void selectionFollowsTheTheme();

private:
    QTemporaryDir m_place;
    std::unique_ptr<DataFolder> m_folder;
    std::unique_ptr<HostSession> m_session;
    std::unique_ptr<HostWindow> m_window;
};

void tst_HostAccess::initTestCase()
{
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Argentina));
    m_folder = std::make_unique<DataFolder>(m_place.path());
    QVERIFY(FirstStart(*m_folder).run([](qsizetype, qsizetype) { return true; }));
    m_session = std::make_unique<HostSession>(*m_folder);
    m_window = std::make_unique<HostWindow>(*m_session, m_folder->path());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_HostAccess::cleanupTestCase()
{
    m_window.reset();
    m_session.reset();
    QLocale::setDefault(QLocale::c());
}

void tst_HostAccess::controlsHaveRolesAndLabels_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QAccessible::Role>("role");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("label");
    const auto add = [](const QString& control, QAccessible::Role role, const QString& name,
                        const QString& label = {}) {
        QTest::newRow(qPrintable(control)) << control << role << name << label;
    };
    add(u"txtInterno"_s, QAccessible::EditableText, u"Interno"_s, u"Interno:"_s);
    add(u"txtAduana"_s, QAccessible::EditableText, u"Aduana"_s, u"Aduana:"_s);
    add(u"txtSubitem"_s, QAccessible::EditableText, u"Subítem de exportación"_s, u"Subítem de exportación:"_s);
    add(u"btnMostrar"_s, QAccessible::Button, u"Elegir producto"_s);
    add(u"btnImportar"_s, QAccessible::Button, u"Importar declaración"_s);
    add(u"btnMostrarDIT"_s, QAccessible::Button, u"Declaraciones (DIT)"_s);
    add(u"btnVerINSxSBT"_s, QAccessible::Button, u"Insumos del subítem"_s);
    add(u"tblDeclaraciones"_s, QAccessible::Table, u"Declaraciones de importación temporaria"_s);
    add(u"tblExportaciones"_s, QAccessible::Table, u"Subítems de exportación con descargas"_s);
    add(u"resPRDNRO"_s, QAccessible::StaticText, u"Producto"_s, u"Producto:"_s);
}

void tst_HostAccess::controlsHaveRolesAndLabels()
{
    QFETCH(const QString, control);
    QFETCH(const QAccessible::Role, role);
    QFETCH(const QString, name);
    QFETCH(const QString, label);
    auto* const widget = m_window->findChild<QWidget*>(control);
    QAccessibleInterface& told = interfaceOf(widget);
    QCOMPARE(told.role(), role);
    QCOMPARE(told.text(QAccessible::Name), name);
    QString found;
    for (const auto& [related, kind] : told.relations(QAccessible::Label)) {
        if (const auto* const before = qobject_cast<QLabel*>(related->object())) {
            found = before->text().remove(u'&');
        }
    }
    QCOMPARE(found, label);
}

void tst_HostAccess::resultsAreToldWithTheirCaptions()
{
    for (const QLabel* const label : m_window->findChildren<QLabel*>()) {
        if (label->objectName().startsWith(u"res")) {
            QAccessibleInterface& told = interfaceOf(const_cast<QLabel*>(label));
            QVERIFY(!told.text(QAccessible::Name).isEmpty());
            QCOMPARE(told.text(QAccessible::Description), label->text());
        }
    }
    QCOMPARE(interfaceOf(m_window->findChild<QLabel*>(u"resOK"_s)).text(QAccessible::Description), u"No"_s);
}

void tst_HostAccess::tablesTellTheirCells()
{
    auto* const table = m_window->findChild<QTableView*>(u"tblDeclaraciones"_s);
    QAccessibleTableInterface* const told = interfaceOf(table).tableInterface();
    QVERIFY(told != nullptr);
    QCOMPARE(told->rowCount(), table->model()->rowCount());
    QCOMPARE(told->cellAt(0, 0)->text(QAccessible::Name), u"IT260015"_s);
    QCOMPARE(told->columnDescription(0), u"Interno"_s);
}

void tst_HostAccess::tabFollowsTheOrderOfReading()
{
    m_window->findChild<QLineEdit*>(u"txtInterno"_s)->setFocus();
    const QWidget* before = nullptr;
    for (const QString& name :
         {u"txtInterno"_s, u"txtAduana"_s, u"txtSubitem"_s, u"btnMostrar"_s, u"btnImportar"_s, u"btnMostrarDIT"_s,
          u"btnVerINSxSBT"_s, u"qt_tabwidget_tabbar"_s, u"tblDeclaraciones"_s}) {
        const QWidget* const now = QApplication::focusWidget();
        QCOMPARE(now->objectName(), name);
        QVERIFY(before == nullptr || placeOf(*now).top() > placeOf(*before).bottom() ||
                placeOf(*now).left() > placeOf(*before).right());
        before = now;
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(QApplication::focusWidget()->objectName(), u"txtInterno"_s);
}

void tst_HostAccess::focusHasALineAroundIt()
{
    for (const QString& name : {u"txtInterno"_s, u"btnMostrar"_s, u"tblDeclaraciones"_s}) {
        auto* const control = m_window->findChild<QWidget*>(name);
        control->clearFocus();
        const QImage without = m_window->grab().toImage().convertToFormat(QImage::Format_Grayscale8);
        control->setFocus();
        const QImage with = m_window->grab().toImage().convertToFormat(QImage::Format_Grayscale8);
        const QRect place = placeOf(*control);
        int changed = 0;
        for (int y = place.top() - 3; y <= place.bottom() + 3; ++y) {
            const int x = place.left() - 1; // outside the control
            changed += qGray(without.pixel(x, y)) - qGray(with.pixel(x, y)) > 100 ? 1 : 0;
        }
        QVERIFY2(changed >= place.height(), qPrintable(name));
    }
}

void tst_HostAccess::nothingIsCutOnASmallScreen()
{
    const QSize least = m_window->minimumSizeHint();
    QVERIFY2(least.width() <= 683 && least.height() <= 512 - 60, // 1024 x 768 at 150 %, less the system's bars
             qPrintable(u"%1 x %2"_s.arg(least.width()).arg(least.height())));
    const QSize before = m_window->size();
    m_window->resize(least);
    QTRY_COMPARE(m_window->size(), least);
    for (const QLabel* const label : m_window->findChildren<QLabel*>()) {
        const bool isValue = label->objectName().startsWith(u"res"); // the whole text is its tool tip
        const bool isStatus = label->text().startsWith(u"Datos: ");  // a path, of any length
        if (label->isVisible() && !isValue && !isStatus) {
            QVERIFY2(label->sizeHint().width() <= label->width(), qPrintable(label->text()));
        }
    }
    for (const QPushButton* const button : m_window->findChildren<QPushButton*>()) {
        QVERIFY2(button->sizeHint().width() <= button->width(), qPrintable(button->text()));
    }
    m_window->resize(before);
}

void tst_HostAccess::selectionIsReadable_data()
{
    QTest::addColumn<QColor>("selection");
    QTest::addColumn<QColor>("text");
    QTest::newRow("pale blue under white") << QColor(48, 140, 198) << QColor(Qt::white);
    QTest::newRow("a dark theme's") << QColor(61, 174, 233) << QColor(239, 240, 241);
    QTest::newRow("light under dark") << QColor(120, 150, 180) << QColor(20, 20, 20);
    QTest::newRow("dark blue, which stays") << QColor(0, 0, 128) << QColor(Qt::white);
}

void tst_HostAccess::selectionIsReadable()
{
    QFETCH(const QColor, selection);
    QFETCH(const QColor, text);
    QPalette theme;
    theme.setColor(QPalette::Highlight, selection);
    theme.setColor(QPalette::HighlightedText, text);
    const QColor found = clearSelection(theme);
    QVERIFY2(contrastRatio(found, text) >= ReadableContrast, qPrintable(found.name()));
    if (contrastRatio(selection, text) > 10) {
        QCOMPARE(found, selection);
    }
}

void tst_HostAccess::selectionFollowsTheTheme()
{
    const QPalette before = QApplication::palette();
    QPalette dark(QColor(49, 54, 59), QColor(49, 54, 59));
    dark.setColor(QPalette::Highlight, QColor(61, 174, 233));
    dark.setColor(QPalette::HighlightedText, QColor(239, 240, 241));
    QApplication::setPalette(dark);
    const QPalette& table = m_window->findChild<QTableView*>(u"tblDeclaraciones"_s)->palette();
    QVERIFY(contrastRatio(table.color(QPalette::Highlight), table.color(QPalette::HighlightedText)) >=
            ReadableContrast);
    QApplication::setPalette(before);
}

QTEST_MAIN(tst_HostAccess)
#include "tst_HostAccess.moc"
