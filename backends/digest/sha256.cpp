// SPDX-License-Identifier: MIT
#include "backends/digest/sha256.h"

#include <array>
#include <nettle/sha2.h>

namespace backends {

Sha256::Sha256() : Context_(std::make_unique<sha256_ctx>()) {
    sha256_init(Context_.get());
}

Sha256::~Sha256() = default;

void Sha256::Add(std::string_view bytes) {
    sha256_update(Context_.get(), bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
}

std::string Sha256::Digits() {
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
    sha256_digest(Context_.get(), digest.size(), digest.data());
    constexpr const char* Digits = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : digest)
        text += {Digits[byte >> 4], Digits[byte & 15]};
    return text;
}

std::string Sha256Of(std::string_view bytes) {
    Sha256 hash;
    hash.Add(bytes);
    return hash.Digits();
}

} // namespace backends
