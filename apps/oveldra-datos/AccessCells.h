#pragma once

#include <dialect/Value.h>

#include <QString>

#include <optional>
#include <span>

namespace oVELDRA::data {

// What the bytes of an Access table's cells mean.

using Bytes = std::span<const unsigned char>;

enum class AccessKind : quint8 {
    YesNo,
    Byte,
    Short,    ///< 16 bits
    Long,     ///< 32 bits
    Currency, ///< 64 bits, four decimals
    Single,
    Double,
    Date, ///< a moment: days since 1899-12-30
    Text,
    Memo,
    Decimal, ///< up to 28 digits, of which the column's scale are decimals
    Other    ///< pictures, binary data, replication numbers: nothing of ours can hold them
};

/// A text of Jet 4 and later: UTF-16, or compressed (then it begins with FF FE). Nothing when the bytes end inside a
/// character.
[[nodiscard]] std::optional<QString> accessText(Bytes bytes);

/// A number or a date. `scale` counts the decimals of a Decimal. Answers what is wrong with it, in Spanish, or a null
/// string; then `value` is the exact value, or the nearest double where decimals have none. Not for YesNo, texts and
/// Other.
[[nodiscard]] QString readAccessCell(AccessKind kind, Bytes bytes, int scale, dialect::Value& value);

} // namespace oVELDRA::data
