// SPDX-License-Identifier: MIT
#include "handover/places.h"

namespace handover {

bool IsBeneath(const std::string& folder, const std::string& other) {
    return (folder + "/").rfind(other == "/" ? other : other + "/", 0) == 0;
}

std::string NumberedName(const std::string& name, int number) {
    if (number == 1)
        return name;
    const std::size_t dot = name.rfind('.');
    return name.substr(0, dot) + "-" + std::to_string(number) + (dot == std::string::npos ? "" : name.substr(dot));
}

} // namespace handover
