// SPDX-License-Identifier: MIT
// What is open: the handle that the owner of a file keeps, and the slots with what the back-ends keep of it.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/storage.h"

#include <array>
#include <memory>

namespace modFileSystem {

struct LineBackEnd;

/// One open line file. Its owner declares it, OpenFile fills it.
struct FileHandle {
    std::int16_t slot = 0;         ///< index into the slot tables; 0 is the scratch file's
    Text name;                     ///< file name without folder; of a database its name, with no ending
    Text path;                     ///< folder with its trailing `\`
    bool isDatabase = false;       ///< what the back-end's row says of itself
    std::int32_t recordNumber = 0; ///< database only: number of the record last written or found, from 1
    std::int32_t nextLine = 0;     ///< the line that a read of line -1 reads; 0 means that the position was lost
    bool valid = false;            ///< the handle is open
    Text mode;                     ///< "r", "w" or "a"
    Text fileType;                 ///< four-character type
    Text creator;                  ///< four-character creator
    /// Why it could not be opened, or why the last change of it has failed. FileNotFound also for a name that no file
    /// can have.
    platform::ErrorNumber error = platform::NoError;
    /// It could not be opened although it is there: the device failed, or a permission is missing. Such a file is not a
    /// missing one, that a caller would make anew over it.
    bool kept = false;
    std::int64_t revision = 0;            ///< text file only: of the stream when it was opened
    const LineBackEnd* backEnd = nullptr; ///< the routines of what holds the file; never null while it is open
};

/// Slot 0 is the scratch file's, 1 to 5 are for everything else.
inline constexpr std::int16_t SlotCount = 6;
inline constexpr std::int32_t SlotIsFree = 0;
inline constexpr std::int32_t SlotIsText = -1;

/// Where a line of an open text file begins: a stream remembers where its last line ended, and no more.
struct LineMark {
    std::int32_t Line = 1;
    std::int64_t Offset = 0;   ///< in bytes from the start of the file
    std::int64_t Revision = 0; ///< of the stream at that time: in a file that was changed the line may be elsewhere
};

struct SlotTables {
    std::array<std::int32_t, SlotCount> SlotState{}; ///< 0 free, -1 a text file, else the open database's identifier
    std::array<std::unique_ptr<platform::TextStream>, SlotCount> SlotStream; ///< the open text stream of the slot
    std::array<LineMark, SlotCount> SlotMark; ///< a line of the slot's text file; the first one when nothing is known
    FileHandle TempFile;                      ///< the one scratch file
    Text RewrittenFile;                       ///< full name of the file that the scratch file is for; a rewrite sets it
    std::int32_t Running = 0; ///< operations of files and tables that have begun and not come back; StorageStep counts
};
inline SlotTables Slots;

inline Text FullNameOf(const FileHandle& handle) {
    return handle.path + handle.name;
}

inline std::int32_t& StateOf(const FileHandle& handle) {
    return Slots.SlotState[static_cast<std::size_t>(handle.slot)];
}

/// Stands at the head of each operation. A program that must stop within one does not begin another: the table may be
/// at any row, and the file between two steps.
struct StorageStep {
    StorageStep() { ++Slots.Running; }
    ~StorageStep() { --Slots.Running; }
    StorageStep(const StorageStep&) = delete;
    StorageStep& operator=(const StorageStep&) = delete;
};

/// Stops the program over a platform operation that nothing guards, with what was tried and the file's name.
[[noreturn]] void FailOnFile(const char16_t* what, const FileHandle& handle, platform::ErrorNumber error);

} // namespace modFileSystem
