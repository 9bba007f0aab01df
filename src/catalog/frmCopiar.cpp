#include "frmCopiar.h"

#include <controls/BusyPointer.h>
#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <runtime/Texts.h>
#include <runtime/ValueConverter.h>

#include <QComboBox>
#include <QEvent>
#include <QFontMetrics>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace oVELDRA::catalog {

using runtime::toText;
using runtime::Trim;

namespace {

/// Lets `follower` go wherever `combo` goes.
void moveAlong(const QComboBox& combo, QComboBox& follower)
{
    QObject::connect(&combo, &QComboBox::currentIndexChanged, &follower, [&follower](int place) {
        // Without asking first, two combos that are being emptied would send each other on for ever.
        if (follower.currentIndex() != place) {
            follower.setCurrentIndex(place);
        }
    });
}

/// The place of a catalog's code; the first when it is not there, -1 when there is none at all.
int placeOf(const QComboBox& codes, const QString& catalog)
{
    for (int place = 0; place < codes.count(); ++place) {
        if (Trim(codes.itemText(place)) == Trim(catalog)) {
            return place;
        }
    }
    return std::min(0, codes.count() - 1);
}

} // namespace

frmCopiar::frmCopiar(core::Component& component) : Form(component, u"frmCopiar"_s, u"  Copiar Producto"_s)
{
    addTitle(u"Label1"_s, u"ORIGEN"_s);
    QFormLayout& origin = *addFields();
    lbCATNRO = addValue(origin, u"lbCATNRO"_s, u"Catalogo"_s);
    lbPRDNRO = addValue(origin, u"lbPRDNRO"_s, u"Producto"_s);

    body().addSpacing(fontMetrics().height() / 2);
    addTitle(u"Label6"_s, u"DESTINO"_s);
    QFormLayout& destination = *addFields();
    cboCATNOM = new QComboBox(this);
    cboCATNOM->setObjectName(u"cboCATNOM"_s);
    cboCATNOM->setAccessibleName(u"Catalogo"_s);
    // As wide as most descriptions, whatever the longest one is.
    cboCATNOM->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cboCATNOM->setMinimumContentsLength(40);
    destination.addRow(u"Catalogo"_s, cboCATNOM);
    txtPRDNRO = addTextBox(destination, u"txtPRDNRO"_s, u"Producto"_s, 18);

    cboCATNRO = new QComboBox(this);
    cboCATNRO->setObjectName(u"cboCATNRO"_s);
    cboCATNRO->setAccessibleName(u"Catalogo"_s);
    cboCATNRO->hide();
    moveAlong(*cboCATNOM, *cboCATNRO);
    moveAlong(*cboCATNRO, *cboCATNOM);

    addHint(u"Label9"_s, u"[F11] Copiar - [ESC] Cerrar"_s);
    // F11 is announced and has no action here; that is meant so.
    setKeys({{Qt::Key_Escape, controls::AnyModifiers, controls::WholeForm, [this] { unload(); }}});
}

void frmCopiar::setOrigin(const QString& catalog, const QString& product)
{
    m_catalog = catalog;
    m_product = product;
}

void frmCopiar::Form_Activate()
{
    if (!m_firstTime) {
        return;
    }
    m_firstTime = false;
    core::trap(component().prompts(), u" - seccion[oVELDRA.frmCopiar_Activate]", [this] {
        const controls::BusyPointer busy;
        cboCATNOM->clear();
        cboCATNRO->clear();
        showValue(*lbCATNRO, m_catalog);
        showValue(*lbPRDNRO, m_product);

        const auto catalogs = core::rowsOf(*component().state.g_DBINS, u"select * from CAT order by CATDES"_s);
        for (; !catalogs->atEof(); catalogs->moveNext()) {
            const QString description = toText(catalogs->value(u"CATDES"));
            const QString code = toText(catalogs->value(u"CATNRO"));
            cboCATNOM->addItem(description);
            cboCATNRO->addItem(code);
        }
        const int place = placeOf(*cboCATNRO, m_catalog);
        cboCATNOM->setCurrentIndex(place);
        cboCATNRO->setCurrentIndex(place);
    });
}

void frmCopiar::designState()
{
    m_firstTime = true;
    showValue(*lbCATNRO, {});
    showValue(*lbPRDNRO, {});
    cboCATNOM->clear();
    cboCATNRO->clear();
    txtPRDNRO->clear();
    cboCATNOM->setFocus();
}

bool frmCopiar::event(QEvent* event)
{
    const bool recognized = Form::event(event);
    if (event->type() == QEvent::WindowActivate) {
        Form_Activate();
    }
    return recognized;
}

} // namespace oVELDRA::catalog
