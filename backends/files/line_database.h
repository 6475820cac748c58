// SPDX-License-Identifier: MIT
// The line databases of the device. Each is one SQLite file in the folder `Databases` of the root folder.
#pragma once

#include "backends/files/line_table.h"
#include "backends/files/path_map.h"

#include <map>
#include <vector>

namespace backends {

/// A database `drivers` is the file `Databases/drivers.sqlite`; line_table.h describes its content. A name that is
/// empty, begins with a full stop or contains `..`, `/`, `\`, `:` or a NUL is treated as that of a missing database.
///
/// Writing to a database whose name leads to another folder than when it was opened is refused with PathNotFound.
///
/// An open database can't be deleted. Closing it in the middle of a batch discards the batch. If the end of a batch
/// fails, the whole batch is discarded and the first record becomes the current one.
class LineDatabase final : public RecordDatabase {
public:
    explicit LineDatabase(PathMap paths) : Paths_(std::move(paths)) {}

    OpenedDatabase Open(const Text& name, DatabaseMode mode) override;
    OpenedDatabase Create(const Text& name, std::int32_t typeCode, std::int32_t creatorCode) override;
    ErrorNumber Delete(const Text& name) override;
    void Close(DatabaseId database) override;

    std::int32_t RecordCount(DatabaseId database) override;
    /// There is one layout: table "TEXT", "LineNumber long, LineData String". Declaring it again has no effect.
    ErrorNumber DeclareTable(DatabaseId database, const Text& name, const Text& definition) override;

    ErrorNumber AddRecord(DatabaseId database) override;
    ErrorNumber BeginEdit(DatabaseId database) override;
    ErrorNumber WriteRecord(DatabaseId database, const LineRecord& record) override;
    ErrorNumber Commit(DatabaseId database) override;
    bool ReadRecord(DatabaseId database, LineRecord& record) override;
    ErrorNumber DeleteRecord(DatabaseId database) override;
    ErrorNumber ShiftRecords(DatabaseId database, std::int32_t position) override;
    ErrorNumber RenumberRecords(DatabaseId database) override;

    ErrorNumber FindRecord(DatabaseId database, std::int32_t lineNumber) override;
    std::int32_t Position(DatabaseId database) override; ///< -1 when there is no current record

    ErrorNumber BeginBatch(DatabaseId database) override;
    ErrorNumber EndBatch(DatabaseId database) override;

    ErrorNumber BeginReading(DatabaseId database) override;
    void EndReading(DatabaseId database) override;

    /// The wait for other programs that have locked a database.
    LockWait Patience;

    Text FirstDatabase(std::int32_t typeCode, std::int32_t creatorCode) override;
    Text NextDatabase() override;
    const std::vector<Unlisted>& UnreadDatabases() const override { return Unread_; }

private:
    /// The identity of an open file, independent of the path by which it was found.
    struct Place {
        FolderId Folder;
        std::string Name;
        bool operator==(const Place&) const = default;
    };
    struct OpenDatabase {
        Text Name;
        Place File;
        std::unique_ptr<LineTable> Table;
    };

    ErrorNumber FindFile(const Text& name, FileEntry& file, Place& place) const;
    ErrorNumber CheckName(DatabaseId database) const;
    DatabaseId Keep(const Text& name, Place file, std::unique_ptr<LineTable> table);
    LineTable* Find(DatabaseId database);
    /// True if a database has these codes; 0 matches any. One that can't be read does not match, and is noted.
    bool HasCodes(const Text& name, std::int32_t typeCode, std::int32_t creatorCode);
    void NoteUnread(const Text& name, ErrorNumber error);

    PathMap Paths_;
    std::map<DatabaseId, OpenDatabase> OpenOnes_;
    std::vector<Text> Names_; ///< result of the last enumeration
    std::size_t NextName_ = 0;
    std::vector<Unlisted> Unread_; ///< databases that it left out
};

} // namespace backends
