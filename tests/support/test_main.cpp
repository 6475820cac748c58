// SPDX-License-Identifier: MIT
#include "tests/support/locale.h"
#include "tests/support/places.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace {

/// A folder for the files that the programs under test keep, so that the developer's own are not used.
class StateOfThisRun {
public:
    StateOfThisRun() {
        std::string path = (support::PlaceInMemory() / "quorin-state-XXXXXX").string();
        if (::mkdtemp(path.data()) != nullptr)
            Path_ = path;
        ::setenv("XDG_STATE_HOME", Path_.c_str(), 1);
    }
    StateOfThisRun(const StateOfThisRun&) = delete;
    StateOfThisRun& operator=(const StateOfThisRun&) = delete;
    ~StateOfThisRun() {
        std::error_code ignored;
        std::filesystem::remove_all(Path_, ignored);
    }

private:
    std::string Path_ = "/nonexistent";
};

} // namespace

int main(int count, char** words) {
    testing::InitGoogleMock(&count, words);
    const StateOfThisRun state;
    return support::TakeLocale() ? RUN_ALL_TESTS() : 1;
}
