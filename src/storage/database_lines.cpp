// SPDX-License-Identifier: MIT
#include "src/storage/database_lines.h"

#include "src/storage/line_files.h"
#include "src/storage/volumes.h"
#include "src/view/platform/device_traits.h"
#include "src/view/platform/platform.h"

namespace modFileSystem {

using platform::DatabaseId;
using platform::Device;
using platform::LineRecord;

namespace {

const Text DatabaseEnding = u".pdb";
const Text LineTable = u"TEXT";
const Text LineColumns = u"LineNumber long, LineData String";

platform::RecordDatabase& Databases() {
    return Device().recordDatabase;
}

void Must(const char16_t* what, const FileHandle& handle, platform::ErrorNumber error) {
    if (error != platform::NoError)
        FailOnFile(what, handle, error);
}

/// True on success. False if another program's lock lasted too long, which is no failure of the file. Any other error
/// stops the program.
bool Did(const char16_t* what, FileHandle& handle, platform::ErrorNumber error) {
    handle.error = error;
    if (error != platform::InUse)
        Must(what, handle, error);
    return error == platform::NoError;
}

/// True if a change may begin. False also if the database's folder is gone: the form goes on as after any refused
/// change.
bool May(const char16_t* what, FileHandle& handle, platform::ErrorNumber error) {
    handle.error = error;
    return error != platform::PathNotFound && Did(what, handle, error);
}

/// Stops the program if the database can't be read: a line that seems to be missing may exist.
std::int32_t CountOf(const FileHandle& handle) {
    const std::int32_t count = Databases().RecordCount(StateOf(handle));
    if (count < 0)
        FailOnFile(u"read", handle, platform::ErrorNumber{-count});
    return count;
}

/// Writes and commits the current record, which was added or is being edited.
bool Store(FileHandle& handle, const LineRecord& record) {
    const DatabaseId id = StateOf(handle);
    handle.error = Databases().WriteRecord(id, record);
    return handle.error == platform::NoError && Did(u"write to", handle, Databases().Commit(id));
}

bool Rewrite(FileHandle& handle, const LineRecord& record) {
    Must(u"edit", handle, Databases().BeginEdit(StateOf(handle)));
    return Store(handle, record);
}

bool ReadLineRecord(const FileHandle& handle, std::int32_t line, LineRecord& record) {
    if (Databases().ReadRecord(StateOf(handle), record))
        return record.LineNumber == line;
    CountOf(handle);
    return false;
}

/// Makes the record of a line the current one.
bool Reach(FileHandle& handle, std::int32_t line, LineRecord& record) {
    const bool reached = SeekFileLine(handle, line) != 0 && ReadLineRecord(handle, line, record);
    handle.error = reached ? platform::NoError : platform::RowNotFound;
    return reached;
}

bool BeginBatch(FileHandle& handle) {
    return May(u"write to", handle, Databases().BeginBatch(StateOf(handle)));
}

bool EndBatch(FileHandle& handle, bool done) {
    const auto why = handle.error;
    if (!Did(u"write to", handle, Databases().EndBatch(StateOf(handle))))
        return false;
    handle.error = why;
    return done;
}

/// Moves each line from `target` on to the next number. False if a record is missing.
bool ShiftLines(FileHandle& handle, std::int32_t target) {
    handle.error = Databases().ShiftRecords(StateOf(handle), target - 1);
    if (handle.error != platform::FileNotFound)
        Must(u"write to", handle, handle.error);
    return handle.error == platform::NoError;
}

bool InsertRecord(FileHandle& handle, std::int32_t target, const Text& text) {
    // Must, not May: after a refusal inside a batch, what was done of it would be committed.
    Must(u"add a line to", handle, Databases().AddRecord(StateOf(handle)));
    return Store(handle, {0, u""}) && ShiftLines(handle, target) && Rewrite(handle, {target, text});
}

bool DeleteRecord(FileHandle& handle) {
    handle.error = Databases().DeleteRecord(StateOf(handle));
    if (handle.error != platform::NoError) {
        CountOf(handle);
        return false;
    }
    Must(u"write to", handle, Databases().RenumberRecords(StateOf(handle)));
    return true;
}

void DropEnding(Text& name) {
    if (name.size() < DatabaseEnding.size())
        platform::RuntimeFailure(u"The file name \"" + name + u"\" is too short to lose its ending");
    name.erase(name.size() - DatabaseEnding.size());
}

/// A device's memory holds only databases, and its cards only text files. On a device without such a memory the ending
/// decides.
bool Takes(const FileHandle& handle) {
    const platform::DeviceTraits& traits = platform::Traits();
    return traits.Memory.empty() ? AsksForDatabase(handle.name) : traits.IsMemory(handle.path);
}

/// A database is known by its name without an ending: "drivers.txt" becomes "drivers", and "drivers" stays.
void Name(FileHandle& handle) {
    if (AsksForDatabase(handle.name) || handle.name.find(u'.') != Text::npos)
        DropEnding(handle.name);
}

bool Open(FileHandle& handle) {
    platform::OpenedDatabase opened{0, platform::FileNotFound};
    auto deleted = platform::NoError;
    if (handle.mode == u"r")
        opened = Databases().Open(handle.name, platform::DatabaseMode::Read);
    else if (handle.mode == u"a")
        opened = Databases().Open(handle.name, platform::DatabaseMode::ReadWrite);
    else if (handle.mode == u"w")
        deleted = Databases().Delete(handle.name);
    handle.kept = opened.Id == 0 && opened.Error != platform::FileNotFound;
    if (opened.Id == 0 && handle.mode != u"r" && !handle.kept) {
        opened = Databases().Create(handle.name, PackCode(handle.fileType), PackCode(handle.creator));
        handle.recordNumber = 0;
        if (opened.Error == platform::FileExists && deleted != platform::NoError)
            opened.Error = deleted;
    }
    handle.error = opened.Error;
    StateOf(handle) = opened.Id;
    return opened.Id != 0;
}

void Close(FileHandle& handle) {
    Databases().Close(StateOf(handle));
}

bool Append(FileHandle& handle, const Text& text) {
    const DatabaseId id = StateOf(handle);
    handle.recordNumber = CountOf(handle) + 1;
    if (handle.recordNumber == 1) // the table is declared with the first line
        Must(u"write to", handle, Databases().DeclareTable(id, LineTable, LineColumns));
    const bool stored =
        May(u"add a line to", handle, Databases().AddRecord(id)) && Store(handle, {handle.recordNumber, text});
    if (!stored && handle.slot != 0) // for the scratch file, the caller of the rewrite reports it
        Device().saveWatcher.NotSaved(handle.name, platform::ErrorText(handle.error));
    return stored;
}

std::int32_t Seek(FileHandle& handle, std::int32_t line) {
    const DatabaseId id = StateOf(handle);
    const auto error = Databases().FindRecord(id, line);
    const bool found = error == platform::NoError;
    if (!found && error != platform::FileNotFound)
        FailOnFile(u"read", handle, error);
    handle.recordNumber = found ? Databases().Position(id) + 1 : 0;
    if (found && handle.recordNumber == 0)
        CountOf(handle);
    handle.nextLine = handle.recordNumber;
    return handle.recordNumber;
}

void Read(FileHandle& handle, std::int32_t line, Text& text) {
    LineRecord record;
    const bool read = ReadLineRecord(handle, line, record);
    handle.nextLine = read ? line + 1 : 0;
    if (read)
        text = std::move(record.LineData);
}

bool Change(FileHandle& handle, std::int32_t line, const Text& text) {
    LineRecord record;
    {
        const FileReading reading(handle);
        if (reading.Held() || !Reach(handle, line, record))
            return false;
        if (!May(u"edit", handle, Databases().BeginEdit(StateOf(handle))))
            return false;
    }
    record.LineData = text;
    return Store(handle, record);
}

bool Delete(FileHandle& handle, std::int32_t line) {
    {
        LineRecord record;
        const FileReading reading(handle);
        if (reading.Held() || !Reach(handle, line, record))
            return false;
    }
    return BeginBatch(handle) && EndBatch(handle, DeleteRecord(handle));
}

bool Insert(FileHandle& handle, std::int32_t line, InsertPosition position, const Text& text) {
    const std::int32_t target = position == InsertPosition::After ? line + 1 : line;
    {
        const FileReading reading(handle);
        if (reading.Held())
            return false;
        if (SeekFileLine(handle, line) == 0) {
            handle.error = platform::RowNotFound;
            return false;
        }
    }
    return BeginBatch(handle) && EndBatch(handle, InsertRecord(handle, target, text));
}

std::int32_t Count(FileHandle& handle) {
    return CountOf(handle);
}

void DropAll() {
    for (const std::int32_t state : Slots.SlotState) {
        if (state != SlotIsFree && state != SlotIsText)
            Databases().Close(state);
    }
}

platform::ErrorNumber BeginReading(FileHandle& handle) {
    return Databases().BeginReading(StateOf(handle));
}

void EndReading(const FileHandle& handle) {
    Databases().EndReading(StateOf(handle));
}

platform::FileStamp NoStamp(const FileHandle&) {
    return {};
}

/// Any number of programs may change a database.
bool NoneHasChanged(const FileHandle&) {
    return false;
}

/// Replaces all records of an open database. REQUIRES: a batch has begun.
platform::ErrorNumber ReplaceRecords(DatabaseId id, const std::vector<Text>& lines) {
    auto error = Databases().FindRecord(id, 1);
    while (error == platform::NoError && Databases().Position(id) >= 0)
        error = Databases().DeleteRecord(id);
    if (error == platform::FileNotFound) // there is no record
        error = platform::NoError;
    std::int32_t number = 0;
    for (const Text& line : lines) {
        if (error == platform::NoError)
            error = Databases().AddRecord(id);
        if (error == platform::NoError)
            error = Databases().WriteRecord(id, {++number, line});
        if (error == platform::NoError)
            error = Databases().Commit(id);
    }
    return error;
}

platform::ErrorNumber Put(const FileHandle& handle, const std::vector<Text>& lines) {
    platform::OpenedDatabase opened = Databases().Open(handle.name, platform::DatabaseMode::ReadWrite);
    const bool isNew = opened.Error == platform::FileNotFound;
    if (isNew)
        opened = Databases().Create(handle.name, PackCode(handle.fileType), PackCode(handle.creator));
    if (opened.Id == 0)
        return opened.Error;
    auto error = isNew ? Databases().DeclareTable(opened.Id, LineTable, LineColumns) : platform::NoError;
    if (error == platform::NoError)
        error = Databases().BeginBatch(opened.Id);
    if (error == platform::NoError)
        error = ReplaceRecords(opened.Id, lines);
    if (error == platform::NoError)
        error = Databases().EndBatch(opened.Id);
    Databases().Close(opened.Id); // without EndBatch it drops what was written
    if (isNew && error != platform::NoError)
        Databases().Delete(handle.name);
    return error;
}

platform::ErrorNumber Remove(const FileHandle& handle) {
    return Databases().Delete(handle.name);
}

void ListDatabases(const Text& fileType, const Text& creator) {
    const Text memory(platform::Traits().Memory);
    const std::int32_t typeCode = PackCode(fileType.empty() ? Text(u"TEXT") : fileType);
    const std::int32_t creatorCode = creator.empty() ? 0 : PackCode(creator);
    for (Text name = Databases().FirstDatabase(typeCode, creatorCode); !name.empty(); name = Databases().NextDatabase())
        Storage.FileList.push_back(memory + name);
    std::vector<platform::Unlisted> unlisted = Databases().UnreadDatabases();
    for (platform::Unlisted& each : unlisted)
        each.Name = memory + each.Name;
    if (!unlisted.empty())
        Device().onlooker.ListIncomplete(unlisted);
}

bool List(const Text& folder, const Text& fileType, const Text& creator) {
    const TextView memory = platform::Traits().Memory;
    if (memory.empty())
        return false;
    if (folder.empty())
        return true; // an empty folder names nothing on a device with a memory
    const bool isMemory = modStringTools::SameIgnoringCase(folder, memory);
    if (isMemory)
        ListDatabases(fileType, creator);
    return isMemory;
}

} // namespace

bool AsksForDatabase(const Text& name) {
    return name.size() >= DatabaseEnding.size() &&
           modStringTools::LowerCase(name.substr(name.size() - DatabaseEnding.size())) == DatabaseEnding;
}

const LineBackEnd DatabaseLines = {
    .IsDatabase = true,
    .Takes = Takes,
    .Name = Name,
    .Open = Open,
    .Close = Close,
    .DropAll = DropAll,
    .Append = Append,
    .Seek = Seek,
    .Read = Read,
    .Count = Count,
    .Change = Change,
    .Insert = Insert,
    .Delete = Delete,
    .BeginReading = BeginReading,
    .EndReading = EndReading,
    .Stamp = NoStamp,
    .AnotherHasChanged = NoneHasChanged,
    .Put = Put,
    .Remove = Remove,
    .List = List,
};

} // namespace modFileSystem
