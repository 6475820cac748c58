// SPDX-License-Identifier: MIT
// Random tables of nasty texts through each format and back, by Python's readers.
#include "tests/support/temporary_root.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

std::string Setting(const char* name, int otherwise, int factor = 1) {
    const char* const text = std::getenv(name);
    return std::to_string(text == nullptr ? otherwise : std::atoi(text) * factor);
}

TEST(Exports, OfAnyTableHaveAllThatWasInIt) {
    constexpr int Tables = 300;
    const TemporaryRoot place;
    const std::string command = "python3 '" + std::string(QUORIN_ROUND_TRIP) + "' '" + QUORIN_EXPORT + "' '" +
                                place.Path() + "' " + Setting("QUORIN_SEED", 1) + " " +
                                Setting("QUORIN_CASES", Tables, Tables) + " > '" + place.Path("difference") + "' 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << place.Bytes("difference");
}

} // namespace
