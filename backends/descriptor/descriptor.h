// SPDX-License-Identifier: MIT
// The owner of a file descriptor, and the repetition of system calls that a signal has interrupted.
#pragma once

#include <cerrno>

namespace backends {

/// Repeats a system call while a signal interrupts it, and returns its result.
template <class Call>
auto Repeated(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

/// Owns a file descriptor and closes it on destruction.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : Number_(number) {}
    Descriptor(Descriptor&& other) noexcept : Number_(other.Number_) { other.Number_ = -1; }
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor() { Close(); }

    bool Valid() const { return Number_ >= 0; }
    int Number() const { return Number_; } ///< -1 for none
    /// Returns 0 if it is closed now, also if it was before, or the errno of the failure: a write may have failed.
    int Close();

private:
    int Number_ = -1;
};

} // namespace backends
