// SPDX-License-Identifier: MIT
// A text for a person to read, and to paste into a test.
#pragma once

#include "src/text/text.h"

#include <cstdio>
#include <string>

namespace reference {

inline std::string Shown(TextView text) {
    std::string shown = "u\"";
    for (const char16_t character : text) {
        if (character >= u' ' && character < 0x7F) {
            if (character == u'"' || character == u'\\')
                shown += '\\';
            shown += static_cast<char>(character);
            continue;
        }
        char code[12];
        std::snprintf(code, sizeof code, "\\x%X\"\"", static_cast<unsigned>(character));
        shown += code;
    }
    return shown + '"';
}

} // namespace reference
