// SPDX-License-Identifier: MIT
// Files of numbered text lines, kept in a text file or in a line database. The first line is line 1.
#pragma once

#include "src/storage/file_slots.h"

#include <vector>

namespace modFileSystem {

/// Closes all open files and resets the slots to their state at program start.
void ResetSlots();

/// Opens a file by its full name. Mode "r" opens an existing file, "w" creates the file and drops any old content, "a"
/// opens it at its end and creates it if it is missing. On success `valid` is true. On failure it is false, and `error`
/// and `kept` say why; if the file should have been created, SaveWatcher is called. If all five slots are in use, the
/// handle stays as it was. Type and creator are four-character codes; "temp" for both means the scratch file.
void OpenFile(FileHandle& handle, const Text& fullName, const Text& mode, const Text& fileType, const Text& creator);
/// The same without a type and a creator.
inline void OpenFileByName(FileHandle& handle, const Text& fullName, const Text& mode) {
    OpenFile(handle, fullName, mode, u"", u"");
}
void CloseFile(FileHandle& handle);
void ResetFileHandle(FileHandle& handle);

/// Appends a line. Returns the number of characters written: 0 on failure, and 0 for an empty text although its line
/// was written.
std::int32_t WriteFileLine(FileHandle& handle, const Text& text);

/// Moves to a line. Returns the line reached, or 0 if there is no such line.
std::int32_t SeekFileLine(FileHandle& handle, std::int32_t line);

/// Reads a line. A `line` of -1 means the next line, and is set to the number of that line. Returns an empty text on
/// failure.
Text ReadFileLine(FileHandle& handle, std::int32_t& line);
/// The same into a text, whose capacity is reused.
void ReadFileLine(FileHandle& handle, std::int32_t& line, Text& text);

/// A lock for reading, held while the object exists: no other program can write to the line database, or block a read
/// of it. Does nothing for a text file. If the file is closed meanwhile, the lock ends with it. The handle must exist
/// for as long as the object.
class FileReading {
public:
    /// Waits for another program's lock. If the wait is over and the lock remains, Held() is true and the handle's
    /// `error` is InUse.
    explicit FileReading(FileHandle& handle);
    FileReading(const FileReading&) = delete;
    FileReading& operator=(const FileReading&) = delete;
    ~FileReading();
    bool Held() const { return IsHeld_; }

private:
    FileHandle& File_;
    bool HasBegun_ = false;
    bool IsHeld_ = false;
};

// ChangeFileLine, DeleteFileLine and InsertFileLine set `error` when they return false. A text file is not changed if
// its name leads to another folder than when it was opened, or if another program has changed the file during the
// rewrite.
bool ChangeFileLine(FileHandle& handle, std::int32_t line, const Text& text);
bool DeleteFileLine(FileHandle& handle, std::int32_t line);

/// Inserts before or after a line that exists.
bool InsertFileLine(FileHandle& handle, std::int32_t line, InsertPosition position, const Text& text);

std::int32_t FileLineCount(FileHandle& handle);

/// The stamp of an open text file. That of a line database is all zeros.
platform::FileStamp FileStampOf(const FileHandle& handle);

/// True if, since the file was opened, another program has put another file under its name, has written into it or has
/// deleted it. Never true for a line database, which any number of programs may change.
bool AnotherHasChanged(FileHandle& handle);

/// Reads a whole file. Returns why it can't be opened.
platform::ErrorNumber ReadLines(const Text& fullName, const Text& fileType, const Text& creator,
                                std::vector<Text>& lines);

/// Stores a file of these lines, in place of one of that name. On failure the old file is unchanged, or there is none;
/// nothing is reported to SaveWatcher.
platform::ErrorNumber PutLines(const Text& fullName, const Text& fileType, const Text& creator,
                               const std::vector<Text>& lines);

/// Deletes a file, which need not be open. The name is read as OpenFile reads it.
bool DeleteFile(const Text& fullName);
/// The same, but returns the error.
platform::ErrorNumber RemoveFile(const Text& fullName);

/// Fills Storage.FileList with the files of a folder or, for the memory of a Palm OS device, with the databases of that
/// type and creator (an empty type means "TEXT", an empty creator any).
void ListFiles(const Text& folder, const Text& fileType, const Text& creator);

} // namespace modFileSystem
