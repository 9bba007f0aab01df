#include "Quantity.h"

#include <runtime/Numbers.h>

namespace oVELDRA::data {

double quantityOf(const dialect::Value& value)
{
    if (value.type == dialect::ValueType::Text) {
        return runtime::parseNumber(value.text).value_or(0);
    }
    return value.isNull() ? 0 : value.number;
}

} // namespace oVELDRA::data
