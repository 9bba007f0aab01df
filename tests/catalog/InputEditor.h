#pragma once

#include "catalog/FormFixture.h"

#include <catalog/frmAgregarInsumo.h>

namespace oVELDRA::catalog {

/// Where the input editor reports its errors from.
inline const QString inputEditorPlace = QStringLiteral("Sección [oVELDRA.frmAgregarInsumo.lp_AgregarInsumo]");

/// The input editor for the product PM001 of the catalog MOTORES.
class InputEditor : public FormFixture<frmAgregarInsumo>
{
public:
    InputEditor()
    {
        state().currentCatalog = QStringLiteral("MOTORES");
        state().currentProduct = QStringLiteral("PM001");
    }

    void modify(const QString& input)
    {
        state().inputModify = true;
        state().currentInput = input;
    }

    void fillIn(const QString& code, const QString& description, const QString& quantity, const QString& waste = {},
                const QString& loss = {}) const
    {
        text(QStringLiteral("txtARTNRO")).setText(code);
        text(QStringLiteral("txtRPADES")).setText(description);
        text(QStringLiteral("txtRIPCAN")).setText(quantity);
        text(QStringLiteral("txtMerma")).setText(waste);
        text(QStringLiteral("txtPerdida")).setText(loss);
    }
};

} // namespace oVELDRA::catalog
