// SPDX-License-Identifier: MIT
#include "apps/options/device_name.h"

#include <array>
#include <unistd.h>

namespace apps {

std::string NameOfDevice() {
    std::array<char, 256> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

} // namespace apps
