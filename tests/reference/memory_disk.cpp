// SPDX-License-Identifier: MIT
#include "tests/reference/memory_disk.h"

#include <algorithm>

namespace reference {

using namespace platform;

namespace {

/// Lines that are taken at one go, so that a file of more than these is taken in several.
constexpr std::int64_t BlockOfLines = 3;

class MemoryStream final : public TextStream {
public:
    explicit MemoryStream(std::shared_ptr<MemoryFile> file) : File_(std::move(file)) {}

    std::int64_t Position() const override { return static_cast<std::int64_t>(Place_); }
    std::int64_t Size() const override { return static_cast<std::int64_t>(File_->Bytes.size()); }

    ErrorNumber Seek(std::int64_t offset, Origin origin) override {
        const std::int64_t place = (origin == Origin::End ? Size() : 0) + offset;
        Seen_ = File_->Changes;
        if (place < 0 || place > Size())
            return DeviceFailed;
        Place_ = static_cast<std::size_t>(place);
        return NoError;
    }

    ErrorNumber ReadLine(Text& line) override {
        constexpr std::string_view Mark = "\xEF\xBB\xBF";
        const bool atHead = Place_ == 0;
        std::string bytes;
        const bool isThere = Take(bytes);
        if (atHead && bytes.compare(0, Mark.size(), Mark) == 0)
            bytes.erase(0, Mark.size());
        std::replace(bytes.begin(), bytes.end(), '\0', ' ');
        line = modStringTools::FromBytes(bytes);
        return isThere ? NoError : FileNotFound;
    }

    ErrorNumber SkipLines(std::int64_t most, std::int64_t& passed) override {
        std::string line;
        for (passed = 0; passed < most && Take(line); ++passed)
            continue;
        return NoError;
    }

    ErrorNumber ReadLines(std::int64_t most, std::string_view& lines, std::int64_t& taken) override {
        Taken_.clear();
        std::string line;
        for (taken = 0; taken < std::min(most, BlockOfLines) && Take(line); ++taken)
            Taken_ += line + EndOf(line);
        std::replace(Taken_.begin(), Taken_.end(), '\0', ' ');
        lines = Taken_;
        return NoError;
    }

    std::int64_t Revision() const override { return Seen_; }
    FileStamp Stamp() const override { return {0, Size(), File_->Changes, File_->Changes}; }

    ErrorNumber WriteLine(const Text& line) override {
        std::string bytes = modStringTools::ToBytes(line);
        for (const char none : {'\n', '\0'})
            std::replace(bytes.begin(), bytes.end(), none, ' ');
        return WriteLines(bytes + EndOf(bytes));
    }

    ErrorNumber WriteLines(std::string_view lines) override {
        std::string& all = File_->Bytes;
        std::string bytes(lines);
        all.resize(std::max(all.size(), Place_)); // another stream has made the file shorter: a hole is written behind
        if (Place_ == all.size() && !all.empty() && all.back() != '\n')
            bytes.insert(0, EndOf(all));
        all.replace(Place_, std::min(bytes.size(), all.size() - Place_), bytes);
        Place_ += bytes.size();
        ++File_->Changes;
        return NoError;
    }

    ErrorNumber CheckName() override { return NoError; }
    ErrorNumber Close() override { return NoError; }

private:
    static const char* EndOf(const std::string& line) { return !line.empty() && line.back() == '\r' ? "\r\n" : "\n"; }

    bool Take(std::string& line) {
        const std::string& all = File_->Bytes;
        line.clear();
        if (Place_ >= all.size())
            return false;
        const std::size_t end = all.find('\n', Place_);
        line = all.substr(Place_, end == std::string::npos ? end : end - Place_);
        Place_ += line.size() + (end == std::string::npos ? 0 : 1);
        if (end != std::string::npos && !line.empty() && line.back() == '\r')
            line.pop_back();
        return true;
    }

