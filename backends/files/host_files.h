// SPDX-License-Identifier: MIT
// What the storage of every back-end needs of the host: descriptors, error numbers, folders, and replacing a file as a
// whole. Paths and names here are the host's, as bytes.
#pragma once

#include "backends/descriptor/descriptor.h"
#include "backends/descriptor/reason.h"
#include "src/view/platform/errors.h"

#include <cerrno>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <utility>

namespace backends {

using namespace platform;

/// Returns the error number for a value of errno.
ErrorNumber FromErrno(int code);

/// Runs a step that begins by finding something by its name. If what was found has become stale, as on a network file
/// system, the step is run once more.
template <class Step>
ErrorNumber FoundAnew(Step step) {
    const ErrorNumber error = step();
    return error == WentStale ? step() : error;
}

/// New files and folders are accessible to their owner alone: results name people and places.
constexpr unsigned OwnersFile = 0600;
constexpr unsigned OwnersFolder = 0700;

/// A name in a folder that is held open, so that changes to the path above it do not redirect any call. An operation on
/// an entry applies to the entry itself, not to the target of a link.
struct FileEntry {
    Descriptor Folder;
    std::string Name;
};

/// Identifies a folder independently of its name. Valid while the folder exists.
struct FolderId {
    std::uint64_t Device = 0;
    std::uint64_t Number = 0;
    bool operator==(const FolderId& other) const { return Device == other.Device && Number == other.Number; }
};
ErrorNumber IdOf(const Descriptor& folder, FolderId& id);

/// Finds the entry of a path that the user has given; links in it are followed. The entry need not exist, its folder
/// must.
ErrorNumber EntryAt(const std::string& path, FileEntry& entry);

/// Opens an existing file with the flags of open(2). Anything but a regular file is refused with PathRefused without
/// opening it: a pipe would block, and a device may act on being opened.
ErrorNumber OpenRegular(const FileEntry& entry, int flags, Descriptor& file);

/// Creates a file. FileExists if the name is in use.
ErrorNumber CreateRegular(const Descriptor& folder, const std::string& name, int flags, Descriptor& file);

/// Writes all bytes at an offset, in as many calls as needed.
ErrorNumber WriteAll(int file, std::string_view bytes, std::int64_t offset);

/// Reads up to `count` bytes at an offset. Returns the number read, or -1 on failure, with errno.
std::int64_t ReadAt(int file, char* bytes, std::size_t count, std::int64_t offset);

/// Writes the file's content to the medium.
ErrorNumber SyncFile(const Descriptor& file);

/// Removes a name that is not a folder's from a folder.
ErrorNumber RemoveFrom(const Descriptor& folder, const std::string& name);

/// Examines an entry itself, even if it is a link. FileNotFound if there is none.
ErrorNumber LookAt(const FileEntry& entry, struct stat& found);
bool IsFolder(const std::string& path);

/// Returns the path of an existing entry without links, `.` and `..`.
ErrorNumber Canonical(const std::string& path, std::string& canonical);

/// Returns the folder part of a path.
std::string FolderOf(const std::string& path);

/// Creates a folder that the user has named and its missing parents, accessible to their owner alone. On success all of
/// them are on the medium.
ErrorNumber MakeFolders(const std::string& path);

/// Writes the names in a folder to the medium: without that a new file may be missing after a loss of power.
ErrorNumber SyncFolder(const Descriptor& folder);
ErrorNumber SyncFolder(const std::string& folder);

/// The observer of files whose group or access list could not be kept when they were rewritten: others may have less
/// access to them than before. Each back-end resets it at its start and at its end.
struct RightsWatch {
    std::function<void(const std::string& name)> Lost; ///< called with the name alone, once for each file
    /// By folder and name, because a rewritten file is a new one each time.
    std::set<std::pair<ino_t, std::string>> Told;
};
inline RightsWatch Rights;

/// The names of the files of Replacements begin with this, followed by the process, "-" and a number.
inline constexpr std::string_view ReplacementStem = ".quorin-";

/// New content for a file, which appears under its name completely or not at all: it is written to a file beside it,
/// synced and renamed. The rights of an existing file are kept (file_rights.h). The content is discarded unless it is
/// committed.
class Replacement {
public:
    explicit Replacement(FileEntry target) : Target_(std::move(target)) {}
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement();

    ErrorNumber Begin();             ///< fails if the target is write-protected or not a regular file
    ErrorNumber BeginWith(int file); ///< starts with the content of an open file
    bool Begun() const { return Beside_.Valid(); }
    int File() const { return Beside_.Number(); }
    ErrorNumber Commit();
    void GiveUp();

private:
    ErrorNumber MakeBeside();

    FileEntry Target_;
    std::string BesideName_;
    Descriptor Beside_;
    bool KeepsRights_ = true;
};

/// Copies a regular file to a new name or over another file, as a Replacement does.
ErrorNumber CopyOver(const FileEntry& source, FileEntry target);

/// Moves a file in the same way: it is renamed once its content is on the medium. A source on another file system is
/// copied and deleted. After a failure the source still exists, unless only the new name could not be synced: then the
/// whole content is at the target.
ErrorNumber MoveOver(const FileEntry& source, FileEntry target);

} // namespace backends
