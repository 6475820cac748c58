// SPDX-License-Identifier: MIT
#include "src/drivers/inf_rows.h"

namespace modQuorin {

std::optional<std::int32_t> ColourOf(const Text& display) {
    return display.empty() ? platform::White : modStringTools::NumberFromText(display);
}

FieldType FieldTypeOf(const Text& dataType) {
    const Text name = modStringTools::UpperCase(dataType);
    if (name == u"DATE")
        return FieldType::Date;
    return name == u"TIME" ? FieldType::Time : FieldType::Text;
}

} // namespace modQuorin
