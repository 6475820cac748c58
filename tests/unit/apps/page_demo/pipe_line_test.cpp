// SPDX-License-Identifier: MIT
// The line of the simulated instrument on a page.
#include "apps/page_demo/pipe_line.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace apps {
namespace {

using backends::ReadState;

struct Listener {
    PipeLine Line;
    backends::PortPaths Paths = Line.Paths();
    std::unique_ptr<backends::DescriptorSource> Port = Paths.Make(1);

    /// Returns what has come, or how the port was found.
    std::string Read() {
        std::string bytes;
        switch (Port->TakeAvailable(bytes)) {
        case ReadState::Data:
            return bytes;
        case ReadState::Nothing:
            return "(nothing)";
        case ReadState::Gone:
            break;
        }
        return "(gone: " + Port->Ending() + ")";
    }
};

TEST(PipeLine, IsTheFirstPortAndNoOther) {
    PipeLine line;
    EXPECT_EQ(line.Paths().Find(1), "simulated instrument");
    EXPECT_EQ(line.Paths().Find(2), "");
}

TEST(PipeLine, BringsWhatIsSentToTheOpenPort) {
    Listener it;
    EXPECT_FALSE(it.Line.IsHeard());
    EXPECT_EQ(it.Port->Descriptor(), -1);
    EXPECT_EQ(it.Port->Open(u"9600,N,8,1").Error, platform::NoError);
    EXPECT_TRUE(it.Line.IsHeard());
    EXPECT_GE(it.Port->Descriptor(), 0) << "it wakes the program";
    EXPECT_EQ(it.Read(), "(nothing)");
    EXPECT_TRUE(it.Line.Send("a\xB0"));
    EXPECT_TRUE(it.Line.Send("b"));
    EXPECT_EQ(it.Read(), "a\xB0"
                         "b");
}

TEST(PipeLine, KeepsNothingForALaterRecord) {
    Listener it;
    EXPECT_FALSE(it.Line.Send("nobody listens"));
    it.Port->Open(u"");
    EXPECT_TRUE(it.Line.Send("not read"));
    it.Port->Close();
    it.Port->Open(u"");
    EXPECT_EQ(it.Read(), "(nothing)");
    EXPECT_TRUE(it.Line.Send("read"));
    it.Port->Open(u"");
    EXPECT_EQ(it.Read(), "read") << "an open port stays as it is";
}

TEST(PipeLine, UnpluggedEndsBehindWhatHasArrived) {
    Listener it;
    it.Port->Open(u"");
    it.Line.Send("whole");
    it.Line.Unplug();
    EXPECT_FALSE(it.Line.IsHeard());
    EXPECT_FALSE(it.Line.Send("lost"));
    EXPECT_EQ(it.Read(), "whole");
    EXPECT_EQ(it.Read(), "(gone: it is unplugged)");
    EXPECT_EQ(it.Port->Open(u"").Why, "it is unplugged");
    it.Line.Plug();
    EXPECT_EQ(it.Port->Open(u"").Error, platform::NoError);
    EXPECT_TRUE(it.Line.IsHeard());
}

TEST(PipeLine, TellsWhenItCanNotBeMade) {
    rlimit before = {};
    ::getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none = {0, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none);
    Listener it;
    ::setrlimit(RLIMIT_NOFILE, &before);
    it.Line.Plug();
    EXPECT_FALSE(it.Line.IsPlugged());
    EXPECT_EQ(it.Line.Problem(), "no pipe can be made: Too many open files");
    EXPECT_EQ(it.Port->Open(u"").Why, it.Line.Problem());
    EXPECT_FALSE(it.Line.IsHeard());
}

TEST(PipeLine, SaysThatItIsFull) {
    Listener it;
    it.Port->Open(u"");
    bool isFull = false;
    for (int times = 0; times < 100'000 && !isFull; ++times)
        isFull = !it.Line.Send(std::string(1000, 'x'));
    EXPECT_TRUE(isFull);
}

} // namespace
} // namespace apps
