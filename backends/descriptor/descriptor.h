// SPDX-License-Identifier: MIT
// The owner of a file descriptor, and the calls on one that a signal has interrupted.
#pragma once

#include <cerrno>

namespace backends {

/// The result of a call of the host, made again as often as a signal has interrupted it.
template <class Call>
auto Repeated(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

/// Owns a file descriptor, and closes it at the end of its life.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : Number_(number) {}
    Descriptor(Descriptor&& other) noexcept : Number_(other.Number_) { other.Number_ = -1; }
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor() { Close(); }

    bool Valid() const { return Number_ >= 0; }
    int Number() const { return Number_; } ///< -1 for none
    /// Returns 0 where it is closed, also where there was none, or the reason: a write may have failed.
    int Close();

private:
    int Number_ = -1;
};

} // namespace backends
