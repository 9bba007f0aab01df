#pragma once

#include <controls/Form.h>

#include <QVariant>

#include <functional>
#include <initializer_list>
#include <memory>

namespace oVELDRA::nomenclature {
class FrmPosicion;
} // namespace oVELDRA::nomenclature

namespace oVELDRA::catalog {

class frmAgregarInsumo;

/// What the product editor calls outside itself. One that is missing is the component's own.
struct ProductRoutines
{
    /// Searches positions that begin with a text; one that the user chose is in `chosenPosition` then.
    std::function<void(const QString& text)> searchPosition = nullptr;
    /// Answers the suffix text to store for a position.
    std::function<QString(const QString& position, const QString& suffixes, int mode)> verifySuffixes = nullptr;
    /// Adds or changes `currentInput` of the current product; `inputSaved` tells whether it did.
    std::function<void()> editInput = nullptr;
};

/// Adds a product to the current catalog or changes one, then maintains its inputs. The opener sets `currentProduct`,
/// `productModify` and `productSaved` of the shared state beforehand and reads `productSaved` afterwards.
class frmAgregarProducto final : public controls::Form
{
public:
    explicit frmAgregarProducto(core::Component& component, ProductRoutines routines = {});
    ~frmAgregarProducto() override;

    void Form_Load() override;
    void lp_Mostrar_Producto();
    void lp_Agregar_Producto();
    void lp_Modificar_Producto();
    void lp_InsumosLista(const QString& product, const QString& catalog);
    void lp_AgregarInsumo();
    void lp_ModificarInsumo();
    void lp_EliminarInsumo();

    /// The editor's ready-made check of a typed position; no screen runs it at present. See nomenclature/ProcesarNCM.h.
    [[nodiscard]] QString ProcesarNCM(QString& position) const;
    /// The place of a check that was never made: answers an empty value.
    [[nodiscard]] static QVariant f_ValirNCM() { return {}; }
    /// The suffix text to store for a position; see nomenclature/VerificarSufijos.h.
    [[nodiscard]] QString VerificarSufijos(const QString& position, const QString& suffixes, int mode = 0) const;
    /// A typed suffix value and one character of it, cleaned; see nomenclature/SuffixText.h.
    [[nodiscard]] QString m_sVALSUF(const QString& value) const;
    [[nodiscard]] QString m_sVALCHAR(const QString& character) const;

private:
    enum class Check { Code, Multiplier, Position, Unit };

    void designState() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    /// False until the product has been written in this opening. It decides which keys act.
    void setStored(bool stored);
    void save();
    void searchPosition();
    void editInput();

    /// Runs the checks in their order; the user is told of the first that fails.
    [[nodiscard]] bool passes(std::initializer_list<Check> checks) const;
    [[nodiscard]] QString faultOf(Check check) const;
    /// How many products of the current catalog have the code.
    [[nodiscard]] double countProducts(const QString& code) const;
    void showSuffixes(const QString& suffixes);
    /// After the product was written: from the product to its inputs.
    void switchToInputs(const QString& code, const QString& suffixes);

    ProductRoutines m_routines;
    std::unique_ptr<nomenclature::FrmPosicion> m_positions;
    std::unique_ptr<frmAgregarInsumo> m_inputEditor;

    QLineEdit* txtPRDNRO;
    QLineEdit* txtPRDDES;
    QLineEdit* txtPRDNCM;
    QLineEdit* txtPRDMUL;
    QLineEdit* txtPRDUNI;
    QLineEdit* txtPRDPRE;
    QLineEdit* txtPRDKGU;
    QLineEdit* txtPRDPAI;
    QLabel* lbSufijos;
    controls::ListView* lstVInsumos;
    QLabel* lbInsumo;
    QLabel* lbTeclas;
};

} // namespace oVELDRA::catalog
