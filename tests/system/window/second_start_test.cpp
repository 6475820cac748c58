// SPDX-License-Identifier: MIT
// A second start of the real window, and a start that is refused.
#include "tests/system/window/running_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

namespace live {
namespace {

class SecondStart : public testing::Test {
protected:
    /// Starts one without waiting for its window.
    std::unique_ptr<RunningWindow> Start(const Folder& home) {
        return std::make_unique<RunningWindow>(nullptr, home, Root(home),
                                               Child::Setting{{{"DISPLAY", Screen.Display()}}, nullptr});
    }
    void StartFirst() { First = std::make_unique<RunningWindow>(&Screen, Home, Root(Home)); }
    static std::vector<std::string> Root(const Folder& home) { return {"--root", home.Path("root")}; }
    /// Starts a second one until the first has answered it, which a busy machine may do too late. Off screen, a refused
    /// one ends by itself. Returns what the last one wrote.
    std::string StartSecond(const std::vector<std::string>& files = {}) {
        std::vector<std::string> words = Root(Home);
        words.insert(words.end(), files.begin(), files.end());
        for (int tries = 0; tries < 10; ++tries) {
            RunningWindow second(nullptr, Home, words, {{{"QT_QPA_PLATFORM", "offscreen"}}, nullptr});
            if (second.Process().ExitStatus() == 0)
                return second.Process().Errors();
        }
        ADD_FAILURE() << "the first does not answer";
        return {};
    }
    /// Waits for a box, closes it by Enter, and returns what the program wrote.
    std::string CloseBox(RunningWindow& window, std::size_t windows) {
        EXPECT_TRUE(Eventually([&] { return Screen.Windows().size() == windows || window.Process().HasEnded(); }));
        EXPECT_FALSE(window.Process().HasEnded()) << "no box: " << window.Process().Errors();
        EXPECT_TRUE(Screen.Press("Return", [&] { return window.Process().HasEnded(); }));
        EXPECT_EQ(window.Process().ExitStatus(), 2);
        return window.Process().Errors();
    }
    std::string InUse() const {
        return "quorin: " + Home.Path("root") + " is in use by quorin " + std::to_string(First->Process().Id()) +
               "; one program at a time works on a root folder\n";
    }

    Desktop Screen;
    Folder Home;
    std::unique_ptr<RunningWindow> First;
};

TEST_F(SecondStart, BringsTheFirstToTheFrontWithItsFile) {
    StartFirst();
    const std::string window = Screen.ActiveWindow();
    const Folder elsewhere;
    const auto other = Start(elsewhere);
    ASSERT_TRUE(Eventually([&] { return Screen.Windows().size() == 2 && Screen.ActiveWindow() != window; }));
    Home.Put("meter.qvd", "Meter|meter.txt\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n"
                          "Depth|1||Depth||||\n");
    EXPECT_EQ(StartSecond({Home.Path("meter.qvd")}),
              "quorin: the window of " + Home.Path("root") + " is open already\n");
    EXPECT_TRUE(Eventually([&] { return !Home.Bytes("root/Quorin/meter.qvd").empty(); }));
    EXPECT_TRUE(Eventually([&] { return Screen.Windows().size() == 3; })) << "the form tells what it has done";
    EXPECT_TRUE(Eventually([&] { return Screen.ActiveWindow() != Screen.Windows()[1]; }));
}

TEST_F(SecondStart, BringsTheFirstToTheFront) {
    StartFirst();
    const std::string window = Screen.ActiveWindow();
    const Folder elsewhere;
    const auto other = Start(elsewhere);
    ASSERT_TRUE(Eventually([&] { return Screen.Windows().size() == 2 && Screen.ActiveWindow() != window; }));
    StartSecond();
    EXPECT_TRUE(Eventually([&] { return Screen.ActiveWindow() == window; }));
}

TEST_F(SecondStart, SaysInABoxThatTheFirstDoesNotAnswer) {
    StartFirst();
    First->Process().Signal(SIGSTOP);
    const auto second = Start(Home);
    EXPECT_EQ(CloseBox(*second, 2), InUse());
    First->Process().Signal(SIGCONT);
}

TEST_F(SecondStart, IsRefusedWithoutABoxOffScreen) {
    StartFirst();
    First->Process().Signal(SIGSTOP);
    RunningWindow second(nullptr, Home, Root(Home), {{{"QT_QPA_PLATFORM", "offscreen"}}, nullptr});
    EXPECT_EQ(second.Process().ExitStatus(), 2);
    EXPECT_EQ(second.Process().Errors(), InUse());
    First->Process().Signal(SIGCONT);
}

TEST_F(SecondStart, OfAKilledWindowIsTheFirst) {
    StartFirst();
    First->Process().Signal(SIGKILL);
    EXPECT_EQ(First->Process().ExitStatus(), -1);
    StartFirst();
    EXPECT_NE(StartSecond(), "");
}

TEST_F(SecondStart, AndAnyOtherRemovesWhatAKilledOneLeft) {
    const std::string left = Home.Path("root/.quorin-2147483647-0"); // no process has this number
    Home.Put("root/.quorin-2147483647-0", "half");
    std::filesystem::last_write_time(left, std::filesystem::last_write_time(left) - std::chrono::hours(25));
    StartFirst();
    EXPECT_FALSE(std::filesystem::exists(left));
}

TEST_F(SecondStart, AndEveryOtherThatIsRefusedSaysWhyInABox) {
    Home.Put("file", "");
    const Child::Setting setting = {{{"DISPLAY", Screen.Display()}}, nullptr};
    RunningWindow noRoot(nullptr, Home, {"--root", Home.Path("file")}, setting);
    EXPECT_THAT(CloseBox(noRoot, 1), testing::StartsWith("quorin: can't use the root folder "));
    RunningWindow noOption(nullptr, Home, {"--bogus"}, setting);
    EXPECT_THAT(CloseBox(noOption, 1), testing::StartsWith("quorin: The following argument was not expected: --bogus"));
}

} // namespace
} // namespace live
