// SPDX-License-Identifier: MIT
// A sequence of numbered text lines, the first one being line 1, over a text file or a line database.
#pragma once

#include "src/text/text.h"
#include "src/view/platform/storage.h"

#include <array>
#include <memory>

namespace modFileSystem {

/// One open line file. Its owner declares it, OpenFile fills it.
struct FileHandle {
    std::int16_t slot = 0;         ///< index into the slot tables; 0 is the scratch file's
    Text name;                     ///< file name without folder; of a database its name, with no ending
    Text path;                     ///< folder with its trailing `\`
    bool isDatabase = false;       ///< which back-end holds the file
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
    std::int64_t revision = 0; ///< text file only: of the stream when it was opened
};

/// Slot 0 is the scratch file's, 1 to 5 are for everything else.
inline constexpr std::int16_t SlotCount = 6;

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

/// Stands at the head of each operation. A program that must stop within one does not begin another: the table may be
/// at any row, and the file between two steps.
struct StorageStep {
    StorageStep() { ++Slots.Running; }
    ~StorageStep() { --Slots.Running; }
    StorageStep(const StorageStep&) = delete;
    StorageStep& operator=(const StorageStep&) = delete;
};

/// Closes what is open and forgets all that was known of it, as at program start.
void ResetSlots();

/// Opens a file by its full name. Mode "r" opens what is there, "w" makes it anew, "a" opens it at its end and makes it
/// when it is missing. One that should be made and can't be is told. `valid` tells whether it worked, `error` and
/// `kept` why not; with all five slots in use the handle stays as it was. Type and creator are four-character codes;
/// both "temp" means the scratch file.
void OpenFile(FileHandle& handle, const Text& fullName, const Text& mode, const Text& fileType, const Text& creator);
void CloseFile(FileHandle& handle);
void ResetFileHandle(FileHandle& handle);

/// Appends a line. The number of characters written: 0 on failure, and for an empty text although it was written.
std::int32_t WriteFileLine(FileHandle& handle, const Text& text);

/// Moves to a line. The line reached, or 0 where there is no such line.
std::int32_t SeekFileLine(FileHandle& handle, std::int32_t line);

/// Reads a line; -1 means the next one, and becomes the number of the line read. Empty on failure.
Text ReadFileLine(FileHandle& handle, std::int32_t& line);
/// The same into a text, which may have room for it already.
void ReadFileLine(FileHandle& handle, std::int32_t& line, Text& text);

/// For as long as it lives nobody else writes to a line database, and reads of it are not kept from us. Of a text file
/// it does nothing.
class FileReading {
public:
    /// What another program has locked is waited for, and is then held: `error` of the handle says so.
    explicit FileReading(FileHandle& handle);
    FileReading(const FileReading&) = delete;
    FileReading& operator=(const FileReading&) = delete;
    ~FileReading();
    bool Held() const { return IsHeld; }

private:
    std::int32_t Database = 0; ///< 0 for none that is to be let go of
    bool IsHeld = false;
};

// Each of the three says in `error` why it gave false. A text file stays as it is where its name leads to another
// folder than when it was opened, or where another program has changed the file while it was written anew.
bool ChangeFileLine(FileHandle& handle, std::int32_t line, const Text& text);
bool DeleteFileLine(FileHandle& handle, std::int32_t line);

/// Inserts before (`position` 1) or after (2) a line that exists.
bool InsertFileLine(FileHandle& handle, std::int32_t line, std::int32_t position, const Text& text);

std::int32_t FileLineCount(FileHandle& handle);

/// Of an open text file; a line database has none.
platform::FileStamp FileStampOf(const FileHandle& handle);

/// Whether another program has put another file under the name since the file was opened, has written into it or has
/// deleted it. Never true of a line database, which any number of programs may work on.
bool AnotherHasChanged(FileHandle& handle);

/// Keeps a line that has no place in its file in a scratch file. The bare name of that; empty where it can't be made.
Text KeepLine(const FileHandle& handle, const Text& text);

/// Deletes a file that need not be open, under the naming rules of OpenFile.
bool DeleteFile(const Text& fullName);
/// The same, and why it could not be deleted.
platform::ErrorNumber RemoveFile(const Text& fullName);

} // namespace modFileSystem
