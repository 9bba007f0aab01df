#pragma once

#include <controls/ClCntrl.h>
#include <controls/Form.h>

#include <optional>

class QPlainTextEdit;

namespace oVELDRA::nomenclature {

class ListBox;

/// Searches tariff positions by prefix, shows their descriptions and suffixes, and hands one back.
///
/// The opener empties `chosenPosition` of the shared state, fills TxtNCMF, calls TxtNCMF_KeyPress(13) to search at once
/// and shows the form; a position that the user chose is then in `chosenPosition`.
class FrmPosicion final : public controls::Form
{
public:
    explicit FrmPosicion(core::Component& component);

    /// The prefix to search for.
    void setSearchText(const QString& text);

    void Form_Load() override;
    /// Contents belong to one opening: they are filled in before it and gone after it.
    void showModal() override;

    /// Enter (13) runs the search when there is a text; any other key does nothing.
    void TxtNCMF_KeyPress(int& key);
    void BuscarNCM();
    void MostrarDatos(const QString& position);

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void search(const QString& notFound);
    /// How many positions were found.
    [[nodiscard]] qsizetype listPositions();
    void showSelected();
    void choose();
    void clear();

    std::optional<controls::ClCntrl> m_binder;
    QLineEdit* TxtNCMF;
    ListBox* LstNCM = nullptr; // events come in before it is made
    QPlainTextEdit* LbDescripcion;
    ListBox* LstSufijos;
};

} // namespace oVELDRA::nomenclature
