// SPDX-License-Identifier: MIT
#include "src/storage/line_back_ends.h"

#include "src/storage/volumes.h"
#include "src/view/platform/platform.h"

#include <cmath>
#include <limits>

namespace modFileSystem {

using platform::Device;
using platform::Origin;
using platform::StreamMode;
using platform::TextStream;

namespace {

constexpr std::int32_t ScratchDigits = 8;
const Text ScratchCode = u"temp";

std::unique_ptr<TextStream>& StreamOf(const FileHandle& handle) {
    return Slots.SlotStream[static_cast<std::size_t>(handle.slot)];
}

LineMark& MarkOf(const FileHandle& handle) {
    return Slots.SlotMark[static_cast<std::size_t>(handle.slot)];
}

Text FullName(const FileHandle& handle) {
    return handle.path + handle.name;
}

void Seek(const FileHandle& handle, std::int64_t offset, Origin origin) {
    const auto error = StreamOf(handle)->Seek(offset, origin);
    if (error != platform::NoError)
        FailOnFile(u"read", handle, error);
}

std::int32_t SkipLines(const FileHandle& handle, std::int32_t most) {
    std::int64_t passed = 0;
    if (const auto error = StreamOf(handle)->SkipLines(most, passed); error != platform::NoError)
        FailOnFile(u"read", handle, error);
    return static_cast<std::int32_t>(passed);
}

bool OpenStream(FileHandle& handle, StreamMode mode) {
    handle.error = Device().fileSystem.OpenStream(FullName(handle), mode, StreamOf(handle));
    const bool opened = handle.error == platform::NoError;
    handle.kept = mode == StreamMode::Existing && !opened && !platform::IsMissing(handle.error);
    return opened;
}

/// Moves to the marked line; false when another writer has changed the file since.
bool StandsAtMark(TextStream& stream, const LineMark& mark) {
    return mark.Line > 1 && stream.Seek(mark.Offset, Origin::Start) == platform::NoError &&
           stream.Revision() == mark.Revision;
}

/// Counts the lines from the head of the file on.
platform::ErrorNumber CountLines(TextStream& stream, std::int64_t& count) {
    const auto error = stream.Seek(0, Origin::Start);
    return error != platform::NoError ? error : stream.SkipLines(std::numeric_limits<std::int32_t>::max() - 1, count);
}

/// The stream has passed all lines and stands behind the last one.
void StandBehindLast(FileHandle& handle, std::int64_t count) {
    const TextStream& stream = *StreamOf(handle);
    handle.nextLine = static_cast<std::int32_t>(count) + 1;
    MarkOf(handle) = {handle.nextLine, stream.Position(), stream.Revision()};
}

/// Only what is not there is made: a file that can't be opened for any other reason would lose its lines to that.
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
    StreamOf(handle).reset(); // what is written next would land in the middle of the file
    handle.kept = true;
    return false;
}

Text ScratchName(const Text& folder) {
    Text name = folder;
    for (std::int32_t i = 0; i < ScratchDigits; ++i)
        name += static_cast<char16_t>(u'0' + static_cast<std::int32_t>(Device().random.Next() * 10));
    return name + u".txt";
}

/// Makes the scratch file under a name that no file has. Whether a name is free that is kept from us can't be known.
void OpenTempFile() {
    FileHandle& scratch = Slots.TempFile;
    Device().random.Seed(static_cast<std::int32_t>(std::nearbyint(Device().clock.TimeOfDay())));
    CloseFile(scratch);
    Text folder;
    scratch.error = FindDataPath(u"", folder);
    if (scratch.error != platform::NoError)
        return;
    Text name;
    do {
        CloseFile(scratch);
        name = ScratchName(folder);
        OpenFile(scratch, name, u"r", ScratchCode, ScratchCode);
    } while (scratch.valid); // the name is taken
    if (!scratch.kept)
        OpenFile(scratch, name, u"w", ScratchCode, ScratchCode);
}

/// Whether the file that is written anew may still be replaced: it is the one that was read.
bool MayBeReplaced(FileHandle& handle, std::int64_t revision) {
    handle.error = StreamOf(handle)->CheckName();
    if (handle.error == platform::NoError && StreamOf(handle)->Revision() != revision)
        handle.error = platform::FileChanged;
    return handle.error == platform::NoError;
}

/// Puts the scratch file in the place of the other one, which is open for appending afterwards whatever its mode was,
/// and may stand in another slot. False where another file or folder has come under its name meanwhile.
bool ReplaceWithTempFile(FileHandle& handle, std::int64_t revision) {
    FileHandle& scratch = Slots.TempFile;
    const FileHandle made = scratch;
    CloseFile(scratch);
    if (!MayBeReplaced(handle, revision)) {
        Device().fileSystem.DeleteFile(FullName(made));
        return false;
    }
    const FileHandle old = handle;
    CloseFile(handle);
    // Whatever fails, what was written is in the scratch file or in the other one: nothing is lost.
    const auto error = Device().fileSystem.MoveFile(FullName(made), FullName(old));
    if (error != platform::NoError)
        FailOnFile(u"write", old, error);
    OpenFile(handle, FullName(old), u"a", old.fileType, old.creator);
    if (!handle.valid) // nobody looks: what follows would be dropped without a word
        FailOnFile(u"open", old, handle.error);
    SeekFileLine(handle, old.nextLine);
    return true;
}

std::int32_t CountAfter(Edit edit, std::int32_t count) {
    switch (edit) {
    case Edit::Remove:
        return count - 1;
    case Edit::PutBefore:
    case Edit::PutBehind:
        return count + 1;
    default:
        return count;
    }
}

/// Copies lines as they are, in blocks: most of a file has nothing to do with the edit.
void CopyBlocks(const FileHandle& handle, std::int32_t count) {
    std::int64_t taken = 0;
    for (std::int64_t left = count; left > 0; left -= taken) {
        std::string_view lines;
        if (const auto error = StreamOf(handle)->ReadLines(left, lines, taken); error != platform::NoError)
            FailOnFile(u"read", handle, error);
        if (taken == 0)
            return; // somebody else has made the file shorter: the count of what was written will tell
        if (const auto error = StreamOf(Slots.TempFile)->WriteLines(lines); error != platform::NoError)
            FailOnFile(u"write", Slots.TempFile, error);
    }
}

/// Copies so many lines from `first` on to the scratch file.
void CopyLines(FileHandle& handle, std::int32_t first, std::int32_t count) {
    if (!Slots.TempFile.isDatabase) {
        CopyBlocks(handle, count);
        return;
    }
    // The data folder is a device's memory, where all files are databases, and this one is on a card.
    for (std::int32_t line = first; line < first + count; ++line)
        WriteFileLine(Slots.TempFile, ReadFileLine(handle, line));
}

/// The edited line, and what the edit puts in its place or beside it.
void CopyEdited(FileHandle& handle, std::int32_t line, Edit edit, const Text& text) {
    if (edit == Edit::PutBefore)
        WriteFileLine(Slots.TempFile, text);
    if (edit == Edit::Change || edit == Edit::Remove)
        SkipLines(handle, 1);
    else if (edit == Edit::PutBefore && line == 1) // a byte-order mark in front of it must not get into the middle
        WriteFileLine(Slots.TempFile, ReadFileLine(handle, line));
    else
        CopyLines(handle, line, 1);
    if (edit == Edit::Change || edit == Edit::PutBehind)
        WriteFileLine(Slots.TempFile, text);
}

} // namespace

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
    Slots.SlotState[static_cast<std::size_t>(handle.slot)] = opened ? SlotIsText : 0;
    handle.revision = opened ? StreamOf(handle)->Revision() : 0;
    return opened;
}

