// SPDX-License-Identifier: MIT
#include "backends/files/host_file_system.h"

#include "backends/files/folder_names.h"
#include "backends/files/text_stream.h"

#include <cerrno>
#include <unistd.h>
#include <vector>

namespace backends {

namespace {

class HostFolder final : public Folder {
public:
    HostFolder(const PathMap& paths, Text prefix, Descriptor opened)
        : Paths_(paths), Prefix_(std::move(prefix)), Opened_(std::move(opened)) {}

    Text FirstFile(std::int32_t) override {
        Failure_ = NoError;
        Note(ReadNames(Opened_, Names_));
        Next_ = 0;
        return NextFile();
    }

    Text NextFile() override {
        while (Next_ < Names_.size()) {
            Text fullName;
            if (IsListed(Names_[Next_++], fullName))
                return fullName;
        }
        return {};
    }

    ErrorNumber WalkError() const override { return Failure_; }

private:
    /// Hidden names are not listed, nor names with a backslash, which no path of the device can mean.
    bool IsListed(const std::string& name, Text& fullName) {
        if (name[0] == '.' || name.find('\\') != std::string::npos)
            return false;
        fullName = Prefix_ + modStringTools::FromBytes(name);
        FileEntry entry;
        struct stat found {};
        ErrorNumber error = Paths_.Entry(fullName, LastLink::Follow, entry);
        if (error == NoError)
            error = LookAt(entry, found);
        Note(error);
        return error == NoError && S_ISREG(found.st_mode);
    }

    /// Keeps the first error. An entry that is gone or leads out of the storage counts as missing, which is no error.
    void Note(ErrorNumber error) {
        if (Failure_ == NoError && !IsMissing(error))
            Failure_ = error;
    }

    PathMap Paths_;
    Text Prefix_;
    Descriptor Opened_;
    std::vector<std::string> Names_;
    std::size_t Next_ = 0;
    ErrorNumber Failure_ = NoError;
};

} // namespace

ErrorNumber HostFileSystem::OpenFolder(const Text& path, bool create, std::unique_ptr<Folder>& folder) {
    if (const ErrorNumber error = create ? Paths_.MakeFolder(path) : NoError; error != NoError)
        return error;
    Descriptor opened;
    if (const ErrorNumber error = Paths_.OpenFolder(path, opened); error != NoError)
        return error;
    const Text prefix = path.back() == u'\\' ? path : path + u'\\';
    folder = std::make_unique<HostFolder>(Paths_, prefix, std::move(opened));
    return NoError;
}

/// Finds the entry of a file. A name with a `\` at its end would be a folder's and is refused.
ErrorNumber HostFileSystem::Entry(const Text& fullName, LastLink lastLink, FileEntry& entry) const {
    if (fullName.empty() || fullName.back() == u'\\')
        return PathRefused;
    return Paths_.Entry(fullName, lastLink, entry);
}

/// Finds the entries of a file and of its destination.
ErrorNumber HostFileSystem::Entries(const Text& source, const Text& destination, FileEntry& from, FileEntry& to) const {
    const ErrorNumber error = Entry(source, LastLink::Follow, from);
    return error == NoError ? Entry(destination, LastLink::Follow, to) : error;
}

/// True if an entry exists or can't be examined.
bool HostFileSystem::MayBeThere(const Text& fullName) const {
    FileEntry entry;
    struct stat found {};
    return Entry(fullName, LastLink::Keep, entry) == NoError && LookAt(entry, found) != FileNotFound;
}

ErrorNumber HostFileSystem::OpenStream(const Text& fullName, StreamMode mode, std::unique_ptr<TextStream>& stream) {
    const auto find = [files = *this, fullName](FileEntry& entry) {
        const ErrorNumber error = files.Entry(fullName, LastLink::Follow, entry);
        return error == PathRefused && files.MayBeThere(fullName) ? PermissionDenied : error;
    };
    return HostTextStream::Open(find, mode, stream);
}

ErrorNumber HostFileSystem::MoveFile(const Text& source, const Text& destination) {
    return FoundAnew([&] {
        FileEntry from;
        FileEntry to;
        const ErrorNumber error = Entries(source, destination, from, to);
        return error == NoError ? MoveOver(from, std::move(to)) : error;
    });
}

ErrorNumber HostFileSystem::DeleteFile(const Text& fullName) {
    return FoundAnew([&] {
        FileEntry target;
        FileEntry entry;
        if (const ErrorNumber error = Entry(fullName, LastLink::Follow, target); error != NoError)
            return error;
        if (const ErrorNumber error = Entry(fullName, LastLink::Keep, entry); error != NoError)
            return error;
        struct stat found {};
        if (const ErrorNumber error = LookAt(target, found); error != NoError)
            return error;
        if (!S_ISREG(found.st_mode))
            return PathRefused;
        const ErrorNumber error = RemoveFrom(entry.Folder, entry.Name);
        return error == NoError ? SyncFolder(entry.Folder) : error; // it must not reappear after a loss of power
    });
}

} // namespace backends
