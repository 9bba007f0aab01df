#pragma once

#include <controls/Form.h>

namespace oVELDRA::catalog {

/// Adds a product to the current catalog or changes one, then maintains its inputs. The opener sets `currentProduct`,
/// `productModify` and `productSaved` of the shared state beforehand and reads `productSaved` afterwards.
class frmAgregarProducto final : public controls::Form
{
public:
    explicit frmAgregarProducto(core::Component& component);
};

} // namespace oVELDRA::catalog
