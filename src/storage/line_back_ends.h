// SPDX-License-Identifier: MIT
// The two things that a line file can stand on. For line_files.cpp alone; the handle is open.
#pragma once

#include "src/storage/line_files.h"

namespace modFileSystem {

inline constexpr std::int32_t SlotIsText = -1; // in SlotState

inline constexpr std::int32_t InsertBefore = 1;
inline constexpr std::int32_t InsertAfter = 2;

/// What an operation on a line does to it.
enum class Edit { Change, Remove, PutBefore, PutBehind, Refused };

/// Stops the program over a platform operation that nothing guards, with what was tried and the file's name.
[[noreturn]] void FailOnFile(const char16_t* what, const FileHandle& handle, platform::ErrorNumber error);

// Text files.
bool OpenTextLines(FileHandle& handle);
void CloseTextLines(FileHandle& handle);
void WriteTextLine(FileHandle& handle, const Text& text);
std::int32_t SeekTextLine(FileHandle& handle, std::int32_t line);
void ReadTextLine(FileHandle& handle, std::int32_t line, Text& text); ///< the stream stands on it
std::int32_t TextLineCount(FileHandle& handle);
bool AnotherHasChangedText(FileHandle& handle);
/// Writes the whole file anew through the scratch file. False where the file is empty or is not to be found under its
/// name any more, and where the scratch file can't be made or does not hold the lines that it should; the file is
/// untouched then.
bool RewriteTextLines(FileHandle& handle, std::int32_t line, Edit edit, const Text& text);

// Line databases.
bool OpenDatabaseLines(FileHandle& handle);
void CloseDatabaseLines(FileHandle& handle);
bool WriteDatabaseLine(FileHandle& handle, const Text& text);
std::int32_t SeekDatabaseLine(FileHandle& handle, std::int32_t line);
void ReadDatabaseLine(FileHandle& handle, std::int32_t line, Text& text); ///< the record is the current one
std::int32_t DatabaseLineCount(const FileHandle& handle);
bool ChangeDatabaseLine(FileHandle& handle, std::int32_t line, const Text& text);
bool DeleteDatabaseLine(FileHandle& handle, std::int32_t line);
bool InsertDatabaseLine(FileHandle& handle, std::int32_t line, std::int32_t position, const Text& text);

} // namespace modFileSystem
