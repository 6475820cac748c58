// SPDX-License-Identifier: MIT
#include "apps/quorin-export/sources.h"

#include "backends/files/folder_names.h"
#include "backends/files/host_files.h"
#include "backends/files/path_map.h"
#include "backends/files/plain_file.h"
#include "backends/headless/formless_device.h"
#include "companion/download_search.h"
#include "companion/driver_check.h"
#include "companion/driver_fields.h"
#include "companion/values/table_text.h"
#include "src/drivers/downloads.h"
#include "src/drivers/inf_tables.h"
#include "src/storage/line_files.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"
#include "src/view/platform/device_traits.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace exporter {

using modStringTools::FromBytes;
using modStringTools::ToBytes;

namespace {

std::string Sentence(const Text& words) {
    return ToBytes(words);
}

/// Returns why a file can't be read, or an empty text.
std::string ReadBytes(const std::string& path, std::string& bytes) {
    backends::PlainFile file = backends::ReadPlainFile(path, std::numeric_limits<std::size_t>::max(),
                                                       backends::Links::Follow, backends::Mark::Keep);
    bytes = std::move(file.Bytes);
    return file.Why.empty() ? std::string() : path + " can't be read: " + file.Why + ".";
}

/// Reads a table of the device, from its text file or its line database, as the bytes of a text file.
std::string ReadTable(const Text& fullName, const std::string& root, Table& table) {
    std::string beneath;
    const Text folder = fullName.substr(0, fullName.rfind(u'\\') + 1);
    if (!platform::Traits().IsMemory(folder) && backends::RelativePath(fullName, beneath) == platform::NoError) {
        table.Path = root + "/" + beneath;
        return ReadBytes(table.Path, table.Bytes);
    }
    std::vector<Text> lines;
    const auto error = modFileSystem::ReadLines(fullName, modQuorin::DataType, modQuorin::DataCreator, lines);
    if (error != platform::NoError)
        return Sentence(fullName + u" can't be read: " + platform::ErrorText(error) + u".");
    for (const Text& line : lines)
        table.Bytes += ToBytes(line) + "\n";
    return {};
}

bool IsGone(const Text& fullName) {
    std::vector<Text> lines;
    return modFileSystem::ReadLines(fullName, modQuorin::DataType, modQuorin::DataCreator, lines) ==
           platform::FileNotFound;
}

} // namespace

Tables::Tables(const Options& options) : Options_(options) {
}

Tables::~Tables() = default;

std::string Tables::Read(const std::string& name, Table& table) {
    std::string why = name.find('/') != std::string::npos ? ReadFile(name, table) : ReadDownload(name, table);
    table.Source.Bytes = table.Bytes;
    return why;
}

std::string Tables::ReadFile(const std::string& path, Table& table) {
    if (std::string why = ReadBytes(path, table.Bytes); !why.empty())
        return why;
    table.Path = path;
    table.Source.File = backends::NameOf(path);
    if (Options_.Driver.empty())
        return {};
    const std::string why = OpenRoot();
    return why.empty() ? TakeDriver(Options_.Driver, table) : why;
}

std::string Tables::ReadDownload(const std::string& name, Table& table) {
    if (std::string why = OpenRoot(); !why.empty())
        return why;
    companion::DownloadFound found = companion::FindDownload(FromBytes(name));
    if (found.File.empty() && name.find('.') == std::string::npos) // the window's title has no ending
        if (companion::DownloadFound file = companion::FindDownload(FromBytes(name + ".txt")); !file.File.empty())
            found = std::move(file);
    if (found.File.empty())
        return Sentence(found.WhyNot);
    table.Source.File = ToBytes(found.File);
    table.Source.Alias = ToBytes(found.Alias);
    const std::string& named = Options_.Driver;
    if (std::string why = TakeDriver(named.empty() ? ToBytes(found.Driver) : named, table); !why.empty())
        return why;
    return ReadTable(modFileSystem::GetDataPath(u"") + found.File, Options_.Device.Root, table);
}

std::string Tables::List(std::vector<Listed>& downloads) {
    if (std::string why = OpenRoot(); !why.empty())
        return why;
    for (const modQuorin::RegisteredDownload& each : modQuorin::RegisteredDownloads()) {
        Listed listed{ToBytes(each.File), ToBytes(each.Driver), ToBytes(each.Alias), {}, {}};
        const Text name = modFileSystem::GetDataPath(u"") + each.File;
        Table table;
        listed.WhyNot = ReadTable(name, Options_.Device.Root, table);
        if (listed.WhyNot.empty())
            listed.Records = values::RecordsOf(table.Bytes);
        else if (IsGone(name))
            listed.WhyNot.clear();
        downloads.push_back(listed);
    }
    return {};
}

std::string Tables::OpenRoot() {
    if (Root_)
        return {};
    const std::string& root = Options_.Device.Root;
    if (root.empty())
        return "--root is needed: neither XDG_DATA_HOME nor HOME is set.";
    if (!backends::IsFolder(root))
        return "There is no root folder " + root + ".";
    Root_ = std::make_unique<backends::headless::FormlessDevice>(Options_.Device);
    Root_->Platform.Serve();
    modQuorin::SetFilePaths();
    return {};
}

/// Without its own driver a table is exported all the same: its columns are text. One that a person names has to be
/// there. Returns why it is not, or an empty text.
std::string Tables::TakeDriver(const std::string& driver, Table& table) {
    const Text name = FromBytes(driver);
    const std::vector<modQuorin::DriverRow> installed = companion::DriversOfDevice();
    const bool isThere = std::any_of(installed.begin(), installed.end(), [&](const modQuorin::DriverRow& each) {
        return modStringTools::SameIgnoringCase(each.Name, name);
    });
    if (isThere)
        table.Source.Fields = companion::FieldsOfDriver(modQuorin::InfPath(name));
    if (!table.Source.Fields.empty()) {
        table.Driver = driver;
        return {};
    }
    const std::string why = "the driver " + driver + (isThere ? " has no table that can be read" : " is not installed");
    if (!Options_.Driver.empty())
        return table.Source.File + ": " + why + ".";
    table.Note = why + ": all columns are text";
    return {};
}

std::vector<std::string> Tables::ReadLimits(const Table& table, companion::ValueLimits& limits) const {
    if (table.Driver.empty() || !Root_)
        return {};
    const std::string file = table.Driver + ".limits: ";
    const backends::LimitsFile::Content content = Root_->Host.limits.Read(FromBytes(table.Driver));
    if (!content.Why.empty())
        return {file + "can't be read: " + ToBytes(content.Why)};
    if (!content.Table)
        return {};
    std::vector<Text> columns;
    for (const values::FieldRow& field : table.Source.Fields)
        columns.push_back(FromBytes(field.Field));
    limits = companion::ValueLimits(*content.Table, columns);
    std::vector<std::string> problems;
    for (const Text& problem : limits.Problems())
        problems.push_back(file + ToBytes(problem));
    return problems;
}

} // namespace exporter
