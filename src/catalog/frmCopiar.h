#pragma once

#include <controls/Form.h>

class QComboBox;

namespace oVELDRA::catalog {

/// Shows a product and lets the user choose the catalog and the code to copy it to. It writes nothing: the copy that
/// its hint announces is another component's.
class frmCopiar final : public controls::Form
{
public:
    explicit frmCopiar(core::Component& component);

    /// The product to copy; before showModal().
    void setOrigin(const QString& catalog, const QString& product);

    /// Fills the form on the first activation of an opening; later ones leave it alone.
    void Form_Activate();

private:
    void designState() override;
    bool event(QEvent* event) override;

    QString m_catalog;
    QString m_product;
    bool m_firstTime = true;

    QLabel* lbCATNRO;
    QLabel* lbPRDNRO;
    QComboBox* cboCATNOM; ///< the catalogs' descriptions
    QComboBox* cboCATNRO; ///< their codes, index by index; not seen
    QLineEdit* txtPRDNRO;
};

} // namespace oVELDRA::catalog
