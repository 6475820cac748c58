// SPDX-License-Identifier: MIT
#include "backends/files/folder_vfs.h"

#include <sqlite3.h>

#include <algorithm>
#include <string_view>

namespace backends {

namespace {

constexpr const char* Name = "quorin-folder";

int AsItIs(sqlite3_vfs*, const char* name, int room, char* fullName) {
    const std::string_view given(name);
    if (room < 1 || given.size() >= static_cast<std::size_t>(room))
        return SQLITE_CANTOPEN;
    *std::copy(given.begin(), given.end(), fullName) = '\0';
    return SQLITE_OK;
}

const char* Register() {
    const sqlite3_vfs* const usual = sqlite3_vfs_find(nullptr);
    if (usual == nullptr)
        return nullptr;
    static sqlite3_vfs own = *usual;
    own.pNext = nullptr;
    own.zName = Name;
    own.xFullPathname = AsItIs;
    return sqlite3_vfs_register(&own, 0) == SQLITE_OK ? Name : nullptr;
}

} // namespace

std::string NameForSqlite(const FileEntry& entry) {
    return "/proc/self/fd/" + std::to_string(entry.Folder.Number()) + "/" + entry.Name;
}

const char* FolderFileSystem() {
    static const char* const name = Register();
    return name;
}

} // namespace backends
