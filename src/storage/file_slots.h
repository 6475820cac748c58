// SPDX-License-Identifier: MIT
// The open files: the handle that the owner of a file keeps, and the slots in which the back-ends keep their data.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/storage.h"

#include <array>
#include <memory>

namespace modFileSystem {

struct LineBackEnd;

/// Returns the name of a file without its folder.
inline Text BareName(const Text& fullName) {
    return fullName.substr(fullName.rfind(u'\\') + 1); // npos + 1 is 0
}

/// One open line file. Its owner declares it, OpenFile fills it.
struct FileHandle {
    std::int16_t slot = 0;         ///< index into the slot tables; 0 is the scratch file's
    Text name;                     ///< file name without folder; for a database its name, without an ending
    Text path;                     ///< folder with its trailing `\`
    bool isDatabase = false;       ///< copied from the back-end's row
    std::int32_t recordNumber = 0; ///< database only: number of the record last written or found, from 1
    std::int32_t nextLine = 0;     ///< the line that a read of line -1 reads; 0: the position was lost
    bool valid = false;            ///< the handle is open
    Text mode;                     ///< "r", "w" or "a"
    Text fileType;                 ///< four-character type
    Text creator;                  ///< four-character creator
    /// Why the file could not be opened, or why its last change failed. Also FileNotFound for a name that no file can
    /// have.
    platform::ErrorNumber error = platform::NoError;
    /// The file exists but could not be opened: the device failed, or a permission is missing. A caller must not treat
    /// it as missing, because it would be overwritten by a new file.
    bool kept = false;
    std::int64_t revision = 0;            ///< text file only: that of the stream when the file was opened
    const LineBackEnd* backEnd = nullptr; ///< the routines of what holds the file; never null while it is open
    std::int32_t readings = 0;            ///< of this file that have begun and not ended; closing it ends them
};

/// Where InsertFileLine puts a line: before or after the one that is named.
enum class InsertPosition : std::int32_t { Before = 1, After = 2 };

/// The type and the creator of the scratch file.
inline const Text ScratchCode = u"temp";

/// Slot 0 is the scratch file's, 1 to 5 are for everything else.
inline constexpr std::int16_t SlotCount = 6;
inline constexpr std::int32_t SlotIsFree = 0;
inline constexpr std::int32_t SlotIsText = -1;

/// Where a line of an open text file begins. A stream only remembers where its last line ended.
struct LineMark {
    std::int32_t Line = 1;
    std::int64_t Offset = 0;   ///< in bytes from the start of the file
    std::int64_t Revision = 0; ///< that of the stream at that time: in a changed file the line may be elsewhere
};

struct SlotTables {
    std::array<std::int32_t, SlotCount>
        SlotState{}; ///< 0: free; -1: a text file; otherwise the open database's identifier
    std::array<std::unique_ptr<platform::TextStream>, SlotCount> SlotStream; ///< the open text stream of the slot
    std::array<LineMark, SlotCount> SlotMark; ///< a line of the slot's text file; the first line when nothing is known
    FileHandle TempFile;                      ///< the one scratch file
    Text RewrittenFile;       ///< full name of the file that the scratch file is for; OpenTempFile sets it
    std::int32_t Running = 0; ///< operations on files and tables that have not returned yet; StorageStep counts them
};
inline SlotTables Slots;

inline Text FullNameOf(const FileHandle& handle) {
    return handle.path + handle.name;
}

inline std::int32_t& StateOf(const FileHandle& handle) {
    return Slots.SlotState[static_cast<std::size_t>(handle.slot)];
}

/// Counts a running operation; each operation declares one first. When the program stops inside an operation, it must
/// not start another one: the table may be at any row, and the file between two steps.
struct StorageStep {
    StorageStep() { ++Slots.Running; }
    ~StorageStep() { --Slots.Running; }
    StorageStep(const StorageStep&) = delete;
    StorageStep& operator=(const StorageStep&) = delete;
};

/// Stops the program because a platform operation failed. The message has the operation, the file's name and the error.
[[noreturn]] void FailOnFile(const char16_t* what, const FileHandle& handle, platform::ErrorNumber error);

} // namespace modFileSystem
