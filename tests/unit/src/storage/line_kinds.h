// SPDX-License-Identifier: MIT
// One file of each kind of storage. The tests of what all kinds have in common run on each.
#pragma once

#include "tests/support/printed_rows.h"

namespace modFileSystem {

struct LineKind {
    const char* Name;
    const char16_t* File; ///< a full name that selects this kind on a desktop
};
using support::PrintTo;

inline constexpr LineKind LineKinds[] = {
    {"TextFile", u".\\Quorin\\test.txt"},
    {"LineDatabase", u".\\Quorin\\test.pdb"},
};

inline std::string KindName(const testing::TestParamInfo<LineKind>& info) {
    return info.param.Name;
}

} // namespace modFileSystem
