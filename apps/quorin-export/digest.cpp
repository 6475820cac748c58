// SPDX-License-Identifier: MIT
#include "apps/quorin-export/digest.h"

#include <array>
#include <nettle/sha2.h>

namespace exporter {

Digest::Digest() : Hash_(std::make_unique<sha256_ctx>()) {
    sha256_init(Hash_.get());
}

Digest::~Digest() = default;

void Digest::Take(std::string_view bytes) {
    sha256_update(Hash_.get(), bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
}

std::string Digest::Text() {
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
    sha256_digest(Hash_.get(), digest.size(), digest.data());
    constexpr const char* Digits = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : digest)
        text += {Digits[byte >> 4], Digits[byte & 15]};
    return text;
}

} // namespace exporter
