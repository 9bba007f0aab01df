#pragma once

#include "controls/OpenForm.h"
#include "doubles/FakeConexionDB.h"
#include "doubles/TestComponent.h"

#include <controls/ListView.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <algorithm>
#include <memory>
#include <utility>

namespace oVELDRA::catalog {

/// A form between doubles, with an inputs database that answers from a script; an InputsStore over `state()` takes that
/// one's place. What the form's constructor takes behind the component is given to the fixture's.
template <typename FormUnderTest>
class FormFixture
{
public:
    template <typename... Collaborators>
    explicit FormFixture(Collaborators... collaborators) : form(component, std::move(collaborators)...)
    {
        state().g_DBINS.assign(inputs);
    }

    [[nodiscard]] core::SharedState& state() { return component.state; }
    [[nodiscard]] const QList<doubles::RecordedPrompts::Box>& boxes() const { return component.prompts.boxes(); }

    // The controls, by name.
    [[nodiscard]] QLineEdit& text(const QString& name) const { return *form.template findChild<QLineEdit*>(name); }
    [[nodiscard]] QCheckBox& check(const QString& name) const { return *form.template findChild<QCheckBox*>(name); }
    [[nodiscard]] QLabel& label(const QString& name) const { return *form.template findChild<QLabel*>(name); }
    [[nodiscard]] controls::ListView& listView(const QString& name) const
    {
        return *static_cast<controls::ListView*>(form.template findChild<QTreeView*>(name));
    }

    /// The texts of all labels, named or not.
    [[nodiscard]] QStringList labelTexts() const
    {
        QStringList texts;
        const auto labels = form.template findChildren<QLabel*>();
        for (const QLabel* label : labels) {
            texts.append(label->text());
        }
        return texts;
    }

    /// Whether a text box is introduced by a label with that caption, to the eye and to assistive technology.
    [[nodiscard]] bool isCaptioned(const QString& name, const QString& caption) const
    {
        const QLineEdit& box = text(name);
        const auto labels = form.template findChildren<QLabel*>();
        return box.accessibleName() == caption && std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
                   return label->text() == caption && label->buddy() == &box;
               });
    }

    std::shared_ptr<doubles::FakeConexionDB> inputs = std::make_shared<doubles::FakeConexionDB>();
    doubles::TestComponent component;
    FormUnderTest form;
};

[[nodiscard]] inline doubles::RecordedPrompts::Box box(const QString& text, core::BoxStyle style,
                                                       const QString& title = {})
{
    return {text, style, title};
}

[[nodiscard]] inline doubles::RecordedPrompts::Box critical(const QString& text)
{
    return box(text, core::CriticalBox);
}

} // namespace oVELDRA::catalog
