// SPDX-License-Identifier: MIT
// What the storage needs of a device, fast enough for hundred thousands of cases: files in memory, or on a real disk.
#pragma once

#include "backends/headless/headless_platform.h"
#include "backends/loop/no_commands.h"
#include "backends/loop/silent_watcher.h"
#include "tests/reference/memory_disk.h"

#include <filesystem>
#include <string>

namespace reference {

/// A seeded random generator that is fast.
class QuickNumbers final : public platform::Random {
public:
    void Seed(std::int32_t number) override { State_ = static_cast<std::uint32_t>(number); }
    double Next() override {
        State_ = State_ * 1664525U + 1013904223U;
        return static_cast<double>(State_ >> 8U) / 0x1000000;
    }

private:
    std::uint32_t State_ = 0;
};

/// Its data folder is `.\Quorin\`.
class StorageDevice {
public:
    enum class Kind { InMemory, OnDisk };

    /// Returns the device of a kind, installed as the platform, emptied, with nothing open.
    static StorageDevice& Fresh(Kind kind);
    StorageDevice(const StorageDevice&) = delete;
    StorageDevice& operator=(const StorageDevice&) = delete;
    ~StorageDevice();

    void Put(const Text& fullName, const std::string& bytes);
    /// Returns the contents of its disk, in the form of MemoryDisk::Shown.
    std::string Shown();
    std::filesystem::path Folder() const { return Root_; }

private:
    explicit StorageDevice(Kind kind);
    void Empty();

    struct Nobody final : backends::NoCommands, backends::SilentWatcher {};
    struct Stopping final : platform::RunTime {
        void DoEvents() override {}
        void WaitEvents() override {}
        void Pause(std::int32_t) override {}
        [[noreturn]] void EndProgram() override { throw Stopped(); }
        [[noreturn]] void RuntimeFailure(const Text&) override { throw Stopped(); }
    };

    Kind Storage_;
    std::string Root_;
    Nobody Around_;
    backends::HostDevice Host_;
    backends::headless::HeadlessPlatform Headless_;
    MemoryDisk Disk_;
    MemoryFiles Files_{Disk_};
    MemoryDatabases Databases_{Disk_};
    MemorySettings Settings_;
    Stopping RunTime_;
    QuickNumbers Numbers_;
    platform::Platform Record_;
};

} // namespace reference
