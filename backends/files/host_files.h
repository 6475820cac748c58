// SPDX-License-Identifier: MIT
// What the storage of every back-end needs of the host: descriptors, error numbers, folders, and the replacing of a
// file as a whole. Paths and names here are the host's, as bytes.
#pragma once

#include "backends/descriptor/descriptor.h"
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

/// The error number that stands for a value of errno.
ErrorNumber FromErrno(int code);

/// What the system says of a value of errno: in English, as all our texts are, whatever the locale.
std::string ReasonOf(int code);

/// A step that begins with the finding of something by its name. Where what was found has become stale meanwhile, as on
/// a network, it is found anew once.
template <class Step>
ErrorNumber FoundAnew(Step step) {
    const ErrorNumber error = step();
    return error == WentStale ? step() : error;
}

/// What we make is its owner's alone: results name people and places.
constexpr unsigned OwnersFile = 0600;
constexpr unsigned OwnersFolder = 0700;

/// A name in a folder that is held open: whatever becomes of the path above it, no call is turned elsewhere. What is
/// done to an entry is done to it, and not to what a link under this name leads to.
struct FileEntry {
    Descriptor Folder;
    std::string Name;
};

/// Which folder it is, whatever its name. It means something while the folder is there.
struct FolderId {
    std::uint64_t Device = 0;
    std::uint64_t Number = 0;
    bool operator==(const FolderId& other) const { return Device == other.Device && Number == other.Number; }
};
ErrorNumber IdOf(const Descriptor& folder, FolderId& id);

/// The entry of a path that a person has named, so that links in it are meant. It need not be there, its folder must.
ErrorNumber EntryAt(const std::string& path, FileEntry& entry);

/// Opens a file that is there with the flags of open(2). Anything but a regular file is refused with PathRefused and
/// left untouched: a pipe would block, and a device may act on being opened.
ErrorNumber OpenRegular(const FileEntry& entry, int flags, Descriptor& file);

/// Makes a file that is not there.
ErrorNumber CreateRegular(const Descriptor& folder, const std::string& name, int flags, Descriptor& file);

/// Writes all bytes at an offset, however many calls that takes.
ErrorNumber WriteAll(int file, std::string_view bytes, std::int64_t offset);

/// Reads what is there at an offset, up to a count of bytes; -1 on failure, with errno.
std::int64_t ReadAt(int file, char* bytes, std::size_t count, std::int64_t offset);

/// Brings a file to the medium.
ErrorNumber SyncFile(const Descriptor& file);

/// Takes a name out of a folder; what is there must be no folder.
ErrorNumber RemoveFrom(const Descriptor& folder, const std::string& name);

/// What is there under a name, as it is, be it a link. FileNotFound where nothing is.
ErrorNumber LookAt(const FileEntry& entry, struct stat& found);
bool IsFolder(const std::string& path);

/// The path of something that is there, without links and without detours.
ErrorNumber Canonical(const std::string& path, std::string& canonical);

/// The folder that a path lies in.
std::string FolderOf(const std::string& path);

/// Makes a folder that a person has named and those above it that are missing, for their owner alone. What it made is
/// on the medium when it returns.
ErrorNumber MakeFolders(const std::string& path);

/// Brings the names in a folder to the medium: without it a new file may be gone after a loss of power.
ErrorNumber SyncFolder(const Descriptor& folder);
ErrorNumber SyncFolder(const std::string& folder);

/// Who is told of a file whose group or access list could not be kept when it was written anew: others may do less with
/// it than before. Each back-end makes it anew at its start and at its end.
struct RightsWatch {
    std::function<void(const std::string& name)> Lost; ///< the bare name, once a file
    std::set<std::pair<ino_t, std::string>> Told;      ///< by folder and name: the file is another one each time
};
inline RightsWatch Rights;

/// New content for a file, which appears under its name as a whole or not at all: it is written beside it, brought to
/// the medium and renamed. The rights of a file that was there are kept (file_rights.h). Given up unless it is
/// committed.
class Replacement {
public:
    explicit Replacement(FileEntry target) : Target(std::move(target)) {}
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement();

    ErrorNumber Begin();             ///< refuses a target that is write-protected or no regular file
    ErrorNumber BeginWith(int file); ///< with the content of an open file
    bool Begun() const { return Beside.Valid(); }
    int File() const { return Beside.Number(); }
    ErrorNumber Commit();
    void GiveUp();

private:
    ErrorNumber MakeBeside();

    FileEntry Target;
    std::string BesideName;
    Descriptor Beside;
    bool KeepsRights = true;
};

/// Copies a regular file over another one, or to where there is none, as a Replacement does.
ErrorNumber CopyOver(const FileEntry& source, FileEntry target);

/// The same without a copy: the file is renamed once its content is on the medium. A source on another file system is
/// copied and deleted. After a failure the source is still there, unless only the name could not be brought to the
/// medium: the whole content is at the target then.
ErrorNumber MoveOver(const FileEntry& source, FileEntry target);

} // namespace backends
