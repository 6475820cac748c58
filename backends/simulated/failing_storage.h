// SPDX-License-Identifier: MIT
// Storage whose disk is full or unreadable on request: each class forwards to a real one and fails the operations that
// are due to fail. The real classes do not depend on it.
#pragma once

#include "src/view/platform/device.h"
#include "src/view/platform/storage.h"

#include <functional>
#include <map>

namespace backends {

using namespace platform;

/// The failures of one disk, shared by all classes that use it. Counted as a write: each line or block of lines
/// written, each closing of a stream that wrote, each stream newly created, file moved and folder created; of a
/// database its creation, each declaring, adding, writing, committing and deleting of a record, each shifting and
/// renumbering and each end of a batch; each setting saved. Counted as a read: each opening of an existing file or
/// database, and of a text file each line or block of lines read, or run of lines skipped. While any failure is due a
/// block is one line. Deleting files never fails.
class DiskFaults {
public:
    /// Makes the next `writes` write operations fail; -1 means all from now on, 0 none. `good` operations succeed
    /// before that.
    void FailNext(std::int32_t writes, std::int32_t good = 0) { Writes_ = {writes, good}; }
    /// The same for reads.
    void FailNextReads(std::int32_t reads, std::int32_t good = 0) { Reads_ = {reads, good}; }
    /// Counts a write operation. Returns true if it must fail.
    bool Strike() { return Strikes(Writes_); }
    bool StrikeRead() { return Strikes(Reads_); }
    /// True if any later operation is to fail.
    bool Armed() const { return Writes_.Left != 0 || Reads_.Left != 0; }

    /// Called before each operation, to show that work continues.
    std::function<void()> Working;

private:
    struct Count {
        std::int32_t Left = 0; ///< number that are to fail; -1 for all
        std::int32_t Good = 0; ///< number that succeed before
    };
    bool Strikes(Count& count) const;

    Count Writes_;
    Count Reads_;
};

class FailingFileSystem final : public FileSystem {
public:
    FailingFileSystem(FileSystem& inner, DiskFaults& faults) : Inner_(inner), Faults_(faults) {}

    ErrorNumber OpenFolder(const Text& path, bool create, std::unique_ptr<Folder>& folder) override;
    ErrorNumber OpenStream(const Text& fullName, StreamMode mode, std::unique_ptr<TextStream>& stream) override;
    ErrorNumber MoveFile(const Text& source, const Text& destination) override;
    ErrorNumber DeleteFile(const Text& fullName) override { return Inner_.DeleteFile(fullName); }

private:
    FileSystem& Inner_;
    DiskFaults& Faults_;
};

class FailingDatabase final : public RecordDatabase {
public:
    FailingDatabase(RecordDatabase& inner, DiskFaults& faults) : Inner_(inner), Faults_(faults) {}

    OpenedDatabase Open(const Text& name, DatabaseMode mode) override;
    OpenedDatabase Create(const Text& name, std::int32_t typeCode, std::int32_t creatorCode) override;
    ErrorNumber Delete(const Text& name) override { return Inner_.Delete(name); }
    void Close(DatabaseId database) override;

    std::int32_t RecordCount(DatabaseId database) override { return Inner_.RecordCount(InnerId(database)); }
    ErrorNumber DeclareTable(DatabaseId database, const Text& name, const Text& definition) override;

    ErrorNumber AddRecord(DatabaseId database) override;
    ErrorNumber BeginEdit(DatabaseId database) override { return Inner_.BeginEdit(InnerId(database)); }
    ErrorNumber WriteRecord(DatabaseId database, const LineRecord& record) override;
    ErrorNumber Commit(DatabaseId database) override;
    bool ReadRecord(DatabaseId database, LineRecord& record) override;
    ErrorNumber DeleteRecord(DatabaseId database) override;
    ErrorNumber ShiftRecords(DatabaseId database, std::int32_t position) override;
    ErrorNumber RenumberRecords(DatabaseId database) override;

    ErrorNumber FindRecord(DatabaseId database, std::int32_t lineNumber) override;
    std::int32_t Position(DatabaseId database) override { return Inner_.Position(InnerId(database)); }

    ErrorNumber BeginReading(DatabaseId database) override { return Inner_.BeginReading(InnerId(database)); }
    void EndReading(DatabaseId database) override { Inner_.EndReading(InnerId(database)); }
    ErrorNumber BeginBatch(DatabaseId database) override { return Inner_.BeginBatch(InnerId(database)); }
    ErrorNumber EndBatch(DatabaseId database) override;

    Text FirstDatabase(std::int32_t typeCode, std::int32_t creatorCode) override;
    const std::vector<Unlisted>& UnreadDatabases() const override { return Inner_.UnreadDatabases(); }
    Text NextDatabase() override { return Inner_.NextDatabase(); }

private:
    struct OpenOne {
        DatabaseId Id = 0; ///< id in the real database
        Text Name;
        DatabaseMode Mode = DatabaseMode::Read;
    };

    OpenedDatabase Keep(const OpenedDatabase& opened, const Text& name, DatabaseMode mode);
    DatabaseId InnerId(DatabaseId database) const;

    RecordDatabase& Inner_;
    DiskFaults& Faults_;
    std::map<DatabaseId, OpenOne> OpenOnes_;
};

class FailingSettings final : public Settings {
public:
    FailingSettings(Settings& inner, DiskFaults& faults) : Inner_(inner), Faults_(faults) {}

    Text Get(const Text& application, const Text& section, const Text& key, const Text& byDefault) const override;
    ErrorNumber Save(const Text& application, const Text& section, const Text& key, const Text& value) override;

private:
    Settings& Inner_;
    DiskFaults& Faults_;
};

} // namespace backends
