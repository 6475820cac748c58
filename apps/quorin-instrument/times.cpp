// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/times.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace instrument {

namespace {

constexpr std::string_view Head = "quorin-times 1";
constexpr std::int64_t LongestWait = std::int64_t{1000} * 60 * 60 * 24 * 365; // milliseconds

int DigitOf(char character) {
    if (character >= '0' && character <= '9') {
        return character - '0';
    }
    return character >= 'A' && character <= 'F' ? character - 'A' + 10 : -1;
}

std::optional<std::string> BytesOf(std::string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            bytes += text[i];
            continue;
        }
        if (i + 2 >= text.size() || DigitOf(text[i + 1]) < 0 || DigitOf(text[i + 2]) < 0) {
            return std::nullopt;
        }
        bytes += static_cast<char>(DigitOf(text[i + 1]) * 16 + DigitOf(text[i + 2]));
        i += 2;
    }
    return bytes;
}

std::optional<TimedPiece> PieceOf(std::string_view line) {
    const std::size_t blank = line.find(' ');
    std::int64_t wait = 0;
    const auto read = std::from_chars(line.data(), line.data() + std::min(blank, line.size()), wait);
    if (blank == std::string_view::npos || read.ec != std::errc() || read.ptr != line.data() + blank || wait < 0 ||
        wait > LongestWait) {
        return std::nullopt;
    }
    auto bytes = BytesOf(line.substr(blank + 1));
    return bytes ? std::optional(TimedPiece{std::chrono::milliseconds(wait), std::move(*bytes)}) : std::nullopt;
}

std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

} // namespace

std::string ReadTimes(std::string_view text, std::vector<TimedPiece>& pieces) {
    if (TakeLine(text) != Head) {
        return "its first line is not \"" + std::string(Head) + "\"";
    }
    for (int number = 2; !text.empty(); ++number) {
        auto piece = PieceOf(TakeLine(text));
        if (!piece) {
            return "line " + std::to_string(number) + " is not milliseconds, a blank and bytes";
        }
        pieces.push_back(std::move(*piece));
    }
    return {};
}

Outcome PlayTimes(const std::vector<TimedPiece>& pieces, double speed, Outlet& outlet, const PauseRoutine& pause) {
    for (const TimedPiece& piece : pieces) {
        const double wait = speed == 0 ? 0 : static_cast<double>(Microseconds(piece.Wait).count()) / speed;
        if (!pause(Microseconds(static_cast<std::int64_t>(wait)))) {
            return Outcome::Stopped;
        }
        if (const Outcome sent = outlet.Send(piece.Bytes); sent != Outcome::Done) {
            return sent;
        }
    }
    return Outcome::Done;
}

} // namespace instrument
