// SPDX-License-Identifier: MIT
// quorin-console run to its end on a folder with one driver, one download and a port.
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
    /// The last object that has this member.
    Json Last(const std::string& member) const;
    /// The objects that have this member.
    std::vector<Json> All(const std::string& member) const;
};

inline const Words OpenTheDownload = {"choose Start...", "choose Ok", "choose Open", "tick 500"};

class Console : public testing::Test {
protected:
    Console();
    /// Runs it on the root folder with these options and an input of these bytes.
    Outcome With(const Words& options, const std::string& input);
    /// The input is one command a line.
    Outcome Tell(const Words& commands, const Words& options = {});
    /// Runs it without --root.
    Outcome Bare(const Words& options, const std::string& environment = "");

    /// A driver, its download and their tables in the device's data folder.
    void InstallMeter(const std::string& folder);

    support::TemporaryFolder Root;

    /// The words of a shell, with `input`, `output` and `errors` as files to redirect to.
    Outcome Shell(const std::string& words, const std::string& input);
    /// The program and its root folder, for a shell.
    std::string Program() const;

private:
    Outcome Start(const std::string& command, const std::string& input);
    support::TemporaryFolder Streams_;
};

/// Several lists of commands as one.
Words Joined(const std::vector<Words>& parts);

} // namespace console
