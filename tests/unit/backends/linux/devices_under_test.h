// SPDX-License-Identifier: MIT
// A device folder for a test, with the nodes of a machine that has the given devices.
#pragma once

#include "tests/support/temporary_root.h"

class DevicesUnderTest : public testing::Test {
protected:
    /// Adds a character device that is not a terminal and is safe to open.
    void Device(const std::string& name) { Dev.Link("/dev/null", name); }
    void Devices(const std::vector<std::string>& names) {
        for (const std::string& name : names)
            Device(name);
    }
    void ById(const std::string& name, const std::string& target) {
        std::filesystem::create_directories(Dev.Path("serial/by-id"));
        Dev.Link(target, "serial/by-id/" + name);
    }
    void Remove(const std::string& name) { std::filesystem::remove(Dev.Path(name)); }

    TemporaryRoot Dev;
};
