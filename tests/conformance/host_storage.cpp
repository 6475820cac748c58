// SPDX-License-Identifier: MIT
// Runs the storage suites on the files of a POSIX host, directly and through the wrapper with the fault switch, which
// is off.
#include "backends/files/host_file_system.h"
#include "backends/files/line_database.h"
#include "backends/files/settings_file.h"
#include "backends/simulated/failing_storage.h"
#include "tests/conformance/storage_suites.h"
#include "tests/support/temporary_root.h"

#include <algorithm>

namespace conformance {

namespace {

/// Returns the name on the host: a volume is a folder of the root folder.
std::string HostName(const Text& name) {
    std::string host = modStringTools::ToBytes(name);
    if (host.rfind(".\\", 0) == 0)
        host.erase(0, 2);
    host.erase(std::remove(host.begin(), host.end(), ':'), host.end());
    std::replace(host.begin(), host.end(), '\\', '/');
    return host;
}

class HostStorage : public StorageUnderTest {
public:
    FileSystem& Files() override { return Files_; }
    RecordDatabase& Databases() override { return Databases_; }
    Settings& SettingsStore() override { return Settings_; }

    void Put(const Text& fullName, const std::string& bytes) override { Root_.Put(HostName(fullName), bytes); }
    std::string Bytes(const Text& fullName) override {
        return Has(fullName) ? Root_.Bytes(HostName(fullName)) : "no such file";
    }
    void Remove(const Text& fullName) override { std::filesystem::remove(Root_.Path(HostName(fullName))); }
    bool Has(const Text& fullName) override { return Root_.Has(HostName(fullName)); }
    void MakeFolder(const Text& path) override { std::filesystem::create_directories(Root_.Path(HostName(path))); }
    bool HasFolder(const Text& path) override { return std::filesystem::is_directory(Root_.Path(HostName(path))); }
    std::size_t Entries(const Text& path) override { return static_cast<std::size_t>(Root_.Entries(HostName(path))); }

protected:
    backends::DiskFaults Faults_;

private:
    TemporaryRoot Root_;
    backends::PathMap Paths_{Root_.Path()};
    backends::HostFileSystem Files_{Paths_};
    backends::LineDatabase Databases_{Paths_};
    backends::SettingsFile Settings_{Root_.Path("settings.ini")};
};

class GuardedStorage final : public HostStorage {
public:
    FileSystem& Files() override { return Files_; }
    RecordDatabase& Databases() override { return Databases_; }
    Settings& SettingsStore() override { return Settings_; }

private:
    backends::FailingFileSystem Files_{HostStorage::Files(), Faults_};
    backends::FailingDatabase Databases_{HostStorage::Databases(), Faults_};
    backends::FailingSettings Settings_{HostStorage::SettingsStore(), Faults_};
};

template <class Storage>
std::unique_ptr<StorageUnderTest> MadeOnHost() {
    return std::make_unique<Storage>();
}

const StorageFactory Host = {"files of the host", MadeOnHost<HostStorage>};
const StorageFactory Guarded = {"files of the host behind a switch", MadeOnHost<GuardedStorage>};

} // namespace

QUORIN_RUN_STORAGE_SUITES(OnTheHost, Host);
QUORIN_RUN_STORAGE_SUITES(BehindASwitchThatIsOff, Guarded);

} // namespace conformance
