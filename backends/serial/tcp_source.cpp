// SPDX-License-Identifier: MIT
#include "backends/serial/tcp_source.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <netdb.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <thread>
#include <utility>

namespace backends {

namespace {

using std::chrono::steady_clock;

/// Time without a call of Open after which the source gives up: the form calls it twice a second while it wants its
/// link.
constexpr auto Forgotten = std::chrono::seconds(2);

/// Without this limit the system would try for two minutes before the next address is tried.
constexpr auto LongestConnecting = std::chrono::seconds(10);

// A peer that is switched off, or a cable that is pulled, sends no end: the peer is probed after ten seconds of
// silence, and counts as gone when three probes, five seconds apart, had no answer.
constexpr int SilentSeconds = 10;
constexpr int SecondsBetweenQuestions = 5;
constexpr int Questions = 3;

void SetOption(int socket, int level, int name, int value) {
    ::setsockopt(socket, level, name, &value, sizeof value); // on failure the end of the link is only found later
}

} // namespace

void TcpSource::Find(LookUp& lookUp, const std::string& host, std::uint16_t port, int flags) {
    addrinfo wanted{};
    wanted.ai_family = AF_UNSPEC;
    wanted.ai_socktype = SOCK_STREAM;
    wanted.ai_flags = flags | AI_NUMERICSERV;
    addrinfo* list = nullptr;
    const int outcome = ::getaddrinfo(host.c_str(), std::to_string(port).c_str(), &wanted, &list);
    if (outcome != 0) {
        lookUp.Why = "no address of " + host + " was found";
        return;
    }
    for (const addrinfo* each = list; each != nullptr; each = each->ai_next) {
        HostAddress address;
        address.Length = each->ai_addrlen;
        std::memcpy(&address.Bytes, each->ai_addr, each->ai_addrlen);
        lookUp.Found.push_back(address);
    }
    ::freeaddrinfo(list);
}

void TcpSource::BeginLookUp() {
    LookUp_ = std::make_shared<LookUp>();
    Find(*LookUp_, Host_, Port_, AI_NUMERICHOST); // this makes no query
    if (!LookUp_->Found.empty()) {
        LookUp_->Done = true;
        return;
    }
    std::thread([lookUp = LookUp_, host = Host_, port = Port_] {
        lookUp->Why.clear();
        Find(*lookUp, host, port, AI_ADDRCONFIG);
        lookUp->Done = true;
    }).detach();
}

/// Takes the result of the look-up. Returns false while it is in progress.
bool TcpSource::TakeUpLookUp() {
    if (!LookUp_->Done)
        return false;
    Left_ = std::move(LookUp_->Found);
    std::reverse(Left_.begin(), Left_.end());
    Ending_ = std::move(LookUp_->Why);
    LookUp_.reset();
    return true;
}

SourceTrouble TcpSource::Open(const Text&) {
    Asked_ = steady_clock::now();
    if (Connected_)
        return {};
    if (!Socket_.Valid() && !LookUp_)
        BeginLookUp();
    if (LookUp_ && !TakeUpLookUp())
        return {NotAvailable, "looking up " + Host_};
    return TryAddresses();
}

SourceTrouble TcpSource::TryAddresses() {
    for (;;) {
        while (!Socket_.Valid()) {
            if (Left_.empty())
                return Fail();
            const HostAddress next = Left_.back();
            Left_.pop_back();
            BeginConnecting(next);
        }
        switch (LookAtConnecting()) {
        case Progress::Connected:
            Connected_ = true;
            Ending_.clear();
            Left_.clear();
            return {};
        case Progress::UnderWay:
            return {NotAvailable, "connecting"};
        case Progress::Failed:
            Socket_.Close();
            break;
        }
    }
}

SourceTrouble TcpSource::Fail() {
    return {NotAvailable, std::exchange(Ending_, {})};
}

bool TcpSource::BeginConnecting(const HostAddress& address) {
    Begun_ = steady_clock::now();
    Socket_ = backends::Descriptor(::socket(address.Bytes.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (Socket_.Valid()) {
        SetOption(Socket_.Number(), SOL_SOCKET, SO_KEEPALIVE, 1);
        SetOption(Socket_.Number(), IPPROTO_TCP, TCP_KEEPIDLE, SilentSeconds);
        SetOption(Socket_.Number(), IPPROTO_TCP, TCP_KEEPINTVL, SecondsBetweenQuestions);
        SetOption(Socket_.Number(), IPPROTO_TCP, TCP_KEEPCNT, Questions);
        const auto* const bytes = reinterpret_cast<const sockaddr*>(&address.Bytes);
        if (::connect(Socket_.Number(), bytes, address.Length) == 0 || errno == EINPROGRESS)
            return true;
    }
    Ending_ = ReasonOf(errno);
    Socket_.Close();
    return false;
}

TcpSource::Progress TcpSource::LookAtConnecting() {
    pollfd connecting{Socket_.Number(), POLLOUT, 0};
    if (::poll(&connecting, 1, 0) <= 0) {
        if (steady_clock::now() - Begun_ < LongestConnecting)
            return Progress::UnderWay;
        Ending_ = "no answer";
        return Progress::Failed;
    }
    int error = 0;
    socklen_t size = sizeof error;
    if (::getsockopt(Socket_.Number(), SOL_SOCKET, SO_ERROR, &error, &size) != 0)
        error = errno;
    if (error != 0)
        Ending_ = ReasonOf(error);
    return error == 0 ? Progress::Connected : Progress::Failed;
}

/// A look-up continues, and its result is used when the source is opened again.
void TcpSource::Close() {
    Socket_.Close();
    Connected_ = false;
    Left_.clear();
    Ending_.clear();
}

ReadState TcpSource::TakeAvailable(std::string& bytes) {
    if (!Connected_) {
        if (Socket_.Valid() && steady_clock::now() - Asked_ > Forgotten)
            Close();
        return ReadState::Nothing;
    }
    int error = 0;
    const ReadState state = ReadDescriptor(Socket_.Number(), bytes, error);
    if (state == ReadState::Gone) {
        Close();
        Ending_ = error == 0 ? "the other end has closed the connection" : ReasonOf(error);
    }
    return state;
}

} // namespace backends
