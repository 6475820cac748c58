// SPDX-License-Identifier: MIT
// Other ways to get the values out of a stream of BLobs. Each reads well-formed records alone: none of them knows the
// product's dialect, its variables by name, its refusals or its odd results.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace bench {

/// One result, as pieces of the stream.
struct Reading {
    std::string_view Origin;
    std::string_view Variable; ///< the last one
    std::string_view Types;
    std::string_view Value;
    std::string_view Unit;
};

/// What a reader has found in a stream, to compare it with the other readers.
struct Found {
    std::int64_t Values = 0;
    std::int64_t Characters = 0; ///< in the types, the values and the units
};

Found FoundIn(const std::vector<Reading>& readings);

/// Each line by memchr, its quoted text by memchr, and one comparison of its keyword.
std::vector<Reading> SplitByHand(std::string_view stream);

/// Seven patterns of RE2 for each line, tried in turn until one matches. A value ends at its line's last quote, as it
/// does for the product: a type line may contain several quoted texts.
std::vector<Reading> MatchInTurn(std::string_view stream);

/// One pattern of RE2 for all keywords. A value ends at the next quote, which lets RE2 read the line once; it can't
/// read several quoted texts in a line.
std::vector<Reading> MatchOnce(std::string_view stream);

} // namespace bench
