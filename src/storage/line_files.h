// SPDX-License-Identifier: MIT
// A sequence of numbered text lines, the first one being line 1, over a text file or a line database.
#pragma once

#include "src/storage/file_slots.h"

namespace modFileSystem {

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
/// it does nothing. The handle stays open meanwhile.
class FileReading {
public:
    /// What another program has locked is waited for, and is then held: `error` of the handle says so.
    explicit FileReading(FileHandle& handle);
    FileReading(const FileReading&) = delete;
    FileReading& operator=(const FileReading&) = delete;
    ~FileReading();
    bool Held() const { return IsHeld_; }

private:
    const FileHandle& File_;
    bool HasBegun_ = false;
    bool IsHeld_ = false;
};

// Each of the three says in `error` why it gave false. A text file stays as it is where its name leads to another
// folder than when it was opened, or where another program has changed the file while it was written anew.
bool ChangeFileLine(FileHandle& handle, std::int32_t line, const Text& text);
bool DeleteFileLine(FileHandle& handle, std::int32_t line);

inline constexpr std::int32_t InsertBefore = 1;
inline constexpr std::int32_t InsertAfter = 2;

/// Inserts before or after a line that exists.
bool InsertFileLine(FileHandle& handle, std::int32_t line, std::int32_t position, const Text& text);

std::int32_t FileLineCount(FileHandle& handle);

/// Of an open text file; a line database has none.
platform::FileStamp FileStampOf(const FileHandle& handle);

/// Whether another program has put another file under the name since the file was opened, has written into it or has
/// deleted it. Never true of a line database, which any number of programs may work on.
bool AnotherHasChanged(FileHandle& handle);

/// Deletes a file that need not be open, under the naming rules of OpenFile.
bool DeleteFile(const Text& fullName);
/// The same, and why it could not be deleted.
platform::ErrorNumber RemoveFile(const Text& fullName);

/// Fills Storage.FileList with the files of a folder or, on a Palm OS device's memory, with the databases of that type
/// and creator (an empty type means "TEXT", an empty creator any).
void ListFiles(const Text& folder, const Text& fileType, const Text& creator);

} // namespace modFileSystem
