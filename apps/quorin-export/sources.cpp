// SPDX-License-Identifier: MIT
#include "apps/quorin-export/sources.h"

#include "backends/files/folder_names.h"
#include "backends/headless/formless_device.h"
#include "companion/download_search.h"
#include "companion/values/table_text.h"
#include "src/drivers/downloads.h"
#include "src/storage/line_files.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"

#include <memory>

namespace exporter {

using modStringTools::FromBytes;
using modStringTools::ToBytes;

namespace {

std::string Sentence(const Text& words) {
    return ToBytes(words);
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
    return ReadDeviceTable(modFileSystem::GetDataPath(u"") + found.File, Options_.Device.Root, table);
}

std::string Tables::List(std::vector<Listed>& downloads) {
    if (std::string why = OpenRoot(); !why.empty())
        return why;
    for (const modQuorin::RegisteredDownload& each : modQuorin::RegisteredDownloads()) {
        Listed listed{ToBytes(each.File), ToBytes(each.Driver), ToBytes(each.Alias), {}, {}};
        const Text name = modFileSystem::GetDataPath(u"") + each.File;
        Table table;
        listed.WhyNot = ReadDeviceTable(name, Options_.Device.Root, table);
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

/// The driver that a person names has to be there. Returns why it is not, or an empty text.
std::string Tables::TakeDriver(const std::string& driver, Table& table) const {
    const std::string why = exporter::TakeDriver(driver, table);
    if (!why.empty() && !Options_.Driver.empty())
        return table.Source.File + ": " + why + ".";
    if (!why.empty())
        table.Note = NoteOfTexts(why);
    return {};
}

std::vector<std::string> Tables::ReadLimits(const Table& table, companion::ValueLimits& limits) const {
    return Root_ ? exporter::ReadLimits(table, Root_->Host.limits, limits) : std::vector<std::string>();
}

} // namespace exporter
