// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

struct sha256_ctx;

namespace backends {

/// The SHA-256 of bytes that come in parts.
class Sha256 {
public:
    Sha256();
    Sha256(const Sha256&) = delete;
    Sha256& operator=(const Sha256&) = delete;
    ~Sha256();

    void Add(std::string_view bytes);
    /// Returns 64 hexadecimal digits, and begins anew.
    std::string Digits();

private:
    std::unique_ptr<sha256_ctx> Context_;
};

std::string Sha256Of(std::string_view bytes);

} // namespace backends
