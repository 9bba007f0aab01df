#include "HostWindow.h"

#include "HostLists.h"
#include "HostLooks.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;
using oVELDRA::Database;
using oVELDRA::RuntimeError;

namespace tornel {

namespace {

/// A result of the product picker: the property it comes from and what the user calls it.
struct ResultField
{
    QStringView property;
    QStringView caption;
    int row;
    int column;
    int span;
};

constexpr std::array<ResultField, 9> resultFields{{
    {u"OK", u"Elegido", 0, 0, 1},
    {u"CATNRO", u"Catálogo", 0, 1, 1},
    {u"PRDNRO", u"Producto", 0, 2, 1},
    {u"PRDDES", u"Descripción", 1, 0, 2},
    {u"PRDNCM", u"Posición", 1, 2, 1},
    {u"PRDSUF", u"Sufijos", 2, 0, 2},
    {u"PRDUNI", u"Unidad", 2, 2, 1},
    {u"PRDPAI", u"País", 3, 0, 1},
    {u"PRDPRE", u"Precio unitario", 3, 1, 1},
}};

QString number(double value, int decimals)
{
    return QLocale().toString(value, 'f', decimals);
}

QString count(qint64 value)
{
    return QLocale().toString(value);
}

QStandardItem* cell(const QString& text, bool isNumber = false)
{
    auto* const item = new QStandardItem(text);
    item->setEditable(false);
    if (isNumber) {
        item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    return item;
}

struct Header
{
    QString caption;
    bool isNumber;
};

void setHeaders(QStandardItemModel* model, const QList<Header>& headers)
{
    for (int column = 0; column < headers.size(); ++column) {
        auto* const item = new QStandardItem(headers[column].caption);
        item->setTextAlignment((headers[column].isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
        model->setHorizontalHeaderItem(column, item);
    }
}

QTableView* makeTable(const QString& name, const QString& accessibleName)
{
    auto* const table = new QTableView;
    table->setObjectName(name);
    table->setAccessibleName(accessibleName);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setTabKeyNavigation(false);
    table->setAlternatingRowColors(true);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() * 3 / 2);
    table->horizontalHeader()->setHighlightSections(false);
    table->horizontalHeader()->setStretchLastSection(true);
    return table;
}

/// As wide as what they hold, and a little air between them.
void sizeColumns(QTableView* table)
{
    table->resizeColumnsToContents();
    const int air = table->fontMetrics().averageCharWidth() * 2;
    for (int column = 0; column < table->model()->columnCount(); ++column) {
        table->setColumnWidth(column, table->columnWidth(column) + air);
    }
}

/// New rows in the place of the old ones; the current row stays the one that it was.
void replaceRows(QTableView* table, QStandardItemModel* model, const QList<QList<QStandardItem*>>& rows)
{
    const int current = table->currentIndex().row();
    model->setRowCount(0);
    for (const auto& row : rows) {
        model->appendRow(row);
    }
    if (current >= 0 && current < model->rowCount()) {
        table->setCurrentIndex(model->index(current, 0));
    }
}

} // namespace

QString hostTitle()
{
    return u"Tornel"_s;
}

HostWindow::HostWindow(HostSession& session, const QString& dataFolder, QWidget* parent)
    : QMainWindow(parent), m_session(session)
{
    setObjectName(u"winTornel"_s);
    setWindowTitle(u"Tornel: declaraciones del despachante"_s);

    auto* const central = new QWidget;
    auto* const layout = new QVBoxLayout(central);
    layout->addWidget(makeContext());
    layout->addWidget(makeOperations());
    layout->addWidget(makeLists(), 1);
    layout->addWidget(makeResult());
    setCentralWidget(central);
    makeMenus();

    auto* const place = new QLabel(u"Datos: %1"_s.arg(dataFolder));
    place->setTextFormat(Qt::PlainText);
    statusBar()->addWidget(place, 1);
    statusBar()->addPermanentWidget(new QLabel(u"Configuración regional: %1"_s.arg(QLocale().name())));

    surroundFocus(*this);
    makeSelectionClear();

    showProduct();
    m_declarations->setFocus();
}

bool HostWindow::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate) {
        fillLists(); // before the first key
    }
    return QMainWindow::event(event);
}

void HostWindow::paintEvent(QPaintEvent* event)
{
    QMainWindow::paintEvent(event);
    if (!m_filled) {
        QMetaObject::invokeMethod(this, &HostWindow::fillLists, Qt::QueuedConnection);
    }
}

void HostWindow::fillLists()
{
    if (std::exchange(m_filled, true)) {
        return;
    }
    m_exports->setModel(m_exportRows); // nobody sees it before
    connect(m_exports->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { takeExport(current.row()); });
    reloadLists();
    sizeColumns(m_declarations);
    sizeColumns(m_exports);
    m_exports->setCurrentIndex(m_exportRows->index(0, 0));
    m_subitem->clear(); // the declarations are in front
    m_declarations->setCurrentIndex(m_declarationRows->index(0, 0));
}

void HostWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange) {
        makeSelectionClear();
    }
}

