// SPDX-License-Identifier: MIT
#include "backends/host/second_start.h"

#include "tests/support/temporary_root.h"

#include <atomic>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>

namespace backends {
namespace {

using std::chrono::milliseconds;
using namespace std::chrono_literals;

class SecondStart : public testing::Test {
protected:
    SecondStart() {
        std::filesystem::create_directory(Root.Path("root"));
        Listen();
    }
    StartPlace Place() const { return StartPlaceOf(Root.Path("root"), {Root.Path("run")}); }
    std::string SocketPath() const { return Root.Path("run/" + Place().Name); }
    void Listen() {
        Listener.reset();
        Listener.emplace(Place());
        Listener->Started = [this](const StartRequest& request) { Got.push_back(request); };
    }
    /// Lets the listener do what it has to, for as long as `act` runs beside it.
    void Beside(const std::function<void()>& act) {
        std::atomic<bool> done = false;
        std::thread other([&] {
            act();
            done = true;
        });
        while (!done) {
            pollfd waiting{Listener->Descriptor(), POLLIN, 0};
            ::poll(&waiting, 1, 10);
            Listener->RaiseWhatIsPending();
        }
        other.join();
    }
    bool Pass(const StartRequest& request, milliseconds patience = 20s) {
        bool taken = false;
        Beside([&] { taken = PassOn(Place(), request, patience); });
        return taken;
    }
    /// Returns a socket that is connected to the listener.
    Descriptor Connected() const {
        Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        SocketPath().copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(::connect(socket.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        return socket;
    }

    TemporaryRoot Root{support::PlaceInMemory()};
    std::optional<StartListener> Listener;
    std::vector<StartRequest> Got;
};

TEST_F(SecondStart, PassesItsFolderAndFilesToTheFirst) {
    const StartRequest request = {"/some folder", "token", {"a.qvd", "line\nfeed", "\xFF\xFE", ""}};
    EXPECT_TRUE(Pass(request));
    EXPECT_EQ(Got, std::vector{request});
    EXPECT_TRUE(Pass({"/", "", {}}));
    EXPECT_EQ(Got.size(), 2U);
}

TEST_F(SecondStart, OfLongPathsPassesThemWhole) {
    const StartRequest request = {"/" + std::string(100'000, 'x'), "", {std::string(100'000, 'y')}};
    EXPECT_TRUE(Pass(request));
    EXPECT_EQ(Got, std::vector{request});
}

TEST_F(SecondStart, FindsTheFirstByAnotherNameOfTheFolder) {
    Root.Link("root", "link");
    EXPECT_EQ(StartPlaceOf(Root.Path("link"), {Root.Path("run")}).Name, Place().Name);
}

TEST_F(SecondStart, IsRefusedIfNobodyAnswers) {
    EXPECT_FALSE(PassOn(Place(), {"/", "", {}}, 100ms)) << "the first one hangs";
    Listener.reset();
    EXPECT_FALSE(PassOn(Place(), {"/", "", {}}, 100ms)) << "it was killed";
    EXPECT_FALSE(PassOn(StartPlaceOf(Root.Path("root"), {""}), {"/", "", {}}, 100ms));
}

TEST_F(SecondStart, ThatHasGivenUpIsNotDone) {
    EXPECT_FALSE(PassOn(Place(), {"/", "", {"a.qvd"}}, 100ms));
    for (int round = 0; round < 3; ++round)
        Listener->RaiseWhatIsPending();
    EXPECT_TRUE(Got.empty());
}

TEST_F(SecondStart, WaitsForAFirstThatIsJustStarting) {
    Listener.reset();
    std::filesystem::remove(SocketPath());
    bool taken = false;
    std::thread second([&] { taken = PassOn(Place(), {"/", "", {}}, 20s); });
    std::this_thread::sleep_for(50ms);
    Listen();
    Beside([&] { second.join(); });
    EXPECT_TRUE(taken);
}

TEST_F(SecondStart, ReplacesTheSocketOfAKilledWindow) {
    Listen(); // a closed socket stays where it was
    EXPECT_TRUE(Pass({"/", "", {}}));
}

TEST_F(SecondStart, IsReachedByItsOwnUserAlone) {
    struct stat found {};
    ASSERT_EQ(::stat(SocketPath().c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, 0600U);
    ASSERT_EQ(::stat(Root.Path("run").c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777, 0700U);
    std::filesystem::permissions(Root.Path("run"), std::filesystem::perms(0755));
    EXPECT_FALSE(Place().Valid());
    const StartPlace next = StartPlaceOf(Root.Path("root"), {Root.Path("run"), Root.Path("state")});
    EXPECT_TRUE(next.Valid());
    EXPECT_TRUE(Root.Has("state"));
}

TEST_F(SecondStart, IsNotHeldUpByOthersThatSayNothing) {
    std::list<Descriptor> silent;
    for (int i = 0; i < 6; ++i) {
        silent.push_back(Connected());
        Listener->RaiseWhatIsPending();
    }
    EXPECT_TRUE(Pass({"/", "", {}}));
    EXPECT_EQ(Got.size(), 1U);
}

TEST_F(SecondStart, ThatSaysNothingIsDroppedAfterASecond) {
    const Descriptor silent = Connected();
    Listener->RaiseWhatIsPending();
    std::this_thread::sleep_for(1100ms);
    Listener->RaiseWhatIsPending();
    char byte = 0;
    EXPECT_EQ(::recv(silent.Number(), &byte, 1, MSG_DONTWAIT), 0);
}

TEST_F(SecondStart, ThatSaysTooMuchOrNonsenseIsDropped) {
    EXPECT_FALSE(Pass({"/", "", {std::string(LongestRequest, 'x')}}, 200ms));
    const std::string much(2 * LongestRequest, '\0');
    for (const std::string& bytes : {std::string("hello"), std::string(), std::string("quorin start 1\0/", 16), much}) {
        const Descriptor peer = Connected();
        Beside([&] {
            static_cast<void>(!::send(peer.Number(), bytes.data(), bytes.size(), MSG_NOSIGNAL));
            ::shutdown(peer.Number(), SHUT_WR);
            char byte = 0;
            EXPECT_LE(::recv(peer.Number(), &byte, 1, 0), 0);
        });
    }
    EXPECT_TRUE(Got.empty());
}

} // namespace
} // namespace backends
