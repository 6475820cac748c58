// SPDX-License-Identifier: MIT
#include "apps/quorin-instrument/player.h"

namespace instrument {

namespace {

std::vector<Piece> Cut(std::string_view record, bool split, const PlayOptions& options, std::mt19937& engine) {
    if (options.InDeliveries) {
        return CutForMailbox(record, options.Fast, split, engine);
    }
    return split ? CutThroughLines(record, options.Fast, engine) : CutForLine(record, options.Fast);
}

Outcome SendPieces(const std::vector<Piece>& pieces, Outlet& outlet, const PauseRoutine& pause) {
    for (const Piece& piece : pieces) {
        if (const Outcome sent = outlet.Send(piece.Bytes); sent != Outcome::Done) {
            return sent;
        }
        if (!pause(piece.PauseAfter)) {
            return Outcome::Stopped;
        }
    }
    return Outcome::Done;
}

} // namespace

Outcome Play(const RecordSource& source, const PlayOptions& options, Outlet& outlet, const PauseRoutine& pause) {
    std::mt19937 engine(options.Seed);
    std::string record;
    std::int64_t results = 0;
    bool afterResult = false;
    while (source(record)) {
        if (afterResult && !pause(options.Interval)) {
            return Outcome::Stopped;
        }
        afterResult = !IsConnectRecord(record);
        bool split = false;
        if (afterResult) {
            ++results;
            record = Misbehave(record, results, options.Faults, engine);
            split = FallsOn(options.Faults.SplitLines, results);
        }
        const auto pieces = Cut(record, split, options, engine);
        if (const Outcome sent = SendPieces(pieces, outlet, pause); sent != Outcome::Done) {
            return sent;
        }
    }
    return Outcome::Done;
}

} // namespace instrument
