// SPDX-License-Identifier: MIT
#include "src/text/digits.h"

#include <algorithm>

namespace modStringTools {

Text WithZeros(const Text& text, std::int32_t width) {
    const auto wanted = static_cast<std::size_t>(std::max(width, 0));
    return text.size() < wanted ? Text(wanted - text.size(), u'0') + text : text;
}

Text TwoDigits(std::int32_t number) {
    return WithZeros(NumberText(number), 2);
}

} // namespace modStringTools
