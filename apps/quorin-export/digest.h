// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

struct sha256_ctx;

namespace exporter {

/// The SHA-256 of bytes that come in parts.
class Digest {
public:
    Digest();
    Digest(const Digest&) = delete;
    Digest& operator=(const Digest&) = delete;
    ~Digest();

    void Take(std::string_view bytes);
    /// Returns 64 hexadecimal digits. May be called once.
    std::string Text();

private:
    std::unique_ptr<sha256_ctx> Hash_;
};

} // namespace exporter
