#pragma once

#include <controls/Form.h>

namespace oVELDRA::listings {

/// The declared inputs that one export subitem discharged: the export and subitem that the host set before.
class frmVerINSxSBT final : public controls::Form
{
public:
    explicit frmVerINSxSBT(core::Component& component);

    void Form_Load() override;
    void Cargar_Insumos();

private:
    void designState() override;

    controls::ListView* lstView;
};

} // namespace oVELDRA::listings
