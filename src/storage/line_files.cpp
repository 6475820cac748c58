// SPDX-License-Identifier: MIT
#include "src/storage/line_files.h"

#include "src/storage/line_back_end.h"
#include "src/storage/volumes.h"
#include "src/view/platform/platform.h"

namespace modFileSystem {

using platform::Device;

namespace {

constexpr std::int16_t NoSlot = -1;

std::int16_t PickSlot(const Text& fileType, const Text& creator) {
    if (fileType == ScratchCode && creator == ScratchCode)
        return 0;
    for (std::int16_t slot = 1; slot < SlotCount; ++slot) {
        if (Slots.SlotState[static_cast<std::size_t>(slot)] == SlotIsFree)
            return slot;
    }
    return NoSlot;
}

void ChooseBackEnd(FileHandle& handle) {
    for (const LineBackEnd* backEnd : LineBackEnds) {
        if (!backEnd->Takes(handle))
            continue;
        backEnd->Name(handle);
        handle.backEnd = backEnd;
        handle.isDatabase = backEnd->IsDatabase;
        return;
    }
}

/// Leaves only the reason in the handle of a file that could not be opened. A file that could not be created is
/// reported here, because the form goes on without it and its lines are lost. A file that exists and can't be read is
/// reported by the caller.
void GiveUp(FileHandle& handle) {
    const FileHandle failed = handle;
    ResetFileHandle(handle);
    handle.error = failed.error;
    handle.kept = failed.kept;
    const bool isScratch = failed.slot == 0;
    if (failed.mode != u"r" && !isScratch && !failed.kept && !failed.name.empty())
        Device().saveWatcher.NotSaved(failed.name, platform::ErrorText(failed.error));
}

/// True if the file is open. A file that is not open has no lines.
bool HasLines(FileHandle& handle) {
    if (!handle.valid)
        handle.error = platform::RowNotFound;
    return handle.valid;
}

} // namespace

void OpenFile(FileHandle& handle, const Text& fullName, const Text& mode, const Text& fileType, const Text& creator) {
    const StorageStep step;
    const std::int16_t slot = PickSlot(fileType, creator);
    if (slot == NoSlot)
        return;
    const std::size_t folderEnd = fullName.rfind(u'\\');
    ResetFileHandle(handle);
    handle.error = platform::FileNotFound;
    if (folderEnd == Text::npos) {
        handle.slot = slot;
        handle.name = fullName;
        handle.mode = mode;
        GiveUp(handle);
        return;
    }
    handle.path = fullName.substr(0, folderEnd + 1);
    handle.name = fullName.substr(folderEnd + 1);
    ChooseBackEnd(handle);
    handle.mode = mode;
    handle.slot = slot;
    handle.fileType = fileType;
    handle.creator = creator;
    handle.valid = handle.backEnd->Open(handle);
    if (!handle.valid)
        GiveUp(handle);
}

void ResetSlots() {
    for (const LineBackEnd* backEnd : LineBackEnds)
        backEnd->DropAll();
    Slots = {};
}

void CloseFile(FileHandle& handle) {
    const StorageStep step;
    if (handle.valid) {
        handle.backEnd->Close(handle);
        StateOf(handle) = SlotIsFree;
    }
    ResetFileHandle(handle);
}

void ResetFileHandle(FileHandle& handle) {
    const Text fileType = handle.fileType;
    const Text creator = handle.creator;
    handle = {};
    handle.fileType = fileType;
    handle.creator = creator;
}

std::int32_t WriteFileLine(FileHandle& handle, const Text& text) {
    const StorageStep step;
    const bool written = handle.valid && handle.backEnd->Append(handle, text);
    return written ? static_cast<std::int32_t>(text.size()) : 0;
}

std::int32_t SeekFileLine(FileHandle& handle, std::int32_t line) {
    const StorageStep step;
    if (line < 1 || !handle.valid)
        return 0;
    return handle.backEnd->Seek(handle, line);
}

Text ReadFileLine(FileHandle& handle, std::int32_t& line) {
    Text text;
    ReadFileLine(handle, line, text);
    return text;
}

void ReadFileLine(FileHandle& handle, std::int32_t& line, Text& text) {
    const StorageStep step;
    text.clear();
    if (line == -1)
        line = handle.nextLine;
    if (SeekFileLine(handle, line) != 0)
        handle.backEnd->Read(handle, line, text);
}

FileReading::FileReading(FileHandle& handle) : File_(handle) {
    if (!handle.valid)
        return;
    const auto error = handle.backEnd->BeginReading(handle);
    HasBegun_ = error == platform::NoError;
    handle.readings += HasBegun_ ? 1 : 0;
    IsHeld_ = error == platform::InUse;
    if (IsHeld_)
        handle.error = error;
}

/// A file that was closed meanwhile has no reading, whether or not its handle has another file now.
FileReading::~FileReading() {
    if (!HasBegun_ || File_.readings == 0)
        return;
    --File_.readings;
    File_.backEnd->EndReading(File_);
}

bool ChangeFileLine(FileHandle& handle, std::int32_t line, const Text& text) {
    const StorageStep step;
    return HasLines(handle) && handle.backEnd->Change(handle, line, text);
}

bool DeleteFileLine(FileHandle& handle, std::int32_t line) {
    const StorageStep step;
    return HasLines(handle) && handle.backEnd->Delete(handle, line);
}

bool InsertFileLine(FileHandle& handle, std::int32_t line, InsertPosition position, const Text& text) {
    const StorageStep step;
    return HasLines(handle) && handle.backEnd->Insert(handle, line, position, text);
}

std::int32_t FileLineCount(FileHandle& handle) {
    const StorageStep step;
    return handle.valid ? handle.backEnd->Count(handle) : 0;
}

platform::FileStamp FileStampOf(const FileHandle& handle) {
    return handle.valid ? handle.backEnd->Stamp(handle) : platform::FileStamp{};
}

bool AnotherHasChanged(FileHandle& handle) {
    return handle.valid && handle.backEnd->AnotherHasChanged(handle);
}

bool DeleteFile(const Text& fullName) {
    return RemoveFile(fullName) == platform::NoError;
}

platform::ErrorNumber RemoveFile(const Text& fullName) {
    const StorageStep step;
    FileHandle handle;
    OpenFileByName(handle, fullName, u"r");
    if (!handle.valid)
        return handle.error;
    const FileHandle found = handle;
    CloseFile(handle);
    return found.backEnd->Remove(found);
}

platform::ErrorNumber ReadLines(const Text& fullName, const Text& fileType, const Text& creator,
                                std::vector<Text>& lines) {
    lines.clear();
    FileHandle handle;
    OpenFile(handle, fullName, u"r", fileType, creator);
    if (!handle.valid)
        return handle.error;
    const std::int32_t count = FileLineCount(handle);
    for (std::int32_t line = 1; line <= count; ++line)
        lines.push_back(ReadFileLine(handle, line));
    CloseFile(handle);
    return platform::NoError;
}

platform::ErrorNumber PutLines(const Text& fullName, const Text& fileType, const Text& creator,
                               const std::vector<Text>& lines) {
    const StorageStep step;
    const std::size_t folderEnd = fullName.rfind(u'\\');
    if (folderEnd == Text::npos)
        return platform::FileNotFound;
    FileHandle handle;
    handle.path = fullName.substr(0, folderEnd + 1);
    handle.name = fullName.substr(folderEnd + 1);
    handle.fileType = fileType;
    handle.creator = creator;
    ChooseBackEnd(handle);
    return handle.backEnd->Put(handle, lines);
}

void ListFiles(const Text& folder, const Text& fileType, const Text& creator) {
    Storage.FileList.clear();
    for (const LineBackEnd* backEnd : LineBackEnds) {
        if (backEnd->List(folder, fileType, creator))
            return;
    }
}

} // namespace modFileSystem
