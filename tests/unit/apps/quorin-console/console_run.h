// SPDX-License-Identifier: MIT
// Runs quorin-console to its end on a folder with one driver, one download and a port.
#pragma once

#include "tests/support/test_device.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace console {

using Json = nlohmann::ordered_json;
using Words = std::vector<std::string>;

struct Outcome {
    int Status = -1;
    std::string Output;
    Words Lines; ///< of the output
    std::string Errors;

    Json Line(std::size_t index) const { return Json::parse(Lines.at(index)); }
    /// Returns the last object that has this member.
    Json Last(const std::string& member) const;
    /// Returns the objects that have this member.
    std::vector<Json> All(const std::string& member) const;
};

inline const Words OpenTheDownload = {"choose Start...", "choose Ok", "choose Open", "tick 500"};

class Console : public testing::Test {
protected:
    Console();
    /// Runs the program on the root folder with these options and this input.
    Outcome With(const Words& options, const std::string& input);
    /// Runs it with an input of one command a line.
    Outcome Tell(const Words& commands, const Words& options = {});
    /// Runs it without --root.
    Outcome Bare(const Words& options, const std::string& environment = "");

    /// Writes a driver, its download and their tables into the device's data folder.
    void InstallMeter(const std::string& folder);

    support::TemporaryFolder Root;

    /// Runs a shell command, with `input`, `output` and `errors` as files to redirect to.
    Outcome Shell(const std::string& words, const std::string& input);
    /// Returns the program and its root folder, for a shell command.
    std::string Program() const;

private:
    Outcome Start(const std::string& command, const std::string& input);
    support::TemporaryFolder Streams_;
};

/// Returns several lists of commands as one.
Words Joined(const std::vector<Words>& parts);

} // namespace console
