// SPDX-License-Identifier: MIT
#include "apps/page_exchange/arriving_files.h"

#include <utility>

namespace apps {

namespace {

/// Returns the six bits that a character stands for; nothing if it stands for none.
std::optional<std::uint32_t> BitsOf(char character) {
    static constexpr std::string_view Characters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const std::size_t place = Characters.find(character);
    return place == std::string_view::npos ? std::nullopt : std::optional(static_cast<std::uint32_t>(place));
}

} // namespace

std::optional<std::string> FromBase64(std::string_view text) {
    if (text.size() % 4 != 0)
        return std::nullopt;
    for (int padding = 0; padding < 2 && !text.empty() && text.back() == '='; ++padding)
        text.remove_suffix(1);
    std::string bytes;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char character : text) {
        const auto six = BitsOf(character);
        if (!six)
            return std::nullopt;
        bits = bits << 6 | *six;
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> count & 0xFF);
        }
    }
    return bytes;
}

void ArrivingFiles::Begin(std::int32_t number, ArrivingFile file) {
    Begun_.insert_or_assign(number, std::move(file));
    GoOn(number);
}

void ArrivingFiles::TakePart(std::int32_t number, std::string_view part) {
    const auto file = Begun_.find(number);
    if (file == Begun_.end())
        return;
    const auto bytes = FromBase64(part);
    if (!bytes || bytes->empty())
        return Fail(number, u"it has changed meanwhile");
    file->second.Bytes += *bytes;
    GoOn(number);
}

void ArrivingFiles::Fail(std::int32_t number, const Text& why) {
    const auto file = Begun_.extract(number);
    if (file)
        Failed(file.mapped().Name + u" can't be read: " + why + u".");
}

void ArrivingFiles::GoOn(std::int32_t number) {
    const ArrivingFile& file = Begun_.at(number);
    const auto there = static_cast<std::int64_t>(file.Bytes.size());
    if (there < file.Size)
        return Wants(number, there);
    Arrived(Begun_.extract(number).mapped());
}

} // namespace apps
