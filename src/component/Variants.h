#pragma once

#include <oVELDRA/oveldra.h>

#include <QByteArrayView>
#include <QString>
#include <QVariant>

namespace oVELDRA::cinterface {

/// A text from outside. Throws RuntimeError 94 for a null pointer, 5 for one that is not UTF-8.
[[nodiscard]] QString textFrom(const char* text);

/// A text for outside, which ends it with oveldra_text_release(). Throws RuntimeError 5 for one with a null character.
[[nodiscard]] char* newText(const QString& text);

/// An argument as the members take it. Throws RuntimeError 5 for an unknown kind or a date that is none.
[[nodiscard]] QVariant argumentFrom(const oveldra_variant& variant);

/// A field's value as a recordset gives it. Throws RuntimeError 13 for a kind that no field can have.
[[nodiscard]] QVariant fieldFrom(const oveldra_variant& variant);

/// The answer of a member, or with `none` = OVELDRA_NULL the value of a field. Its text is the receiver's.
[[nodiscard]] oveldra_variant variantFrom(const QVariant& value, qint32 none);

} // namespace oVELDRA::cinterface
