// SPDX-License-Identifier: MIT
#include "storage/line_back_ends.h"

#include "storage/volumes.h"
#include "view/platform/platform.h"

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

bool OpenStream(const FileHandle& handle, StreamMode mode) {
    Slots.OpenError = Device().fileSystem.OpenStream(FullName(handle), mode, StreamOf(handle));
    return Slots.OpenError == platform::NoError;
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

bool OpenForAppending(FileHandle& handle) {
    if (!OpenStream(handle, StreamMode::Existing) && (DeviceKeptFile() || !OpenStream(handle, StreamMode::Create)))
        return false;
    TextStream& stream = *StreamOf(handle);
    std::int64_t count = 0;
    Slots.OpenError = CountLines(stream, count);
    if (Slots.OpenError == platform::NoError)
        Slots.OpenError = stream.Seek(0, Origin::End);
    if (Slots.OpenError != platform::NoError) { // what is written next would land in the middle of the file
        StreamOf(handle).reset();
        return false;
    }
    handle.nextLine = static_cast<std::int32_t>(count) + 1;
    return true;
}

Text ScratchName() {
    Text name = GetDataPath(u"");
    for (std::int32_t i = 0; i < ScratchDigits; ++i)
        name += static_cast<char16_t>(u'0' + static_cast<std::int32_t>(Device().random.Next() * 10));
    return name + u".txt";
}

void OpenTempFile() {
    FileHandle& scratch = Slots.TempFile;
    Device().random.Seed(static_cast<std::int32_t>(std::nearbyint(Device().clock.TimeOfDay())));
    Text name;
    do {
        CloseFile(scratch);
        name = ScratchName();
        OpenFile(scratch, name, u"r", ScratchCode, ScratchCode);
    } while (scratch.valid); // the name is taken
    if (DeviceKeptFile()) // or is it?
        platform::RuntimeFailure(u"Can't open " + name + u": " + platform::ErrorText(Slots.OpenError));
    OpenFile(scratch, name, u"w", ScratchCode, ScratchCode);
}

/// Puts the scratch file in the place of the other one, which is open for appending afterwards whatever its mode was,
/// and may stand in another slot.
void ReplaceWithTempFile(FileHandle& handle) {
    FileHandle& scratch = Slots.TempFile;
    if (!handle.valid || !scratch.valid)
        return;
    const FileHandle old = handle;
    const FileHandle made = scratch;
    CloseFile(scratch);
    CloseFile(handle);
    // A copy that fails leaves the scratch file where it is: nothing that was written is lost.
    auto error = Device().fileSystem.CopyFile(FullName(made), FullName(old), true);
    if (error != platform::NoError)
        FailOnFile(u"write", old, error);
    error = Device().fileSystem.DeleteFile(FullName(made));
    if (error != platform::NoError)
        FailOnFile(u"delete", made, error);
    OpenFile(handle, FullName(old), u"a", old.fileType, old.creator);
    if (!handle.valid) // nobody looks: what follows would be dropped without a word
        FailOnFile(u"open", old, Slots.OpenError);
    SeekFileLine(handle, old.nextLine);
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

void CopyLines(FileHandle& handle, std::int32_t count, std::int32_t line, Edit edit, const Text& text) {
    FileHandle& scratch = Slots.TempFile;
    for (std::int32_t number = 1; number <= count; ++number) {
        std::int32_t next = -1;
        const Text old = ReadFileLine(handle, next);
        if (number != line) {
            WriteFileLine(scratch, old);
            continue;
        }
        if (edit == Edit::Change || edit == Edit::PutBefore)
            WriteFileLine(scratch, text);
        if (edit != Edit::Change && edit != Edit::Remove)
            WriteFileLine(scratch, old);
        if (edit == Edit::PutBehind)
            WriteFileLine(scratch, text);
    }
}

} // namespace

bool OpenTextLines(FileHandle& handle) {
    MarkOf(handle) = {};
    bool opened = false;
    if (handle.mode == u"r") {
        opened = OpenStream(handle, StreamMode::Existing);
    } else if (handle.mode == u"w") {
        opened = OpenStream(handle, StreamMode::Create);
        handle.nextLine = 1;
    } else if (handle.mode == u"a") {
        opened = OpenForAppending(handle);
    }
    Slots.SlotState[static_cast<std::size_t>(handle.slot)] = opened ? SlotIsText : 0;
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
    const auto& stream = StreamOf(handle);
    LineMark& mark = MarkOf(handle);
    if (mark.Line > line || !StandsAtMark(*stream, mark)) {
        mark = {};
        Seek(handle, 0, Origin::Start);
    }
    std::int64_t passed = 0;
    if (const auto error = stream->SkipLines(line - mark.Line, passed); error != platform::NoError)
        FailOnFile(u"read", handle, error);
    const std::int32_t counter = mark.Line + static_cast<std::int32_t>(passed);
    // At the end there is no line, also where the counter has come as far as the line that was asked for.
    handle.nextLine = stream->Position() == stream->Size() ? 0 : counter;
    if (handle.nextLine != 0)
        mark = {counter, stream->Position(), stream->Revision()};
    return handle.nextLine;
}

Text ReadTextLine(FileHandle& handle, std::int32_t line) {
    Text text;
    const auto error = StreamOf(handle)->ReadLine(text);
    if (error != platform::NoError)
        FailOnFile(u"read", handle, error);
    handle.nextLine = line + 1;
    MarkOf(handle) = {line + 1, StreamOf(handle)->Position(), StreamOf(handle)->Revision()};
    return text;
}

std::int32_t TextLineCount(FileHandle& handle) {
    std::int64_t count = 0;
    // A count that a failing disk has cut short would let a rewrite drop all lines behind it.
    if (const auto error = CountLines(*StreamOf(handle), count); error != platform::NoError)
        FailOnFile(u"read", handle, error);
    handle.nextLine = static_cast<std::int32_t>(count) + 1;
    return static_cast<std::int32_t>(count);
}

bool RewriteTextLines(FileHandle& handle, std::int32_t line, Edit edit, const Text& text) {
    const std::int32_t count = FileLineCount(handle);
    if (SeekFileLine(handle, 1) != 1)
        return false;
    OpenTempFile();
    if (!Slots.TempFile.valid)
        return false;
    CopyLines(handle, count, line, edit, text);
    const bool whole = edit != Edit::Refused && FileLineCount(Slots.TempFile) == CountAfter(edit, count);
    if (whole)
        ReplaceWithTempFile(handle);
    else
        CloseFile(Slots.TempFile); // it stays on disk, for whoever wants to know
    return whole;
}

} // namespace modFileSystem
