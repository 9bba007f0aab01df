#pragma once

#include <QStringView>
#include <QVariant>

#include <oaidl.h>
#include <wrl/client.h>

namespace oVELDRA::automation {

/// A value of automation that ends what it holds.
class Variant
{
public:
    Variant() noexcept;
    explicit Variant(QStringView text);
    explicit Variant(qint32 number) noexcept;
    /// Refers to `value`, which the callee may change and which must outlive it.
    explicit Variant(VARIANT& value) noexcept;
    Variant(Variant&& other) noexcept;
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    Variant& operator=(Variant&&) = delete;
    ~Variant();

    [[nodiscard]] const VARIANT& operator*() const noexcept { return m_value; }
    /// Where somebody else puts a value.
    [[nodiscard]] VARIANT* place() noexcept { return &m_value; }

    [[nodiscard]] bool isEmpty() const noexcept { return m_value.vt == VT_EMPTY; }
    /// The object in it, or null when there is none.
    [[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> object() const;
    /// Throws RuntimeError 13 for what is no boolean or number.
    [[nodiscard]] bool toBool() const;
    /// A whole number; Empty, the answer of a procedure without one, is 0. Throws RuntimeError 13, or 6 for one out of
    /// range.
    [[nodiscard]] qint64 toInteger() const;

private:
    VARIANT m_value;
};

/// What a value refers to, or a copy of the value itself. Throws RuntimeError.
[[nodiscard]] Variant plainOf(const VARIANT& value);

/// A field's value as a recordset gives it. Throws RuntimeError 13 for a kind that no field can have.
[[nodiscard]] QVariant fieldFrom(const VARIANT& value);

/// A recordset's value for automation, put into `place`, which must be empty.
void putField(const QVariant& value, VARIANT& place);

} // namespace oVELDRA::automation
