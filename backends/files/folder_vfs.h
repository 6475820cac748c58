// SPDX-License-Identifier: MIT
// SQLite's way to a file in a folder that is held open.
#pragma once

#include "backends/files/host_files.h"

#include <string>

namespace backends {

/// The name of a file for SQLite, over the descriptor of its folder: what another program makes of the folder's own
/// name turns neither the database nor its journal, nor the removal of that, elsewhere. The descriptor must outlive all
/// use.
std::string NameForSqlite(const FileEntry& entry);

/// The file system to open such a name with, as sqlite3_open_v2 takes it: SQLite's own, but for the finding of a file's
/// full name, by which it would take the links out of it and go by the folder's name from then on. Nothing when there
/// is no memory for it.
const char* FolderFileSystem();

} // namespace backends
