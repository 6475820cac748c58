// SPDX-License-Identifier: MIT
#include "src/text/printable.h"

#include <algorithm>

namespace modStringTools {

namespace {

bool IsControl(char byte) {
    return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
}

} // namespace

std::string Printable(std::string bytes) {
    std::replace_if(bytes.begin(), bytes.end(), IsControl, '?');
    return bytes;
}

} // namespace modStringTools
