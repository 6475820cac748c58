// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/outlet.h"

#include <cerrno>
#include <cstring>

namespace instrument {

Outcome Outlet::FailBySystem(const std::string& what) {
    return Fail(what + ": " + std::strerror(errno));
}

} // namespace instrument
