// SPDX-License-Identifier: MIT
#include "backends/descriptor/reason.h"

#include <cstring>

namespace backends {

std::string ReasonOf(int code) {
#ifdef __GLIBC__ // its strerror follows the locale
    const char* const words = ::strerrordesc_np(code);
#else
    const char* const words = std::strerror(code);
#endif
    return words != nullptr ? words : "error " + std::to_string(code);
}

} // namespace backends
