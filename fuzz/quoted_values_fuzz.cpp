// SPDX-License-Identifier: MIT
// The text between quotes, compared with the literal form.
#include "fuzz/comparing.h"
#include "tests/reference/blob_comparison.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    return fuzz::Compare(reference::CompareQuotedValues, bytes, count);
}
