#include <core/MemberTable.h>

#include <QFile>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using core::Member;
using core::Parameter;
using core::ValueType;

namespace {

/// One member as the description for automation clients has it.
struct Described
{
    QString attributes;
    QString name;
    QStringList parameters;
};

/// The members in their order, which is that of the slots.
QList<Described> describedMembers()
{
    QFile file(QStringLiteral(INTERFACE_DESCRIPTION));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    static const QRegularExpression member(uR"(\[([^\]]*id\(\d+\))\] HRESULT (\w+)\(([^;]*)\);)"_s);
    static const QRegularExpression blanks(u"\\s+"_s);
    QList<Described> result;
    auto found = member.globalMatch(QString::fromUtf8(file.readAll()));
    while (found.hasNext()) {
        const auto match = found.next();
        QString list = match.captured(3);
        list.replace(blanks, u" "_s).replace(u", ["_s, u";["_s);
        result.append({match.captured(1), match.captured(2), list.split(u';', Qt::SkipEmptyParts)});
    }
    return result;
}

QString kindOf(MemberKind kind)
{
    switch (kind) {
    case MemberKind::Get:
        return u"propget, "_s;
    case MemberKind::Put:
        return u"propput, "_s;
    case MemberKind::Call:
        break;
    }
    return {};
}

/// The beginning of a parameter, all but its name.
QString parameterOf(const Parameter& parameter)
{
    return QString((parameter.optional ? u"[in, out, optional] "_s : u"[in, out] "_s) +
                   (parameter.type == ValueType::Text ? u"BSTR*"_s : u"VARIANT*"_s));
}

QString resultOf(ValueType type)
{
    switch (type) {
    case ValueType::Boolean:
        return u"[out, retval] VARIANT_BOOL*"_s;
    case ValueType::Double:
        return u"[out, retval] double*"_s;
    case ValueType::Text:
        return u"[out, retval] BSTR*"_s;
    default:
        return {};
    }
}

} // namespace

/// What automation clients are told of the class is what the class has.
class tst_InterfaceDescription : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theMembersAreThoseOfTheClassInTheOrderOfTheirSlots();
    void identifiersAreNeverGivenTwice();
};

void tst_InterfaceDescription::theMembersAreThoseOfTheClassInTheOrderOfTheirSlots()
{
    const auto described = describedMembers();
    const auto members = core::memberTable();
    QCOMPARE(described.size(), static_cast<qsizetype>(members.size()));
    for (qsizetype i = 0; i < described.size(); ++i) {
        const Member& member = members[static_cast<size_t>(i)];
        const Described& found = described[i];
        QCOMPARE(found.name, QString(member.name));
        QCOMPARE(found.attributes, QString(kindOf(member.kind) + u"id(%1)"_s.arg(member.slot)));
        QStringList expected;
        for (const Parameter& parameter : member.parameters) {
            expected.append(parameterOf(parameter));
        }
        if (member.result != ValueType::None) {
            expected.append(resultOf(member.result));
        }
        QStringList types;
        for (const QString& parameter : found.parameters) {
            types.append(parameter.section(u' ', 0, -2));
        }
        QCOMPARE(types, expected);
    }
}

void tst_InterfaceDescription::identifiersAreNeverGivenTwice()
{
    QStringList identifiers;
    for (const char* path : {INTERFACE_DESCRIPTION, STORE_DESCRIPTION}) {
        QFile file(QString::fromUtf8(path));
        QVERIFY(file.open(QIODevice::ReadOnly));
        static const QRegularExpression identifier(uR"(uuid\(([0-9a-f-]{36})\))"_s);
        auto found = identifier.globalMatch(QString::fromUtf8(file.readAll()));
        while (found.hasNext()) {
            identifiers.append(found.next().captured(1));
        }
    }
    QCOMPARE(identifiers.size(), 3 + 5);
    QCOMPARE(identifiers.removeDuplicates(), 0);
}

QTEST_APPLESS_MAIN(tst_InterfaceDescription)
#include "tst_InterfaceDescription.moc"
