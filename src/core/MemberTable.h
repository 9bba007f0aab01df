#pragma once

#include <oVELDRA/cloVELDRAMain.h>

#include <QLatin1StringView>
#include <QVariant>
#include <QVariantList>

#include <span>

namespace oVELDRA::core {

/// Whether an argument is Null: `QVariant::fromValue(nullptr)`, not an omitted one.
[[nodiscard]] bool isNullArgument(const QVariant& argument);

/// The type of a result or an argument.
enum class ValueType {
    None, ///< no result
    Boolean,
    Double,
    Text,
    Variant ///< taken as it comes; the member itself judges it
};

struct Parameter
{
    ValueType type = ValueType::Variant;
    bool optional = false; ///< optional ones stand last
};

/// One member of the class's interface, for all the ways in that go by name or by slot.
struct Member
{
    QLatin1StringView name;
    int slot = 0; ///< from 1, after the standard slots of the interface
    MemberKind kind = MemberKind::Call;
    ValueType result = ValueType::None;
    std::span<const Parameter> parameters;
    /// Takes one value per parameter, each already of the parameter's type.
    QVariant (*call)(_cloVELDRAMain& object, const QVariantList& arguments) = nullptr;
};

/// All members, in the order of their slots.
[[nodiscard]] std::span<const Member> memberTable();

/// The member of that name (in any letter case) and kind, or null.
[[nodiscard]] const Member* findMember(QStringView name, MemberKind kind);

/// Calls a member with arguments as they came. Throws RuntimeError 450 for too few or too many, 94 for Null and 13 for
/// anything else that cannot become the parameter's type, and whatever the member throws.
QVariant callMember(const Member& member, _cloVELDRAMain& object, const QVariantList& arguments);

} // namespace oVELDRA::core
