#include "VerificarSufijos.h"

#include <controls/BusyPointer.h>
#include <core/Component.h>
#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <core/Prompts.h>
#include <nomenclature/FrmCargaSufijos.h>
#include <nomenclature/SuffixText.h>
#include <runtime/Texts.h>
#include <runtime/ValueConverter.h>

#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace oVELDRA::nomenclature {

namespace {

constexpr int ReenterAlways = 1;

struct Rule
{
    QString code;
    QString detail;
};

/// One run over the groups of a position. Its queries are read to the end before a box or form opens.
class Verification
{
public:
    Verification(core::Component& component, const QString& position, QString suffixes, const OptionChooser& choose)
        : m_component(component), m_choose(choose), m_keys(suffixKeyList(position)), m_suffixes(std::move(suffixes)),
          m_groups(groups())
    {}

    [[nodiscard]] bool hasGroups() const { return !m_groups.isEmpty(); }

    /// Whether the text lacks a group. All of them are looked up, also behind the first one that is missing.
    [[nodiscard]] bool lacksGroup()
    {
        bool lacks = false;
        for (const QString& group : m_groups) {
            lacks = isMissing(firstCode(rulesOf(group)), m_suffixes) || lacks;
        }
        return lacks;
    }

    /// The text with every suffix asked for anew; empty when the user cancelled.
    [[nodiscard]] QString reenter()
    {
        QString entered;
        for (const QString& group : m_groups) {
            const std::vector<Rule> rules = rulesOf(group);
            const CodeKind kind = codeKind(firstCode(rules));
            if (kind == CodeKind::Other) {
                continue;
            }
            const auto entry = kind == CodeKind::Option ? chosenOption(group, rules) : typedValue(rules.front());
            if (!entry) {
                return {};
            }
            entered = withEntry(entered, *entry);
        }
        return closed(entered);
    }

private:
    [[nodiscard]] core::Prompts& prompts() const { return m_component.prompts(); }

    [[nodiscard]] QStringList groups()
    {
        const controls::BusyPointer busy;
        QStringList names;
        const auto rows =
            core::rowsOf(*m_component.state.g_DBNCM,
                         u"select distinct left(sufijo,2) as asufijo from sufidos where sim in "_s + m_keys);
        for (; !rows->atEof(); rows->moveNext()) {
            names.append(runtime::Trim(runtime::toText(rows->value(u"asufijo"))));
        }
        return names;
    }

    [[nodiscard]] std::vector<Rule> rulesOf(const QString& group)
    {
        const controls::BusyPointer busy;
        std::vector<Rule> rules;
        const auto rows =
            core::rowsOf(*m_component.state.g_DBNCM, u"select sufijo,detalle from sufidos where sim in "_s + m_keys +
                                                         u" and left(sufijo,2) = "_s + core::quoted(group));
        for (; !rows->atEof(); rows->moveNext()) {
            rules.push_back(
                {runtime::Trim(runtime::toText(rows->value(u"sufijo"))), runtime::toText(rows->value(u"detalle"))});
        }
        return rules;
    }

    [[nodiscard]] static QString firstCode(const std::vector<Rule>& rules)
    {
        return rules.empty() ? QString() : rules.front().code;
    }

    [[nodiscard]] std::optional<QString> chosenOption(const QString& group, const std::vector<Rule>& rules)
    {
        QStringList lines{noOptionLine(group)};
        for (const Rule& rule : rules) {
            lines.append(optionLine(rule.code, rule.detail));
        }
        QString& chosen = m_component.state.chosenSuffix;
        chosen.clear();
        m_choose(m_component, lines);
        if (chosen.isEmpty()) {
            prompts().messageBox(u"Error en generar sufijos"_s, core::CriticalBox);
            return std::nullopt;
        }
        return optionCode(chosen);
    }

    [[nodiscard]] std::optional<QString> typedValue(const Rule& rule)
    {
        m_kind = valueKind(rule.code, m_kind);
        const QString proposal = storedValue(rule.code, m_suffixes);
        for (;;) {
            const QString answer = prompts().inputBox(rule.detail, u"Ingrese Valor"_s, proposal);
            if (answer.isEmpty()) {
                if (prompts().messageBox(u"Desea cancelar la operación"_s, core::QuestionBox) == core::AnswerYes) {
                    return std::nullopt;
                }
                continue;
            }
            if (const auto value = acceptedValue(cleanedValue(prompts(), answer), m_kind)) {
                return valueEntry(rule.code, *value);
            }
            if (m_kind == ValueKind::Number) {
                prompts().messageBox(u"Debe Ingresar un Valor Númerico"_s, core::PlainBox);
            }
        }
    }

    core::Component& m_component;
    const OptionChooser& m_choose;
    QString m_keys;
    QString m_suffixes;
    QStringList m_groups;
    ValueKind m_kind = ValueKind::None; ///< goes on from group to group
};

QString verified(core::Component& component, const QString& position, const QString& suffixes, int mode,
                 const OptionChooser& choose)
{
    core::Prompts& prompts = component.prompts();
    Verification verification(component, position, suffixes, choose);
    if (!verification.hasGroups()) {
        prompts.messageBox(u"No se encontro Sufijo en el nomenclador"_s, core::PlainBox);
        return withoutSuffixes();
    }
    if (mode != ReenterAlways && !suffixes.isEmpty()) {
        if (!verification.lacksGroup()) {
            return closed(suffixes);
        }
        prompts.messageBox(u"Se encontro diferencias entre los Sufijos de Subitem y el nomenclador."_s,
                           core::ExclamationBox);
    }
    return verification.reenter();
}

} // namespace

void chooseInForm(core::Component& component, const QStringList& lines)
{
    FrmCargaSufijos form(component);
    form.setOptions(lines);
    form.showModal();
}

QString VerificarSufijos(core::Component& component, const QString& position, const QString& suffixes, int mode,
                         const OptionChooser& choose)
{
    QString result;
    core::trap(component.prompts(), u"Seccion [Morvesta.frmModificar.VarificarSufijos]",
               [&] { result = verified(component, position, suffixes, mode, choose); });
    return result;
}

} // namespace oVELDRA::nomenclature
