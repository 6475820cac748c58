// SPDX-License-Identifier: MIT
// Runs quorin-journal on a journal that the test writes.
#pragma once

#include "tests/support/temporary_root.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace reader {

using Words = std::vector<std::string>;

struct Outcome {
    int Status = -1;
    std::string Output;
    std::string Errors;
};

/// Two root folders; the programs worked in the first one unless a test says otherwise.
inline const std::string Meter = "/data/meter";
inline const std::string Other = "/data/other";

class Journal : public testing::Test {
protected:
    /// Writes the file of a day. Each line gets its LF; one that begins with `{` gets the time `DAYT10:00:00` unless it
    /// has one of its own.
    void Day(const std::string& day, const Words& lines, const std::string& root = Meter);
    /// Returns the path of that file.
    std::string FileOf(const std::string& day, const std::string& root = Meter);
    /// The bytes as they are.
    void Bytes(const std::string& day, const std::string& bytes, const std::string& root = Meter);

    /// Runs a command on this journal.
    Outcome Run(const Words& words);
    /// Runs the program as it is.
    Outcome Bare(const Words& words, const std::string& environment = "");

    TemporaryRoot Folder{support::PlaceInMemory()};

private:
    TemporaryRoot Streams_{support::PlaceInMemory()};
};

/// Returns a line that begins a program, at 10:00.
std::string Start(const std::string& root = Meter);
/// Returns a line with a reading of moisture, at that time.
std::string Reading(const std::string& time, const std::string& verdict, const std::string& value = "14.1");

} // namespace reader
