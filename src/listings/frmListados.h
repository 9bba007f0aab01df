#pragma once

#include <controls/Form.h>
#include <listings/DischargeLine.h>

#include <vector>

class QComboBox;
class QRadioButton;

namespace oVELDRA::listings {

class Printers;
class Spooler;

/// Prints the discharges of the current declaration: as pages on a system printer, or as raw text on its queue.
class frmListados final : public controls::Form
{
public:
    /// Printers and spooler are not owned and must outlive the form.
    frmListados(core::Component& component, Printers& printers, Spooler& spooler);

    void Form_Load() override;
    /// Lists the system's printers and picks the user's, if it is one of them.
    void CargarImpresoras();
    /// Reads the discharges. False when there are none or an error was reported.
    [[nodiscard]] bool GenerarLineas();
    void Imprimir();
    /// `key` is a character code; Enter goes on to the next control.
    void cboImpresion_KeyPress(int& key);

    /// What the last GenerarLineas() read.
    [[nodiscard]] const std::vector<DischargeLine>& lines() const { return m_lines; }

private:
    void designState() override;
    void print(int linesPerPage);
    void showMessage(const QString& text);

    Printers& m_printers;
    Spooler& m_spooler;
    std::vector<DischargeLine> m_lines;

    QLabel* lbINTDCL;
    QLabel* lbINTFOF;
    QLabel* lbINTVEN;
    QRadioButton* opMODWIN;
    QRadioButton* opMODDOS;
    QComboBox* cboImpresion;
    QLineEdit* txtIMPTAM;
    QLineEdit* txtPAGLIN;
    QLabel* lbMensaje;
};

} // namespace oVELDRA::listings