void HostWindow::makeSelectionClear()
{
    QPalette own;
    own.setColor(QPalette::Highlight, clearSelection(QApplication::palette(this)));
    setPalette(own);
}

QWidget* HostWindow::makeContext()
{
    auto* const box = new QGroupBox(u"Contexto"_s);
    auto* const layout = new QHBoxLayout(box);
    const auto add = [layout](const QString& name, const QString& caption, const QString& accessibleName, int stretch) {
        auto* const edit = new QLineEdit;
        edit->setObjectName(name);
        edit->setAccessibleName(accessibleName);
        auto* const label = new QLabel(caption);
        label->setBuddy(edit);
        layout->addWidget(label);
        layout->addWidget(edit, stretch);
        return edit;
    };
    m_interno = add(u"txtInterno"_s, u"I&nterno:"_s, u"Interno"_s, 3);
    m_customs = add(u"txtAduana"_s, u"&Aduana:"_s, u"Aduana"_s, 1);
    m_subitem = add(u"txtSubitem"_s, u"S&ubítem de exportación:"_s, u"Subítem de exportación"_s, 2);
    m_customs->setText(u"001"_s);
    return box;
}

QAction* HostWindow::makeOperation(Operation operation, const QString& caption, Qt::Key key, const QString& tip)
{
    auto* const action = new QAction(caption, this);
    action->setShortcut(key);
    action->setStatusTip(tip);
    connect(action, &QAction::triggered, this, [this, operation] { run(operation); });
    m_operations[static_cast<std::size_t>(operation)] = action;
    return action;
}

QWidget* HostWindow::makeOperations()
{
    const auto operation = [this](Operation which, const QString& name, const QString& caption, Qt::Key key,
                                  const QString& tip) {
        QAction* const action = makeOperation(which, caption, key, tip);
        auto* const button =
            new QPushButton(caption + u"  ("_s + action->shortcut().toString(QKeySequence::NativeText) + u')');
        button->setObjectName(name);
        button->setAccessibleName(QString(caption).remove(u'&'));
        button->setAccessibleDescription(tip);
        button->setToolTip(tip);
        button->setMinimumHeight(button->sizeHint().height() * 3 / 2);
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
        return button;
    };
    auto* const panel = new QWidget;
    auto* const layout = new QHBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(operation(Operation::PickProduct, u"btnMostrar"_s, u"&Elegir producto"_s, Qt::Key_F2,
                                u"Elegir un producto de un catálogo"_s));
    layout->addWidget(operation(Operation::Import, u"btnImportar"_s, u"I&mportar declaración"_s, Qt::Key_F3,
                                u"Pasar la declaración del interno al stock de insumos"_s));
    layout->addWidget(operation(Operation::Declarations, u"btnMostrarDIT"_s, u"&Declaraciones (DIT)"_s, Qt::Key_F4,
                                u"Ver y corregir las declaraciones del stock de insumos"_s));
    layout->addWidget(operation(Operation::SubitemInputs, u"btnVerINSxSBT"_s, u"Insumos del &subítem"_s, Qt::Key_F5,
                                u"Ver los insumos que descargó el subítem de exportación"_s));
    return panel;
}

QWidget* HostWindow::makeLists()
{
    m_declarationRows = new QStandardItemModel(this);
    setHeaders(m_declarationRows, {{u"Interno"_s, false},
                                   {u"Ítems"_s, true},
                                   {u"Subítems"_s, true},
                                   {u"FOB total"_s, true},
                                   {u"Cambio FOB"_s, true},
                                   {u"Cambio flete"_s, true},
                                   {u"Cambio seguro"_s, true},
                                   {u"Stock de insumos"_s, false}});
    m_declarations = makeTable(u"tblDeclaraciones"_s, u"Declaraciones de importación temporaria"_s);
    m_declarations->setModel(m_declarationRows);
    connect(m_declarations->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { takeDeclaration(current.row()); });
    connect(m_declarations, &QTableView::activated, this, [this] { run(Operation::Import); });

    m_exportRows = new QStandardItemModel(this);
    setHeaders(m_exportRows, {{u"Interno"_s, false},
                              {u"Subítem"_s, true},
                              {u"Exportación"_s, false},
                              {u"Fecha"_s, false},
                              {u"Factura"_s, false},
                              {u"Descargas"_s, false}});
    m_exports = makeTable(u"tblExportaciones"_s, u"Subítems de exportación con descargas"_s);
    connect(m_exports, &QTableView::activated, this, [this] { run(Operation::SubitemInputs); });

    auto* const tabs = new QTabWidget;
    tabs->setObjectName(u"tabListas"_s);
    tabs->setAccessibleName(u"Listas"_s);
    tabs->addTab(m_declarations, u"Importaciones &temporarias"_s);
    tabs->addTab(m_exports, u"E&xportaciones"_s);
    // The context is the row that is marked in the list in front.
    connect(tabs, &QTabWidget::currentChanged, this, [this](int page) {
        if (page == 0) {
            takeDeclaration(m_declarations->currentIndex().row());
        } else {
            takeExport(m_exports->currentIndex().row());
        }
    });
    return tabs;
}

