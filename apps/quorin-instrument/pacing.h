// SPDX-License-Identifier: MIT
// How a record is cut into pieces, and how long each piece takes.
#pragma once

#include <chrono>
#include <random>
#include <string_view>
#include <vector>

namespace instrument {

using Microseconds = std::chrono::microseconds;

inline constexpr int BytesPerSecond = 960; ///< 9600 baud; a byte is 10 bits with its start and stop bit
inline constexpr std::size_t ChunkBytes = 16;

/// Bytes that are handed over at once, and the time to wait afterwards. The bytes stay the record's own.
struct Piece {
    std::string_view Bytes;
    Microseconds PauseAfter{0};
};

/// The time that so many bytes take at 9600 baud, rounded up.
Microseconds TransmissionTime(std::size_t bytes);

/// How a record goes over a line: as a whole with no pause when `fast`, else in small chunks.
std::vector<Piece> CutForLine(std::string_view record, bool fast);

/// Each line of two bytes or more in two or three pieces with a pause of 20 to 120 ms between them, fast or not. A line
/// may well be cut between its CR and its LF, and within a character.
std::vector<Piece> CutThroughLines(std::string_view record, bool fast, std::mt19937& engine);

/// How a record goes into a mailbox: in one delivery, or in two that part at the end of a line when `split`. A line is
/// never split, since the reader of a mailbox ends the last line of each delivery.
std::vector<Piece> CutForMailbox(std::string_view record, bool fast, bool split, std::mt19937& engine);

} // namespace instrument
