// SPDX-License-Identifier: MIT
// The whole program on an existing root folder: started there, and started again after it was killed.
#pragma once

#include "backends/loop/no_commands.h"
#include "tests/support/test_device.h"
#include "tests/system/power_loss/table_contents.h"

namespace disk {

/// A desktop keeps its lines in text files, a Palm OS device in the line databases of its memory. Each message box is
/// answered at once, a question with Yes.
class Machine final : backends::NoCommands {
public:
    /// The settings are in the root folder unless another file is named.
    Machine(const std::string& root, Keeping keeping, const std::string& settings = {});
    ~Machine() override;

    support::Record Did;
    backends::HostDevice Host;
    backends::headless::HeadlessPlatform Platform;

private:
    bool HasCommand() override { return Platform.boxes.Current() != nullptr; }
    bool Ended() override { return true; }
    void RunCommand() override;
};

/// Returns the full name of a file in the data folder of the running program.
Text FullName(const std::string& name);

/// Returns the root folder before a test: files with these lines, and the setting that names their volume.
Tree Furnished(const State& files, Keeping keeping);

} // namespace disk
