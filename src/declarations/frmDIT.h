#pragma once

#include <controls/Form.h>
#include <core/Component.h>

#include <memory>

class QBoxLayout;

namespace oVELDRA::declarations {

/// What makes the dialogs that the declaration browser opens.
struct DeclarationDialogs
{
    core::ScreenFactory editor;
    core::ScreenFactory articleListing;
};

/// The declarations of a range of official dates, to correct, renumber, list the articles of, or delete.
class frmDIT final : public controls::Form
{
public:
    frmDIT(core::Component& component, DeclarationDialogs dialogs);

    /// Lists the current calendar year.
    void Form_Load() override;
    /// A range that is none is reported, and the list stays as it is.
    void Cargar_INTINS();
    /// The following work on the selected row; on an empty list they do nothing.
    void lp_ModificarDIT();
    void lp_ModificarDCL();
    void lp_Ver_DITART();
    /// True when the declaration is gone from its three tables and from the list.
    bool f_EliminarDIT();

private:
    void designState() override;
    QLineEdit* addDate(QBoxLayout& line, const QString& name, const QString& labelName, const QString& label);
    void requireRange() const;
    void showDialog(std::unique_ptr<core::Screen>& dialog, const core::ScreenFactory& factory);
    /// Shows in a row what the editor saved.
    void refreshRow(int row, const core::CurrentDeclaration& saved);

    DeclarationDialogs m_dialogs;
    std::unique_ptr<core::Screen> m_editor;
    std::unique_ptr<core::Screen> m_articleListing;

    QLineEdit* txtDESDE;
    QLineEdit* txtHASTA;
    controls::ListView* lstVDIT;
};

} // namespace oVELDRA::declarations
