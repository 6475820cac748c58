// SPDX-License-Identifier: MIT
#include "src/blob/framing.h"

#include "src/blob/tags.h"

#include <algorithm>

namespace modBLob {

using modStringTools::FindChar;

namespace {

constexpr char16_t LineFeed = u'\n';

/// Whether the line feed at a place of a text stands behind a carriage return, be it the last one of what is in front.
bool IsPaired(TextView text, std::size_t feed, TextView inFront) {
    if (feed > 0)
        return text[feed - 1] == LineEnd;
    return !inFront.empty() && inFront.back() == LineEnd;
}

bool HasPair(TextView text, TextView inFront) {
    std::size_t feed = FindChar(text, LineFeed);
    while (feed != TextView::npos && !IsPaired(text, feed, inFront))
        feed = FindChar(text, LineFeed, feed + 1);
    return feed != TextView::npos;
}

/// Takes what stands from `place` on out of the buffer, to be taken in once more. The line that `place` lies in is open
/// again. What stands in front of it has no BLob in it that is whole, so that the start lines there are the open BLobs.
Text TakeBack(FramingState& framing, std::size_t place) {
    Text& buffer = framing.BlobBuffer;
    const Text tail = buffer.substr(place);
    buffer.resize(place);
    framing.OpenLine = buffer.rfind(LineEnd) + 1; // npos and 1 is 0
    std::vector<std::size_t>& open = framing.OpenBlobs;
    while (!open.empty() && open.back() >= framing.OpenLine)
        open.pop_back();
    return tail;
}

/// What becomes of the buffer in one call.
struct Progress {
    std::size_t Unchanged; ///< so many characters at the buffer's head are what the last call has left
    bool Decoded = false;  ///< a BLob was accepted
    bool Failed = false;   ///< a BLob was refused
};

/// Decodes and cuts off the innermost open BLob, with which the buffer ends.
void CloseBlob(FramingState& framing, DecoderState& decoder, Progress& progress) {
    Text& buffer = framing.BlobBuffer;
    const std::size_t start = framing.OpenBlobs.back();
    framing.OpenBlobs.pop_back();
    const bool accepted = DecodeBlob(decoder, TextView(buffer).substr(start));
    (accepted ? progress.Decoded : progress.Failed) = true;
    buffer.resize(start);
    progress.Unchanged = std::min(progress.Unchanged, start);
}

/// Deals with the line that the buffer's last character has ended.
void TakeLine(FramingState& framing, DecoderState& decoder, Progress& progress) {
    const TextView line = TextView(framing.BlobBuffer).substr(framing.OpenLine);
    if (BeginsWithTag(line, StartTag))
        framing.OpenBlobs.push_back(framing.OpenLine);
    else if (BeginsWithTag(line, EndTag) && !framing.OpenBlobs.empty())
        CloseBlob(framing, decoder, progress);
    framing.OpenLine = framing.BlobBuffer.size();
}

/// Takes in a text line by line, each ended by one carriage return. Line feeds that are not part of a pair end a line
/// when `feedsEndLines`.
void TakeIn(FramingState& framing, DecoderState& decoder, TextView text, bool feedsEndLines, Progress& progress) {
    Text& buffer = framing.BlobBuffer;
    std::size_t start = !text.empty() && text.front() == LineFeed && IsPaired(text, 0, buffer) ? 1 : 0;
    std::size_t nextReturn = FindChar(text, LineEnd);
    std::size_t nextFeed = feedsEndLines ? FindChar(text, LineFeed) : TextView::npos;
    for (std::size_t end = std::min(nextReturn, nextFeed); end != TextView::npos;
         end = std::min(nextReturn, nextFeed)) {
        buffer.append(text, start, end + 1 - start);
        buffer.back() = LineEnd;
        TakeLine(framing, decoder, progress);
        const bool pair = end == nextReturn && end + 1 < text.size() && text[end + 1] == LineFeed;
        start = end + (pair ? 2 : 1);
        if (nextReturn < start)
            nextReturn = FindChar(text, LineEnd, start);
        if (nextFeed < start)
            nextFeed = FindChar(text, LineFeed, start);
    }
    buffer.append(text, start);
}

/// Notes the first line feed of each kind for the next call. In front of `place` none has changed, and no paired one
/// was left there.
void NoteLineFeeds(FramingState& framing, std::size_t place) {
    const TextView buffer = framing.BlobBuffer;
    framing.PairedFeed = TextView::npos;
    if (framing.LoneFeed >= place)
        framing.LoneFeed = TextView::npos;
    for (std::size_t feed = FindChar(buffer, LineFeed, place); feed != TextView::npos;
         feed = FindChar(buffer, LineFeed, feed + 1)) {
        std::size_t& first = IsPaired(buffer, feed, {}) ? framing.PairedFeed : framing.LoneFeed;
        first = std::min(first, feed);
    }
}

} // namespace

// Line ends. Each pair of carriage return and line feed in the buffer becomes one carriage return; in a buffer without
// any such pair each line feed does. Odd, and required: one pair anywhere leaves every lone line feed standing, and the
// pair that "\r\n\n" leaves behind waits for the next call. Of the text that was there before a call, that can change
// nothing but the line feeds that were left so; what stands from the first such one on is taken in once more.
//
// BLobs. One is a start line and the next end line, and the search begins at the buffer's first line again as soon as
// one has been taken out. What stood around it is one text then: a start line in front of it that had been given up for
// a later one opens a BLob again, and the end line behind it closes that one. So start lines behave like opening
// brackets and end lines like closing ones, and a single walk that remembers all open start lines, also from one call
// to the next, finds the same BLobs in the same order. In "[BLob] 1 [BLob] 2 [/BLob] 3 [/BLob]", a line each, the BLob
// around 2 comes first and the one that is left, with 1 and 3 in it, second. An end line without a start line opens and
// closes nothing: it stays, as noise.
bool ExtractBlobs(FramingState& framing, DecoderState& decoder, const Text& received) {
    const Text& buffer = framing.BlobBuffer;
    const bool hasPair = framing.PairedFeed != TextView::npos || HasPair(received, buffer);
    const std::size_t changed = hasPair ? framing.PairedFeed : framing.LoneFeed;
    TextView text = received;
    Text again;
    if (changed != TextView::npos) {
        again = TakeBack(framing, changed) + received;
        text = again;
    }
    Progress progress{buffer.size()};
    TakeIn(framing, decoder, text, !hasPair, progress);
    NoteLineFeeds(framing, progress.Unchanged);
    return progress.Decoded && !progress.Failed;
}

} // namespace modBLob
