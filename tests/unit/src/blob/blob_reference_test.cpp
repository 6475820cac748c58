// SPDX-License-Identifier: MIT
// The product's framing and decoding against their literal forms, on generated cases.
#include "tests/reference/agreement.h"
#include "tests/reference/blob_comparison.h"

namespace reference {
namespace {

TEST(AgainstTheLiteralForm, FramesStreamsInPieces) {
    ExpectAgreement(CompareFraming, 450000);
}

TEST(AgainstTheLiteralForm, DecodesSingleTexts) {
    ExpectAgreement(CompareDecoding, 200000);
}

TEST(AgainstTheLiteralForm, PutsVariablesIntoLists) {
    ExpectAgreement(CompareVariables, 750000);
}

TEST(AgainstTheLiteralForm, TakesValuesOutOfQuotes) {
    ExpectAgreement(CompareQuotedValues, 300000);
}

} // namespace
} // namespace reference
