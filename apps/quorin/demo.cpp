// SPDX-License-Identifier: MIT
#include "apps/quorin/demo.h"

#include "apps/quorin/sample_driver.h"
#include "src/drivers/installation.h"
#include "src/drivers/registry.h"
#include "src/storage/keyed_tables.h"
#include "src/storage/line_files.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"

#include <algorithm>

namespace quorin {

namespace {

const Text PortKey = u"ComPort";

std::vector<Text> SampleLines() {
    std::vector<Text> lines;
    std::string_view rest = SampleDriver();
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        lines.push_back(modStringTools::FromBytes(line));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    }
    return lines;
}

} // namespace

void PrepareDemo() {
    if (modQuorin::GetSetting(PortKey, u"").empty())
        modQuorin::SaveSetting(PortKey, u"Com" + modStringTools::NumberText(DemoPort));
    modQuorin::LoadDriverList();
    if (modQuorin::Registry.DriverNames.empty())
        modQuorin::InstallLines(SampleLines());
}

Text EmptyDemo() {
    modFileSystem::CloseTable();
    modFileSystem::ListFiles(modFileSystem::GetDataPath(u""), modQuorin::DataType, modQuorin::DataCreator);
    const std::vector<Text> files = modFileSystem::Storage.FileList;
    Text why;
    for (const Text& file : files)
        if (const auto error = modFileSystem::RemoveFile(file); error != platform::NoError && why.empty())
            why = file + u" could not be deleted: " + platform::ErrorText(error);
    return why;
}

} // namespace quorin
