// SPDX-License-Identifier: MIT
#include "apps/quorin/demo.h"

#include "apps/quorin/sample_driver.h"
#include "src/drivers/registry.h"
#include "src/storage/line_files.h"
#include "src/storage/settings.h"
#include "src/storage/volumes.h"

#include <algorithm>

namespace quorin {

namespace {

const Text PortKey = u"ComPort";

/// The lines of the package that are no comments: the driver's row, then its inf table.
std::vector<Text> CountedLines() {
    std::vector<Text> lines;
    std::string_view rest = SampleDriver();
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        if (!line.empty() && line.front() != '#')
            lines.push_back(modStringTools::FromBytes(line));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    }
    return lines;
}

bool WriteLines(const Text& fullName, const Text& mode, const std::vector<Text>& lines) {
    modFileSystem::FileHandle file;
    modFileSystem::OpenFile(file, fullName, mode, modQuorin::DataType, modQuorin::DataCreator);
    bool written = file.valid;
    for (std::size_t i = 0; written && i < lines.size(); ++i)
        written = modFileSystem::WriteFileLine(file, lines[i]) > 0;
    modFileSystem::CloseFile(file);
    return written;
}

/// The row comes last: a driver must not stand in the list without its table.
void InstallSampleDriver() {
    std::vector<Text> lines = CountedLines();
    const Text row = lines.front();
    lines.erase(lines.begin());
    const Text infFile = row.substr(row.find(u'|') + 1);
    if (WriteLines(modFileSystem::GetDataPath(u"") + infFile, u"w", lines))
        WriteLines(modQuorin::Paths.DriversFile, u"a", {row});
}

} // namespace

void PrepareDemo() {
    if (modQuorin::GetSetting(PortKey, u"").empty())
        modQuorin::SaveSetting(PortKey, u"Com" + modStringTools::NumberText(DemoPort));
    modQuorin::LoadDriverList();
    if (modQuorin::Registry.DriverNames.empty())
        InstallSampleDriver();
}

} // namespace quorin
