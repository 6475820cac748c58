// SPDX-License-Identifier: MIT
#include "src/storage/line_files.h"

#include "src/storage/line_back_ends.h"
#include "src/view/platform/device_traits.h"
#include "src/view/platform/platform.h"

namespace modFileSystem {

using platform::Device;

namespace {

constexpr std::int16_t NoSlot = -1;
constexpr std::size_t EndingLength = 4;
const Text DatabaseEnding = u".pdb";
const Text TextEnding = u".txt";
const Text ScratchCode = u"temp";

std::int16_t PickSlot(const Text& fileType, const Text& creator) {
    if (fileType == ScratchCode && creator == ScratchCode)
        return 0;
    for (std::int16_t slot = 1; slot < SlotCount; ++slot) {
        if (Slots.SlotState[static_cast<std::size_t>(slot)] == 0)
            return slot;
    }
    return NoSlot;
}

bool EndsInPdb(const Text& name) {
    return name.size() >= EndingLength &&
           modStringTools::LowerCase(name.substr(name.size() - EndingLength)) == DatabaseEnding;
}

void DropEnding(Text& name) {
    if (name.size() < EndingLength)
        platform::RuntimeFailure(u"The file name \"" + name + u"\" is too short to lose its ending");
    name.erase(name.size() - EndingLength);
}

/// A device's memory holds databases alone and its cards text files alone; on a device without one the ending tells.
void ChooseBackEnd(FileHandle& handle) {
    const platform::DeviceTraits& traits = platform::Traits();
    const bool isMemory = traits.IsMemory(handle.path);
    if (!traits.Memory.empty() && !isMemory && EndsInPdb(handle.name)) {
        DropEnding(handle.name);
        handle.name += TextEnding;
    }
    handle.isDatabase = isMemory || EndsInPdb(handle.name);
}

/// A database goes by its name without an ending: "drivers.txt" is "drivers", and so is "drivers".
void NameDatabase(FileHandle& handle) {
    if (EndsInPdb(handle.name) || handle.name.find(u'.') != Text::npos)
        DropEnding(handle.name);
}

/// The handle of a file that could not be opened says why. The form goes on without one that it has not been able to
/// make, and what is meant for it goes nowhere; whoever opens one that is kept from us says so.
void GiveUp(FileHandle& handle) {
    const FileHandle failed = handle;
    ResetFileHandle(handle);
    handle.error = failed.error;
    handle.kept = failed.kept;
    const bool isScratch = failed.slot == 0;
    if (failed.mode != u"r" && !isScratch && !failed.kept && !failed.name.empty())
        Device().saveWatcher.NotSaved(failed.name, platform::ErrorText(failed.error));
}

/// Moves to a line that is to be changed, or says that there is none.
bool ReachLine(FileHandle& handle, std::int32_t line) {
    const bool reached = SeekFileLine(handle, line) != 0;
    handle.error = reached ? platform::NoError : platform::RowNotFound;
    return reached;
}

Edit InsertionAt(std::int32_t position) {
    switch (position) {
    case InsertBefore:
        return Edit::PutBefore;
    case InsertAfter:
        return Edit::PutBehind;
    default:
        return Edit::Refused;
    }
}

} // namespace

void FailOnFile(const char16_t* what, const FileHandle& handle, platform::ErrorNumber error) {
    // What a person has lost is in the file that the scratch file was for.
    const Text name = handle.slot == 0 ? Slots.RewrittenFile : handle.path + handle.name;
    platform::RuntimeFailure(Text(u"Can't ") + what + u" " + name + u": " + platform::ErrorText(error));
}

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
    if (handle.isDatabase)
        NameDatabase(handle);
    handle.mode = mode;
    handle.slot = slot;
    handle.fileType = fileType;
    handle.creator = creator;
    handle.valid = handle.isDatabase ? OpenDatabaseLines(handle) : OpenTextLines(handle);
    if (!handle.valid)
        GiveUp(handle);
}

