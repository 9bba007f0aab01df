#pragma once

#include <controls/Form.h>

namespace oVELDRA::catalog {

/// Relates an input to the current product or changes such a relation: quantity per unit, waste, loss. The opener sets
/// `currentInput`, `inputModify` and `inputSaved` of the shared state beforehand and reads `inputSaved` afterwards.
class frmAgregarInsumo final : public controls::Form
{
public:
    explicit frmAgregarInsumo(core::Component& component);

    void Form_Load() override;
    void lp_MostrarInsumo();
    void lp_AgregarInsumo();
    void lp_ModificarInsumo();

private:
    void designState() override;
    void save();

    /// Whether the fields can be saved; the user is told what is missing.
    [[nodiscard]] bool fieldsAreComplete() const;
    /// How many relations the current product has with the typed input.
    [[nodiscard]] double countRelations() const;
    /// Runs the statement that writes the relation and tells when it wrote nothing.
    void write(const QString& statement);

    QLabel* lbTit;
    QLabel* lbCatalogo;
    QLabel* lbProducto;
    QLineEdit* txtARTNRO;
    QLineEdit* txtRPADES;
    QLineEdit* txtRIPCAN;
    QLineEdit* txtMerma;
    QCheckBox* chMerma;
    QLineEdit* txtPerdida;
    QCheckBox* chPerdida;
    QCheckBox* chObligatorio;
};

} // namespace oVELDRA::catalog
