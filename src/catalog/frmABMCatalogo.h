#pragma once

#include <controls/Form.h>

namespace oVELDRA::catalog {

/// Adds a catalog or changes the description of the current one. The opener sets `currentCatalog` and `catalogModify`
/// of the shared state, clears `catalogSaved` beforehand and reads it afterwards.
class frmABMCatalogo final : public controls::Form
{
public:
    explicit frmABMCatalogo(core::Component& component);

    void Form_Load() override;
    void lp_Mostrar_Catalogo();
    /// Both write the catalog and answer `catalogSaved`.
    [[nodiscard]] bool lp_Agregar_Catalogo();
    [[nodiscard]] bool lp_Modificar_Catalogo();

private:
    void designState() override;
    void save();

    QLineEdit* txtCATNRO;
    QLineEdit* txtCATDES;
};

} // namespace oVELDRA::catalog
