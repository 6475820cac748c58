// SPDX-License-Identifier: MIT
#include "backends/web/page_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace backends::web {
namespace {

using Act = PortRequest::Act;

class PortOfThePage : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(::pipe2(Pipe_, O_NONBLOCK | O_CLOEXEC), 0);
        Line.emplace(Pipe_[0], [this](const PortRequest& request) { Asked.push_back(request); });
        Paths = Line->Paths();
        Tell({.Kind = "ports", .Names = {"USB adapter 0403:6001", "Bluetooth instrument"}});
    }
    void TearDown() override {
        ::close(Pipe_[0]);
        ::close(Pipe_[1]);
    }

    bool Tell(PageEvent event) {
        if (event.Kind != "ports" && event.Item == 0)
            event.Item = Asked.empty() ? 0 : Asked.back().Attempt;
        return Line->TakeUp(event);
    }
    void Comes(const std::string& bytes) const {
        ASSERT_EQ(::write(Pipe_[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    std::vector<Act> Acts() const {
        std::vector<Act> acts;
        for (const PortRequest& request : Asked)
            acts.push_back(request.Wanted);
        return acts;
    }
    /// Opens the port as the form does, which asks again until it is open.
    void Open() {
        ASSERT_EQ(Line->Open(1, u"9600,N,8,1").Error, NotAvailable);
        Tell({.Kind = "portopened"});
        ASSERT_EQ(Line->Open(1, u"9600,N,8,1").Error, NoError);
    }

    std::vector<PortRequest> Asked;
    std::optional<PageLine> Line;
    PortPaths Paths;

private:
    int Pipe_[2] = {-1, -1};
};

TEST_F(PortOfThePage, ComOneIsTheFirstThatWasGranted) {
    EXPECT_EQ(Paths.Find(1), "USB adapter 0403:6001");
    EXPECT_EQ(Paths.Find(2), "Bluetooth instrument");
    EXPECT_EQ(Paths.Find(3), "");
    EXPECT_EQ(Paths.Find(0), "");
}

TEST_F(PortOfThePage, IsOpenOnceThePageHasOpenedIt) {
    EXPECT_EQ(Line->Open(2, u"9600,N,8,1").Error, NotAvailable);
    ASSERT_EQ(Asked.size(), 1U);
    EXPECT_EQ(Asked[0].Number, 2);
    EXPECT_EQ(Asked[0].LineSettings, "9600,N,8,1");
    EXPECT_EQ(Line->Open(2, u"9600,N,8,1").Error, NotAvailable); // which asks no second time
    EXPECT_EQ(Line->Descriptor(), -1);
    Tell({.Kind = "portopened"});
    EXPECT_EQ(Line->Open(2, u"9600,N,8,1").Error, NoError);
    EXPECT_THAT(Acts(), testing::ElementsAre(Act::Open, Act::Read));
    EXPECT_NE(Line->Descriptor(), -1);
}

TEST_F(PortOfThePage, GivesItsBytesAsTheyAre) {
    Open();
    std::string bytes;
    EXPECT_EQ(Line->TakeAvailable(bytes), ReadState::Nothing);
    Comes(std::string("21.4 \xB0\x00 C", 9));
    EXPECT_EQ(Line->TakeAvailable(bytes), ReadState::Data);
    EXPECT_EQ(bytes, std::string("21.4 \xB0\x00 C", 9));
}

TEST_F(PortOfThePage, LastBytesComeBeforeItsEnd) {
    Open();
    Comes("last");
    Tell({.Kind = "portended", .Words = u"it was unplugged"});
    std::string bytes;
    EXPECT_EQ(Line->TakeAvailable(bytes), ReadState::Data);
    EXPECT_EQ(bytes, "last");
    EXPECT_EQ(Line->TakeAvailable(bytes), ReadState::Gone);
    EXPECT_EQ(Line->Ending(), "it was unplugged");
    EXPECT_EQ(Line->Open(1, u"9600,N,8,1").Error, NotAvailable);
    EXPECT_EQ(Asked.back().Wanted, Act::Open);
}

TEST_F(PortOfThePage, SaysWhyItCouldNotBeOpened) {
    Line->Open(1, u"9600,N,8,1");
    Tell({.Kind = "portended", .Words = u"it is switched off"});
    const SourceTrouble next = Line->Open(1, u"9600,N,8,1"); // tries again
    EXPECT_EQ(next.Why, "it is switched off");
    EXPECT_EQ(Line->Open(1, u"9600,N,8,1").Why, "it is switched off");
    EXPECT_THAT(Acts(), testing::ElementsAre(Act::Open, Act::Open));
    EXPECT_EQ(Line->Open(2, u"9600,N,8,1").Why, "opening"); // another port
}

TEST_F(PortOfThePage, AnOldFailureIsForgottenOnceItIsOpen) {
    Line->Open(1, u"9600,N,8,1");
    Tell({.Kind = "portended", .Words = u"it is switched off"});
    Open();
    Tell({.Kind = "portended"});
    std::string bytes;
    EXPECT_EQ(Line->TakeAvailable(bytes), ReadState::Gone);
    EXPECT_EQ(Line->Open(1, u"9600,N,8,1").Why, "opening");
}

/// The form asks twice a second for a port that it wants.
TEST_F(PortOfThePage, AnOpeningThatNobodyWantsIsGivenUp) {
    Line->Open(1, u"9600,N,8,1");
    std::this_thread::sleep_for(std::chrono::milliseconds(2100));
    std::string bytes;
    EXPECT_EQ(Line->TakeAvailable(bytes), ReadState::Nothing);
    EXPECT_EQ(Acts().back(), Act::Close);
}

TEST_F(PortOfThePage, AnAnswerToAnEarlierOpeningIsDropped) {
    Line->Open(1, u"9600,N,8,1");
    const PageEvent early{.Kind = "portopened", .Item = Asked.back().Attempt};
    Line->Close();
    Line->Open(2, u"9600,N,8,1");
    Tell(early);
    EXPECT_EQ(Line->Open(2, u"9600,N,8,1").Error, NotAvailable);
}

TEST_F(PortOfThePage, BytesOfAnEarlierOpeningAreDropped) {
    Open();
    Comes("of the first");
    Line->Close();
    Open();
    Comes("of the second");
    std::string bytes;
    Line->TakeAvailable(bytes);
    EXPECT_EQ(bytes, "of the second");
}

TEST_F(PortOfThePage, AnotherPortClosesTheFirst) {
    Open();
    EXPECT_EQ(Line->Open(2, u"9600,N,8,1").Error, NotAvailable);
    EXPECT_THAT(Acts(), testing::ElementsAre(Act::Open, Act::Read, Act::Close, Act::Open));
}

TEST_F(PortOfThePage, LostCharactersAreTold) {
    Text told;
    Line->Lost = [&told](const Text& why) { told = why; };
    Open();
    Tell({.Kind = "portlost", .Words = u"they came too fast"});
    EXPECT_EQ(told, u"they came too fast");
}

TEST_F(PortOfThePage, OtherEventsAreNotItsOwn) {
    EXPECT_FALSE(Line->TakeUp({.Kind = "press"}));
}

} // namespace
} // namespace backends::web
