// SPDX-License-Identifier: MIT
// A variable that is put into a list, compared with the literal form.
#include "fuzz/comparing.h"
#include "tests/reference/blob_comparison.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    return fuzz::Compare(reference::CompareVariables, bytes, count);
}
