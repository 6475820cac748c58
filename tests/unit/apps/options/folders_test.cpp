// SPDX-License-Identifier: MIT
#include "apps/options/folders.h"

#include <gtest/gtest.h>
#include <map>

using namespace apps;

namespace {

using Variables = std::map<std::string, std::string>;

Environment With(const Variables& variables) {
    return [&variables](const char* name) {
        const auto found = variables.find(name);
        return found == variables.end() ? nullptr : found->second.c_str();
    };
}

struct FolderRow {
    Variables Set;
    const char* Data; ///< null if there is none
    const char* Settings;
};

std::ostream& operator<<(std::ostream& out, const FolderRow& row) {
    for (const auto& [name, value] : row.Set)
        out << name << "=" << value << " ";
    return out;
}

class Folders : public testing::TestWithParam<FolderRow> {};

TEST_P(Folders, FollowTheEnvironment) {
    const auto optional = [](const char* text) {
        return text == nullptr ? std::nullopt : std::optional<std::string>(text);
    };
    EXPECT_EQ(DataFolder(With(GetParam().Set)), optional(GetParam().Data));
    EXPECT_EQ(SettingsPlace(With(GetParam().Set)), optional(GetParam().Settings));
}

INSTANTIATE_TEST_SUITE_P(
    Table, Folders,
    testing::Values(
        FolderRow{{{"HOME", "/home/ann"}}, "/home/ann/.local/share/quorin", "/home/ann/.config/quorin/settings.ini"},
        FolderRow{{{"HOME", "/home/ann"}, {"XDG_DATA_HOME", "/data"}},
                  "/data/quorin",
                  "/home/ann/.config/quorin/settings.ini"},
        FolderRow{{{"HOME", "/home/ann"}, {"XDG_CONFIG_HOME", "/etc/ann"}},
                  "/home/ann/.local/share/quorin",
                  "/etc/ann/quorin/settings.ini"},
        FolderRow{{{"HOME", "/home/ann"}, {"XDG_DATA_HOME", "data"}, {"XDG_CONFIG_HOME", "./etc"}},
                  "/home/ann/.local/share/quorin",
                  "/home/ann/.config/quorin/settings.ini"},
        FolderRow{{{"HOME", "/home/ann"}, {"XDG_DATA_HOME", ""}, {"XDG_CONFIG_HOME", ""}},
                  "/home/ann/.local/share/quorin",
                  "/home/ann/.config/quorin/settings.ini"},
        FolderRow{{{"HOME", "/home/ann/"}, {"XDG_DATA_HOME", "/data//"}},
                  "/data/quorin",
                  "/home/ann/.config/quorin/settings.ini"},
        FolderRow{{{"HOME", "/"}}, "/.local/share/quorin", "/.config/quorin/settings.ini"},
        FolderRow{{{"XDG_DATA_HOME", "/data"}}, "/data/quorin", nullptr}, FolderRow{{{"HOME", ""}}, nullptr, nullptr},
        FolderRow{{{"HOME", "ann"}}, nullptr, nullptr}, FolderRow{{}, nullptr, nullptr}));

TEST(FolderOfTheState, IsBesideTheOthers) {
    EXPECT_EQ(StateFolder(With({{"HOME", "/home/ann"}})), "/home/ann/.local/state/quorin");
    EXPECT_EQ(StateFolder(With({{"HOME", "/home/ann"}, {"XDG_STATE_HOME", "/state"}})), "/state/quorin");
    EXPECT_EQ(StateFolder(With({{"HOME", "/home/ann"}, {"XDG_STATE_HOME", "state"}})), "/home/ann/.local/state/quorin");
    EXPECT_EQ(StateFolder(With({})), std::nullopt);
}

TEST(FoldersOfTheProcess, AreThoseOfItsEnvironment) {
    setenv("XDG_DATA_HOME", "/only/for/this/test", 1);
    EXPECT_EQ(DataFolder(), "/only/for/this/test/quorin");
    unsetenv("XDG_DATA_HOME");
}

} // namespace
