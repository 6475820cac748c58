// SPDX-License-Identifier: MIT
#include "backends/web/page_events.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace backends::web {
namespace {

TEST(ALineOfThePage, IsAnEvent) {
    const auto event = ReadPageEvent(
        R"({"kind":"edit","serial":7,"stage":3,"field":2,"words":"näss","caret":4,"selected":1,"repeated":true})");
    ASSERT_TRUE(event);
    EXPECT_EQ(event->Kind, "edit");
    EXPECT_EQ(event->Serial, 7);
    EXPECT_EQ(event->Stage, 3);
    EXPECT_EQ(event->Field, 2);
    EXPECT_EQ(event->Words, u"näss");
    EXPECT_EQ(event->Caret, 4);
    EXPECT_EQ(event->Selected, 1);
    EXPECT_TRUE(event->Repeated);
    EXPECT_FALSE(event->Yes);
}

TEST(ALineOfThePage, ThatIsNoEventIsDropped) {
    for (const char* const line : {"", "{", "[]", "7", R"({"serial":1})", R"({"kind":7})", "{\"kind\":\"\xFF\"}"})
        EXPECT_FALSE(ReadPageEvent(line)) << line;
}

TEST(ALineOfThePage, HasNoNumberThatIsTooLarge) {
    const auto event = ReadPageEvent(R"({"kind":"press","x":99999999999,"y":"5","key":-1})");
    ASSERT_TRUE(event);
    EXPECT_EQ(event->X, 0);
    EXPECT_EQ(event->Y, 0);
    EXPECT_EQ(event->Key, -1);
}

TEST(ALineOfThePage, IsReadWhereverItsBytesAreCut) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_NONBLOCK | O_CLOEXEC), 0);
    PageEvents events(ends[0]);
    std::vector<std::string> kinds;
    events.Raised = [&](const PageEvent& event) { kinds.push_back(event.Kind); };
    for (const char byte : std::string("{\"kind\":\"press\"}\n{\"kind\":\"release\"}\n")) {
        ASSERT_EQ(::write(ends[1], &byte, 1), 1);
        events.RaiseWhatIsPending();
    }
    EXPECT_THAT(kinds, testing::ElementsAre("press", "release"));
    ::close(ends[0]);
    ::close(ends[1]);
}

} // namespace
} // namespace backends::web
