// SPDX-License-Identifier: MIT
#include "src/blob/framing.h"

#include "src/blob/tags.h"
#include "src/text/characters.h"

#include <algorithm>

namespace modBLob {

using modStringTools::FindChar;
using modStringTools::LineFeed;

namespace {

/// True if the line feed at an index of a text follows a carriage return, which may be the last character of the text
/// before.
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

/// Removes the text from `place` on from the buffer and returns it, so that it can be processed again. The line of
/// `place` is incomplete again. The text before it contains no complete BLob, so the start lines there are the open
/// BLobs.
Text TakeBack(FramingState& framing, std::size_t place) {
    Text& buffer = framing.BlobBuffer;
    const Text tail = buffer.substr(place);
    buffer.resize(place);
    framing.OpenLine = buffer.rfind(LineEnd) + 1; // npos + 1 is 0
    std::vector<std::size_t>& open = framing.OpenBlobs;
    while (!open.empty() && open.back() >= framing.OpenLine)
        open.pop_back();
    return tail;
}

/// What one call does to the buffer.
struct Progress {
    std::size_t Unchanged; ///< so many characters at the start of the buffer are as the last call left them
    bool Decoded = false;  ///< a BLob was accepted
    bool Failed = false;   ///< a BLob was refused
};

/// Returns the fate of the results of a BLob that was refused, or by which the instrument connected.
platform::Fate FateOf(Refusal refusal) {
    switch (refusal) {
    case Refusal::Shape:
        return platform::Fate::Shape;
    case Refusal::Origin:
        return platform::Fate::Origin;
    case Refusal::None:
        break;
    }
    return platform::Fate::Connect;
}

/// Decodes the innermost open BLob, which is the end of the buffer, and removes it.
void CloseBlob(FramingState& framing, DecoderState& decoder, Progress& progress) {
    Text& buffer = framing.BlobBuffer;
    const std::size_t start = framing.OpenBlobs.back();
    framing.OpenBlobs.pop_back();
    const TextView blob = TextView(buffer).substr(start);
    const std::size_t slot = NextSlot(decoder);
    const Refusal refusal = ReadBlob(decoder, blob);
    const bool accepted = refusal == Refusal::None;
    (accepted ? progress.Decoded : progress.Failed) = true;
    if (!accepted || (decoder.ConnectSeen && NextSlot(decoder) == slot))
        framing.Lost.push_back({FateOf(refusal), std::make_shared<const Text>(blob), decoder.ConnectedID});
    buffer.resize(start);
    progress.Unchanged = std::min(progress.Unchanged, start);
}

/// Handles the line that ends with the last character of the buffer.
void TakeLine(FramingState& framing, DecoderState& decoder, Progress& progress) {
    const TextView line = TextView(framing.BlobBuffer).substr(framing.OpenLine);
    if (BeginsWithTag(line, StartTag))
        framing.OpenBlobs.push_back(framing.OpenLine);
    else if (BeginsWithTag(line, EndTag) && !framing.OpenBlobs.empty())
        CloseBlob(framing, decoder, progress);
    framing.OpenLine = framing.BlobBuffer.size();
}

/// Appends a text line by line, each ended by one carriage return. If `feedsEndLines`, line feeds that are not part of
/// a pair end a line too.
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

/// Stores the index of the first line feed of each kind for the next call. The text before `place` is unchanged, and
/// has no paired line feed.
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

// Line ends. Each pair of carriage return and line feed in the buffer becomes one carriage return. In a buffer without
// any such pair, each line feed does. Odd, and required: if there is one pair anywhere, every lone line feed stays as
// it is, and the pair that "\r\n\n" becomes waits for the next call. In the text that was there before a call, only
// line feeds that stayed can change; the text from the first of them on is processed again.
//
// BLobs. A BLob is a start line and the next end line. Whenever one has been removed, the search begins at the first
// line of the buffer again, and the text around the BLob is one text then: a start line before it that had been given
// up for a later one opens a BLob again, and the end line after it closes that one. So start lines behave like opening
// brackets and end lines like closing ones, and a single pass that remembers all open start lines, also from one call
// to the next, finds the same BLobs in the same order. In "[BLob] 1 [BLob] 2 [/BLob] 3 [/BLob]", a line each, the BLob
// around 2 comes first and the remaining one, which contains 1 and 3, second. An end line without a start line opens
// and closes nothing: it stays as noise.
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
    framing.Lost.clear();
    Progress progress{buffer.size()};
    TakeIn(framing, decoder, text, !hasPair, progress);
    NoteLineFeeds(framing, progress.Unchanged);
    return progress.Decoded && !progress.Failed;
}

} // namespace modBLob
