// SPDX-License-Identifier: MIT
// Files and line databases that last as long as a case, with every operation in its plainest form.
#pragma once

#include "src/view/platform/storage.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace reference {

/// The program can't go on.
struct Stopped {};

struct MemoryFile {
    std::string Bytes;
    std::int64_t Changes = 0; ///< how often it was written to
};

struct MemoryLines {
    std::int32_t TypeCode = 0;
    std::int32_t CreatorCode = 0;
    std::vector<platform::LineRecord> Records;
};

struct MemoryDisk {
    std::map<Text, std::shared_ptr<MemoryFile>> Files; ///< a file that is replaced goes on for who has it open
    std::map<Text, std::shared_ptr<MemoryLines>> Databases;

    void Put(const Text& fullName, const std::string& bytes);
    /// All that is on it, for a comparison and for a person.
    std::string Shown() const;
};

class MemoryFiles final : public platform::FileSystem {
public:
    explicit MemoryFiles(MemoryDisk& disk) : Disk_(disk) {}

    platform::ErrorNumber OpenFolder(const Text& path, bool create, std::unique_ptr<platform::Folder>& folder) override;
    platform::ErrorNumber OpenStream(const Text& fullName, platform::StreamMode mode,
                                     std::unique_ptr<platform::TextStream>& stream) override;
    platform::ErrorNumber MoveFile(const Text& source, const Text& destination) override;
    platform::ErrorNumber DeleteFile(const Text& fullName) override;

    // For the literal forms alone.
    platform::ErrorNumber CopyFile(const Text& source, const Text& destination);

private:
    MemoryDisk& Disk_;
};

class MemoryDatabases final : public platform::RecordDatabase {
public:
    explicit MemoryDatabases(MemoryDisk& disk) : Disk_(disk) {}
    void CloseAll() { OpenOnes_.clear(); }

    platform::OpenedDatabase Open(const Text& name, platform::DatabaseMode mode) override;
    platform::OpenedDatabase Create(const Text& name, std::int32_t typeCode, std::int32_t creatorCode) override;
    platform::ErrorNumber Delete(const Text& name) override;
    void Close(platform::DatabaseId database) override { OpenOnes_.erase(database); }

    std::int32_t RecordCount(platform::DatabaseId database) override;
    platform::ErrorNumber DeclareTable(platform::DatabaseId, const Text&, const Text&) override { return {}; }
    platform::ErrorNumber AddRecord(platform::DatabaseId database) override;
    platform::ErrorNumber BeginEdit(platform::DatabaseId database) override;
    platform::ErrorNumber WriteRecord(platform::DatabaseId database, const platform::LineRecord& record) override;
    platform::ErrorNumber Commit(platform::DatabaseId database) override;
    bool ReadRecord(platform::DatabaseId database, platform::LineRecord& record) override;
    platform::ErrorNumber DeleteRecord(platform::DatabaseId database) override;
    platform::ErrorNumber ShiftRecords(platform::DatabaseId database, std::int32_t position) override;
    platform::ErrorNumber RenumberRecords(platform::DatabaseId database) override;
    platform::ErrorNumber FindRecord(platform::DatabaseId database, std::int32_t lineNumber) override;
    std::int32_t Position(platform::DatabaseId database) override { return OpenOnes_[database].Current; }
    platform::ErrorNumber BeginReading(platform::DatabaseId) override { return platform::NoError; }
    void EndReading(platform::DatabaseId) override {}
    platform::ErrorNumber BeginBatch(platform::DatabaseId) override { return platform::NoError; }
    platform::ErrorNumber EndBatch(platform::DatabaseId) override { return platform::NoError; }
    Text FirstDatabase(std::int32_t, std::int32_t) override { return {}; }
    Text NextDatabase() override { return {}; }
    const std::vector<platform::Unlisted>& UnreadDatabases() const override { return NoneUnread_; }

    // For the literal forms alone.
    void MoveFirst(platform::DatabaseId database) { OpenOnes_[database].Current = 0; }
    void MoveLast(platform::DatabaseId database);
    void MoveNext(platform::DatabaseId database) { ++OpenOnes_[database].Current; }
    void MovePrevious(platform::DatabaseId database) { --OpenOnes_[database].Current; }
    bool AtEnd(platform::DatabaseId database);

private:
    struct OpenDatabase {
        std::shared_ptr<MemoryLines> Lines;
        std::int32_t Current = 0;
        bool Added = false;
        platform::LineRecord Draft;
    };

    std::vector<platform::LineRecord>& Records(platform::DatabaseId database) {
        return OpenOnes_[database].Lines->Records;
    }
    bool Holds(platform::DatabaseId database);

    MemoryDisk& Disk_;
    std::map<platform::DatabaseId, OpenDatabase> OpenOnes_;
    std::vector<platform::Unlisted> NoneUnread_;
};

} // namespace reference