void CloseTextLines(FileHandle& handle) {
    const std::unique_ptr<TextStream> stream = std::move(StreamOf(handle));
    const auto error = stream->Close();
    if (error != platform::NoError)
        FailOnFile(u"write", handle, error);
}

void WriteTextLine(FileHandle& handle, const Text& text) {
    const auto error = StreamOf(handle)->WriteLine(text);
    if (error != platform::NoError)
        FailOnFile(u"write", handle, error);
    MarkOf(handle) = {}; // a last line without a line end may just have got one
    ++handle.nextLine;
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
        mark = {mark.Line + SkipLines(handle, line - mark.Line), stream.Position(), stream.Revision()};
    // At the end there is no line, also where the mark has come as far as the line that was asked for.
    handle.nextLine = mark.Offset == stream.Size() ? 0 : mark.Line;
    return handle.nextLine;
}

void ReadTextLine(FileHandle& handle, std::int32_t line, Text& text) {
    TextStream& stream = *StreamOf(handle);
    if (const auto error = stream.ReadLine(text); error != platform::NoError)
        FailOnFile(u"read", handle, error);
    handle.nextLine = line + 1;
    LineMark& mark = MarkOf(handle); // the seek before has put it on this line
    mark.Line = line + 1;
    mark.Offset = stream.Position();
}

std::int32_t TextLineCount(FileHandle& handle) {
    std::int64_t count = 0;
    // A count that a failing disk has cut short would let a rewrite drop all lines behind it.
    if (const auto error = CountLines(*StreamOf(handle), count); error != platform::NoError)
        FailOnFile(u"read", handle, error);
    StandBehindLast(handle, count);
    return static_cast<std::int32_t>(count);
}

bool AnotherHasChangedText(FileHandle& handle) {
    const auto error = StreamOf(handle)->CheckName();
    return error == platform::FileChanged || error == platform::FileNotFound ||
           StreamOf(handle)->Revision() != handle.revision;
}

bool RewriteTextLines(FileHandle& handle, std::int32_t line, Edit edit, const Text& text) {
    const std::int32_t count = FileLineCount(handle);
    const std::int64_t revision = StreamOf(handle)->Revision();
    if (SeekFileLine(handle, 1) != 1) {
        handle.error = platform::RowNotFound;
        return false;
    }
    if (!MayBeReplaced(handle, revision)) // no scratch file is made, nor a folder for it
        return false;
    Slots.RewrittenFile = FullName(handle);
    OpenTempFile();
    handle.error = Slots.TempFile.error;
    if (!Slots.TempFile.valid)
        return false;
    CopyLines(handle, 1, line - 1);
    CopyEdited(handle, line, edit, text);
    CopyLines(handle, line + 1, count - line);
    handle.nextLine = count + 1;
    if (edit != Edit::Refused && FileLineCount(Slots.TempFile) == CountAfter(edit, count))
        return ReplaceWithTempFile(handle, revision);
    CloseFile(Slots.TempFile); // it stays on disk, for whoever wants to know
    handle.error = platform::FileChanged;
    return false;
}

Text KeepLine(const FileHandle& handle, const Text& text) {
    Slots.RewrittenFile = FullName(handle);
    OpenTempFile();
    FileHandle& scratch = Slots.TempFile;
    if (!scratch.valid)
        return {};
    const Text name = scratch.name;
    WriteFileLine(scratch, text);
    CloseFile(scratch);
    return name;
}

} // namespace modFileSystem
