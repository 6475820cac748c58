// SPDX-License-Identifier: MIT
// What can hold numbered lines: one row of routines a kind of storage. A new kind is a file with its row, and its place
// in LineBackEnds.
#pragma once

#include "src/storage/file_slots.h"

#include <array>

namespace modFileSystem {

/// Where nothing else is said the handle is open, and a routine that fails says why in its `error`.
struct LineBackEnd {
    bool IsDatabase; ///< each line is a record: FileHandle::isDatabase

    /// Whether a file of this folder and name is held here. The handle has its path and name, and nothing else.
    bool (*Takes)(const FileHandle& handle);
    /// The name by which the file is known here.
    void (*Name)(FileHandle& handle);
    /// Opens or makes the file in the handle's slot, by its mode.
    bool (*Open)(FileHandle& handle);
    void (*Close)(FileHandle& handle);
    /// Lets go of all open files of this kind, whatever comes of what was not saved.
    void (*DropAll)();

    bool (*Append)(FileHandle& handle, const Text& text);
    /// Moves to a line, from 1. Returns the line reached, or 0 where there is no such line.
    std::int32_t (*Seek)(FileHandle& handle, std::int32_t line);
    /// Reads a line that Seek has just reached, into an empty text.
    void (*Read)(FileHandle& handle, std::int32_t line, Text& text);
    std::int32_t (*Count)(FileHandle& handle);

    bool (*Change)(FileHandle& handle, std::int32_t line, const Text& text);
    bool (*Insert)(FileHandle& handle, std::int32_t line, std::int32_t position, const Text& text);
    bool (*Delete)(FileHandle& handle, std::int32_t line);

    /// Keeps other writers away until EndReading. Returns InUse where another program has kept the file for too long.
    platform::ErrorNumber (*BeginReading)(FileHandle& handle);
    void (*EndReading)(const FileHandle& handle);

    platform::FileStamp (*Stamp)(const FileHandle& handle);
    bool (*AnotherHasChanged)(const FileHandle& handle);

    /// Deletes the file that the handle was open on, which is closed by now.
    platform::ErrorNumber (*Remove)(const FileHandle& handle);
    /// True if the files of the folder are held here: their full names are added to Storage.FileList, and what could
    /// not be read is told.
    bool (*List)(const Text& folder, const Text& fileType, const Text& creator);
};

/// The first that takes a file holds it, and the last one takes any. Defined in line_back_ends.cpp, which knows them
/// all.
extern const std::array<const LineBackEnd*, 2> LineBackEnds;

} // namespace modFileSystem
