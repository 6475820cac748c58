// SPDX-License-Identifier: MIT
// Compares the product's routines with the literal forms, on a given number of generated cases.
#pragma once

#include "tests/reference/choices.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

namespace reference {

/// Generates one case from the choices and runs both forms on it. Returns the difference, in a text from which a person
/// can repeat the case by hand; empty if they agree.
using Comparison = std::string (*)(Choices&);

/// Returns a number from the environment.
inline std::uint64_t Setting(const char* name, std::uint64_t byDefault) {
    const char* wanted = std::getenv(name);
    return wanted != nullptr ? std::strtoull(wanted, nullptr, 10) : byDefault;
}

// g++ defines a macro, clang has a feature.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool Sanitized = true;
#elif defined(__has_feature)
inline constexpr bool Sanitized = __has_feature(address_sanitizer);
#else
inline constexpr bool Sanitized = false;
#endif

/// Returns how many cases this run makes of `cases`.
inline std::uint64_t CasesOf(std::uint64_t cases) {
    return cases * Setting("QUORIN_CASES", 1) / Setting("QUORIN_FEWER", 1) / (Sanitized ? 10 : 1);
}

/// Runs so many cases, each from a seed of its own. In the environment QUORIN_SEED is the seed of the first one,
/// QUORIN_CASES multiplies their number and QUORIN_FEWER divides it; each is 1 by default. A build with sanitizers runs
/// a tenth of the cases.
inline void ExpectAgreement(Comparison compare, std::uint64_t cases) {
    const std::uint64_t first = Setting("QUORIN_SEED", 1);
    cases = CasesOf(cases);
    std::cout << cases << " cases, seeds " << first << " to " << first + cases - 1 << std::endl;
    for (std::uint64_t seed = first; seed < first + cases; ++seed) {
        Choices choices(seed);
        const std::string difference = compare(choices);
        ASSERT_EQ(difference, "") << "QUORIN_SEED=" << seed;
    }
}

} // namespace reference
