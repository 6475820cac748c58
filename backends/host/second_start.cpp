// SPDX-License-Identifier: MIT
#include "backends/host/second_start.h"

#include "backends/files/host_files.h"
#include "backends/host/private_folder.h"

#include <array>
#include <fcntl.h>
#include <poll.h>
#include <string_view>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace backends {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::string_view Greeting = "quorin start 1";
constexpr std::string_view Taken = "ok";
constexpr std::size_t MostPeers = 4;
constexpr std::chrono::seconds PatienceWithPeer{1};
constexpr std::chrono::milliseconds Pause{20};

/// Texts are separated by NUL, which no path and no argument has.
std::string BytesOf(const StartRequest& request) {
    std::string bytes(Greeting);
    for (const std::string* text : {&request.Folder, &request.ActivationToken})
        bytes += '\0' + *text;
    for (const std::string& file : request.Files)
        bytes += '\0' + file;
    return bytes;
}

std::optional<StartRequest> RequestOf(std::string_view bytes) {
    std::vector<std::string> texts(1);
    for (const char each : bytes) {
        if (each == '\0')
            texts.emplace_back();
        else
            texts.back() += each;
    }
    if (texts.size() < 3 || texts[0] != Greeting)
        return std::nullopt;
    return StartRequest{texts[1], texts[2], {texts.begin() + 3, texts.end()}};
}

/// By way of the open folder a path of any length fits into an address.
sockaddr_un AddressOf(const StartPlace& place) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = "/proc/self/fd/" + std::to_string(place.Folder.Number()) + "/" + place.Name;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

template <class Call>
bool WithAddress(const StartPlace& place, Call call) {
    const sockaddr_un address = AddressOf(place);
    return call(reinterpret_cast<const sockaddr*>(&address), static_cast<socklen_t>(sizeof address)) == 0;
}

Descriptor NewSocket() {
    return Descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

bool IsSameUser(int socket) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
}

bool WaitFor(int socket, short event, Clock::time_point end) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    pollfd waiting{socket, event, 0};
    return left > 0 && Repeated([&] { return ::poll(&waiting, 1, static_cast<int>(left)); }) == 1;
}

bool SendAll(int socket, std::string_view bytes, Clock::time_point end) {
    while (!bytes.empty()) {
        const ssize_t count = Repeated([&] { return ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL); });
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EAGAIN || !WaitFor(socket, POLLOUT, end))
            return false;
    }
    return ::shutdown(socket, SHUT_WR) == 0;
}

bool IsTaken(int socket, Clock::time_point end) {
    std::array<char, 8> answer{};
    if (!WaitFor(socket, POLLIN, end))
        return false;
    const ssize_t count = Repeated([&] { return ::recv(socket, answer.data(), answer.size(), 0); });
    return count > 0 && std::string_view(answer.data(), static_cast<std::size_t>(count)) == Taken;
}

} // namespace

StartPlace StartPlaceOf(const std::string& root, const std::vector<std::string>& folders) {
    StartPlace place;
    FolderId id;
    const Descriptor opened(Repeated([&] { return ::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    if (!opened.Valid() || IdOf(opened, id) != NoError)
        return place;
    place.Name = std::to_string(id.Device) + "-" + std::to_string(id.Number);
    for (const std::string& folder : folders) {
        if (!folder.empty() && OpenPrivateFolder(folder, OthersUse, place.Folder).empty())
            return place;
        place.Folder.Close();
    }
    return place;
}

StartListener::StartListener(const StartPlace& place) : Events_(::epoll_create1(EPOLL_CLOEXEC)), Socket_(NewSocket()) {
    constexpr int Waiting = 8;
    const auto bind = [this](const sockaddr* address, socklen_t size) {
        return ::bind(Socket_.Number(), address, size);
    };
    static_cast<void>(RemoveFrom(place.Folder, place.Name));
    if (::fchmod(Socket_.Number(), OwnersFile) == 0 && WithAddress(place, bind) &&
        ::listen(Socket_.Number(), Waiting) == 0)
        Watch(Socket_.Number());
    else
        Socket_.Close();
}

void StartListener::Watch(int descriptor) const {
    epoll_event event{};
    event.events = EPOLLIN;
    ::epoll_ctl(Events_.Number(), EPOLL_CTL_ADD, descriptor, &event);
}

/// A failure that would last, such as too many open files, ends the listening: the socket would wake the loop forever.
void StartListener::Accept() {
    while (Socket_.Valid()) {
        backends::Descriptor peer(
            Repeated([this] { return ::accept4(Socket_.Number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK); }));
        if (!peer.Valid() && errno == ECONNABORTED)
            continue;
        if (!peer.Valid()) {
            if (errno != EAGAIN)
                Socket_.Close();
            return;
        }
        if (!IsSameUser(peer.Number()))
            continue;
        if (Peers_.size() == MostPeers)
            Peers_.pop_front();
        Watch(peer.Number());
        Peers_.push_back({std::move(peer), {}, Clock::now()});
    }
}

StartListener::Progress StartListener::ReadFrom(Peer& peer) {
    std::array<char, 4096> block;
    while (peer.Bytes.size() <= LongestRequest) {
        const ssize_t count = Repeated([&] { return ::recv(peer.Socket.Number(), block.data(), block.size(), 0); });
        if (count == 0)
            return Progress::Complete;
        if (count < 0)
            return errno == EAGAIN && Clock::now() - peer.Since < PatienceWithPeer ? Progress::Waits : Progress::Failed;
        peer.Bytes.append(block.data(), static_cast<std::size_t>(count));
    }
    return Progress::Failed;
}

/// A second start that has given up has said that it was refused, so nothing of it is done.
bool StartListener::Answer(const Peer& peer) const {
    const auto request = RequestOf(peer.Bytes);
    if (!request)
        return false;
    const ssize_t sent = ::send(peer.Socket.Number(), Taken.data(), Taken.size(), MSG_NOSIGNAL);
    if (sent != static_cast<ssize_t>(Taken.size()))
        return false;
    if (Started)
        Started(*request);
    return true;
}

bool StartListener::RaiseWhatIsPending() {
    Accept();
    for (auto peer = Peers_.begin(); peer != Peers_.end();) {
        const Progress progress = ReadFrom(*peer);
        if (progress == Progress::Waits) {
            ++peer;
            continue;
        }
        const Peer done = std::move(*peer);
        peer = Peers_.erase(peer);
        if (progress == Progress::Complete && Answer(done))
            return true;
    }
    return false;
}

bool PassOn(const StartPlace& place, const StartRequest& request, std::chrono::milliseconds patience) {
    const auto end = Clock::now() + patience;
    const std::string bytes = BytesOf(request);
    while (place.Valid() && bytes.size() <= LongestRequest && Clock::now() < end) {
        const Descriptor socket = NewSocket();
        const auto connect = [&socket](const sockaddr* address, socklen_t size) {
            return Repeated([&] { return ::connect(socket.Number(), address, size); });
        };
        if (WithAddress(place, connect))
            return SendAll(socket.Number(), bytes, end) && IsTaken(socket.Number(), end);
        std::this_thread::sleep_for(Pause);
    }
    return false;
}

} // namespace backends
