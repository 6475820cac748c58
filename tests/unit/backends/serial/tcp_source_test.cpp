// SPDX-License-Identifier: MIT
#include "backends/serial/tcp_source.h"

#include "tests/support/listener.h"

#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <thread>

namespace backends {
namespace {

using testing::AnyOf;
using testing::HasSubstr;

class Connection : public testing::Test {
protected:
    void Connect(const std::string& host = "127.0.0.1") {
        Source = std::make_unique<TcpSource>(host, Meter.Port());
        ASSERT_EQ(OpenAtLast().Error, NoError);
        Meter.Accept();
    }
    /// Tries to open, as the form does, until the outcome is known.
    SourceTrouble OpenAtLast() const {
        for (int times = 0; times < 1000; ++times) {
            const SourceTrouble trouble = Source->Open(u"9600,N,8,1");
            if (trouble.Error == NoError || (trouble.Why != "connecting" && trouble.Why.find("looking up") != 0))
                return trouble;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        ADD_FAILURE() << "it never comes to an end";
        return {};
    }
    std::string Receive(std::size_t count) const {
        std::string bytes;
        while (bytes.size() < count && Tells(Source->Descriptor()) && Source->TakeAvailable(bytes) != ReadState::Gone) {
        }
        return bytes;
    }

    Listener Meter;
    std::unique_ptr<TcpSource> Source;
};

TEST_F(Connection, BringsWhatIsSent) {
    Connect();
    Meter.Send("[BLob]\r\n");
    EXPECT_EQ(Receive(8), "[BLob]\r\n");
}

TEST_F(Connection, HasNothingWhileNothingIsSent) {
    Connect();
    std::string bytes = "old";
    EXPECT_EQ(Source->TakeAvailable(bytes), ReadState::Nothing);
    EXPECT_EQ(bytes, "old");
    EXPECT_FALSE(Tells(Source->Descriptor(), 0));
}

TEST_F(Connection, FindsAHostByItsName) {
    Connect("localhost"); // the first of its addresses that is found
    Meter.Send("x");
    EXPECT_EQ(Receive(1), "x");
}

TEST_F(Connection, IsRefusedWhereNobodyListens) {
    Meter.Stop();
    Source = std::make_unique<TcpSource>("127.0.0.1", Meter.Port());
    const SourceTrouble trouble = OpenAtLast();
    EXPECT_EQ(trouble.Error, NotAvailable);
    EXPECT_THAT(trouble.Why, HasSubstr("refused"));
    EXPECT_EQ(Source->Descriptor(), -1);
}

TEST_F(Connection, IsMadeOnceSomebodyListensAgain) {
    Source = std::make_unique<TcpSource>("127.0.0.1", Meter.Port());
    Meter.Stop();
    ASSERT_EQ(OpenAtLast().Error, NotAvailable);
    const Listener other;
    Source = std::make_unique<TcpSource>("127.0.0.1", other.Port());
    EXPECT_EQ(OpenAtLast().Error, NoError);
}

TEST_F(Connection, TellsAHostThatIsNotFound) {
    Source = std::make_unique<TcpSource>("no-such-host.invalid", 5025);
    const SourceTrouble trouble = OpenAtLast();
    EXPECT_EQ(trouble.Error, NotAvailable);
    EXPECT_EQ(trouble.Why, "no address of no-such-host.invalid was found");
}

// A name server that does not answer takes seconds; the loop must not wait for it.
TEST_F(Connection, LooksANameUpWithoutWaiting) {
    Source = std::make_unique<TcpSource>("localhost", Meter.Port());
    EXPECT_EQ(Source->Open(u"").Why, "looking up localhost");
    EXPECT_EQ(Source->Descriptor(), -1);
    Source->Close();
    EXPECT_EQ(OpenAtLast().Error, NoError) << "the outcome is there for the next opening";
}

/// An address of a block that is reserved for documentation leads nowhere. On a machine without a network it is refused
/// at once.
TEST_F(Connection, IsNotWaitedForByTheOpening) {
    Source = std::make_unique<TcpSource>("192.0.2.1", 5025);
    const SourceTrouble trouble = Source->Open(u"");
    EXPECT_EQ(trouble.Error, NotAvailable);
    EXPECT_THAT(trouble.Why, AnyOf("connecting", HasSubstr("unreachable"), HasSubstr("refused")));
    EXPECT_EQ(Source->Descriptor(), -1);
    std::string bytes;
    EXPECT_EQ(Source->TakeAvailable(bytes), ReadState::Nothing);
}

TEST_F(Connection, GivesWhatCameBeforeTheEndAndThenTheEnd) {
    Connect();
    Meter.Send("last\r\n");
    Meter.Drop();
    EXPECT_EQ(Receive(6), "last\r\n");
    std::string bytes;
    while (Source->TakeAvailable(bytes) == ReadState::Nothing)
        ASSERT_TRUE(Tells(Source->Descriptor()));
    EXPECT_EQ(bytes, "");
    EXPECT_EQ(Source->Descriptor(), -1);
    EXPECT_EQ(Source->Ending(), "the other end has closed the connection");
}

TEST_F(Connection, TellsThatItWasReset) {
    Connect();
    Meter.Reset();
    ASSERT_TRUE(Tells(Source->Descriptor()));
    std::string bytes;
    EXPECT_EQ(Source->TakeAvailable(bytes), ReadState::Gone);
    EXPECT_THAT(Source->Ending(), HasSubstr("reset"));
}

TEST_F(Connection, EndsWhenItIsClosed) {
    Connect();
    Source->Close();
    EXPECT_TRUE(Meter.IsLeft());
    EXPECT_EQ(Source->Ending(), "");
}

TEST_F(Connection, EndsWithItsSource) {
    Connect();
    Source.reset();
    EXPECT_TRUE(Meter.IsLeft());
}

} // namespace
} // namespace backends