    std::shared_ptr<MemoryFile> File_;
    std::size_t Place_ = 0;
    std::int64_t Seen_ = 0;
    std::string Taken_;
};

class AnyFolder final : public Folder {
    Text FirstFile(std::int32_t) override { return {}; }
    Text NextFile() override { return {}; }
    ErrorNumber WalkError() const override { return NoError; }
};

} // namespace

void MemoryDisk::Put(const Text& fullName, const std::string& bytes) {
    Files[fullName] = std::make_shared<MemoryFile>(MemoryFile{bytes, 0});
}

std::string MemoryDisk::Shown() const {
    std::string all;
    for (const auto& [name, file] : Files)
        all += modStringTools::ToBytes(name) + ":\n" + file->Bytes + "\n";
    for (const auto& [name, lines] : Databases) {
        all += modStringTools::ToBytes(name) + " of " + std::to_string(lines->TypeCode) + "," +
               std::to_string(lines->CreatorCode) + ":\n";
        for (const LineRecord& record : lines->Records)
            all += std::to_string(record.LineNumber) + " " + modStringTools::ToBytes(record.LineData) + "\n";
    }
    return all;
}

ErrorNumber MemoryFiles::OpenFolder(const Text&, bool, std::unique_ptr<Folder>& folder) {
    folder = std::make_unique<AnyFolder>();
    return NoError;
}

ErrorNumber MemoryFiles::OpenStream(const Text& fullName, StreamMode mode, std::unique_ptr<TextStream>& stream) {
    const auto found = Disk_.Files.find(fullName);
    if (found == Disk_.Files.end() && mode == StreamMode::Existing)
        return FileNotFound;
    if (found == Disk_.Files.end()) {
        Disk_.Put(fullName, "");
    } else if (mode != StreamMode::Existing) {
        found->second->Bytes.clear();
        ++found->second->Changes;
    }
    stream = std::make_unique<MemoryStream>(Disk_.Files[fullName]);
    return stream->Seek(0, Origin::Start);
}

ErrorNumber MemoryFiles::CopyFile(const Text& source, const Text& destination) {
    const auto found = Disk_.Files.find(source);
    if (found == Disk_.Files.end())
        return FileNotFound;
    Disk_.Put(destination, found->second->Bytes);
    return NoError;
}

ErrorNumber MemoryFiles::MoveFile(const Text& source, const Text& destination) {
    const ErrorNumber error = CopyFile(source, destination);
    return error == NoError ? DeleteFile(source) : error;
}

ErrorNumber MemoryFiles::DeleteFile(const Text& fullName) {
    return Disk_.Files.erase(fullName) > 0 ? NoError : FileNotFound;
}

OpenedDatabase MemoryDatabases::Open(const Text& name, platform::DatabaseMode) {
    const auto found = Disk_.Databases.find(name);
    if (found == Disk_.Databases.end())
        return {0, FileNotFound};
    DatabaseId id = 1;
    while (OpenOnes_.count(id) != 0)
        ++id;
    OpenOnes_[id].Lines = found->second;
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
    if (found->second.use_count() > 1) // somebody has it open
        return InUse;
    Disk_.Databases.erase(found);
    return NoError;
}

bool MemoryDatabases::Holds(DatabaseId database) {
    const std::int32_t current = OpenOnes_[database].Current;
    return current >= 0 && current < RecordCount(database);
}

std::int32_t MemoryDatabases::RecordCount(DatabaseId database) {
    return static_cast<std::int32_t>(Records(database).size());
}

ErrorNumber MemoryDatabases::AddRecord(DatabaseId database) {
    OpenOnes_[database].Added = true;
    OpenOnes_[database].Draft = {};
    return NoError;
}

ErrorNumber MemoryDatabases::BeginEdit(DatabaseId database) {
    return ReadRecord(database, OpenOnes_[database].Draft) ? NoError : FileNotFound;
}

ErrorNumber MemoryDatabases::WriteRecord(DatabaseId database, const LineRecord& record) {
    OpenOnes_[database].Draft = record;
    for (const char16_t none : {u'\n', u'\0'})
        std::replace(OpenOnes_[database].Draft.LineData.begin(), OpenOnes_[database].Draft.LineData.end(), none, u' ');
    return NoError;
}

ErrorNumber MemoryDatabases::Commit(DatabaseId database) {
    OpenDatabase& one = OpenOnes_[database];
    if (one.Added) {
        one.Current = RecordCount(database);
        one.Lines->Records.emplace_back();
    }
    one.Added = false;
    one.Lines->Records.at(static_cast<std::size_t>(one.Current)) = one.Draft;
    return NoError;
}

bool MemoryDatabases::ReadRecord(DatabaseId database, LineRecord& record) {
    const bool found = Holds(database);
    if (found)
        record = Records(database)[static_cast<std::size_t>(OpenOnes_[database].Current)];
    return found;
}

ErrorNumber MemoryDatabases::DeleteRecord(DatabaseId database) {
    const bool found = Holds(database);
    if (found)
        Records(database).erase(Records(database).begin() + OpenOnes_[database].Current);
    return found ? NoError : FileNotFound;
}

ErrorNumber MemoryDatabases::ShiftRecords(DatabaseId database, std::int32_t position) {
    auto& records = Records(database);
    OpenOnes_[database].Current = position;
    if (!Holds(database))
        return FileNotFound;
    for (auto i = static_cast<std::size_t>(position) + 1; i < records.size(); ++i)
        ++records[i - 1].LineNumber;
    records.insert(records.begin() + position + 1, records[static_cast<std::size_t>(position)]);
    records.pop_back();
    --records[static_cast<std::size_t>(position)].LineNumber;
    return NoError;
}

ErrorNumber MemoryDatabases::RenumberRecords(DatabaseId database) {
    std::int32_t number = 0;
    for (LineRecord& record : Records(database))
        record.LineNumber = ++number;
    OpenOnes_[database].Current = number;
    return NoError;
}

ErrorNumber MemoryDatabases::FindRecord(DatabaseId database, std::int32_t lineNumber) {
    const auto& records = Records(database);
    const auto found = std::find_if(records.begin(), records.end(),
                                    [lineNumber](const LineRecord& record) { return record.LineNumber == lineNumber; });
    if (found == records.end())
        return FileNotFound;
    OpenOnes_[database].Current = static_cast<std::int32_t>(found - records.begin());
    return NoError;
}

void MemoryDatabases::MoveLast(DatabaseId database) {
    OpenOnes_[database].Current = std::max(RecordCount(database) - 1, 0);
}

bool MemoryDatabases::AtEnd(DatabaseId database) {
    return OpenOnes_[database].Current >= RecordCount(database);
}

} // namespace reference
