#pragma once

#include <controls/Form.h>

namespace oVELDRA::catalog {

/// The catalog list. The catalog that the user chose is in `currentCatalog` of the shared state.
class frmCatalogo final : public controls::Form
{
public:
    explicit frmCatalogo(core::Component& component);
};

} // namespace oVELDRA::catalog
