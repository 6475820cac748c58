// SPDX-License-Identifier: MIT
#include "blob/framing.h"

#include "blob/capture.h"
#include "blob/decoding.h"
#include "blob/tags.h"
#include "view/status_strip.h"

#include <algorithm>
#include <vector>

namespace modBLob {

namespace {

/// Each pair of carriage return and line feed becomes one carriage return; in a text without any such pair each line
/// feed does. Odd, and required: one pair anywhere leaves every lone line feed standing, and the pair that "\r\n\n"
/// leaves behind waits for the next call.
void NormaliseLineEnds(Text& buffer) {
    std::size_t pair = buffer.find(u"\r\n");
    if (pair == Text::npos) {
        std::replace(buffer.begin(), buffer.end(), u'\n', LineEnd);
        return;
    }
    std::size_t kept = pair;
    while (pair != Text::npos) {
        const std::size_t next = buffer.find(u"\r\n", pair + 2);
        const std::size_t end = std::min(next, buffer.size());
        buffer[kept] = LineEnd;
        Text::traits_type::move(&buffer[kept + 1], buffer.data() + pair + 2, end - (pair + 2));
        kept += end - (pair + 1);
        pair = next;
    }
    buffer.resize(kept);
}

/// One walk over the lines of the buffer. What stays is moved together at the buffer's head as the walk goes on, so
/// that each character is moved once at most, and none at all as long as nothing has been taken out.
struct Walk {
    Text& Buffer;
    std::size_t Kept = 0;                 ///< the buffer's first characters, that many, are what stays
    std::vector<std::size_t> OpenBlobs{}; ///< where among them the BLobs without an end line begin, the innermost last
    bool Decoded = false;                 ///< a BLob was accepted
    bool Failed = false;                  ///< a BLob was refused
};

void CloseInnermostBlob(Walk& walk) {
    const std::size_t start = walk.OpenBlobs.back();
    const bool accepted = DecodeBlob(TextView(walk.Buffer).substr(start, walk.Kept - start));
    (accepted ? walk.Decoded : walk.Failed) = true;
    walk.OpenBlobs.pop_back();
    walk.Kept = start;
}

/// Takes the line from `start` up to and including the line end at `end`.
void TakeLine(Walk& walk, std::size_t start, std::size_t end) {
    const TextView line = TextView(walk.Buffer).substr(start, end - start);
    const bool opens = BeginsWithTag(line, StartTag);
    const bool closes = BeginsWithTag(line, EndTag);
    if (opens)
        walk.OpenBlobs.push_back(walk.Kept);
    if (walk.Kept != start)
        Text::traits_type::move(&walk.Buffer[walk.Kept], line.data(), line.size() + 1);
    walk.Kept += line.size() + 1;
    if (closes && !walk.OpenBlobs.empty())
        CloseInnermostBlob(walk);
}

} // namespace

void ProcessReceivedText(const Text& received) {
    modPDAUI::ShowStatus(u"Decoding Result");
    if (ExtractBlobs(received))
        while (NextResult())
            CaptureResult();
    modPDAUI::HideStatus();
}

// A BLob is a start line and the next end line, and the search begins at the buffer's first line again as soon as one
// has been taken out. What stood around it is one text then: a start line in front of it that had been given up for a
// later one opens a BLob again, and the end line behind it closes that one. So start lines behave like opening brackets
// and end lines like closing ones, and a single walk that remembers all open start lines finds the same BLobs in the
// same order. In "[BLob] 1 [BLob] 2 [/BLob] 3 [/BLob]", a line each, the BLob around 2 comes first and the one that is
// left, with 1 and 3 in it, second. An end line without a start line opens and closes nothing: it stays, as noise.
bool ExtractBlobs(const Text& received) {
    Text& buffer = Framing.BlobBuffer;
    buffer += received;
    NormaliseLineEnds(buffer);

    Walk walk{buffer};
    std::size_t lineStart = 0;
    for (std::size_t end = buffer.find(LineEnd); end != Text::npos; end = buffer.find(LineEnd, lineStart)) {
        TakeLine(walk, lineStart, end);
        lineStart = end + 1;
    }
    buffer.erase(walk.Kept, lineStart - walk.Kept);
    return walk.Decoded && !walk.Failed;
}

} // namespace modBLob
