#include "MemberTable.h"

#include <runtime/Numbers.h>
#include <runtime/ValueConverter.h>

#include <QMetaType>

#include <algorithm>
#include <array>
#include <cstddef>

using namespace Qt::StringLiterals;

namespace oVELDRA::core {

namespace {

template <auto getter>
QVariant get(_cloVELDRAMain& object, const QVariantList& /*arguments*/)
{
    return (object.*getter)();
}

template <auto putter>
QVariant put(_cloVELDRAMain& object, const QVariantList& arguments)
{
    (object.*putter)(arguments.first().toString());
    return {};
}

template <auto operation>
QVariant run(_cloVELDRAMain& object, const QVariantList& /*arguments*/)
{
    (object.*operation)();
    return {};
}

QVariant connect(_cloVELDRAMain& object, const QVariantList& arguments)
{
    return object.ConectarDB(arguments.at(0), arguments.at(1), arguments.at(2));
}

constexpr std::array oneText{Parameter{ValueType::Text}};
constexpr std::array connections{Parameter{}, Parameter{ValueType::Variant, true}, Parameter{ValueType::Variant, true}};

template <auto getter>
constexpr Member readMember(const char* name, int slot, ValueType type)
{
    return {QLatin1StringView(name), slot, MemberKind::Get, type, {}, &get<getter>};
}

template <auto putter>
constexpr Member writeMember(const char* name, int slot)
{
    return {QLatin1StringView(name), slot, MemberKind::Put, ValueType::None, oneText, &put<putter>};
}

template <auto operation>
constexpr Member operationMember(const char* name, int slot)
{
    return {QLatin1StringView(name), slot, MemberKind::Call, ValueType::None, {}, &run<operation>};
}

using I = _cloVELDRAMain;

constexpr std::array members{
    readMember<&I::get_OK>("OK", 1, ValueType::Boolean),
    readMember<&I::get_CATNRO>("CATNRO", 2, ValueType::Text),
    readMember<&I::get_PRDDES>("PRDDES", 3, ValueType::Text),
    readMember<&I::get_PRDNCM>("PRDNCM", 4, ValueType::Text),
    readMember<&I::get_PRDPAI>("PRDPAI", 5, ValueType::Text),
    readMember<&I::get_PRDPRE>("PRDPRE", 6, ValueType::Double),
    readMember<&I::get_PRDSUF>("PRDSUF", 7, ValueType::Text),
    readMember<&I::get_PRDUNI>("PRDUNI", 8, ValueType::Text),
    writeMember<&I::put_BaseNcm>("BaseNcm", 9),
    writeMember<&I::put_BaseTornel>("BaseTornel", 10),
    writeMember<&I::put_BaseInsumos>("BaseInsumos", 11),
    writeMember<&I::put_Interno_Externo>("Interno_Externo", 12),
    Member{"ConectarDB"_L1, 13, MemberKind::Call, ValueType::Boolean, connections, &connect},
    operationMember<&I::Mostrar>("Mostrar", 14),
    operationMember<&I::Importar>("Importar", 15),
    operationMember<&I::MostrarDIT>("MostrarDIT", 16),
    readMember<&I::get_PRDNRO>("PRDNRO", 17, ValueType::Text),
    writeMember<&I::put_ADUANA>("ADUANA", 18),
    operationMember<&I::VerINSxSBT>("VerINSxSBT", 19),
    writeMember<&I::put_IdSUB>("IdSUB", 20),
};

QString toTextArgument(const QVariant& value)
{
    if (isNullArgument(value)) {
        throw RuntimeError(94);
    }
    switch (value.typeId()) {
    case QMetaType::QString:
    case QMetaType::QChar:
        return value.toString();
    case QMetaType::Bool:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Float:
    case QMetaType::Double:
        // By way of the double, so that the digits are those of every other number of the program.
        return runtime::CStr(runtime::toNumber(value));
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        return runtime::toText(value);
    default:
        throw RuntimeError(13);
    }
}

} // namespace

bool isNullArgument(const QVariant& argument)
{
    return argument.metaType() == QMetaType::fromType<std::nullptr_t>();
}

std::span<const Member> memberTable()
{
    return members;
}

const Member* findMember(QStringView name, MemberKind kind)
{
    const auto* const found = std::ranges::find_if(members, [name, kind](const Member& member) {
        return member.kind == kind && name.compare(member.name, Qt::CaseInsensitive) == 0;
    });
    return found == members.end() ? nullptr : found;
}

QVariant callMember(const Member& member, _cloVELDRAMain& object, const QVariantList& arguments)
{
    const auto parameters = member.parameters;
    const auto given = static_cast<std::size_t>(arguments.size());
    const auto required = std::ranges::count(parameters, false, &Parameter::optional);
    if (given > parameters.size() || arguments.size() < required) {
        throw RuntimeError(450);
    }
    QVariantList converted;
    converted.reserve(static_cast<qsizetype>(parameters.size()));
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const QVariant argument = arguments.value(static_cast<qsizetype>(i));
        converted.append(parameters[i].type == ValueType::Text ? QVariant(toTextArgument(argument)) : argument);
    }
    return member.call(object, converted);
}

} // namespace oVELDRA::core
