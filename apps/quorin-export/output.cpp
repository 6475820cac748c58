// SPDX-License-Identifier: MIT
#include "apps/quorin-export/output.h"

#include "src/text/text.h"

#include <array>
#include <iostream>
#include <nettle/sha2.h>

namespace exporter {

using backends::NoError;

namespace {

std::string WordsOf(backends::ErrorNumber error) {
    return modStringTools::ToBytes(platform::ErrorText(error));
}

} // namespace

Output::Output() : Hash_(std::make_unique<sha256_ctx>()) {
    sha256_init(Hash_.get());
}

Output::~Output() = default;

std::string Output::Open(const std::string& path) {
    if (path.empty())
        return {};
    backends::FileEntry entry;
    auto error = backends::EntryAt(path, entry);
    if (error == NoError) {
        File_ = std::make_unique<backends::Replacement>(std::move(entry));
        error = File_->Begin();
    }
    return error == NoError ? std::string() : WordsOf(error);
}

bool Output::Write(std::string_view bytes) {
    if (Error_ != NoError)
        return false;
    if (!File_)
        return static_cast<bool>(std::cout.write(bytes.data(), static_cast<std::streamsize>(bytes.size())));
    Error_ = backends::WriteAll(File_->File(), bytes, static_cast<std::int64_t>(Bytes_));
    Bytes_ += bytes.size();
    sha256_update(Hash_.get(), bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
    return Error_ == NoError;
}

std::string Output::Finish() {
    if (File_ && Error_ == NoError)
        Error_ = File_->Commit();
    return Error_ == NoError ? std::string() : WordsOf(Error_);
}

std::string Output::Sha256() {
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
    sha256_digest(Hash_.get(), digest.size(), digest.data());
    constexpr const char* Digits = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : digest)
        text += {Digits[byte >> 4], Digits[byte & 15]};
    return text;
}

} // namespace exporter
