// SPDX-License-Identifier: MIT
#include "backends/files/file_rights.h"

#include "backends/descriptor/descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace backends {

namespace {

constexpr const char* ListName = "system.posix_acl_access";

constexpr mode_t KeptBits = 01777;

// An access list is a version of 4 bytes, then 8 bytes an entry: tag, permission, and the id of the user or group,
// lowest byte first.
constexpr std::size_t HeaderSize = 4;
constexpr std::size_t EntrySize = 8;
constexpr unsigned OwnersTag = 0x01;
constexpr unsigned AnyRight = 7;

/// The greatest length of an access list on any file system.
constexpr std::size_t LongestList = 65536;

/// Reads the access list of a file; empty if the file has none or its file system has no lists. Returns errno, 0 on
/// success.
int ReadList(int file, std::string& list) {
    list.resize(LongestList);
    // The file may be open with O_PATH, which fgetxattr refuses.
    const std::string name = "/proc/self/fd/" + std::to_string(file);
    const ssize_t size = Repeated([&] { return ::getxattr(name.c_str(), ListName, list.data(), list.size()); });
    list.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return size >= 0 || errno == ENODATA || errno == EOPNOTSUPP ? 0 : errno;
}

/// Removes the list that a new file may have inherited from its folder. True if the file has none afterwards.
bool RemoveList(int file) {
    return Repeated([file] { return ::fremovexattr(file, ListName); }) == 0 || errno == ENODATA || errno == EOPNOTSUPP;
}

unsigned At(const std::string& list, std::size_t place) {
    return static_cast<unsigned char>(list[place]) | static_cast<unsigned>(static_cast<unsigned char>(list[place + 1]))
                                                         << 8U;
}

/// Returns the rights that group and others may both have without giving anyone more than before: those that everyone
/// had.
mode_t EverybodysRights(const FileRights& rights) {
    const mode_t group =
        rights.Mode >> 3 & AnyRight; // with an access list these bits are the maximum that any of its entries grants
    mode_t least = group & rights.Mode & AnyRight;
    for (std::size_t place = HeaderSize; place + EntrySize <= rights.AccessList.size(); place += EntrySize) {
        if (At(rights.AccessList, place) != OwnersTag)
            least &= At(rights.AccessList, place + 2);
    }
    return least;
}

} // namespace

int RightsOf(int folder, const std::string& name, FileRights& rights) {
    const Descriptor file(Repeated([&] { return ::openat(folder, name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC); }));
    struct stat found {};
    const bool seen = file.Valid() && Repeated([&] { return ::fstat(file.Number(), &found); }) == 0;
    const int error = seen ? 0 : errno;
    rights = {found.st_uid, found.st_gid, found.st_mode & KeptBits, {}};
    return seen ? ReadList(file.Number(), rights.AccessList) : error;
}

int GiveRights(int file, const FileRights& rights, bool& kept) {
    struct stat own {};
    const auto look = [&] { return Repeated([&] { return ::fstat(file, &own); }) == 0; };
    const auto give = [&](uid_t owner) { return Repeated([&] { return ::fchown(file, owner, rights.Group); }) == 0; };
    if (!look())
        return errno;
    const bool isOwners = own.st_uid == rights.Owner && own.st_gid == rights.Group;
    const bool ownerKept = isOwners || give(rights.Owner);
    const bool groupKept = ownerKept || own.st_gid == rights.Group || give(own.st_uid);
    const std::string& list = rights.AccessList;
    const auto setList = [&] { return ::fsetxattr(file, ListName, list.data(), list.size(), 0); };
    const bool listGiven = groupKept && !list.empty() && Repeated(setList) == 0;
    const bool noList = listGiven || RemoveList(file);
    kept = groupKept && (listGiven || (list.empty() && noList));
    mode_t mode = rights.Mode;
    if (!kept) {
        const mode_t least = EverybodysRights(rights) & (ownerKept ? AnyRight : rights.Mode >> 6 & AnyRight);
        mode = (rights.Mode & ~mode_t{077}) | least << 3 | least;
    }
    if (look() && (own.st_mode & 07777) == mode)
        return 0;
    // The file system of a card may have no permissions and refuse the call: then there is nothing to keep.
    return Repeated([&] { return ::fchmod(file, mode); }) == 0 || errno == EPERM ? 0 : errno;
}

} // namespace backends
