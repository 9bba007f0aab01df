#pragma once

#include "catalog/FormFixture.h"

#include <catalog/frmAgregarProducto.h>

#include <algorithm>
#include <functional>
#include <tuple>

namespace oVELDRA::catalog {

// Where the product editor reports its errors from.
inline const QString addPlace = QStringLiteral(" - Seccion [oVELDRA.frmAgregarProducto.lp_Agregar_Producto] ::");
inline const QString modifyPlace = QStringLiteral(" - Seccion [oVELDRA.frmAgregarProducto.lp_Modificar_Producto] ::");
inline const QString showPlace = QStringLiteral(" - Seccion [oVELDRA.frmAgregarProducto.lp_Mostrar_Producto] ::");
inline const QString listPlace = QStringLiteral(" - Seccion [oVELDRA.frmAgregarProducto.lp_InsumosLista]");
inline const QString deletePlace = QStringLiteral(" - Seccion [oVELDRA.frmAgregarProducto.lp_EliminarInsumo]");

/// Its text boxes, in reading order.
inline const QStringList boxNames =
    QStringLiteral("txtPRDNRO txtPRDDES txtPRDNCM txtPRDMUL txtPRDUNI txtPRDPRE txtPRDKGU txtPRDPAI")
        .split(QLatin1Char(' '));

/// What was asked of the collaborators, and what they answer.
struct Collaborators
{
    QStringList searched;                            ///< the texts that positions were searched by
    QString chosen;                                  ///< the position that is chosen then
    QList<std::tuple<QString, QString, int>> checks; ///< position, suffixes and mode
    QString suffixes = QStringLiteral("AB01-");
    std::function<void()> duringCheck = [] {};
    QStringList edited;        ///< the inputs that the input editor was opened for, "+" to add
    bool inputIsSaved = false; ///< by the input editor
};

/// The product editor in the catalog MOTORES, with doubles for the screens that it opens.
class ProductEditor : public FormFixture<frmAgregarProducto>
{
public:
    ProductEditor()
        : FormFixture(ProductRoutines{.searchPosition =
                                          [this](const QString& text) {
                                              collaborators.searched.append(state().chosenPosition + text);
                                              state().chosenPosition = collaborators.chosen;
                                          },
                                      .verifySuffixes =
                                          [this](const QString& position, const QString& suffixes, int mode) {
                                              collaborators.checks.append({position, suffixes, mode});
                                              collaborators.duringCheck();
                                              return collaborators.suffixes;
                                          },
                                      .editInput =
                                          [this] {
                                              const QString mark =
                                                  state().inputModify ? QString() : QStringLiteral("+");
                                              collaborators.edited.append(mark + state().currentInput);
                                              collaborators.edited.append(state().inputSaved ? QStringLiteral("saved")
                                                                                             : QStringLiteral("clear"));
                                              state().inputSaved = collaborators.inputIsSaved;
                                          }})
    {
        state().currentCatalog = QStringLiteral("MOTORES");
    }

    [[nodiscard]] controls::ListView& list() const { return listView(QStringLiteral("lstVInsumos")); }

    void modify(const QString& product)
    {
        state().productModify = true;
        state().currentProduct = product;
    }

    /// Fills the boxes in, in the order of boxNames.
    void fillIn(const QStringList& values) const
    {
        for (qsizetype field = 0; field < values.size(); ++field) {
            text(boxNames.at(field)).setText(values.at(field));
        }
    }
    void fillIn() const
    {
        fillIn(QStringLiteral("PM001|Motor|8501.10.19.000A|1|07|3,5|1,25|200").split(QLatin1Char('|')));
    }
    [[nodiscard]] QStringList values() const
    {
        QStringList values;
        for (const QString& name : boxNames) {
            values.append(text(name).text());
        }
        return values;
    }
    [[nodiscard]] bool boxesAreEnabled(bool enabled) const
    {
        return std::all_of(boxNames.begin(), boxNames.end(),
                           [&](const QString& name) { return text(name).isEnabled() == enabled; });
    }

    Collaborators collaborators;
};

} // namespace oVELDRA::catalog
