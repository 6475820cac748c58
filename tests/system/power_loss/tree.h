// SPDX-License-Identifier: MIT
// What stands in a folder of the host, as bytes in memory.
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
/// Makes the folder hold this and nothing else.
void WriteTree(const std::string& root, const Tree& tree);

/// The folder that a path lies in; empty for what lies in the root.
std::string FolderOf(const std::string& path);

/// An empty folder that is gone with its owner. It lies in memory where the machine offers that.
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
