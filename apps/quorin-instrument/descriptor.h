// SPDX-License-Identifier: MIT
// A file descriptor with an owner, and what the two kinds of serial line do with one.
#pragma once

#include <string_view>

namespace instrument {

class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : Number(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { Close(); }

    /// Closes what was held before. -1 holds nothing.
    void Take(int number);
    void Close();
    int Get() const { return Number; }
    bool Holds() const { return Number >= 0; }

private:
    int Number = -1;
};

/// Raw, 9600 baud, 8 bits, no parity, 1 stop bit, no modem lines heeded. False with errno set.
bool SetRawLine(int descriptor);

/// Writes what the descriptor, which must not block, takes now or within 50 ms, and throws away what the other side has
/// sent. Gives the number of bytes written, or -1 with errno set.
long WriteSome(int descriptor, std::string_view bytes);

} // namespace instrument
