// SPDX-License-Identifier: MIT
// The product's routines against their literal forms, on generated input.
#include "tests/reference/agreement.h"
#include "tests/reference/patterns_comparison.h"
#include "tests/reference/ranges_comparison.h"

namespace reference {
namespace {

TEST(AgainstTheLiteralForm, PatternsMatchTheSame) {
    ExpectAgreement(CompareMatch, 7000000);
}

TEST(AgainstTheLiteralForm, PatternsMatchTheSameInLongTexts) {
    ExpectAgreement(CompareLongMatch, 10000);
}

TEST(AgainstTheLiteralForm, RestsAreFoundFromTheSamePlaces) {
    ExpectAgreement(CompareRests, 600000);
}

TEST(AgainstTheLiteralForm, TheProgramsOwnPatternsMatchTheSame) {
    ExpectAgreement(CompareOwnPattern, 500000);
}

TEST(AgainstTheLiteralForm, ReplacementsLeaveTheSame) {
    ExpectAgreement(CompareReplacement, 1000000);
}

TEST(AgainstTheLiteralForm, TokensAreTheSame) {
    ExpectAgreement(CompareToken, 700000);
}

TEST(AgainstTheLiteralForm, RangesAreTheSame) {
    ExpectAgreement(CompareRange, 200000);
}

TEST(AgainstTheLiteralForm, InsertionsAreTheSame) {
    ExpectAgreement(CompareInsertion, 100000);
}

} // namespace
} // namespace reference
