// SPDX-License-Identifier: MIT
// The device's folders and files, beneath one folder of the host.
#pragma once

#include "backends/files/path_map.h"
#include "src/view/platform/storage.h"

namespace backends {

using namespace platform;

/// Only regular files are listed and can be opened, moved and deleted. A listing leaves out names with a leading full
/// stop, which the host hides: a copy in progress has such a name, and so have files that other systems leave on cards.
/// A dangling link, or one that leads out of the root, is a file that can't be read (PermissionDenied), not a missing
/// file: its name must not be taken for a free one.
class HostFileSystem final : public FileSystem {
public:
    explicit HostFileSystem(PathMap paths) : Paths_(std::move(paths)) {}

    ErrorNumber OpenFolder(const Text& path, bool create, std::unique_ptr<Folder>& folder) override;
    ErrorNumber OpenStream(const Text& fullName, StreamMode mode, std::unique_ptr<TextStream>& stream) override;
    ErrorNumber MoveFile(const Text& source, const Text& destination) override;
    ErrorNumber DeleteFile(const Text& fullName) override;

private:
    ErrorNumber Entry(const Text& fullName, LastLink lastLink, FileEntry& entry) const;
    ErrorNumber Entries(const Text& source, const Text& destination, FileEntry& from, FileEntry& to) const;
    bool MayBeThere(const Text& fullName) const;

    PathMap Paths_;
};

} // namespace backends
