// SPDX-License-Identifier: MIT
#include "tests/reference/storage_device.h"

#include "src/storage/keyed_tables.h"
#include "src/storage/volumes.h"
#include "tests/support/places.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace reference {

namespace files = std::filesystem;

namespace {

std::string NewFolder() {
    std::string name = (support::PlaceInMemory() / "quorin-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr)
        std::abort();
    return name;
}

backends::DeviceOptions OnFolder(const std::string& folder) {
    backends::DeviceOptions options;
    options.Root = folder;
    return options;
}

platform::Platform With(const platform::Platform& all, platform::Settings& settings, platform::Random& random,
                        platform::RunTime& runTime, platform::FileSystem& files, platform::RecordDatabase& databases) {
    return {all.form,
            all.grdTitle,
            all.grdMain,
            all.txtInputField,
            all.cboInputField,
            all.cbotxtInputField,
            all.dteInputField,
            all.lstHoldMenu,
            all.lblStatus,
            all.AFVScrollBar1,
            all.tmrBlue,
            all.tmrHoldEvent,
            all.tmrMenus,
            all.mnuButton1,
            all.mnuButton2,
            all.mnuButtonO1,
            all.mnuButtonO2,
            all.colours,
            all.fontServer,
            all.myCsys,
            all.hardwareKeys,
            all.serConnection,
            all.connectionService,
            all.toneMaker,
            all.messageBox,
            settings,
            all.clock,
            random,
            runTime,
            all.volumes,
            files,
            databases,
            all.saveWatcher,
            all.onlooker,
            all.readingLog};
}

} // namespace

StorageDevice::StorageDevice(Kind kind)
    : Storage_(kind), Root_(NewFolder()), Host_(OnFolder(Root_)), Headless_(Host_, Around_, Around_),
      Record_(With(Headless_.record, Settings_, Numbers_, RunTime_,
                   kind == Kind::InMemory ? static_cast<platform::FileSystem&>(Files_) : Headless_.files,
                   kind == Kind::InMemory ? static_cast<platform::RecordDatabase&>(Databases_) : Headless_.databases)) {
}

StorageDevice::~StorageDevice() {
    std::error_code ignored;
    files::remove_all(Root_, ignored);
}

StorageDevice& StorageDevice::Fresh(Kind kind) {
    static StorageDevice inMemory(Kind::InMemory);
    static StorageDevice onDisk(Kind::OnDisk);
    StorageDevice& device = kind == Kind::InMemory ? inMemory : onDisk;
    platform::Install(&device.Record_);
    device.Empty();
    return device;
}

void StorageDevice::Empty() {
    modFileSystem::ResetSlots();
    modFileSystem::Table = {};
    Databases_.CloseAll();
    Disk_ = {};
    modFileSystem::GetDataPath(u"Quorin");
    for (const char* folder : {"/Quorin", "/Databases"}) {
        std::error_code none;
        for (const auto& entry : files::directory_iterator(Root_ + folder, none))
            files::remove(entry.path(), none);
    }
}

void StorageDevice::Put(const Text& fullName, const std::string& bytes) {
    Disk_.Put(fullName, bytes);
    if (Storage_ == Kind::OnDisk)
        std::ofstream(Root_ + "/Quorin/" + modStringTools::ToBytes(fullName.substr(9)), std::ios::binary) << bytes;
}

std::string StorageDevice::Shown() {
    if (Storage_ == Kind::InMemory)
        return Disk_.Shown();
    MemoryDisk found;
    for (const auto& entry : files::directory_iterator(Root_ + "/Quorin")) {
        std::ifstream file(entry.path(), std::ios::binary);
        found.Put(u".\\Quorin\\" + modStringTools::FromBytes(entry.path().filename().string()),
                  {std::istreambuf_iterator<char>(file), {}});
    }
    platform::RecordDatabase& databases = Headless_.databases;
    const std::int32_t type = modFileSystem::PackCode(u"TEXT");
    const std::int32_t creator = modFileSystem::PackCode(u"QVRN");
    for (Text name = databases.FirstDatabase(type, creator); !name.empty(); name = databases.NextDatabase()) {
        const platform::DatabaseId id = databases.Open(name, platform::DatabaseMode::Read).Id;
        auto lines = std::make_shared<MemoryLines>(MemoryLines{type, creator, {}});
        for (std::int32_t line = 1; line <= databases.RecordCount(id); ++line) {
            platform::LineRecord& record = lines->Records.emplace_back();
            if (databases.FindRecord(id, line) == platform::NoError && databases.Position(id) == line - 1)
                databases.ReadRecord(id, record);
        }
        databases.Close(id);
        found.Databases[name] = lines;
    }
    return found.Shown();
}

} // namespace reference
