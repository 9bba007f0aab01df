#pragma once

#include <controls/Form.h>
#include <core/Component.h>

#include <memory>

namespace oVELDRA::declarations {

/// Corrects the header of the current declaration. The opener sets `declaration` of the shared state beforehand; what
/// was saved, and whether, is there afterwards.
class frmMODDIT final : public controls::Form
{
public:
    /// The listing is that of the declaration's discharges.
    frmMODDIT(core::Component& component, core::ScreenFactory dischargeListing);

    void Form_Load() override;
    /// False when the declaration is not there or an error was reported.
    bool fp_CargarDIT();
    /// Writes the header and hands it back. False when nothing was written.
    [[nodiscard]] bool fp_ModificarDIT();

private:
    void designState() override;
    /// Hands on what the boxes say about the declaration, saved or not, and opens the listing of its discharges.
    void listDischarges();
    void requireFields() const;

    core::ScreenFactory m_makeListing;
    std::unique_ptr<core::Screen> m_listing;

    QLabel* lbINTDCL;
    QLineEdit* txtINTNRO;
    QLineEdit* txtINTDES;
    QLineEdit* txtINTCTC;
    QLineEdit* txtINTFOF;
    QLineEdit* txtINTVEN;
    QCheckBox* chDITOK;
};

} // namespace oVELDRA::declarations
