// SPDX-License-Identifier: MIT
#include "apps/quorin-import/target.h"

#include "backends/files/host_files.h"
#include "backends/files/path_map.h"
#include "backends/headless/formless_device.h"
#include "companion/driver_check.h"
#include "companion/driver_fields.h"
#include "src/drivers/downloads.h"
#include "src/drivers/inf_tables.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/line_files.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"
#include "src/view/platform/device_traits.h"

namespace importer {

using modStringTools::FromBytes;
using modStringTools::ToBytes;
using platform::ErrorNumber;

Target::Target(const Options& options) : Options_(options) {
}

Target::~Target() = default;

std::string Target::Prepare() {
    Device_ = std::make_unique<backends::headless::FormlessDevice>(Options_.Device);
    Device_->Platform.Serve();
    modQuorin::SetFilePaths();
    const std::string why = FindDriver();
    return why.empty() ? FindPlace() : why;
}

std::string Target::FindDriver() {
    for (const modQuorin::DriverRow& each : companion::DriversOfDevice()) {
        const bool isSame = modStringTools::SameIgnoringCase(each.Name, FromBytes(Options_.Driver));
        if (ToBytes(each.Name) == Options_.Driver || (isSame && Driver_.empty()))
            Driver_ = ToBytes(each.Name);
    }
    if (Driver_.empty())
        return "The driver " + Options_.Driver + " is not installed.";
    const Text inf = modQuorin::InfPath(FromBytes(Driver_));
    Fields_ = companion::FieldsOfDriver(inf);
    if (Fields_.empty())
        return "The driver " + Driver_ + " has no table that can be read.";
    modQuorin::OpenInfTable(inf);
    Header_ = ToBytes(modQuorin::LoadInfFields());
    modFileSystem::CloseTable();
    return {};
}

std::string Target::FindPlace() {
    const Text file = modQuorin::NextDownload();
    File_ = ToBytes(file);
    if (file.empty())
        return "The last download of the register has the name of another program: no number follows it.";
    Text folder;
    if (const ErrorNumber error = modFileSystem::FindDataPath(u"", folder); error != platform::NoError)
        return "There is no data folder: " + ToBytes(platform::ErrorText(error)) + ".";
    FullName_ = folder + file;
    std::vector<Text> lines;
    const ErrorNumber error = modFileSystem::ReadLines(FullName_, modQuorin::DataType, modQuorin::DataCreator, lines);
    if (error == platform::FileNotFound)
        return {};
    if (error != platform::NoError)
        return File_ + " can't be read: " + ToBytes(platform::ErrorText(error)) + ".";
    return "There is a file " + File_ + " already, which the register does not name: move it away first.";
}

template <class Write>
std::string Target::Store(Write write) {
    const Text driver = FromBytes(Driver_);
    const Text file = FromBytes(File_);
    // In this order: what an interruption leaves is a download without a file, which the form makes when it is opened.
    if (!modQuorin::RegisterDownload(driver, file, FromBytes(Options_.Alias)))
        return "The register of downloads can't be written.";
    const ErrorNumber error = write();
    if (error == platform::NoError)
        return {};
    modQuorin::EraseDownload(driver, file);
    return File_ + " can't be written: " + ToBytes(platform::ErrorText(error)) + ".";
}

std::string Target::StoreLines(const std::vector<std::string>& lines) {
    std::vector<Text> texts;
    for (const std::string& line : lines)
        texts.push_back(FromBytes(line));
    return Store(
        [&] { return modFileSystem::PutLines(FullName_, modQuorin::DataType, modQuorin::DataCreator, texts); });
}

std::string Target::StoreBytes(std::string_view bytes) {
    const Text folder = FullName_.substr(0, FullName_.rfind(u'\\') + 1);
    if (platform::Traits().IsMemory(folder))
        return "The memory of this device has no files, so that a table of any bytes can't be put there: leave out "
               "--raw.";
    return Store([&] {
        backends::FileEntry entry;
        ErrorNumber error = backends::PathMap(Options_.Device.Root).Entry(FullName_, backends::LastLink::Follow, entry);
        if (error != platform::NoError)
            return error;
        backends::Replacement file(std::move(entry));
        error = file.Begin();
        if (error == platform::NoError)
            error = backends::WriteAll(file.File(), bytes, 0);
        return error == platform::NoError ? file.Commit() : error;
    });
}

} // namespace importer
