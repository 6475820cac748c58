// SPDX-License-Identifier: MIT
#include "journal/story.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace journal {
namespace {

class StoryOf : public testing::Test {
protected:
    StoryOf() { Start("virtual"); }
    void Start(const char* clock) { Story_.Take({{"ms", 0}, {"event", "start"}, {"clock", clock}}); }
    void Act(std::int64_t ms, const char* act, const char* args = "") {
        Line line = {{"ms", ms}, {"event", "act"}, {"act", act}};
        if (*args != '\0')
            line["args"] = args;
        Story_.Take(line);
    }
    void Set(std::int64_t ms, const char* text) {
        Story_.Take({{"ms", ms}, {"event", "act"}, {"act", "set"}, {"text", text}});
    }
    void Tap(std::int64_t ms, std::int64_t length = 0) {
        Act(ms, "press", "2 1");
        Act(ms + length, "release");
    }
    void Receive(std::int64_t ms, const std::string& bytes) {
        Story_.Take({{"ms", ms}, {"event", "received"}, {"from", "port"}, {"bytes", TextOfBytes(bytes)}});
    }
    void Other(std::int64_t ms, const char* event) { Story_.Take({{"ms", ms}, {"event", event}}); }

    Story Story_;
};

TEST_F(StoryOf, ASessionHasActsBytesAndTicks) {
    Act(0, "title", "1");
    Act(0, "menu", "1 1");
    Receive(500, "[BLob]\r\n\"\xC2\xB0");
    Other(1000, "reading");
    Other(1000, "row");
    Act(1700, "pick", "2026-11-22");
    Act(1700, "command", "New Record");
    Act(1700, "record", "2");
    Act(1700, "key", "13");
    Act(1700, "again", "2");
    Act(1700, "close");
    Other(2000, "end");
    EXPECT_EQ(Story_.Commands(), "title 1\nmenu 1 1\ntick 500\nreceive \"[BLob]\\r\\n\\\"°\"\ntick 1200\n"
                                 "pick 2026-11-22\ncommand New Record\nrecord 2\nkey 13\nagain 2\nclose\ntick 300\n");
    EXPECT_TRUE(Story_.IsExact());
}

TEST_F(StoryOf, BytesAreTextAsThePortReadsThem) {
    Receive(0, "\xB0\xC2\xB0");
    EXPECT_EQ(Story_.Commands(), "receive \"°°\"\n");
}

TEST(StoryOfALateStart, HasNoTimeBeforeItsFirstLine) {
    Story story;
    story.Take({{"ms", 30}, {"event", "start"}, {"clock", "virtual"}});
    story.Take({{"ms", 30}, {"event", "act"}, {"act", "close"}});
    EXPECT_EQ(story.Commands(), "close\n");
}

TEST_F(StoryOf, APressOf1500IsHeld) {
    Tap(0, 1499);
    Tap(2000, 1500);
    Tap(4000, 1800);
    Act(6000, "close");
    EXPECT_EQ(Story_.Commands(), "tap 2 1\ntick 2000\nhold 2 1\ntick 500\nhold 2 1\ntick 500\nclose\n");
}

/// What happens while the cell is held takes a part of that time.
TEST_F(StoryOf, WhatHappensDuringAHoldComesAfterItsCommand) {
    Act(0, "press", "2 1");
    Receive(1000, "a");
    Act(1600, "release");
    Act(1700, "close");
    EXPECT_EQ(Story_.Commands(), "hold 2 1\nreceive \"a\"\ntick 200\nclose\n");
}

TEST_F(StoryOf, AJumpMovesTheClockByItself) {
    Act(100, "jump", "5000");
    Other(5100, "reading");
    Act(5300, "close");
    EXPECT_EQ(Story_.Commands(), "tick 100\njump 5000\ntick 200\nclose\n");
}

TEST_F(StoryOf, AJumpThatTheConsoleHasRefusedIsNone) {
    Act(0, "jump", "-5");
    Act(0, "jump", "x");
    Act(0, "jump");
    Act(100, "close");
    EXPECT_EQ(Story_.Commands(), "tick 100\nclose\n");
}

/// Its field may have closed by itself, which the journal tells when it is too late.
TEST_F(StoryOf, ATextIsSetAsSoonAsItsFieldMayBeOpen) {
    Tap(100);
    Set(200, "moisture \"1\".txt");
    Act(200, "menu", "1 1");
    EXPECT_EQ(Story_.Commands(), "tick 100\ntap 2 1\nset \"moisture \\\"1\\\".txt\"\ntick 100\nmenu 1 1\n");
}

/// A longer one would end with the answer, and what follows would be too early.
TEST_F(StoryOf, ATickEndsWhereItsMessageBoxOpens) {
    Act(0, "close");
    Receive(300, "a");
    Other(500, "question");
    Act(900, "disk", "ok");
    Act(1200, "answer", "no");
    Act(2200, "close");
    EXPECT_EQ(Story_.Commands(), "close\ntick 300\nreceive \"a\"\ntick 200\ntick 400\ndisk ok\ntick 300\nanswer no\n"
                                 "tick 1000\nclose\n");
}

TEST_F(StoryOf, ARealClockIsAnApproximation) {
    Start("real");
    EXPECT_FALSE(Story_.IsExact());
    EXPECT_EQ(Story_.WhyNot(), "the time passed by the machine's clock");
}

TEST_F(StoryOf, WhatAScriptCannotDoIsAnApproximation) {
    Act(0, "holdmenu", "2");
    Story_.Take({{"ms", 0}, {"event", "port"}, {"what", "opened"}, {"address", "/dev/ttyUSB0"}});
    Story_.Take({{"ms", 0}, {"event", "received"}, {"from", "mailbox"}, {"text", "a\r\n"}});
    EXPECT_EQ(Story_.Commands(), "# holdmenu 2: the console has no such command\n# the mailbox brought \"a\\r\\n\"\n");
    EXPECT_EQ(Story_.WhyNot(), "it has acts that the console has no command for, the port was a real one, "
                               "text came by the mailbox");
    EXPECT_FALSE(Story_.IsExact());
}

TEST_F(StoryOf, ASimulatedPortIsNone) {
    Story_.Take({{"ms", 0}, {"event", "port"}, {"what", "opened"}, {"address", ""}});
    EXPECT_TRUE(Story_.IsExact());
}

} // namespace
} // namespace journal
