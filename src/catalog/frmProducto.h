#pragma once

#include <catalog/frmAgregarProducto.h>
#include <catalog/frmCatalogo.h>
#include <controls/Form.h>
#include <core/Component.h>

#include <memory>

namespace oVELDRA::catalog {

class frmCopiar;

/// What makes the dialogs that the product list opens.
struct ProductDialogs
{
    core::ScreenFactory catalogList = [](core::Component& owner) { return std::make_unique<frmCatalogo>(owner); };
    core::ScreenFactory productEditor = [](core::Component& owner) {
        return std::make_unique<frmAgregarProducto>(owner);
    };
};

/// The products of the current catalog, and the picker of the host: a chosen product goes to the results of the shared
/// state.
class frmProducto final : public controls::Form
{
public:
    explicit frmProducto(core::Component& component, ProductDialogs dialogs = {});
    ~frmProducto() override;

    /// Lets the user choose a catalog first when there is no current one.
    void Form_Load() override;
    /// Lists the products of the current catalog. `choose` lets the user choose it anew; without a current catalog
    /// that happens in any case.
    void lp_Cargar_Producto(bool choose);
    /// Takes the selected product into the results. False when it is not there (any more) or an error was reported.
    [[nodiscard]] bool lp_SeleccionarArticulo();
    void ModificarArticulo();
    void EliminarArticulo();

private:
    void designState() override;
    void addProduct();
    void copyProduct();
    void openEditor();
    [[nodiscard]] QString statementEnd(const QString& product) const;
    [[nodiscard]] qint64 deleteProduct(const QString& product);
    void showCatalog(const QString& text);

    ProductDialogs m_dialogs;
    std::unique_ptr<core::Screen> m_catalogList;
    std::unique_ptr<core::Screen> m_productEditor;
    std::unique_ptr<frmCopiar> m_copy;

    QLabel* lbCatalogo;
    controls::ListView* lstV;
};

} // namespace oVELDRA::catalog
