// SPDX-License-Identifier: MIT
// Texts of single BLobs.
#include "fuzz/comparing.h"
#include "tests/reference/blob_comparison.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    return fuzz::Compare(reference::CompareDecoding, bytes, count);
}
