#pragma once

#include <controls/ListModel.h>
#include <core/Component.h>

#include <QDialog>
#include <QString>

#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <vector>

class QCheckBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QVBoxLayout;

namespace oVELDRA::controls {

class ClCntrl;
class ListView;

/// A line of a form's key table: what a key does, where.
struct KeyBinding
{
    int key;                                        ///< Qt::Key_Return stands for both Enter keys
    std::optional<Qt::KeyboardModifiers> modifiers; ///< Shift, Control and Alt exactly so; nothing: any
    const QWidget* control;                         ///< with the focus in this control; null: anywhere in the form
    std::function<void()> procedure;
};

/// The modifiers of a KeyBinding that does not care.
inline constexpr std::nullopt_t AnyModifiers = std::nullopt;
/// The control of a KeyBinding that is the whole form's.
inline constexpr const QWidget* WholeForm = nullptr;

/// The base of all screens: modal, driven by a key table, kept between its openings.
///
/// The key table comes before the controls, which would swallow keys like Delete or Home; the first line that fits is
/// obeyed and the key goes no further. Keys that are not in the table are the controls'. Escape and Enter do nothing
/// of their own accord.
class Form : public QDialog, public core::Screen
{
public:
    Form(core::Component& component, const QString& name, const QString& caption);
    ~Form() override;

    /// Puts the form into its design state, runs Form_Load() and shows the form until it is unloaded.
    void showModal() override;
    void unload();

    /// What the form does before it is shown.
    virtual void Form_Load() {}

    /// The narrowest and, so narrow, lowest size at which no text is cut off.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    /// Contents, flags and focus as the form was designed: what an earlier opening left must not show.
    virtual void designState() {}

    void setKeys(std::vector<KeyBinding> keys);

    /// Binds each text box to a binder of its own, until the next opening.
    void bindTextBoxes(std::initializer_list<QLineEdit*> textBoxes);

    /// The building blocks, from top to bottom as they are called. Names are contract names and may be empty.
    QLabel* addTitle(const QString& name, const QString& text);
    QLabel* addText(const QString& name, const QString& text);
    QFormLayout* addFields();
    /// A text box with its label before it; `characters` is how many it shows where there is room.
    QLineEdit* addTextBox(QFormLayout& fields, const QString& name, const QString& label, int characters);
    /// A text of the record that is shown, with its label before it. Assistive technology hears the label as its name
    /// and the text as its description.
    QLabel* addValue(QFormLayout& fields, const QString& name, const QString& label);
    static void showValue(QLabel& value, const QString& text);
    QCheckBox* addCheckBox(const QString& name, const QString& text);
    /// A list whose columns are as wide as the user left them when the form was last closed.
    ListView* addList(const QString& name, const QString& accessibleName, std::vector<ListColumn> columns);
    /// The line that says what the keys do, or as many lines as it takes.
    QLabel* addHint(const QString& name, const QString& text);
    /// For anything else.
    [[nodiscard]] QVBoxLayout& body() { return *m_body; }

    [[nodiscard]] core::Component& component() const { return m_component; }

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void watch(QObject& object);
    [[nodiscard]] const KeyBinding* bindingOf(const QKeyEvent& event, const QWidget& receiver) const;
    QLabel* addLabel(const QString& name, const QString& text);
    void makeSelectionReadable();
    void keepTextsWhole();
    void loadWidths(ListView& list) const;
    void saveWidths() const;

    core::Component& m_component;
    QVBoxLayout* m_body;
    std::vector<KeyBinding> m_keys;
    std::vector<std::unique_ptr<ClCntrl>> m_binders;
    std::vector<ListView*> m_lists;
};

} // namespace oVELDRA::controls
