// SPDX-License-Identifier: MIT
// Operations on the open table, compared with the literal form.
#include "fuzz/comparing.h"
#include "tests/reference/storage_comparison.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    return fuzz::Compare(reference::CompareTables, bytes, count);
}
