// SPDX-License-Identifier: MIT
// Access of SQLite to a file in a folder that is held open.
#pragma once

#include "backends/files/host_files.h"

#include <string>

namespace backends {

/// Returns the name of a file for SQLite, through the descriptor of its folder: if another program renames or replaces
/// the folder, the database, its journal and the journal's removal stay in the folder that is open. The descriptor must
/// outlive all use.
std::string NameForSqlite(const FileEntry& entry);

/// Returns the VFS to open such a name with, for sqlite3_open_v2. It is SQLite's own, except that it does not resolve a
/// file's full name: resolving would replace the links in it by the folder's path. Null if there is no memory for it.
const char* FolderFileSystem();

} // namespace backends
