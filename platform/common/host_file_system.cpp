// SPDX-License-Identifier: MIT
#include "platform/common/host_file_system.h"

#include "platform/common/folder_names.h"
#include "platform/common/host_files.h"
#include "platform/common/text_stream.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace platform::common {

namespace {

class HostFolder final : public Folder {
public:
    HostFolder(const PathMap& paths, Text prefix, std::string hostPath)
        : Paths(paths), Prefix(std::move(prefix)), HostPath(std::move(hostPath)) {}

    Text FirstFile(std::int32_t) override {
        Names = NamesIn(HostPath);
        Next = 0;
        return NextFile();
    }

    Text NextFile() override {
        while (Next < Names.size()) {
            Text fullName;
            if (IsListed(Names[Next++], fullName))
                return fullName;
        }
        return {};
    }

private:
    /// A hidden name is not listed, nor one of the host that no path of the device can mean, as with a backslash.
    bool IsListed(const std::string& name, Text& fullName) const {
        if (name[0] == '.' || name.find('\\') != std::string::npos)
            return false;
        fullName = Prefix + modStringTools::FromBytes(name);
        std::string path;
        return Paths.HostPath(fullName, path) == NoError && IsRegularFile(path);
    }

    PathMap Paths;
    Text Prefix;
    std::string HostPath;
    std::vector<std::string> Names;
    std::size_t Next = 0;
};

} // namespace

ErrorNumber HostFileSystem::OpenFolder(const Text& path, bool create, std::unique_ptr<Folder>& folder) {
    std::string hostPath;
    if (const ErrorNumber error = Paths.HostPath(path, hostPath); error != NoError)
        return error;
    if (create) {
        if (const ErrorNumber error = MakeFolders(hostPath); error != NoError)
            return error;
    } else if (!IsFolder(hostPath)) {
        return FileNotFound;
    }
    const Text prefix = path.back() == u'\\' ? path : path + u'\\';
    folder = std::make_unique<HostFolder>(Paths, prefix, hostPath);
    return NoError;
}

/// The host path of a file: a `\` at the end of a name would make it a folder's.
ErrorNumber HostFileSystem::FilePath(const Text& fullName, std::string& hostPath) const {
    if (fullName.empty() || fullName.back() == u'\\')
        return PathRefused;
    return Paths.HostPath(fullName, hostPath);
}

ErrorNumber HostFileSystem::OpenStream(const Text& fullName, StreamMode mode, std::unique_ptr<TextStream>& stream) {
    std::string hostPath;
    const ErrorNumber error = FilePath(fullName, hostPath);
    return error == NoError ? HostTextStream::Open(hostPath, mode, stream) : error;
}

ErrorNumber HostFileSystem::CopyFile(const Text& source, const Text& destination, bool overwrite) {
    std::string from;
    std::string to;
    if (const ErrorNumber error = FilePath(source, from); error != NoError)
        return error;
    if (const ErrorNumber error = FilePath(destination, to); error != NoError)
        return error;
    return !overwrite && IsRegularFile(from) && ::access(to.c_str(), F_OK) == 0 ? FileExists : CopyOver(from, to);
}

ErrorNumber HostFileSystem::MoveFile(const Text& source, const Text& destination) {
    std::string from;
    std::string to;
    if (const ErrorNumber error = FilePath(source, from); error != NoError)
        return error;
    const ErrorNumber error = FilePath(destination, to);
    return error == NoError ? MoveOver(from, to) : error;
}

ErrorNumber HostFileSystem::DeleteFile(const Text& fullName) {
    std::string target;
    std::string entry;
    if (const ErrorNumber error = FilePath(fullName, target); error != NoError)
        return error;
    if (const ErrorNumber error = Paths.EntryPath(fullName, entry); error != NoError)
        return error;
    struct stat found {};
    if (::stat(target.c_str(), &found) != 0)
        return FromErrno(errno);
    if (!S_ISREG(found.st_mode))
        return PathRefused;
    return ::unlink(entry.c_str()) == 0 ? NoError : FromErrno(errno);
}

} // namespace platform::common