QWidget* HostWindow::makeResult()
{
    auto* const box = new QGroupBox(u"Producto elegido"_s);
    auto* const grid = new QGridLayout(box);
    for (std::size_t i = 0; i < resultFields.size(); ++i) {
        const ResultField& field = resultFields[i];
        const QString caption = field.caption.toString();
        auto* const value = new QLabel;
        value->setObjectName(u"res"_s + field.property);
        value->setAccessibleName(caption);
        value->setTextFormat(Qt::PlainText);
        value->setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Sunken));
        value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        value->setMinimumWidth(fontMetrics().averageCharWidth() * 14);
        // A long suffix text must not widen the window.
        value->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        auto* const name = new QLabel(caption + u':');
        name->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        name->setBuddy(value);
        grid->addWidget(name, field.row, field.column * 2);
        grid->addWidget(value, field.row, field.column * 2 + 1, 1, field.span * 2 - 1);
        m_result[i] = value;
    }
    for (const int column : {1, 3, 5}) {
        grid->setColumnStretch(column, 1);
    }
    return box;
}

void HostWindow::makeMenus()
{
    QMenu* const operations = menuBar()->addMenu(u"&Operaciones"_s);
    for (QAction* const action : m_operations) {
        operations->addAction(action);
    }
    operations->addSeparator();
    QAction* const quit = operations->addAction(u"&Salir"_s);
    quit->setShortcut(Qt::CTRL | Qt::Key_Q);
    connect(quit, &QAction::triggered, this, &QWidget::close);
}

void HostWindow::run(Operation operation)
{
    try {
        m_session.run(operation, {m_interno->text(), m_customs->text(), m_subitem->text()});
    } catch (const RuntimeError& error) {
        QMessageBox::critical(this, hostTitle(),
                              u"%1 - %2"_s.arg(QString::number(error.number()), error.description()));
    }
    showProduct();
    reloadLists();
}

void HostWindow::reloadLists()
{
    const QScopedValueRollback reloading(m_reloading, true);
    QList<QList<QStandardItem*>> declarations;
    QList<QList<QStandardItem*>> exports;
    try {
        auto& inputs = m_session.database(Database::Inputs);
        for (const auto& row : lists::declarations(m_session.database(Database::Host), inputs)) {
            declarations.append({cell(row.interno), cell(count(row.items), true), cell(count(row.subitems), true),
                                 cell(number(row.fobTotal, 2), true), cell(number(row.fobFactor, 4), true),
                                 cell(number(row.freightFactor, 4), true), cell(number(row.insuranceFactor, 4), true),
                                 cell(row.imported.isEmpty() ? u"Sin importar"_s : row.imported)});
        }
        for (const auto& row : lists::exportSubitems(inputs)) {
            exports.append({cell(row.interno), cell(QString::number(row.subitem), true), cell(row.number),
                            cell(row.date.toString(u"dd/MM/yyyy"_s)), cell(row.invoice), cell(count(row.inputs))});
        }
    } catch (const RuntimeError& error) {
        QMessageBox::critical(
            this, hostTitle(),
            u"No se pueden leer las listas.\n\n%1 - %2"_s.arg(QString::number(error.number()), error.description()));
    }
    replaceRows(m_declarations, m_declarationRows, declarations);
    replaceRows(m_exports, m_exportRows, exports);
}

void HostWindow::showProduct()
{
    const PickedProduct product = m_session.product();
    const std::array<QString, 9> texts{product.ok ? u"Sí"_s : u"No"_s,
                                       product.catalog,
                                       product.code,
                                       product.description,
                                       product.position,
                                       product.suffixes,
                                       product.unit,
                                       product.country,
                                       number(product.price, 2)};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        m_result[i]->setText(texts[i]);
        m_result[i]->setToolTip(texts[i]);
        m_result[i]->setAccessibleDescription(texts[i]); // the name is its caption
    }
}

void HostWindow::takeDeclaration(int row)
{
    if (m_reloading) {
        return;
    }
    if (const QStandardItem* const interno = m_declarationRows->item(row)) {
        m_interno->setText(interno->text());
    }
}

void HostWindow::takeExport(int row)
{
    if (m_reloading) {
        return;
    }
    if (const QStandardItem* const interno = m_exportRows->item(row)) {
        m_interno->setText(interno->text());
        m_subitem->setText(m_exportRows->item(row, 1)->text());
    }
}

} // namespace tornel
