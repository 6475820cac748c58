// SPDX-License-Identifier: MIT
// What stands between quotes.
#include "fuzz/comparing.h"
#include "tests/reference/blob_comparison.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    return fuzz::Compare(reference::CompareQuotedValues, bytes, count);
}
