// SPDX-License-Identifier: MIT
// The kinds of storage for numbered lines, one row of routines for each. A new kind is a source file with its row, and
// an entry in LineBackEnds.
#pragma once

#include "src/storage/file_slots.h"

#include <span>

namespace modFileSystem {

/// Unless a routine says otherwise, the handle is open, and a routine that fails sets the handle's `error`.
struct LineBackEnd {
    bool IsDatabase; ///< each line is a record; copied to FileHandle::isDatabase

    /// True if this kind holds files of the handle's path and name. Nothing else of the handle is set.
    bool (*Takes)(const FileHandle& handle);
    /// Changes the handle's name to the one by which this kind of storage knows the file.
    void (*Name)(FileHandle& handle);
    /// Opens or creates the file in the handle's slot, by its mode.
    bool (*Open)(FileHandle& handle);
    void (*Close)(FileHandle& handle);
    /// Releases all open files of this kind. What was not saved may be lost.
    void (*DropAll)();

    bool (*Append)(FileHandle& handle, const Text& text);
    /// Moves to a line, counted from 1. Returns the line reached, or 0 if there is no such line.
    std::int32_t (*Seek)(FileHandle& handle, std::int32_t line);
    /// Reads a line that Seek has just reached, into an empty text.
    void (*Read)(FileHandle& handle, std::int32_t line, Text& text);
    std::int32_t (*Count)(FileHandle& handle);

    bool (*Change)(FileHandle& handle, std::int32_t line, const Text& text);
    bool (*Insert)(FileHandle& handle, std::int32_t line, InsertPosition position, const Text& text);
    bool (*Delete)(FileHandle& handle, std::int32_t line);

    /// Locks out other writers until EndReading. Returns InUse if another program has held its lock for too long.
    platform::ErrorNumber (*BeginReading)(FileHandle& handle);
    void (*EndReading)(const FileHandle& handle);

    platform::FileStamp (*Stamp)(const FileHandle& handle);
    bool (*AnotherHasChanged)(const FileHandle& handle);

    /// Stores a file of these lines, in place of one of that name. On failure the old file is unchanged, or there is
    /// none. No handle is open on it.
    platform::ErrorNumber (*Put)(const FileHandle& handle, const std::vector<Text>& lines);
    /// Deletes the file that the handle was open on. The file is closed by now.
    platform::ErrorNumber (*Remove)(const FileHandle& handle);
    /// True if this kind holds the files of the folder. Their full names are added to Storage.FileList, and what could
    /// not be read is reported to Onlooker.
    bool (*List)(const Text& folder, const Text& fileType, const Text& creator);
};

/// The first row whose Takes is true holds a file. The last row takes any file. Defined in line_back_ends.cpp.
extern const std::span<const LineBackEnd* const> LineBackEnds;

} // namespace modFileSystem
