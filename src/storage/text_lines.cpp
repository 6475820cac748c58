// SPDX-License-Identifier: MIT
#include "src/storage/text_lines.h"

#include "src/storage/database_lines.h"
#include "src/storage/line_files.h"
#include "src/storage/scratch_file.h"
#include "src/storage/slot_streams.h"
#include "src/storage/volumes.h"
#include "src/view/platform/platform.h"

namespace modFileSystem {

using platform::Device;

namespace {

const Text TextEnding = u".txt";

/// What an operation on a line does to it.
enum class Edit { Change, Remove, PutBefore, PutBehind, Refused };

/// True if the file being rewritten may be replaced: it is still the one that was read.
bool MayBeReplaced(FileHandle& handle, std::int64_t revision) {
    handle.error = StreamOf(handle)->CheckName();
    if (handle.error == platform::NoError && StreamOf(handle)->Revision() != revision)
        handle.error = platform::FileChanged;
    return handle.error == platform::NoError;
}

/// Replaces the file with the scratch file. On success the file is open for appending, whatever its mode was, and may
/// be in another slot. Returns false if the file was changed, or if its name leads to another file or folder now.
bool ReplaceWithTempFile(FileHandle& handle, std::int64_t revision) {
    FileHandle& scratch = Slots.TempFile;
    const FileHandle made = scratch;
    CloseFile(scratch);
    if (!MayBeReplaced(handle, revision)) {
        Device().fileSystem.DeleteFile(FullNameOf(made));
        return false;
    }
    const FileHandle old = handle;
    CloseFile(handle);
    // If the move fails, the text is in the scratch file or in the replaced file: nothing is lost.
    const auto error = Device().fileSystem.MoveFile(FullNameOf(made), FullNameOf(old));
    if (error != platform::NoError)
        FailOnFile(u"write", old, error);
    OpenFile(handle, FullNameOf(old), u"a", old.fileType, old.creator);
    if (!handle.valid) // callers don't check: later lines would be dropped silently
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

/// Copies lines unchanged, in blocks: most lines of a file are not touched by the edit.
void CopyBlocks(const FileHandle& handle, std::int32_t count) {
    std::int64_t taken = 0;
    for (std::int64_t left = count; left > 0; left -= taken) {
        std::string_view lines;
        if (const auto error = StreamOf(handle)->ReadLines(left, lines, taken); error != platform::NoError)
            FailOnFile(u"read", handle, error);
        if (taken == 0)
            return; // another program has made the file shorter; Rewrite counts the written lines
        if (const auto error = StreamOf(Slots.TempFile)->WriteLines(lines); error != platform::NoError)
            FailOnFile(u"write", Slots.TempFile, error);
    }
}

/// Copies `count` lines to the scratch file, beginning with line `first`.
void CopyLines(FileHandle& handle, std::int32_t first, std::int32_t count) {
    if (Slots.TempFile.backEnd == &TextLines) {
        CopyBlocks(handle, count);
        return;
    }
    // The data folder is in a memory where all files are databases, and the text file is on a card.
    for (std::int32_t line = first; line < first + count; ++line)
        WriteFileLine(Slots.TempFile, ReadFileLine(handle, line));
}

/// Writes the edited line, and the line that the edit adds before or after it.
void CopyEdited(FileHandle& handle, std::int32_t line, Edit edit, const Text& text) {
    if (edit == Edit::PutBefore)
        WriteFileLine(Slots.TempFile, text);
    if (edit == Edit::Change || edit == Edit::Remove)
        SkipTextLines(handle, 1);
    else if (edit == Edit::PutBefore && line == 1) // a byte-order mark before it must not get into the middle
        WriteFileLine(Slots.TempFile, ReadFileLine(handle, line));
    else
        CopyLines(handle, line, 1);
    if (edit == Edit::Change || edit == Edit::PutBehind)
        WriteFileLine(Slots.TempFile, text);
}

/// Rewrites the whole file through the scratch file. On failure returns false and the file is unchanged: it is empty,
/// its name no longer leads to it, the scratch file can't be created, or the scratch file has another number of lines
/// than it should.
bool Rewrite(FileHandle& handle, std::int32_t line, Edit edit, const Text& text) {
    const std::int32_t count = FileLineCount(handle);
    const std::int64_t revision = StreamOf(handle)->Revision();
    if (SeekFileLine(handle, 1) != 1) {
        handle.error = platform::RowNotFound;
        return false;
    }
    if (!MayBeReplaced(handle, revision)) // before a scratch file, or a folder for it, is created
        return false;
    OpenTempFile(handle);
    handle.error = Slots.TempFile.error;
    if (!Slots.TempFile.valid)
        return false;
    CopyLines(handle, 1, line - 1);
    CopyEdited(handle, line, edit, text);
    CopyLines(handle, line + 1, count - line);
    handle.nextLine = count + 1;
    if (edit != Edit::Refused && FileLineCount(Slots.TempFile) == CountAfter(edit, count))
        return ReplaceWithTempFile(handle, revision);
    CloseFile(Slots.TempFile); // it stays on disk, so that its text can be looked at
    handle.error = platform::FileChanged;
    return false;
}

/// Edits a line that exists.
bool EditLine(FileHandle& handle, std::int32_t line, Edit edit, const Text& text) {
    const bool reached = SeekFileLine(handle, line) != 0;
    handle.error = reached ? platform::NoError : platform::RowNotFound;
    return reached && Rewrite(handle, line, edit, text);
}

bool Change(FileHandle& handle, std::int32_t line, const Text& text) {
    return EditLine(handle, line, Edit::Change, text);
}

bool Insert(FileHandle& handle, std::int32_t line, InsertPosition position, const Text& text) {
    switch (position) {
    case InsertPosition::Before:
        return EditLine(handle, line, Edit::PutBefore, text);
    case InsertPosition::After:
        return EditLine(handle, line, Edit::PutBehind, text);
    default:
        return EditLine(handle, line, Edit::Refused, text);
    }
}

bool Delete(FileHandle& handle, std::int32_t line) {
    return EditLine(handle, line, Edit::Remove, u"");
}

bool TakesAll(const FileHandle&) {
    return true;
}

/// A ".pdb" name, which means a database elsewhere, is a text file on a card.
void Name(FileHandle& handle) {
    if (AsksForDatabase(handle.name))
        handle.name.replace(handle.name.size() - TextEnding.size(), TextEnding.size(), TextEnding);
}

/// There is no lock on a text file.
platform::ErrorNumber BeginReading(FileHandle&) {
    return platform::NoError;
}

void EndReading(const FileHandle&) {
}

platform::FileStamp Stamp(const FileHandle& handle) {
    return StreamOf(handle)->Stamp();
}

platform::ErrorNumber Remove(const FileHandle& handle) {
    return Device().fileSystem.DeleteFile(FullNameOf(handle));
}

platform::ErrorNumber Put(const FileHandle& handle, const std::vector<Text>& lines) {
    std::unique_ptr<platform::TextStream> stream;
    auto error = Device().fileSystem.OpenStream(FullNameOf(handle), platform::StreamMode::Create, stream);
    for (std::size_t i = 0; error == platform::NoError && i < lines.size(); ++i)
        error = stream->WriteLine(lines[i]);
    return error == platform::NoError ? stream->Close() : error;
}

bool List(const Text& path, const Text&, const Text&) {
    std::unique_ptr<platform::Folder> folder;
    auto error = Device().fileSystem.OpenFolder(path, false, folder);
    if (error == platform::NoError) {
        for (Text name = folder->FirstFile(0); !name.empty(); name = folder->NextFile())
            Storage.FileList.push_back(name);
        error = folder->WalkError();
    }
    if (error != platform::NoError && !platform::IsMissing(error))
        Device().onlooker.ListIncomplete({{path, error}});
    return true;
}

} // namespace

const LineBackEnd TextLines = {
    .IsDatabase = false,
    .Takes = TakesAll,
    .Name = Name,
    .Open = OpenTextLines,
    .Close = CloseTextLines,
    .DropAll = DropTextLines,
    .Append = WriteTextLine,
    .Seek = SeekTextLine,
    .Read = ReadTextLine,
    .Count = TextLineCount,
    .Change = Change,
    .Insert = Insert,
    .Delete = Delete,
    .BeginReading = BeginReading,
    .EndReading = EndReading,
    .Stamp = Stamp,
    .AnotherHasChanged = AnotherHasChangedText,
    .Put = Put,
    .Remove = Remove,
    .List = List,
};

} // namespace modFileSystem
