// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/pacing.h"

#include "apps/quorin-instrument/stream.h"

#include <algorithm>
#include <array>

namespace instrument {

namespace {

Piece PieceOf(std::string_view bytes, bool fast) {
    return {bytes, fast ? Microseconds(0) : TransmissionTime(bytes.size())};
}

/// Cuts one line at one or two places.
void CutLine(std::string_view line, bool fast, std::mt19937& engine, std::vector<Piece>& pieces) {
    std::array<std::size_t, 2> places = {1 + engine() % (line.size() - 1), 1 + engine() % (line.size() - 1)};
    std::sort(places.begin(), places.end());
    std::size_t from = 0;
    for (const std::size_t place : places) {
        if (place > from) {
            pieces.push_back(PieceOf(line.substr(from, place - from), fast));
            pieces.back().PauseAfter += std::chrono::milliseconds(20 + engine() % 101);
            from = place;
        }
    }
    pieces.push_back(PieceOf(line.substr(from), fast));
}

} // namespace

Microseconds TransmissionTime(std::size_t bytes) {
    return Microseconds((static_cast<std::int64_t>(bytes) * 1'000'000 + BytesPerSecond - 1) / BytesPerSecond);
}

std::vector<Piece> CutForLine(std::string_view record, bool fast) {
    if (fast) {
        return {PieceOf(record, fast)};
    }
    std::vector<Piece> pieces;
    for (; !record.empty(); record.remove_prefix(pieces.back().Bytes.size())) {
        pieces.push_back(PieceOf(record.substr(0, ChunkBytes), fast));
    }
    return pieces;
}

std::vector<Piece> CutThroughLines(std::string_view record, bool fast, std::mt19937& engine) {
    std::vector<Piece> pieces;
    for (const std::string_view line : LinesOf(record)) {
        if (line.size() < 2) {
            pieces.push_back(PieceOf(line, fast));
        } else {
            CutLine(line, fast, engine, pieces);
        }
    }
    return pieces;
}

std::vector<Piece> CutForMailbox(std::string_view record, bool fast, bool split, std::mt19937& engine) {
    const auto lines = LinesOf(record);
    if (!split || lines.size() < 2) {
        return {PieceOf(record, fast)};
    }
    const std::string_view second = lines[1 + engine() % (lines.size() - 1)];
    const auto place = static_cast<std::size_t>(second.data() - record.data());
    return {PieceOf(record.substr(0, place), fast), PieceOf(record.substr(place), fast)};
}

} // namespace instrument
