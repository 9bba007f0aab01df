#pragma once

#include <QString>

#include <array>
#include <optional>

namespace oVELDRA::core {
class Prompts;
} // namespace oVELDRA::core

namespace oVELDRA::nomenclature {

// --- the rules that apply to a position ---

/// The selectors of the suffix rules that apply to a position: by its chapter, heading, subheading and whole. Blanks
/// stand for the digits that a rule does not depend on.
[[nodiscard]] std::array<QString, 4> suffixKeys(const QString& position);

/// The selectors as the list of an `in` condition. RuntimeError for a position with an apostrophe.
[[nodiscard]] QString suffixKeyList(const QString& position);

/// A rule as the position search lists it: the code, filled up to 5 characters, and its detail.
[[nodiscard]] QString ruleLine(const QString& code, const QString& detail);

// --- codes ---

/// How the suffix of a group is entered, by the group's first code.
enum class CodeKind {
    Option, ///< 4 characters: one of the group's codes is chosen
    Value,  ///< 2 characters: a value is typed
    Other   ///< neither: passed over
};
[[nodiscard]] CodeKind codeKind(const QString& code);

/// What is accepted as the value of a value code.
enum class ValueKind { None, Text, Number };

/// The kind by the code's first letter: text for A, numbers for Z. Any other letter keeps the kind of the last code
/// before it, and nothing is accepted as long as there was none. That is meant.
[[nodiscard]] ValueKind valueKind(const QString& code, ValueKind before);

// --- a product's suffix text ---

/// What a product without suffix rules is given.
[[nodiscard]] QString withoutSuffixes();

/// Whether a suffix text lacks the group that begins with `firstCode`, in any letter case. A group of options is looked
/// for under its first code only; that is meant.
[[nodiscard]] bool isMissing(const QString& firstCode, const QString& suffixes);

/// The value that a suffix text holds for a value code, empty without one.
[[nodiscard]] QString storedValue(const QString& code, const QString& suffixes);

/// A value code with its value: ZC(000150).
[[nodiscard]] QString valueEntry(const QString& code, const QString& value);

/// Joins an entry to the text before it.
[[nodiscard]] QString withEntry(const QString& suffixes, const QString& entry);

/// The text as it is stored: with a "-" behind the last entry, too.
[[nodiscard]] QString closed(const QString& suffixes);

// --- options ---

/// A line of the option list.
[[nodiscard]] QString optionLine(const QString& code, const QString& detail);
/// The line for none of a group's options, which has a code of its own.
[[nodiscard]] QString noOptionLine(const QString& group);
/// The code at the beginning of a line of the option list.
[[nodiscard]] QString optionCode(const QString& line);

// --- typed values ---

/// One character of a value: itself when a value may hold it ("/", ",", "&", digits, A to Z, Ñ), else a blank. Of a
/// longer text the first character counts; a text without one is an error that is reported here and gives "".
[[nodiscard]] QString m_sVALCHAR(core::Prompts& prompts, const QString& character);

/// A value in capitals, cut to 20 characters, with blanks for all that a value may not hold. Blanks at the ends that
/// come about like that stay.
[[nodiscard]] QString m_sVALSUF(core::Prompts& prompts, const QString& value);

/// What the user typed as a value: the characters that structure a suffix text become blanks, the rest as m_sVALSUF().
[[nodiscard]] QString cleanedValue(core::Prompts& prompts, const QString& typed);

/// A cleaned value as it is stored, or nothing when it is not of the kind.
[[nodiscard]] std::optional<QString> acceptedValue(const QString& cleaned, ValueKind kind);

} // namespace oVELDRA::nomenclature
