#pragma once

#include <controls/Form.h>

class QListView;
class QPlainTextEdit;
class QStringListModel;

namespace oVELDRA::nomenclature {

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

    /// Enter (13) runs the search when there is a text; any other key does nothing.
    void TxtNCMF_KeyPress(int& key);
    void BuscarNCM();
    void MostrarDatos(const QString& position);
};

} // namespace oVELDRA::nomenclature
