// SPDX-License-Identifier: MIT
// The text tools, compared with their literal forms. The first byte chooses the comparison.
#include "fuzz/comparing.h"
#include "tests/reference/patterns_comparison.h"
#include "tests/reference/ranges_comparison.h"

#include <iterator>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static constexpr std::string (*comparisons[])(reference::Choices&) = {
        reference::CompareMatch, reference::CompareRests, reference::CompareReplacement, reference::CompareOwnPattern,
        reference::CompareToken, reference::CompareRange, reference::CompareInsertion};
    if (count == 0)
        return 0;
    return fuzz::Compare(comparisons[*bytes % std::size(comparisons)], bytes + 1, count - 1);
}
