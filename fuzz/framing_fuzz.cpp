// SPDX-License-Identifier: MIT
// A stream of BLobs and noise, in pieces.
#include "fuzz/comparing.h"
#include "tests/reference/blob_comparison.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    return fuzz::Compare(reference::CompareFraming, bytes, count);
}
