// SPDX-License-Identifier: MIT
// Files, line databases and settings in memory, with the simplest form of every operation. The storage suites of
// tests/conformance run on them.
#pragma once

#include "src/view/platform/device.h"
#include "src/view/platform/storage.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace reference {

/// Thrown where the program would stop.
struct Stopped {};

struct MemoryFile {
    std::string Bytes;                ///< as the streams of this program see it
    std::optional<std::string> Saved; ///< as other programs see it; none before a stream has been closed
    std::int64_t Changes = 0;         ///< how often it was written to
};

struct MemoryLines {
    std::int32_t TypeCode = 0;
    std::int32_t CreatorCode = 0;
    std::vector<platform::LineRecord> Records;
    bool Declared = false; ///< it has its table
};

struct MemoryDisk {
    std::map<Text, std::shared_ptr<MemoryFile>> Files; ///< an open stream keeps a file that is replaced
    std::set<Text> Folders;                            ///< with their trailing `\`; `.\` is always there
    std::map<Text, std::shared_ptr<MemoryLines>> Databases;

    /// Writes a file as another program does, with the folders above it.
    void Put(const Text& fullName, const std::string& bytes);
    /// Makes a folder with those above it, its volume included.
    void MakeFolders(const Text& path);
    bool IsFolder(const Text& path) const;
    bool Has(const Text& fullName) const; ///< a file that was saved
    /// Returns what other programs see of a file; "no such file" for one that was never saved.
    std::string SavedBytes(const Text& fullName) const;
    /// Returns the whole contents in a readable form, to be compared.
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
    void Close(platform::DatabaseId database) override;

    std::int32_t RecordCount(platform::DatabaseId database) override;
    platform::ErrorNumber DeclareTable(platform::DatabaseId database, const Text& name,
                                       const Text& definition) override;
    platform::ErrorNumber AddRecord(platform::DatabaseId database) override;
    platform::ErrorNumber BeginEdit(platform::DatabaseId database) override;
    platform::ErrorNumber WriteRecord(platform::DatabaseId database, const platform::LineRecord& record) override;
    platform::ErrorNumber Commit(platform::DatabaseId database) override;
    bool ReadRecord(platform::DatabaseId database, platform::LineRecord& record) override;
    platform::ErrorNumber DeleteRecord(platform::DatabaseId database) override;
    platform::ErrorNumber ShiftRecords(platform::DatabaseId database, std::int32_t position) override;
    platform::ErrorNumber RenumberRecords(platform::DatabaseId database) override;
    platform::ErrorNumber FindRecord(platform::DatabaseId database, std::int32_t lineNumber) override;
    std::int32_t Position(platform::DatabaseId database) override;
    platform::ErrorNumber BeginReading(platform::DatabaseId) override { return platform::NoError; }
    void EndReading(platform::DatabaseId) override {}
    platform::ErrorNumber BeginBatch(platform::DatabaseId database) override;
    platform::ErrorNumber EndBatch(platform::DatabaseId database) override;
    Text FirstDatabase(std::int32_t typeCode, std::int32_t creatorCode) override;
    Text NextDatabase() override;
    const std::vector<platform::Unlisted>& UnreadDatabases() const override { return NoneUnread_; }

    // For the literal forms alone.
    void MoveFirst(platform::DatabaseId database) { MoveTo(database, 0); }
    void MoveLast(platform::DatabaseId database);
    void MoveNext(platform::DatabaseId database) { MoveTo(database, OpenOnes_[database].Current + 1); }
    void MovePrevious(platform::DatabaseId database) { MoveTo(database, OpenOnes_[database].Current - 1); }
    bool AtEnd(platform::DatabaseId database);

private:
    enum class Pending { None, Added, Edited };
    struct OpenDatabase {
        std::shared_ptr<MemoryLines> Lines;
        bool Writable = false;
        std::int32_t Current = 0;
        Pending State = Pending::None;
        platform::LineRecord Draft;
        std::optional<std::vector<platform::LineRecord>> BeforeBatch; ///< while one runs
    };

    OpenDatabase* Find(platform::DatabaseId database);
    /// Returns the error why it can't be changed; NoError if it can.
    platform::ErrorNumber MayWrite(platform::DatabaseId database);
    void MoveTo(platform::DatabaseId database, std::int32_t position);
    platform::LineRecord* CurrentRecord(OpenDatabase& one);

    MemoryDisk& Disk_;
    std::map<platform::DatabaseId, OpenDatabase> OpenOnes_;
    std::vector<Text> Walk_;
    std::size_t Next_ = 0;
    std::vector<platform::Unlisted> NoneUnread_;
};

class MemorySettings final : public platform::Settings {
public:
    Text Get(const Text& application, const Text& section, const Text& key, const Text& byDefault) const override;
    platform::ErrorNumber Save(const Text& application, const Text& section, const Text& key,
                               const Text& value) override;

private:
    std::map<Text, Text> Values_;
};

} // namespace reference
