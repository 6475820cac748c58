// SPDX-License-Identifier: MIT
#include "src/storage/slot_streams.h"

#include "src/view/platform/platform.h"

#include <limits>

namespace modFileSystem {

using platform::Device;
using platform::Origin;
using platform::StreamMode;
using platform::TextStream;

namespace {

LineMark& MarkOf(const FileHandle& handle) {
    return Slots.SlotMark[static_cast<std::size_t>(handle.slot)];
}

void Seek(const FileHandle& handle, std::int64_t offset, Origin origin) {
    const auto error = StreamOf(handle)->Seek(offset, origin);
    if (error != platform::NoError)
        FailOnFile(u"read", handle, error);
}

bool OpenStream(FileHandle& handle, StreamMode mode) {
    handle.error = Device().fileSystem.OpenStream(FullNameOf(handle), mode, StreamOf(handle));
    const bool opened = handle.error == platform::NoError;
    handle.kept = mode == StreamMode::Existing && !opened && !platform::IsMissing(handle.error);
    return opened;
}

/// Moves to the marked line. False if there is no mark, or if the file has been changed since.
bool StandsAtMark(TextStream& stream, const LineMark& mark) {
    return mark.Line > 1 && stream.Seek(mark.Offset, Origin::Start) == platform::NoError &&
           stream.Revision() == mark.Revision;
}

/// Counts all lines of the file.
platform::ErrorNumber CountLines(TextStream& stream, std::int64_t& count) {
    const auto error = stream.Seek(0, Origin::Start);
    return error != platform::NoError ? error : stream.SkipLines(std::numeric_limits<std::int32_t>::max() - 1, count);
}

/// Sets the handle and the mark to the line after the last one. REQUIRES: the stream has skipped all lines.
void StandBehindLast(FileHandle& handle, std::int64_t count) {
    const TextStream& stream = *StreamOf(handle);
    handle.nextLine = static_cast<std::int32_t>(count) + 1;
    MarkOf(handle) = {handle.nextLine, stream.Position(), stream.Revision()};
}

/// Creates only a file that is missing: one that can't be opened for another reason would lose its lines.
bool OpenOrMakeStream(FileHandle& handle) {
    return OpenStream(handle, StreamMode::Existing) || (!handle.kept && OpenStream(handle, StreamMode::Create));
}

bool OpenForAppending(FileHandle& handle) {
    if (!OpenOrMakeStream(handle))
        return false;
    TextStream& stream = *StreamOf(handle);
    std::int64_t count = 0;
    handle.error = CountLines(stream, count);
    if (handle.error == platform::NoError) {
        StandBehindLast(handle, count);
        handle.error = stream.Seek(0, Origin::End);
    }
    if (handle.error == platform::NoError)
        return true;
    StreamOf(handle).reset(); // the next line would be written into the middle of the file
    handle.kept = true;
    return false;
}

} // namespace

std::unique_ptr<TextStream>& StreamOf(const FileHandle& handle) {
    return Slots.SlotStream[static_cast<std::size_t>(handle.slot)];
}

std::int32_t SkipTextLines(const FileHandle& handle, std::int32_t most) {
    std::int64_t passed = 0;
    if (const auto error = StreamOf(handle)->SkipLines(most, passed); error != platform::NoError)
        FailOnFile(u"read", handle, error);
    return static_cast<std::int32_t>(passed);
}

bool OpenTextLines(FileHandle& handle) {
    MarkOf(handle) = {};
    bool opened = false;
    if (handle.mode == u"r") {
        opened = OpenStream(handle, StreamMode::Existing);
    } else if (handle.mode == u"w") {
        opened = OpenStream(handle, handle.slot == 0 ? StreamMode::Scratch : StreamMode::Create);
        handle.nextLine = 1;
    } else if (handle.mode == u"a") {
        opened = OpenForAppending(handle);
    }
    StateOf(handle) = opened ? SlotIsText : SlotIsFree;
    handle.revision = opened ? StreamOf(handle)->Revision() : 0;
    return opened;
}

void CloseTextLines(FileHandle& handle) {
    const std::unique_ptr<TextStream> stream = std::move(StreamOf(handle));
    const auto error = stream->Close();
    if (error != platform::NoError)
        FailOnFile(u"write", handle, error);
}

void DropTextLines() {
    for (auto& stream : Slots.SlotStream)
        stream.reset();
}

bool WriteTextLine(FileHandle& handle, const Text& text) {
    const auto error = StreamOf(handle)->WriteLine(text);
    if (error != platform::NoError)
        FailOnFile(u"write", handle, error);
    MarkOf(handle) = {}; // a last line without a line end may have got one by this write
    ++handle.nextLine;
    return true;
}

std::int32_t SeekTextLine(FileHandle& handle, std::int32_t line) {
    const TextStream& stream = *StreamOf(handle);
    LineMark& mark = MarkOf(handle);
    if (mark.Line > line || !StandsAtMark(*StreamOf(handle), mark)) {
        mark = {};
        Seek(handle, 0, Origin::Start);
        mark.Revision = stream.Revision();
    }
    if (mark.Line < line)
        mark = {mark.Line + SkipTextLines(handle, line - mark.Line), stream.Position(), stream.Revision()};
    // There is no line at the end of the file, even if the mark has the number that was asked for.
    handle.nextLine = mark.Offset == stream.Size() ? 0 : mark.Line;
    return handle.nextLine;
}

void ReadTextLine(FileHandle& handle, std::int32_t line, Text& text) {
    TextStream& stream = *StreamOf(handle);
    if (const auto error = stream.ReadLine(text); error != platform::NoError)
        FailOnFile(u"read", handle, error);
    handle.nextLine = line + 1;
    LineMark& mark = MarkOf(handle); // the seek before this call has set it to this line
    mark.Line = line + 1;
    mark.Offset = stream.Position();
}

std::int32_t TextLineCount(FileHandle& handle) {
    std::int64_t count = 0;
    // A count cut short by a disk failure would let a rewrite drop all following lines.
    if (const auto error = CountLines(*StreamOf(handle), count); error != platform::NoError)
        FailOnFile(u"read", handle, error);
    StandBehindLast(handle, count);
    return static_cast<std::int32_t>(count);
}

bool AnotherHasChangedText(const FileHandle& handle) {
    const auto error = StreamOf(handle)->CheckName();
    return error == platform::FileChanged || error == platform::FileNotFound ||
           StreamOf(handle)->Revision() != handle.revision;
}

} // namespace modFileSystem
