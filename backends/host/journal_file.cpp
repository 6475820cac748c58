// SPDX-License-Identifier: MIT
#include "backends/host/journal_file.h"

#include "backends/host/private_folder.h"
#include "backends/loop/clock.h"
#include "journal/journal_format.h"

#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <unistd.h>

namespace backends {

namespace {

struct DayFile {
    std::string Name;
    std::string Day;
    std::int64_t Bytes = 0;
};

/// Returns the files of the journal, the oldest first.
std::vector<DayFile> FilesIn(const std::string& path) {
    std::vector<DayFile> files;
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(::opendir(path.c_str()), ::closedir);
    while (const dirent* const entry = folder ? ::readdir(folder.get()) : nullptr) {
        const auto name = journal::FileNameFrom(entry->d_name);
        struct stat found {};
        if (name && ::fstatat(::dirfd(folder.get()), entry->d_name, &found, AT_SYMLINK_NOFOLLOW) == 0)
            files.push_back({entry->d_name, name->Day, found.st_size});
    }
    std::sort(files.begin(), files.end(),
              [](const DayFile& one, const DayFile& other) { return one.Name < other.Name; });
    return files;
}

/// True if a program writes to the file: its clock may show another day.
bool IsInUse(const std::string& path) {
    const Descriptor file(
        Repeated([&] { return ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC); }));
    return file.Valid() && Repeated([&] { return ::flock(file.Number(), LOCK_EX | LOCK_NB); }) != 0 &&
           errno == EWOULDBLOCK;
}

/// The first day that is not too old; empty if any age is allowed.
std::string FirstDay(const std::string& today, std::int64_t days) {
    const auto date = DateFromText(today);
    if (!date || days <= 0)
        return {};
    return TextOfDate(DaysLater(*date, -static_cast<std::int32_t>(std::min<std::int64_t>(days, 1'000'000)) + 1));
}

ErrorNumber OpenOrCreate(const FileEntry& entry, Descriptor& file) {
    ErrorNumber error = OpenRegular(entry, O_RDWR | O_APPEND, file);
    if (error == FileNotFound) {
        error = CreateRegular(entry.Folder, entry.Name, O_RDWR | O_APPEND, file);
        if (error == NoError)
            error = SyncFolder(entry.Folder); // else the file could be missing after a loss of power
    }
    return error;
}

} // namespace

JournalFile::JournalFile(std::string folder, const std::string& rootPath, JournalLimits limits)
    : Folder_(std::move(folder)), RootKey_(journal::RootKey(rootPath)), Limits_(limits) {
}

Text JournalFile::Open(const std::string& day) {
    Close();
    Day_ = day;
    UntilLook_ = 0;
    FileEntry entry{{}, TextOf(journal::FileName{day, RootKey_})};
    if (const Text why = OpenPrivateFolder(Folder_, OthersWrite, entry.Folder); !why.empty())
        return why;
    const Text name = modStringTools::FromBytes(Folder_ + "/" + entry.Name);
    Descriptor file;
    struct stat found {};
    if (const ErrorNumber error = OpenOrCreate(entry, file); error != NoError)
        return (error == PathRefused ? Text(u"it is no regular file") : ErrorText(error)) + u": " + name;
    if (::fstat(file.Number(), &found) != 0 || found.st_uid != ::geteuid())
        return u"it belongs to another user: " + name;
    if ((found.st_mode & OthersUse) != 0 && ::fchmod(file.Number(), OwnersFile) != 0)
        return u"others may use it: " + name;
    File_ = std::move(file);
    Repeated([this] { return ::flock(File_.Number(), LOCK_SH | LOCK_NB); }); // without locks its day alone protects it
    char last = '\n';
    if (found.st_size > 0 && ReadAt(File_.Number(), &last, 1, found.st_size - 1) == 1 && last != '\n')
        Append({}); // a line was interrupted: what follows must not become a part of it
    return {};
}

bool JournalFile::IsRemoved() const {
    struct stat found {};
    return IsOpen() && ::fstat(File_.Number(), &found) == 0 && found.st_nlink == 0;
}

ErrorNumber JournalFile::Append(const std::string& line) {
    std::string_view rest;
    const std::string whole = line + "\n";
    for (rest = whole; !rest.empty();) {
        const ssize_t count = Repeated([&] { return ::write(File_.Number(), rest.data(), rest.size()); });
        if (count <= 0)
            return count < 0 ? FromErrno(errno) : DiskFull;
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
    UntilLook_ -= static_cast<std::int64_t>(whole.size());
    return NoError;
}

std::vector<std::string> JournalFile::RemoveOldest() {
    std::vector<std::string> removed;
    if (UntilLook_ > 0)
        return removed;
    UntilLook_ = std::max<std::int64_t>(Limits_.Bytes / 100, 1);
    const std::vector<DayFile> files = FilesIn(Folder_);
    const std::string first = FirstDay(Day_, Limits_.Days);
    std::int64_t bytes = 0;
    for (const DayFile& file : files)
        bytes += file.Bytes;
    for (const DayFile& file : files) {
        if (file.Day >= Day_ || (file.Day >= first && bytes <= Limits_.Bytes))
            break; // of the same day or later: another program may write to it
        if (IsInUse(Folder_ + "/" + file.Name) || ::unlink((Folder_ + "/" + file.Name).c_str()) != 0)
            continue;
        bytes -= file.Bytes;
        removed.push_back(file.Name);
    }
    return removed;
}

} // namespace backends
