// SPDX-License-Identifier: MIT
// Line files, two of them at once.
#include "fuzz/comparing.h"
#include "tests/reference/storage_comparison.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    return fuzz::Compare(reference::CompareLineFiles, bytes, count);
}