void ResetSlots() {
    for (const std::int32_t state : Slots.SlotState) {
        if (state != 0 && state != SlotIsText)
            platform::Device().recordDatabase.Close(state);
    }
    Slots = {}; // the streams close themselves
}

void CloseFile(FileHandle& handle) {
    const StorageStep step;
    if (handle.valid) {
        if (handle.isDatabase)
            CloseDatabaseLines(handle);
        else
            CloseTextLines(handle);
        Slots.SlotState[static_cast<std::size_t>(handle.slot)] = 0;
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
    if (!handle.valid)
        return 0;
    if (!handle.isDatabase)
        WriteTextLine(handle, text);
    else if (!WriteDatabaseLine(handle, text))
        return 0;
    return static_cast<std::int32_t>(text.size());
}

std::int32_t SeekFileLine(FileHandle& handle, std::int32_t line) {
    const StorageStep step;
    if (line < 1 || !handle.valid)
        return 0;
    return handle.isDatabase ? SeekDatabaseLine(handle, line) : SeekTextLine(handle, line);
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
    if (SeekFileLine(handle, line) == 0)
        return;
    if (handle.isDatabase)
        ReadDatabaseLine(handle, line, text);
    else
        ReadTextLine(handle, line, text);
}

FileReading::FileReading(FileHandle& handle) {
    if (!handle.valid || !handle.isDatabase)
        return;
    const std::int32_t id = Slots.SlotState[static_cast<std::size_t>(handle.slot)];
    const auto error = Device().recordDatabase.BeginReading(id);
    IsHeld = error == platform::InUse;
    if (IsHeld)
        handle.error = error;
    if (error == platform::NoError)
        Database = id;
}

FileReading::~FileReading() {
    if (Database != 0)
        Device().recordDatabase.EndReading(Database);
}

bool ChangeFileLine(FileHandle& handle, std::int32_t line, const Text& text) {
    const StorageStep step;
    if (handle.valid && handle.isDatabase)
        return ChangeDatabaseLine(handle, line, text);
    return ReachLine(handle, line) && RewriteTextLines(handle, line, Edit::Change, text);
}

bool DeleteFileLine(FileHandle& handle, std::int32_t line) {
    const StorageStep step;
    if (handle.valid && handle.isDatabase)
        return DeleteDatabaseLine(handle, line);
    return ReachLine(handle, line) && RewriteTextLines(handle, line, Edit::Remove, u"");
}

bool InsertFileLine(FileHandle& handle, std::int32_t line, std::int32_t position, const Text& text) {
    const StorageStep step;
    if (handle.valid && handle.isDatabase)
        return InsertDatabaseLine(handle, line, position, text);
    return ReachLine(handle, line) && RewriteTextLines(handle, line, InsertionAt(position), text);
}

std::int32_t FileLineCount(FileHandle& handle) {
    const StorageStep step;
    if (!handle.valid)
        return 0;
    return handle.isDatabase ? DatabaseLineCount(handle) : TextLineCount(handle);
}

platform::FileStamp FileStampOf(const FileHandle& handle) {
    if (!handle.valid || handle.isDatabase)
        return {};
    return Slots.SlotStream[static_cast<std::size_t>(handle.slot)]->Stamp();
}

bool AnotherHasChanged(FileHandle& handle) {
    return handle.valid && !handle.isDatabase && AnotherHasChangedText(handle);
}

bool DeleteFile(const Text& fullName) {
    return RemoveFile(fullName) == platform::NoError;
}

platform::ErrorNumber RemoveFile(const Text& fullName) {
    const StorageStep step;
    FileHandle handle;
    OpenFile(handle, fullName, u"r", u"", u"");
    if (!handle.valid)
        return handle.error;
    const FileHandle found = handle;
    CloseFile(handle);
    if (found.isDatabase)
        return Device().recordDatabase.Delete(found.name);
    return Device().fileSystem.DeleteFile(found.path + found.name);
}

} // namespace modFileSystem
