// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <unistd.h>

/// Rights are looked at: root, as which tests may run, has them all.
class OrdinaryUser {
public:
    OrdinaryUser() {
        Changed_ = seteuid(65534) == 0;
        prctl(PR_SET_DUMPABLE, 1); // or what lies under /proc/self would be root's
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
