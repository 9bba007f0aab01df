#pragma once

#include <controls/Form.h>

#include <memory>

namespace oVELDRA::catalog {

class frmABMCatalogo;

/// The catalog list. The catalog that the user chose is in `currentCatalog` of the shared state.
///
/// Adding and changing move `currentCatalog` too, saved or not, so that leaving the list without a choice may also
/// leave another current catalog than before, or none.
class frmCatalogo final : public controls::Form
{
public:
    explicit frmCatalogo(core::Component& component);
    ~frmCatalogo() override;

    void Form_Load() override;
    void lp_Cargar_Catalogo();
    /// Makes the selected catalog the current one. False when the list is empty; then nothing changes.
    [[nodiscard]] bool lp_Seleccionar_Catalogo();
    void lp_Agregar_Catalogo();
    void lp_Modificar_Catalogo();
    /// Only deletes, whatever its name says.
    void lp_Modificar_Eliminar();

private:
    void designState() override;
    void maintain(bool modify, const QString& catalog);
    [[nodiscard]] qint64 deleteCatalog(const QString& catalog);

    controls::ListView* LstvCat;
    std::unique_ptr<frmABMCatalogo> m_dialog;
};

} // namespace oVELDRA::catalog
