// SPDX-License-Identifier: MIT
// The line databases of the device: each is one SQLite file in the folder `Databases` of the root folder.
#pragma once

#include "backends/files/line_table.h"
#include "backends/files/path_map.h"

#include <map>
#include <vector>

namespace backends {

/// A database `drivers` is the file `Databases/drivers.sqlite`; line_table.h tells what is in it. A name that is empty,
/// begins with a full stop or holds `..`, `/`, `\`, `:` or a NUL is refused as if there were no such database.
///
/// Writing to a database whose name leads to another folder than when it was opened is refused with PathNotFound.
///
/// A database that is open can't be deleted. One that is closed in the middle of a batch loses the batch, and a batch
/// whose end fails is lost as a whole; the first record is the current one then.
class LineDatabase final : public RecordDatabase {
public:
    explicit LineDatabase(PathMap paths) : Paths(std::move(paths)) {}

    OpenedDatabase Open(const Text& name, DatabaseMode mode) override;
    OpenedDatabase Create(const Text& name, std::int32_t typeCode, std::int32_t creatorCode) override;
    ErrorNumber Delete(const Text& name) override;
    void Close(DatabaseId database) override;

    std::int32_t RecordCount(DatabaseId database) override;
    /// There is one layout: table "TEXT", "LineNumber long, LineData String". Declaring it again changes nothing.
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

    /// With other programs that have locked a database.
    LockWait Patience;

    Text FirstDatabase(std::int32_t typeCode, std::int32_t creatorCode) override;
    Text NextDatabase() override;
    const std::vector<Unlisted>& UnreadDatabases() const override { return Unread; }

private:
    /// What a file is known by while it is open, by whatever name it was found.
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
    /// Whether a database has these codes, 0 being any. One that can't be read has none, and is noted.
    bool HasCodes(const Text& name, std::int32_t typeCode, std::int32_t creatorCode);
    void NoteUnread(const Text& name, ErrorNumber error);

    PathMap Paths;
    std::map<DatabaseId, OpenDatabase> OpenOnes;
    std::vector<Text> Names; ///< what the enumeration that was begun last has found
    std::size_t NextName = 0;
    std::vector<Unlisted> Unread; ///< what that one has left out
};

} // namespace backends
