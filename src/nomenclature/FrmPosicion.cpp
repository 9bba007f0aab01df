#include "FrmPosicion.h"

#include <controls/BusyPointer.h>
#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <core/Prompts.h>
#include <nomenclature/ListBox.h>
#include <nomenclature/Position.h>
#include <nomenclature/SuffixText.h>
#include <runtime/Texts.h>
#include <runtime/ValueConverter.h>

#include <QFontDatabase>
#include <QFormLayout>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace oVELDRA::nomenclature {

namespace {

constexpr int EnterKey = 13;

bool isArrow(int key)
{
    return key == Qt::Key_Left || key == Qt::Key_Up || key == Qt::Key_Right || key == Qt::Key_Down;
}

} // namespace

FrmPosicion::FrmPosicion(core::Component& component) : Form(component, u"FrmPosicion"_s, u"Buscar Posición"_s)
{
    addTitle({}, windowTitle());
    TxtNCMF = addTextBox(*addFields(), u"TxtNCMF"_s, u"Posición"_s, 18);
    LstNCM = new ListBox(u"LstNCM"_s, u"Posiciones"_s, LineLayout::OneHeight, {20, 20});
    LbDescripcion = new QPlainTextEdit;
    LbDescripcion->setObjectName(u"LbDescripcion"_s);
    LbDescripcion->setAccessibleName(u"Descripción"_s);
    LbDescripcion->setReadOnly(true);
    LbDescripcion->setUndoRedoEnabled(false);
    LbDescripcion->setTabChangesFocus(true);
    LstSufijos = new ListBox(u"LstSufijos"_s, u"Sufijos"_s, LineLayout::Wrapped, {60, 10});
    // Codes of 5 characters stand directly before their details; only a fixed pitch keeps the details in a column.
    QFont fixedPitch = font();
    fixedPitch.setFamilies(QFontDatabase::systemFont(QFontDatabase::FixedFont).families());
    fixedPitch.setFixedPitch(true);
    LstSufijos->setFont(fixedPitch);

    auto* grid = new QGridLayout;
    const auto place = [&](QWidget* control, int row, int column, int rows) {
        auto* label = new QLabel(control->accessibleName());
        label->setBuddy(control);
        grid->addWidget(label, row, column);
        grid->addWidget(control, row + 1, column, rows, 1);
        grid->setRowStretch(row + 1, 1);
    };
    place(LstNCM, 0, 0, 3);
    place(LbDescripcion, 0, 1, 1);
    place(LstSufijos, 2, 1, 1);
    grid->setColumnStretch(1, 1);
    grid->setHorizontalSpacing(fontMetrics().height());
    body().addLayout(grid, 1);
    addHint({}, u"[ENTER] Buscar / Seleccionar - [ESC] Salir"_s);

    const auto searchByKey = [this] {
        int key = EnterKey;
        TxtNCMF_KeyPress(key);
    };
    setKeys({{Qt::Key_Return, controls::AnyModifiers, TxtNCMF, searchByKey},
             {Qt::Key_Return, controls::AnyModifiers, LstNCM, [this] { choose(); }},
             {Qt::Key_Escape, controls::AnyModifiers, controls::WholeForm, [this] { unload(); }},
             {Qt::Key_C, Qt::ControlModifier, controls::WholeForm, [this] { unload(); }}});
}

void FrmPosicion::setSearchText(const QString& text)
{
    clear();
    TxtNCMF->setText(text);
}

void FrmPosicion::Form_Load()
{
    m_binder.emplace(component().prompts()).sLinkListBox(LstSufijos);
    if (LstNCM->lineCount() > 0) {
        LstNCM->setFocus();
    } else {
        TxtNCMF->setFocus();
    }
}

void FrmPosicion::showModal()
{
    Form::showModal();
    clear();
}

void FrmPosicion::TxtNCMF_KeyPress(int& key)
{
    if (key == EnterKey && !runtime::Trim(TxtNCMF->text()).isEmpty()) {
        search(u"Posición no encontrada."_s);
    }
}

void FrmPosicion::BuscarNCM()
{
    search(u"Posición no Encontrada."_s);
}

void FrmPosicion::MostrarDatos(const QString& position)
{
    core::trap(component().prompts(), u"Sección [oVELDRA.FrmPosicion.MostrarDatos]", [&] {
        QString description;
        QStringList lines;
        // What was there before goes in any case, and what was found before an error is shown.
        const auto show = qScopeGuard([&] {
            // Through the document: the control's own setter lays the text out once more for a cursor nobody sees.
            LbDescripcion->document()->setPlainText(description);
            LstSufijos->setLines(lines);
        });
        const controls::BusyPointer busy;
        const PositionParts parts = splitPosition(position);
        const auto row = core::rowsOf(
            *component().state.g_DBNCM,
            u"Select [010] as descrip,[004] as descrip1, [012] as estadistica,[020] as deresp, [059],[019] as rein from ncm where [001] = "_s +
                core::quoted(parts.subheading) + u" and [002] = "_s + core::quoted(parts.opening) + u" and [003] = "_s +
                core::quoted(parts.control));
        if (!row->atEof()) {
            description =
                runtime::toText(row->value(u"Descrip")) + u"\r\n\r\n"_s + runtime::toText(row->value(u"descrip1"));
        }
        const auto rules = core::rowsOf(*component().state.g_DBNCM,
                                        u"select * from sufidos where sim in "_s + suffixKeyList(position));
        for (; !rules->atEof(); rules->moveNext()) {
            lines.append(ruleLine(runtime::toText(rules->value(u"Sufijo")), runtime::toText(rules->value(u"detalle"))));
        }
    });
}

bool FrmPosicion::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == LstNCM && event->type() == QEvent::KeyRelease) {
        const auto& key = *static_cast<const QKeyEvent*>(event);
        if (isArrow(key.key()) && !key.isAutoRepeat()) { // a held key shows where it stops
            showSelected();
        }
    }
    return Form::eventFilter(watched, event);
}

void FrmPosicion::search(const QString& notFound)
{
    core::trap(component().prompts(), u"Sección []", [&] {
        if (listPositions() == 0) {
            component().prompts().messageBox(notFound, core::ExclamationBox);
        }
        LstNCM->selectFirstLine();
    });
}

qsizetype FrmPosicion::listPositions()
{
    const controls::BusyPointer busy;
    LstNCM->setLines({});
    QStringList lines;
    const auto showLines = qScopeGuard([&] { LstNCM->setLines(lines); }); // also those before an error
    const auto rows = core::rowsOf(
        *component().state.g_DBNCM,
        u"select [001]+ '.' +[002] + [003] as ncm,[012] as estadistica,[020] as deresp from ncm where [001] like "_s +
            core::quoted(searchPattern(TxtNCMF->text())) + u" order by [001],[002],[003]"_s);
    for (; !rows->atEof(); rows->moveNext()) {
        lines.append(runtime::Trim(runtime::toText(rows->value(u"NCM"))));
    }
    return lines.size();
}

void FrmPosicion::showSelected()
{
    if (LstNCM->currentIndex().isValid()) {
        MostrarDatos(LstNCM->selectedLine());
    }
}

void FrmPosicion::choose()
{
    if (LstNCM->currentIndex().isValid()) {
        component().state.chosenPosition = LstNCM->selectedLine();
        unload();
    }
}

void FrmPosicion::clear()
{
    TxtNCMF->clear();
    LstNCM->setLines({});
    LbDescripcion->clear();
    LstSufijos->setLines({});
}

} // namespace oVELDRA::nomenclature
