// SPDX-License-Identifier: MIT
#include "backends/serial/descriptor_source.h"

#include <array>
#include <cerrno>
#include <unistd.h>

namespace backends {

namespace {

constexpr std::size_t BlockSize = 4096;
constexpr int BlocksAtATime = 16;

} // namespace

ReadState ReadDescriptor(int descriptor, std::string& bytes, int& error) {
    const std::size_t before = bytes.size();
    std::array<char, BlockSize> block;
    for (int blocks = 0; blocks < BlocksAtATime; ++blocks) {
        const ssize_t count = ::read(descriptor, block.data(), block.size());
        if (count > 0) {
            bytes.append(block.data(), static_cast<std::size_t>(count));
            continue;
        }
        if (count < 0 && (errno == EAGAIN || errno == EINTR))
            break;
        error = count < 0 ? errno : 0;
        return bytes.size() > before ? ReadState::Data : ReadState::Gone;
    }
    return bytes.size() > before ? ReadState::Data : ReadState::Nothing;
}

} // namespace backends
