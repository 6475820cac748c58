// SPDX-License-Identifier: MIT
// Runs quorin-driver in a folder of the test.
#pragma once

#include "tests/support/temporary_root.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace driver {

struct Outcome {
    int Status = -1;
    std::string Output;
    std::string Errors;
};

class DriverProgram : public testing::Test {
protected:
    /// `words`: the command line as a shell reads it, in the folder; `before`: what the shell does first.
    Outcome Run(const std::string& words, const std::string& before = "");

    TemporaryRoot Folder{support::PlaceInMemory()};

private:
    TemporaryRoot Streams_{support::PlaceInMemory()};
};

inline const std::string Samples = QUORIN_SAMPLES;

} // namespace driver
