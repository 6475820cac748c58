// SPDX-License-Identifier: MIT
// The text file of a slot: its stream, from which lines are read and to whose end they are written. For the row
// TextLines; a failing device stops the program, but at the opening.
#pragma once

#include "src/storage/file_slots.h"

namespace modFileSystem {

std::unique_ptr<platform::TextStream>& StreamOf(const FileHandle& handle);

// The routines of the same purpose of LineBackEnd.
bool OpenTextLines(FileHandle& handle);
void CloseTextLines(FileHandle& handle);
void DropTextLines();
bool WriteTextLine(FileHandle& handle, const Text& text);
std::int32_t SeekTextLine(FileHandle& handle, std::int32_t line);
void ReadTextLine(FileHandle& handle, std::int32_t line, Text& text); ///< the stream stands on it
std::int32_t TextLineCount(FileHandle& handle);
bool AnotherHasChangedText(const FileHandle& handle);

/// Passes over at most `most` lines. Returns how many there were.
std::int32_t SkipTextLines(const FileHandle& handle, std::int32_t most);

} // namespace modFileSystem
