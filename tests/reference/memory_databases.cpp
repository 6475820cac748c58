// SPDX-License-Identifier: MIT
#include "tests/reference/memory_disk.h"

#include <algorithm>

namespace reference {

using namespace platform;

OpenedDatabase MemoryDatabases::Open(const Text& name, DatabaseMode mode) {
    const auto found = Disk_.Databases.find(name);
    if (found == Disk_.Databases.end())
        return {0, FileNotFound};
    DatabaseId id = 1;
    while (OpenOnes_.count(id) != 0)
        ++id;
    OpenOnes_[id].Lines = found->second;
    OpenOnes_[id].Writable = mode == DatabaseMode::ReadWrite;
    return {id, NoError};
}

OpenedDatabase MemoryDatabases::Create(const Text& name, std::int32_t typeCode, std::int32_t creatorCode) {
    if (Disk_.Databases.count(name) != 0)
        return {0, FileExists};
    Disk_.Databases[name] = std::make_shared<MemoryLines>(MemoryLines{typeCode, creatorCode, {}});
    return Open(name, DatabaseMode::ReadWrite);
}

ErrorNumber MemoryDatabases::Delete(const Text& name) {
    const auto found = Disk_.Databases.find(name);
    if (found == Disk_.Databases.end())
        return FileNotFound;
    if (found->second.use_count() > 1) // it is open
        return InUse;
    Disk_.Databases.erase(found);
    return NoError;
}

void MemoryDatabases::Close(DatabaseId database) {
    OpenDatabase* const one = Find(database);
    if (one != nullptr && one->BeforeBatch)
        one->Lines->Records = *one->BeforeBatch;
    OpenOnes_.erase(database);
}

MemoryDatabases::OpenDatabase* MemoryDatabases::Find(DatabaseId database) {
    const auto found = OpenOnes_.find(database);
    return found != OpenOnes_.end() ? &found->second : nullptr;
}

ErrorNumber MemoryDatabases::MayWrite(DatabaseId database) {
    const OpenDatabase* const one = Find(database);
    if (one == nullptr)
        return FileNotFound;
    return one->Writable ? NoError : PermissionDenied;
}

void MemoryDatabases::MoveTo(DatabaseId database, std::int32_t position) {
    OpenOnes_[database].Current = position;
    OpenOnes_[database].State = Pending::None;
}

/// Null past the end.
LineRecord* MemoryDatabases::CurrentRecord(OpenDatabase& one) {
    auto& records = one.Lines->Records;
    const bool isThere = one.Current >= 0 && one.Current < static_cast<std::int32_t>(records.size());
    return isThere ? &records[static_cast<std::size_t>(one.Current)] : nullptr;
}

std::int32_t MemoryDatabases::RecordCount(DatabaseId database) {
    const OpenDatabase* const one = Find(database);
    return one != nullptr ? static_cast<std::int32_t>(one->Lines->Records.size()) : 0;
}

ErrorNumber MemoryDatabases::DeclareTable(DatabaseId database, const Text& name, const Text& definition) {
    if (const ErrorNumber error = MayWrite(database); error != NoError)
        return error;
    if (name != u"TEXT" || definition != u"LineNumber long, LineData String")
        return NotAvailable;
    OpenOnes_[database].Lines->Declared = true;
    return NoError;
}

ErrorNumber MemoryDatabases::AddRecord(DatabaseId database) {
    if (const ErrorNumber error = MayWrite(database); error != NoError)
        return error;
    OpenDatabase& one = OpenOnes_[database];
    if (!one.Lines->Declared)
        return FileNotFound;
    one.Current = RecordCount(database);
    one.State = Pending::Added;
    one.Draft = {};
    return NoError;
}

ErrorNumber MemoryDatabases::BeginEdit(DatabaseId database) {
    if (const ErrorNumber error = MayWrite(database); error != NoError)
        return error;
    OpenDatabase& one = OpenOnes_[database];
    if (one.State != Pending::None)
        return NoError;
    if (!ReadRecord(database, one.Draft))
        return FileNotFound;
    one.State = Pending::Edited;
    return NoError;
}

ErrorNumber MemoryDatabases::WriteRecord(DatabaseId database, const LineRecord& record) {
    OpenDatabase* const one = Find(database);
    if (one == nullptr || one->State == Pending::None)
        return DeviceFailed;
    one->Draft = record;
    for (const char16_t none : {u'\n', u'\0'})
        std::replace(one->Draft.LineData.begin(), one->Draft.LineData.end(), none, u' ');
    return NoError;
}

ErrorNumber MemoryDatabases::Commit(DatabaseId database) {
    OpenDatabase* const one = Find(database);
    if (one == nullptr || one->State == Pending::None)
        return DeviceFailed;
    if (one->State == Pending::Added) {
        one->Current = RecordCount(database);
        one->Lines->Records.emplace_back();
    }
    one->State = Pending::None;
    LineRecord* const record = CurrentRecord(*one);
    if (record == nullptr)
        return FileNotFound;
    *record = one->Draft;
    return NoError;
}

bool MemoryDatabases::ReadRecord(DatabaseId database, LineRecord& record) {
    OpenDatabase* const one = Find(database);
    if (one == nullptr)
        return false;
    const LineRecord* const found = one->State != Pending::None ? &one->Draft : CurrentRecord(*one);
    if (found != nullptr)
        record = *found;
    return found != nullptr;
}

ErrorNumber MemoryDatabases::DeleteRecord(DatabaseId database) {
    if (const ErrorNumber error = MayWrite(database); error != NoError)
        return error;
    OpenDatabase& one = OpenOnes_[database];
    const bool wasOnlyAdded = one.State == Pending::Added;
    one.State = Pending::None;
    if (wasOnlyAdded)
        return NoError;
    if (CurrentRecord(one) == nullptr)
        return FileNotFound;
    one.Lines->Records.erase(one.Lines->Records.begin() + one.Current);
    return NoError;
}

ErrorNumber MemoryDatabases::ShiftRecords(DatabaseId database, std::int32_t position) {
    if (const ErrorNumber error = MayWrite(database); error != NoError)
        return error;
    MoveTo(database, position);
    if (CurrentRecord(OpenOnes_[database]) == nullptr)
        return FileNotFound;
    auto& records = OpenOnes_[database].Lines->Records;
    for (std::size_t i = records.size() - 1; i > static_cast<std::size_t>(position); --i) {
        records[i] = records[i - 1];
        ++records[i].LineNumber;
    }
    return NoError;
}

ErrorNumber MemoryDatabases::RenumberRecords(DatabaseId database) {
    if (const ErrorNumber error = MayWrite(database); error != NoError)
        return error;
    std::int32_t number = 0;
    for (LineRecord& record : OpenOnes_[database].Lines->Records)
        record.LineNumber = ++number;
    MoveTo(database, number);
    return NoError;
}

ErrorNumber MemoryDatabases::FindRecord(DatabaseId database, std::int32_t lineNumber) {
    OpenDatabase* const one = Find(database);
    if (one == nullptr)
        return FileNotFound;
    one->State = Pending::None;
    const auto& records = one->Lines->Records;
    const auto found = std::find_if(records.begin(), records.end(),
                                    [lineNumber](const LineRecord& record) { return record.LineNumber == lineNumber; });
    if (found == records.end())
        return FileNotFound;
    one->Current = static_cast<std::int32_t>(found - records.begin());
    return NoError;
}

std::int32_t MemoryDatabases::Position(DatabaseId database) {
    OpenDatabase* const one = Find(database);
    if (one == nullptr)
        return -1;
    return one->State == Pending::Added || CurrentRecord(*one) != nullptr ? one->Current : -1;
}

ErrorNumber MemoryDatabases::BeginBatch(DatabaseId database) {
    if (const ErrorNumber error = MayWrite(database); error != NoError)
        return error;
    OpenDatabase& one = OpenOnes_[database];
    if (one.BeforeBatch)
        return DeviceFailed;
    one.BeforeBatch = one.Lines->Records;
    return NoError;
}

ErrorNumber MemoryDatabases::EndBatch(DatabaseId database) {
    OpenDatabase* const one = Find(database);
    if (one == nullptr || !one->BeforeBatch)
        return DeviceFailed;
    one->BeforeBatch.reset();
    return NoError;
}

Text MemoryDatabases::FirstDatabase(std::int32_t typeCode, std::int32_t creatorCode) {
    Walk_.clear();
    for (const auto& [name, lines] : Disk_.Databases) {
        const bool fits =
            (typeCode == 0 || typeCode == lines->TypeCode) && (creatorCode == 0 || creatorCode == lines->CreatorCode);
        if (fits)
            Walk_.push_back(name);
    }
    Next_ = 0;
    return NextDatabase();
}

Text MemoryDatabases::NextDatabase() {
    return Next_ < Walk_.size() ? Walk_[Next_++] : Text();
}

void MemoryDatabases::MoveLast(DatabaseId database) {
    MoveTo(database, std::max(RecordCount(database) - 1, 0));
}

bool MemoryDatabases::AtEnd(DatabaseId database) {
    return OpenOnes_[database].Current >= RecordCount(database);
}

} // namespace reference
