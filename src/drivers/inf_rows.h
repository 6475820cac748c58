// SPDX-License-Identifier: MIT
// What the texts of an inf row mean.
#pragma once

#include "src/view/inf_fields.h"

#include <optional>

namespace modQuorin {

/// Returns the colour that DISPLAY asks for, white for an empty text; no value if the text is not a number.
std::optional<std::int32_t> ColourOf(const Text& display);

/// Returns the kind of field that DATATYPE asks for: text unless it is DATE or TIME, in any case.
FieldType FieldTypeOf(const Text& dataType);

/// True if VISIBLE or COPY is set, which only "1" does.
inline bool IsSet(const Text& flag) {
    return flag == u"1";
}

} // namespace modQuorin
