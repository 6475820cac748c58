// SPDX-License-Identifier: MIT
// The contents of a folder of the host, as bytes in memory.
#pragma once

#include <map>
#include <set>
#include <string>

namespace disk {

/// Paths are relative to the root, without a leading `/`.
struct Tree {
    std::set<std::string> Folders;
    std::map<std::string, std::string> Files;

    bool operator==(const Tree& other) const { return Folders == other.Folders && Files == other.Files; }
    bool operator<(const Tree& other) const {
        return Folders != other.Folders ? Folders < other.Folders : Files < other.Files;
    }
};

Tree ReadTree(const std::string& root);
/// Makes the folder contain this and nothing else.
void WriteTree(const std::string& root, const Tree& tree);

/// Returns the folder of a path; empty for the root.
std::string FolderOf(const std::string& path);

/// An empty folder, which the destructor removes. It is in memory where the machine has such a place.
class FreshFolder {
public:
    FreshFolder();
    ~FreshFolder();
    FreshFolder(const FreshFolder&) = delete;
    FreshFolder& operator=(const FreshFolder&) = delete;

    const std::string& Path() const { return Path_; }

private:
    std::string Path_;
};

} // namespace disk
