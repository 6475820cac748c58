// SPDX-License-Identifier: MIT
// The line files step by step: every seek walks from the first line, and a rewrite reads and writes each line.
#pragma once

#include "src/storage/line_files.h"
#include "src/view/platform/device.h"
#include "tests/reference/memory_disk.h"

#include <array>

namespace reference {

using modFileSystem::FileHandle;

class LineFiles {
public:
    /// The scratch file is in `folder`, with a random name.
    LineFiles(MemoryDisk& disk, platform::Random& random, std::int32_t secondsSinceMidnight, Text folder)
        : Files_(disk), Databases_(disk), Chance_(random), Seconds_(secondsSinceMidnight), Folder_(std::move(folder)) {
        disk.MakeFolders(Folder_);
    }

    void OpenFile(FileHandle& handle, const Text& fullName, const Text& mode, const Text& fileType,
                  const Text& creator);
    void CloseFile(FileHandle& handle);
    static void ResetFileHandle(FileHandle& handle);
    std::int32_t WriteFileLine(FileHandle& handle, const Text& text);
    std::int32_t SeekFileLine(FileHandle& handle, std::int32_t line);
    Text ReadFileLine(FileHandle& handle, std::int32_t& line);
    bool ChangeFileLine(FileHandle& handle, std::int32_t line, const Text& text);
    bool DeleteFileLine(FileHandle& handle, std::int32_t line);
    bool InsertFileLine(FileHandle& handle, std::int32_t line, std::int32_t position, const Text& text);
    std::int32_t FileLineCount(FileHandle& handle);
    bool DeleteFile(const Text& fullName);

private:
    enum class Edit { Change, Delete, Insert };

    std::int32_t& State(const FileHandle& handle) { return SlotState_.at(static_cast<std::size_t>(handle.slot)); }
    platform::TextStream& Stream(const FileHandle& handle) {
        return *SlotStream_.at(static_cast<std::size_t>(handle.slot));
    }
    void OpenDatabase(FileHandle& handle);
    void OpenText(FileHandle& handle);
    bool InsertRecord(FileHandle& handle, std::int32_t target, const Text& text);
    void RenumberDatabaseLines(FileHandle& handle);
    bool Rewrite(FileHandle& handle, Edit edit, std::int32_t line, std::int32_t position, const Text& text);
    void OpenTempFile();
    void ReplaceWithTempFile(FileHandle& handle);

    MemoryFiles Files_;
    MemoryDatabases Databases_;
    platform::Random& Chance_;
    std::int32_t Seconds_;
    Text Folder_;
    std::array<std::int32_t, 6> SlotState_{};
    std::array<std::unique_ptr<platform::TextStream>, 6> SlotStream_;
    FileHandle TempFile_;
};

} // namespace reference
