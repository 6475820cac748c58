// SPDX-License-Identifier: MIT
// The product's forms against the literal ones, on as many made-up cases as are asked for.
#pragma once

#include "tests/reference/choices.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

namespace reference {

/// Makes up one case out of the choices and has both forms work on it. Gives what they differ in, in a text from which
/// a person can repeat it by hand; nothing where they agree.
using Comparison = std::string (*)(Choices&);

/// A number from the environment.
inline std::uint64_t Setting(const char* name, std::uint64_t byDefault) {
    const char* wanted = std::getenv(name);
    return wanted != nullptr ? std::strtoull(wanted, nullptr, 10) : byDefault;
}

// g++ tells by a macro of its own, clang by a feature.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool Sanitized = true;
#elif defined(__has_feature)
inline constexpr bool Sanitized = __has_feature(address_sanitizer);
#else
inline constexpr bool Sanitized = false;
#endif

/// How many cases this run makes of so many.
inline std::uint64_t CasesOf(std::uint64_t cases) {
    return cases * Setting("QUORIN_CASES", 1) / Setting("QUORIN_FEWER", 1) / (Sanitized ? 10 : 1);
}

/// Runs so many cases, each from a seed of its own. QUORIN_SEED in the environment is the seed of the first one,
/// QUORIN_CASES multiplies their number and QUORIN_FEWER divides it: all of them 1 by default. Under the sanitizers a
/// tenth of the cases has to do.
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
