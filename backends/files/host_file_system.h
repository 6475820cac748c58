// SPDX-License-Identifier: MIT
// Folders and files of the device beneath one folder of the host.
#pragma once

#include "backends/files/path_map.h"
#include "src/view/platform/storage.h"

namespace backends {

using namespace platform;

/// Only regular files can be opened, copied and deleted, and are listed. A listing leaves out what the host hides, the
/// names with a leading full stop: a copy that is under way has such a name, and so has the litter that other systems
/// leave on cards. A link that leads nowhere it may is a file that is kept from us (PermissionDenied), not a missing
/// one: it must not be taken for a name that is free.
class HostFileSystem final : public FileSystem {
public:
    explicit HostFileSystem(PathMap paths) : Paths(std::move(paths)) {}

    ErrorNumber OpenFolder(const Text& path, bool create, std::unique_ptr<Folder>& folder) override;
    ErrorNumber OpenStream(const Text& fullName, StreamMode mode, std::unique_ptr<TextStream>& stream) override;
    ErrorNumber MoveFile(const Text& source, const Text& destination) override;
    ErrorNumber DeleteFile(const Text& fullName) override;

private:
    ErrorNumber Entry(const Text& fullName, LastLink lastLink, FileEntry& entry) const;
    ErrorNumber Entries(const Text& source, const Text& destination, FileEntry& from, FileEntry& to) const;
    bool MayBeThere(const Text& fullName) const;

    PathMap Paths;
};

} // namespace backends
