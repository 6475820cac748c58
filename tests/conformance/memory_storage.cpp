// SPDX-License-Identifier: MIT
// Runs the storage suites on the memory disk of tests/reference, except the suite of files that another program
// replaces: only the literal forms of the comparisons use this disk, and they involve no other program.
#include "tests/conformance/storage_suites.h"
#include "tests/reference/memory_disk.h"

#include <algorithm>

namespace conformance {

namespace {

class MemoryStorage final : public StorageUnderTest {
public:
    FileSystem& Files() override { return Files_; }
    RecordDatabase& Databases() override { return Databases_; }
    Settings& SettingsStore() override { return Settings_; }

    void Put(const Text& fullName, const std::string& bytes) override { Disk_.Put(fullName, bytes); }
    std::string Bytes(const Text& fullName) override { return Disk_.SavedBytes(fullName); }
    void Remove(const Text& fullName) override { Disk_.Files.erase(fullName); }
    bool Has(const Text& fullName) override { return Disk_.Has(fullName); }
    void MakeFolder(const Text& path) override { Disk_.MakeFolders(path); }
    bool HasFolder(const Text& path) override { return Disk_.IsFolder(path); }
    std::size_t Entries(const Text& path) override {
        const auto isIn = [&path](const Text& name) {
            const std::size_t end = name.find(u'\\', path.size());
            return name.size() > path.size() && name.compare(0, path.size(), path) == 0 &&
                   (end == Text::npos || end + 1 == name.size());
        };
        const auto files = std::count_if(Disk_.Files.begin(), Disk_.Files.end(),
                                         [&](const auto& file) { return file.second->Saved && isIn(file.first); });
        return static_cast<std::size_t>(files + std::count_if(Disk_.Folders.begin(), Disk_.Folders.end(), isIn));
    }

private:
    reference::MemoryDisk Disk_;
    reference::MemoryFiles Files_{Disk_};
    reference::MemoryDatabases Databases_{Disk_};
    reference::MemorySettings Settings_;
};

std::unique_ptr<StorageUnderTest> MadeInMemory() {
    return std::make_unique<MemoryStorage>();
}

const StorageFactory Memory = {"memory disk", MadeInMemory};

} // namespace

QUORIN_RUN_STORAGE_SUITES_OF_ONE_PROGRAM(InMemory, Memory);

} // namespace conformance
