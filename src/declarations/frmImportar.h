#pragma once

#include <controls/Form.h>
#include <declarations/ImportarInterno.h>

#include <functional>

class QFrame;
class QProgressBar;

namespace oVELDRA::declarations {

/// What the import screen runs.
struct ImportRoutines
{
    std::function<decltype(_VerificarIntegridadInterno)> verify = _VerificarIntegridadInterno;
    std::function<decltype(ImportarInterno)> import = ImportarInterno;
};

/// Takes one declaration of the host into the stock of inputs.
class frmImportar final : public controls::Form
{
public:
    explicit frmImportar(core::Component& component, ImportRoutines routines = {});

    void Form_Load() override;
    void lp_Procesar();

private:
    /// How far a run came, and with which status.
    struct Outcome
    {
        QString status;
        bool imported; ///< past the integrity check and the official date
    };

    void designState() override;
    void process();
    [[nodiscard]] QString inputFault() const;
    [[nodiscard]] Outcome verifyAndImport();
    void showStatus(const QString& text, quint32 color);

    ImportRoutines m_routines;
    bool m_processing = false;

    QLineEdit* txtINTNRO;
    QLineEdit* txtINTDCL;
    QLineEdit* txtINTFOF;
    QLineEdit* txtINTDES;
    QLineEdit* txtAduana;
    QLineEdit* txtVEN;
    QCheckBox* chkAjustes;
    QCheckBox* chOK;
    QFrame* framProgress;
    QProgressBar* ProgressBar1;
    QLabel* lbTexto;
    QLabel* lbversion;
};

} // namespace oVELDRA::declarations
