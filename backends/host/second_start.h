// SPDX-License-Identifier: MIT
// A second start of the window on the same root folder passes its files to the window that is open, over a local socket
// which no other user can reach. docs/decisions/second-start.md has the reasons.
#pragma once

#include "backends/descriptor/descriptor.h"
#include "backends/descriptor/waitable.h"
#include "backends/loop/event_loop.h"

#include <chrono>
#include <functional>
#include <list>
#include <optional>
#include <string>
#include <vector>

namespace backends {

/// What a second start passes on.
struct StartRequest {
    std::string Folder;          ///< where relative paths start
    std::string ActivationToken; ///< of the desktop, which allows a window to come to the front; may be empty
    std::vector<std::string> Files;
    bool operator==(const StartRequest&) const = default;
};

/// No request is longer, in bytes.
inline constexpr std::size_t LongestRequest = std::size_t{256} * 1024;

/// The folder of the sockets, private to the user, and the socket's name in it, which depends on the root folder alone.
struct StartPlace {
    backends::Descriptor Folder;
    std::string Name;
    bool Valid() const { return Folder.Valid(); }
};

/// Opens the place of a root folder that exists, in the first of these folders that is private to the user or can be
/// created so; an empty name is none. Not valid if there is none.
StartPlace StartPlaceOf(const std::string& root, const std::vector<std::string>& folders);

/// Listens for second starts. What a peer sends is read without waiting for it.
class StartListener final : public EventSource, public Waitable {
public:
    /// Listens at once, in place of what a killed window has left there. REQUIRES: the caller has the lock of the root.
    explicit StartListener(const StartPlace& place);

    /// Called for each request that has been answered.
    std::function<void(const StartRequest&)> Started;

    int Descriptor() const override { return Events_.Number(); }
    bool RaiseWhatIsPending() override;

private:
    struct Peer {
        backends::Descriptor Socket;
        std::string Bytes;
        std::chrono::steady_clock::time_point Since;
    };
    enum class Progress { Waits, Complete, Failed };

    void Accept();
    void Watch(int descriptor) const;
    static Progress ReadFrom(Peer& peer);
    bool Answer(const Peer& peer) const;

    backends::Descriptor Events_; ///< readable while a socket is
    backends::Descriptor Socket_;
    std::list<Peer> Peers_; ///< oldest first
};

/// Passes a request to the window that listens there. Returns true if it has taken it. Tries again until then, because
/// a window that is just starting does not listen yet.
bool PassOn(const StartPlace& place, const StartRequest& request, std::chrono::milliseconds patience);

} // namespace backends
