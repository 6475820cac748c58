// SPDX-License-Identifier: MIT
// Cuts a record into pieces and says how long each takes.
#pragma once

#include <chrono>
#include <random>
#include <string_view>
#include <vector>

namespace instrument {

using Microseconds = std::chrono::microseconds;

inline constexpr int BytesPerSecond = 960; ///< 9600 baud; a byte is 10 bits with its start and stop bit
inline constexpr std::size_t ChunkBytes = 16;

/// Bytes that are sent at once, and the time to wait afterwards. Bytes is a view into the record.
struct Piece {
    std::string_view Bytes;
    Microseconds PauseAfter{0};
};

/// Returns the time that so many bytes take at 9600 baud, rounded up.
Microseconds TransmissionTime(std::size_t bytes);

/// Cuts a record for a serial line: in one piece without a pause if `fast`, else in chunks of ChunkBytes.
std::vector<Piece> CutForLine(std::string_view record, bool fast);

/// Cuts each line of two bytes or more into two or three pieces with a pause of 20 to 120 ms between them, fast or not.
/// A line may be cut between its CR and its LF, and within a character.
std::vector<Piece> CutThroughLines(std::string_view record, bool fast, std::mt19937& engine);

/// Cuts a record for a mailbox: into one delivery or, if `split`, into two, at the end of a line. A line is never
/// split, because the reader of a mailbox ends the last line of each delivery.
std::vector<Piece> CutForMailbox(std::string_view record, bool fast, bool split, std::mt19937& engine);

} // namespace instrument
