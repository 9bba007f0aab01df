#include "SuffixText.h"

#include <oVELDRA/RuntimeError.h>

#include <core/ErrorReport.h>
#include <core/Module1.h>
#include <runtime/Numbers.h>
#include <runtime/Texts.h>

#include <QStringList>

using namespace Qt::StringLiterals;

namespace oVELDRA::nomenclature {

namespace {

constexpr int RuleCodeWidth = 5;
constexpr int OptionCodeLength = 4;
constexpr int ValueCodeLength = 2;
constexpr int LongestValue = 20;

bool mayStandInValue(QChar c)
{
    constexpr QChar enye(209);
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || c == u'/' || c == u',' || c == u'&' || c == enye;
}

} // namespace

std::array<QString, 4> suffixKeys(const QString& position)
{
    const QString blank = u"  .  .  .   "_s; // what follows the chapter
    return {position.left(2) + blank, position.left(4) + blank.mid(2), position.left(7) + blank.mid(5),
            position.left(14)};
}

QString suffixKeyList(const QString& position)
{
    QStringList literals;
    for (const QString& key : suffixKeys(position)) {
        literals.append(core::quoted(key));
    }
    return u'(' + literals.join(u',') + u')';
}

QString ruleLine(const QString& code, const QString& detail)
{
    return runtime::Trim(code).leftJustified(RuleCodeWidth) + runtime::Trim(detail);
}

CodeKind codeKind(const QString& code)
{
    switch (code.size()) {
    case OptionCodeLength:
        return CodeKind::Option;
    case ValueCodeLength:
        return CodeKind::Value;
    default:
        return CodeKind::Other;
    }
}

ValueKind valueKind(const QString& code, ValueKind before)
{
    if (code.startsWith(u'A', Qt::CaseInsensitive)) {
        return ValueKind::Text;
    }
    return code.startsWith(u'Z', Qt::CaseInsensitive) ? ValueKind::Number : before;
}

QString withoutSuffixes()
{
    return u"SIN SUFIJOS"_s;
}

bool isMissing(const QString& firstCode, const QString& suffixes)
{
    switch (codeKind(firstCode)) {
    case CodeKind::Option:
        return !suffixes.toUpper().contains(firstCode.toUpper());
    case CodeKind::Value:
        return !suffixes.toUpper().contains(QString(firstCode.toUpper() + u'('));
    case CodeKind::Other:
        break;
    }
    return false;
}

QString storedValue(const QString& code, const QString& suffixes)
{
    const QString opening = code + u'(';
    const qsizetype found = suffixes.indexOf(opening);
    if (found < 0) {
        return {};
    }
    const qsizetype begin = found + opening.size();
    const qsizetype end = suffixes.indexOf(u')', begin);
    return end < 0 ? QString() : suffixes.mid(begin, end - begin);
}

QString valueEntry(const QString& code, const QString& value)
{
    return code + u'(' + value + u')';
}

QString withEntry(const QString& suffixes, const QString& entry)
{
    return runtime::Trim(suffixes).isEmpty() ? entry : suffixes + u'-' + entry;
}

QString closed(const QString& suffixes)
{
    return suffixes.endsWith(u'-') ? suffixes : suffixes + u'-';
}

QString optionLine(const QString& code, const QString& detail)
{
    return runtime::Trim(code) + u" - "_s + runtime::Trim(detail);
}

QString noOptionLine(const QString& group)
{
    return optionLine(group + u"00"_s, u"Ninguna opción"_s);
}

QString optionCode(const QString& line)
{
    return line.left(OptionCodeLength);
}

QString m_sVALCHAR(core::Prompts& prompts, const QString& character)
{
    QString kept;
    core::trap(prompts, u" m_sVALCHAR_err", [&] {
        if (character.isEmpty()) {
            throw RuntimeError(5);
        }
        const QChar c = character.front();
        kept = mayStandInValue(c) ? c : QChar(u' ');
    });
    return kept;
}

QString m_sVALSUF(core::Prompts& prompts, const QString& value)
{
    QString result;
    const QString typed = runtime::Trim(value).toUpper().left(LongestValue);
    for (const QChar c : typed) {
        result += m_sVALCHAR(prompts, c);
    }
    return result;
}

QString cleanedValue(core::Prompts& prompts, const QString& typed)
{
    QString value = typed;
    for (const QChar structural : u"()-"_s) {
        value.replace(structural, u' ');
    }
    return m_sVALSUF(prompts, value);
}

std::optional<QString> acceptedValue(const QString& cleaned, ValueKind kind)
{
    if (kind == ValueKind::Number) {
        const std::optional<double> number = runtime::parseNumber(cleaned);
        return number ? std::optional(runtime::Format(*number, u"000000")) : std::nullopt;
    }
    const QString text = runtime::Trim(cleaned);
    return kind == ValueKind::None || text.isEmpty() ? std::nullopt : std::optional(text);
}

} // namespace oVELDRA::nomenclature
