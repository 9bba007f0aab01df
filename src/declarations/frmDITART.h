#pragma once

#include <controls/Form.h>
#include <declarations/ReportDialogs.h>

#include <memory>

namespace oVELDRA::declarations {

/// The articles of the current declaration, and how much of each is still available; those that run short are red.
class frmDITART final : public controls::Form
{
public:
    /// The dialogs are those of the report's preview.
    explicit frmDITART(core::Component& component, ReportDialogs dialogs = {});

    void Form_Load() override;
    /// When an article's numbers give an error, the list ends before it.
    void lp_CargarListado();
    /// Shows the report of the articles until it is closed; no report without articles.
    void lp_Imprimir();

private:
    void designState() override;
    /// The current declaration's number as a literal.
    [[nodiscard]] QString declaration() const;

    ReportDialogs m_dialogs;

    controls::ListView* lstV;
};

} // namespace oVELDRA::declarations
