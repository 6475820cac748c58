// SPDX-License-Identifier: MIT
#include "tests/system/power_loss/tree.h"

#include "tests/support/places.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace disk {

namespace fs = std::filesystem;

Tree ReadTree(const std::string& root) {
    Tree tree;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const std::string path = entry.path().lexically_relative(root).string();
        if (entry.is_directory()) {
            tree.Folders.insert(path);
            continue;
        }
        std::string& bytes = tree.Files[path];
        bytes.resize(entry.file_size());
        std::ifstream(entry.path(), std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    return tree;
}

void WriteTree(const std::string& root, const Tree& tree) {
    for (const auto& entry : fs::directory_iterator(root))
        fs::remove_all(entry.path());
    for (const std::string& folder : tree.Folders)
        fs::create_directories(fs::path(root) / folder);
    for (const auto& [path, bytes] : tree.Files) {
        std::ofstream out(fs::path(root) / path, std::ios::binary);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

FreshFolder::FreshFolder() {
    Path_ = (support::PlaceInMemory() / "quorin-disk-XXXXXX").string();
    if (::mkdtemp(Path_.data()) == nullptr)
        std::abort();
}

FreshFolder::~FreshFolder() {
    std::error_code ignored;
    fs::remove_all(Path_, ignored);
}

} // namespace disk
