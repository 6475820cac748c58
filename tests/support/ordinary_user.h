// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <unistd.h>

/// Drops root's rights for as long as it exists: tests may run as root, which may open everything.
class OrdinaryUser {
public:
    OrdinaryUser() {
        Changed_ = seteuid(65534) == 0;
        prctl(PR_SET_DUMPABLE, 1); // otherwise the files in /proc/self would belong to root
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (Changed_ && seteuid(getuid()) != 0)
            ADD_FAILURE() << "the tests can't have their rights back";
    }

private:
    bool Changed_ = false;
};
