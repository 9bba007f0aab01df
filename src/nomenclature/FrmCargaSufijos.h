#pragma once

#include <controls/ClCntrl.h>
#include <controls/Form.h>

#include <QStringList>

#include <optional>

class QGroupBox;

namespace oVELDRA::nomenclature {

class ListBox;

/// Lets the user choose one of a suffix group's options. The chosen line is then in `chosenSuffix` of the shared state,
/// which the opener empties beforehand: it stays empty when the form is closed without a choice.
class FrmCargaSufijos final : public controls::Form
{
public:
    explicit FrmCargaSufijos(core::Component& component);

    /// The lines to choose from, before the form is shown.
    void setOptions(const QStringList& lines);

    void Form_Load() override;

private:
    void choose();

    std::optional<controls::ClCntrl> m_binder;
    QGroupBox* FrmList;
    ListBox* LstOpcion;
};

} // namespace oVELDRA::nomenclature
