// SPDX-License-Identifier: MIT
// A device folder of the test's own, with the nodes of a machine that has what the test says.
#pragma once

#include "tests/support/temporary_root.h"

class DevicesUnderTest : public testing::Test {
protected:
    /// A character device that is no terminal, and does no harm when it is opened.
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
