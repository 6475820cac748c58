// SPDX-License-Identifier: MIT
#include "tests/support/locale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

int main(int count, char** words) {
    testing::InitGoogleMock(&count, words);
    return support::TakeLocale() ? RUN_ALL_TESTS() : 1;
}
