// SPDX-License-Identifier: MIT
#include "backends/files/line_database.h"

#include "backends/files/host_file_system.h"

#include <algorithm>

namespace backends {

namespace {

const Text DatabaseFolder = u".\\Databases\\";
const Text FileEnding = u".sqlite";
const Text LineTableName = u"TEXT";
const Text LineTableDefinition = u"LineNumber long, LineData String";

Text FileOf(const Text& name) {
    return DatabaseFolder + name + FileEnding;
}

bool IsDatabaseName(const Text& name) {
    std::string ignored;
    return !name.empty() && name.front() != u'.' && name.find(u'\\') == Text::npos && name.find(u"..") == Text::npos &&
           RelativePath(FileOf(name), ignored) == NoError;
}

/// Returns the name of the database in a file, given the file's full name; empty for any other file.
Text NameFromFile(const Text& fullName) {
    const Text file = fullName.substr(DatabaseFolder.size());
    if (file.size() <= FileEnding.size())
        return {};
    const std::size_t end = file.size() - FileEnding.size();
    const Text name = file.substr(0, end);
    return file.compare(end, Text::npos, FileEnding) == 0 && IsDatabaseName(name) ? name : Text();
}

bool BeforeInBytes(const Text& a, const Text& b) {
    return modStringTools::ToBytes(a) < modStringTools::ToBytes(b);
}

bool CodeFits(std::int32_t wanted, std::int32_t code) {
    return wanted == 0 || wanted == code;
}

} // namespace

ErrorNumber LineDatabase::FindFile(const Text& name, FileEntry& file, Place& place) const {
    ErrorNumber error = IsDatabaseName(name) ? Paths_.Entry(FileOf(name), LastLink::Follow, file) : PathRefused;
    if (error == NoError)
        error = IdOf(file.Folder, place.Folder);
    place.Name = file.Name;
    return error;
}

DatabaseId LineDatabase::Keep(const Text& name, Place file, std::unique_ptr<LineTable> table) {
    if (!table)
        return 0;
    DatabaseId id = 1;
    while (OpenOnes_.count(id) != 0)
        ++id;
    OpenOnes_[id] = {name, std::move(file), std::move(table)};
    return id;
}

LineTable* LineDatabase::Find(DatabaseId database) {
    const auto found = OpenOnes_.find(database);
    return found == OpenOnes_.end() ? nullptr : found->second.Table.get();
}

/// Checks that the database may be written: its name must still lead to the folder in which it was opened. What is
/// written to a folder that was moved, or to a card that was exchanged, would not be found again.
ErrorNumber LineDatabase::CheckName(DatabaseId database) const {
    const auto found = OpenOnes_.find(database);
    if (found == OpenOnes_.end())
        return NotAvailable;
    FileEntry file;
    Place place;
    const ErrorNumber error = FoundAnew([&] { return FindFile(found->second.Name, file, place); });
    if (error != NoError)
        return IsMissing(error) ? PathNotFound : error;
    return place == found->second.File ? NoError : PathNotFound;
}

OpenedDatabase LineDatabase::Open(const Text& name, DatabaseMode mode) {
    OpenedDatabase opened;
    opened.Error = FoundAnew([&] {
        FileEntry file;
        Place place;
        ErrorNumber error = FindFile(name, file, place);
        if (error != NoError)
            return IsMissing(error) ? FileNotFound : error;
        opened.Id =
            Keep(name, std::move(place), LineTable::Open(std::move(file), mode != DatabaseMode::Read, Patience, error));
        return error;
    });
    return opened;
}

OpenedDatabase LineDatabase::Create(const Text& name, std::int32_t typeCode, std::int32_t creatorCode) {
    OpenedDatabase made;
    made.Error = FoundAnew([&] {
        FileEntry file;
        Place place;
        ErrorNumber error = IsDatabaseName(name) ? Paths_.MakeFolder(DatabaseFolder) : PathRefused;
        if (error == NoError)
            error = FindFile(name, file, place);
        if (error != NoError)
            return error;
        const DatabaseCodes codes{.TypeCode = typeCode, .CreatorCode = creatorCode};
        made.Id = Keep(name, std::move(place), LineTable::Make(std::move(file), codes, Patience, error));
        return error;
    });
    return made;
}

ErrorNumber LineDatabase::Delete(const Text& name) {
    return FoundAnew([&] {
        FileEntry file;
        FileEntry entry;
        Place place;
        if (const ErrorNumber error = FindFile(name, file, place); error != NoError)
            return error;
        if (const ErrorNumber error = Paths_.Entry(FileOf(name), LastLink::Keep, entry); error != NoError)
            return error;
        if (std::any_of(OpenOnes_.begin(), OpenOnes_.end(), [&](const auto& one) { return one.second.File == place; }))
            return InUse;
        if (const ErrorNumber error = RemoveFrom(entry.Folder, entry.Name); error != NoError)
            return error;
        // A journal left by a crash must not be used for the next database of this name.
        static_cast<void>(RemoveFrom(entry.Folder, entry.Name + "-journal"));
        return SyncFolder(entry.Folder);
    });
}

void LineDatabase::Close(DatabaseId database) {
    OpenOnes_.erase(database);
}

std::int32_t LineDatabase::RecordCount(DatabaseId database) {
    LineTable* table = Find(database);
    return table ? static_cast<std::int32_t>(table->RecordCount()) : 0;
}

ErrorNumber LineDatabase::DeclareTable(DatabaseId database, const Text& name, const Text& definition) {
    LineTable* table = Find(database);
    if (!table || name != LineTableName || definition != LineTableDefinition)
        return NotAvailable;
    return table->Declare();
}

ErrorNumber LineDatabase::AddRecord(DatabaseId database) {
    const ErrorNumber error = CheckName(database);
    return error == NoError ? Find(database)->AddRecord() : error;
}

ErrorNumber LineDatabase::BeginEdit(DatabaseId database) {
    const ErrorNumber error = CheckName(database);
    return error == NoError ? Find(database)->BeginEdit() : error;
}

ErrorNumber LineDatabase::WriteRecord(DatabaseId database, const LineRecord& record) {
    LineTable* table = Find(database);
    return table ? table->WriteRecord(record) : NotAvailable;
}

ErrorNumber LineDatabase::Commit(DatabaseId database) {
    LineTable* table = Find(database);
    return table ? table->Commit() : NotAvailable;
}

bool LineDatabase::ReadRecord(DatabaseId database, LineRecord& record) {
    LineTable* table = Find(database);
    return table && table->ReadRecord(record);
}

ErrorNumber LineDatabase::DeleteRecord(DatabaseId database) {
    LineTable* table = Find(database);
    return table ? table->DeleteRecord() : NotAvailable;
}

ErrorNumber LineDatabase::ShiftRecords(DatabaseId database, std::int32_t position) {
    LineTable* table = Find(database);
    return table ? table->ShiftRecords(position) : NotAvailable;
}

ErrorNumber LineDatabase::RenumberRecords(DatabaseId database) {
    LineTable* table = Find(database);
    return table ? table->RenumberRecords() : NotAvailable;
}

ErrorNumber LineDatabase::FindRecord(DatabaseId database, std::int32_t lineNumber) {
    LineTable* table = Find(database);
    return table ? table->FindRecord(lineNumber) : NotAvailable;
}

std::int32_t LineDatabase::Position(DatabaseId database) {
    LineTable* table = Find(database);
    return table ? static_cast<std::int32_t>(table->Position()) : -1;
}

ErrorNumber LineDatabase::BeginBatch(DatabaseId database) {
    const ErrorNumber error = CheckName(database);
    return error == NoError ? Find(database)->BeginBatch() : error;
}

ErrorNumber LineDatabase::EndBatch(DatabaseId database) {
    LineTable* table = Find(database);
    return table ? table->EndBatch() : NotAvailable;
}

ErrorNumber LineDatabase::BeginReading(DatabaseId database) {
    LineTable* table = Find(database);
    return table ? table->BeginReading() : NotAvailable;
}

void LineDatabase::EndReading(DatabaseId database) {
    if (LineTable* table = Find(database))
        table->EndReading();
}

void LineDatabase::NoteUnread(const Text& name, ErrorNumber error) {
    if (error != NoError && !IsMissing(error))
        Unread_.push_back({name, error});
}

bool LineDatabase::HasCodes(const Text& name, std::int32_t typeCode, std::int32_t creatorCode) {
    FileEntry file;
    Place ignored;
    std::unique_ptr<LineTable> table;
    ErrorNumber error = FindFile(name, file, ignored);
    if (error == NoError)
        table = LineTable::Open(std::move(file), false, Patience, error);
    NoteUnread(name, error);
    return table && CodeFits(typeCode, table->Codes().TypeCode) && CodeFits(creatorCode, table->Codes().CreatorCode);
}

Text LineDatabase::FirstDatabase(std::int32_t typeCode, std::int32_t creatorCode) {
    Names_.clear();
    Unread_.clear();
    NextName_ = 0;
    HostFileSystem files(Paths_);
    std::unique_ptr<Folder> folder;
    if (const ErrorNumber error = files.OpenFolder(DatabaseFolder, false, folder); error != NoError) {
        NoteUnread({}, error);
        return {};
    }
    for (Text full = folder->FirstFile(0); !full.empty(); full = folder->NextFile()) {
        const Text name = NameFromFile(full);
        if (!name.empty() && HasCodes(name, typeCode, creatorCode))
            Names_.push_back(name);
    }
    NoteUnread({}, folder->WalkError());
    std::sort(Names_.begin(), Names_.end(), BeforeInBytes); // in the order of the files their ending is compared too
    return NextDatabase();
}

Text LineDatabase::NextDatabase() {
    return NextName_ < Names_.size() ? Names_[NextName_++] : Text();
}

} // namespace backends
