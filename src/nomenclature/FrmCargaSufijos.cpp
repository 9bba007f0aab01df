#include "FrmCargaSufijos.h"

#include <nomenclature/ListBox.h>

#include <QGroupBox>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace oVELDRA::nomenclature {

FrmCargaSufijos::FrmCargaSufijos(core::Component& component)
    : Form(component, u"FrmCargaSufijos"_s, u"Carga de Sufijos"_s)
{
    const QString title = u"Selecione una Opción"_s;
    FrmList = new QGroupBox(title, this);
    FrmList->setObjectName(u"FrmList"_s);
    FrmList->setAccessibleName(title);
    FrmList->hide();
    LstOpcion = new ListBox(u"LstOpcion"_s, title, LineLayout::Wrapped, {72, 14});
    auto* frame = new QVBoxLayout(FrmList);
    frame->addWidget(LstOpcion);
    body().addWidget(FrmList, 1);
    addHint({}, u"[ENTER] Seleccionar - [ESC] Salir"_s);

    QObject::connect(LstOpcion, &QListView::doubleClicked, this, [this] { choose(); });
    setKeys({{Qt::Key_Return, controls::AnyModifiers, LstOpcion, [this] { choose(); }},
             {Qt::Key_Escape, controls::AnyModifiers, controls::WholeForm, [this] { unload(); }}});
}

void FrmCargaSufijos::setOptions(const QStringList& lines)
{
    FrmList->show();
    LstOpcion->setLines(lines);
}

void FrmCargaSufijos::Form_Load()
{
    m_binder.emplace(component().prompts()).sLinkListBox(LstOpcion);
    LstOpcion->selectFirstLine();
    LstOpcion->setFocus();
}

void FrmCargaSufijos::choose()
{
    if (LstOpcion->currentIndex().isValid()) {
        component().state.chosenSuffix = LstOpcion->selectedLine();
        unload();
    }
}

} // namespace oVELDRA::nomenclature
