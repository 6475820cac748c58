// SPDX-License-Identifier: MIT
// What the storage of every back-end needs of the host: descriptors, error numbers, folders, and the replacing of a
// file as a whole. Paths here are the host's, as bytes.
#pragma once

#include "view/platform/errors.h"

#include <string>
#include <string_view>

namespace platform::common {

/// The error number that stands for a value of errno.
ErrorNumber FromErrno(int code);

/// Owns a file descriptor, and closes it at the end of its life.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : Value(number) {}
    Descriptor(Descriptor&& other) noexcept : Value(other.Value) { other.Value = -1; }
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor() { Close(); }

    bool Valid() const { return Value >= 0; }
    int Number() const { return Value; } ///< -1 for none
    ErrorNumber Close();                 ///< none there is no error

private:
    int Value = -1;
};

/// Opens a file that is there with the flags of open(2). Anything but a regular file is refused with PathRefused and
/// left untouched: a pipe would block, and a device may act on being opened.
ErrorNumber OpenRegular(const std::string& path, int flags, Descriptor& file);

/// Makes a file that is not there, with the permissions that the user's mask leaves.
ErrorNumber CreateRegular(const std::string& path, int flags, Descriptor& file);

/// Writes all bytes at an offset, however many calls that takes.
ErrorNumber WriteAll(int file, std::string_view bytes, std::int64_t offset);

bool IsRegularFile(const std::string& path);
bool IsFolder(const std::string& path);

/// The path of something that is there, without links and without detours; false when there is no such thing.
bool Canonical(const std::string& path, std::string& canonical);

/// The folder that a path lies in.
std::string FolderOf(const std::string& path);

/// Makes a folder and those above it that are missing. What it made is on the medium when it returns.
ErrorNumber MakeFolders(const std::string& path);

/// Brings the names in a folder to the medium: without it a new file may be gone after a loss of power.
ErrorNumber SyncFolder(const std::string& folder);

/// New content for a file, which appears under its name as a whole or not at all: it is written beside it, brought to
/// the medium and renamed. The permission bits of a file that was there are kept. Given up unless it is committed.
class Replacement {
public:
    explicit Replacement(std::string target) : Target(std::move(target)) {}
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement();

    ErrorNumber Begin(); ///< refuses a target that is write-protected or no regular file
    int File() const { return Beside.Number(); }
    ErrorNumber Commit();

private:
    ErrorNumber MakeBeside(const std::string& folder);

    std::string Target;
    std::string BesideName;
    Descriptor Beside;
};

/// Copies a regular file over another one, or to where there is none, as a Replacement does.
ErrorNumber CopyOver(const std::string& source, const std::string& target);

/// The same without a copy: the file is renamed once its content is on the medium. A source on another file system is
/// copied and deleted. After a failure the source is still there, unless only the
/// name could not be brought to the medium: the whole content is at the target then.
ErrorNumber MoveOver(const std::string& source, const std::string& target);

} // namespace platform::common
