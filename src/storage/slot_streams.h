// SPDX-License-Identifier: MIT
// The text file of a slot: lines are read from its stream and appended to it. Used by the row TextLines. A device
// failure stops the program, except while a file is being opened.
#pragma once

#include "src/storage/file_slots.h"

namespace modFileSystem {

std::unique_ptr<platform::TextStream>& StreamOf(const FileHandle& handle);

// The routines for LineBackEnd.
bool OpenTextLines(FileHandle& handle);
void CloseTextLines(FileHandle& handle);
void DropTextLines();
bool WriteTextLine(FileHandle& handle, const Text& text);
std::int32_t SeekTextLine(FileHandle& handle, std::int32_t line);
void ReadTextLine(FileHandle& handle, std::int32_t line,
                  Text& text); ///< REQUIRES: the stream is at the start of `line`
std::int32_t TextLineCount(FileHandle& handle);
bool AnotherHasChangedText(const FileHandle& handle);

/// Skips at most `most` lines. Returns how many were skipped.
std::int32_t SkipTextLines(const FileHandle& handle, std::int32_t most);

} // namespace modFileSystem
