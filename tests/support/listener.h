// SPDX-License-Identifier: MIT
// An instrument on the network: a listener of this machine on a port that the system chooses.
#pragma once

#include "tests/support/plugged_instrument.h"

#include <arpa/inet.h>
#include <cstdint>
#include <netinet/in.h>
#include <sys/socket.h>

class Listener {
public:
    Listener() {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        End_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        Bind(address);
        socklen_t size = sizeof address;
        EXPECT_EQ(getsockname(End_, reinterpret_cast<sockaddr*>(&address), &size), 0);
        Number_ = ntohs(address.sin_port);
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() {
        Drop();
        Stop();
    }

    std::uint16_t Port() const { return Number_; }

    /// Waits for a connection and accepts it.
    void Accept() {
        ASSERT_TRUE(Tells(End_));
        Drop();
        Peer_ = accept4(End_, nullptr, nullptr, SOCK_CLOEXEC);
        ASSERT_GE(Peer_, 0);
    }
    bool IsAsked(int milliseconds) const { return Tells(End_, milliseconds); }
    void Send(std::string_view bytes) const {
        ASSERT_EQ(send(Peer_, bytes.data(), bytes.size(), MSG_NOSIGNAL), static_cast<ssize_t>(bytes.size()));
    }
    /// True once the other side has ended the connection.
    bool IsLeft() const {
        char byte = 0;
        return Tells(Peer_) && recv(Peer_, &byte, 1, 0) <= 0;
    }
    void Drop() {
        if (Peer_ >= 0)
            close(Peer_);
        Peer_ = -1;
    }
    /// Resets the connection in place of closing it in order.
    void Reset() {
        const linger now{1, 0};
        setsockopt(Peer_, SOL_SOCKET, SO_LINGER, &now, sizeof now);
        Drop();
    }
    /// Stops listening at the port.
    void Stop() {
        if (End_ >= 0)
            close(End_);
        End_ = -1;
    }

private:
    void Bind(const sockaddr_in& address) const {
        ASSERT_EQ(bind(End_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        ASSERT_EQ(listen(End_, 4), 0);
    }

    int End_ = -1;
    int Peer_ = -1;
    std::uint16_t Number_ = 0;
};
