// SPDX-License-Identifier: MIT
// The numbers of the keys that controls act on by themselves.
#pragma once

#include <cstdint>

namespace backends {

inline constexpr std::int32_t KeyPageUp = 33;
inline constexpr std::int32_t KeyPageDown = 34;
inline constexpr std::int32_t KeyLeft = 37;
inline constexpr std::int32_t KeyUp = 38;
inline constexpr std::int32_t KeyRight = 39;
inline constexpr std::int32_t KeyDown = 40;

} // namespace backends
