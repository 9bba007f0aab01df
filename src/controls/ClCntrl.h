#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <optional>

class QComboBox;
class QFocusEvent;
class QKeyEvent;
class QLineEdit;
class QListView;
class QPoint;
class QWidget;

namespace oVELDRA::core {
class Prompts;
} // namespace oVELDRA::core

namespace oVELDRA::controls {

/// Gives a text box the keys and colours that all entry screens share; one object per text box. It can also hold a list
/// box and a combo box for incremental search.
///
/// The text box's dynamic property "Tag" chooses its style, read at each focus change:
/// - it ends with "#F6": light orange and all selected on focus, white on leaving (but left as it is when the tag also
///   begins with "BB");
/// - it begins with "BB": left alone;
/// - else: light green and all selected on focus, white on leaving.
class ClCntrl final : public QObject
{
public:
    /// Where the decimal separator comes from; nothing when it cannot be found out.
    using SeparatorSource = std::function<std::optional<QString>()>;

    static constexpr quint32 FocusColor = 12648384;       ///< light green
    static constexpr quint32 MarkedFocusColor = 14083326; ///< light orange, for tags that end with "#F6"
    static constexpr quint32 RestColor = 16777215;        ///< white

    /// Reads the decimal separator once. `prompts` is not owned and must outlive the object.
    explicit ClCntrl(core::Prompts& prompts, SeparatorSource source = userSeparator);

    /// Selects the first item of the bound list box that begins with `text`; nothing when none does.
    /// RuntimeError 91 without a list box.
    void LstBuscarStr(const QString& text);
    /// The same for the bound combo box.
    void BuscarCBO(const QString& text);

    /// The decimal separator of the user's locale, read anew; empty when it cannot be found out, which the user is
    /// told.
    QString Separador_Decimal();
    /// The same.
    QString Obtener_Sep_Decim();
    void ObtenerDecimal();

    /// Binds a control, in place of the one of its kind that was bound. Not owned; it may die first.
    void sLinkText(QLineEdit* textBox);
    void sLinkListBox(QListView* listBox);
    void sLinkCBoBox(QComboBox* comboBox);

    /// Empties every text box of a screen; other controls, also those with a text box inside, are left as they are.
    void VaciarTxt(QWidget& screen);

private:
    [[nodiscard]] static std::optional<QString> userSeparator();

    bool eventFilter(QObject* watched, QEvent* event) override;
    bool gotFocus(const QFocusEvent& event);
    void lostFocus();
    bool keyDown(const QKeyEvent& event);
    bool keyPress(const QKeyEvent& event);
    void mouseMoveOverList(QPoint point);
    [[nodiscard]] QString tag() const;

    core::Prompts& m_prompts;
    SeparatorSource m_source;
    QPointer<QLineEdit> m_textBox;
    QPointer<QListView> m_listBox;
    QPointer<QComboBox> m_comboBox;
    QString m_decimalSeparator;
    bool m_keypadDecimalDown = false;
};

} // namespace oVELDRA::controls
