// SPDX-License-Identifier: MIT
#include "apps/download_files/device_table.h"

#include "backends/files/path_map.h"
#include "backends/files/plain_file.h"
#include "companion/driver_check.h"
#include "companion/driver_fields.h"
#include "companion/values/columns.h"
#include "src/drivers/package_lines.h"
#include "src/storage/line_files.h"
#include "src/storage/settings.h"
#include "src/view/platform/device_traits.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace exporter {

using modStringTools::FromBytes;
using modStringTools::ToBytes;

namespace {

/// Returns the name of the table that an installed driver has; empty if it is not installed.
Text InfFileOf(const Text& driver) {
    const std::vector<modQuorin::DriverRow> installed = companion::DriversOfDevice();
    const auto find = [&](auto isIt) { return std::find_if(installed.begin(), installed.end(), isIt); };
    auto row = find([&](const modQuorin::DriverRow& each) { return each.Name == driver; });
    if (row == installed.end())
        row = find([&](const auto& each) { return modStringTools::SameIgnoringCase(each.Name, driver); });
    const Text& drivers = modQuorin::Paths.DriversFile;
    return row == installed.end() ? Text() : drivers.substr(0, drivers.rfind(u'\\') + 1) + row->InfFile;
}

} // namespace

std::string ReadBytes(const std::string& path, std::string& bytes) {
    backends::PlainFile file = backends::ReadPlainFile(path, std::numeric_limits<std::size_t>::max(),
                                                       backends::Links::Follow, backends::Mark::Keep);
    bytes = std::move(file.Bytes);
    return file.Why.empty() ? std::string() : path + " can't be read: " + file.Why + ".";
}

std::string ReadDeviceTable(const Text& fullName, const std::string& root, Table& table) {
    std::string beneath;
    const Text folder = fullName.substr(0, fullName.rfind(u'\\') + 1);
    if (!platform::Traits().IsMemory(folder) && backends::RelativePath(fullName, beneath) == platform::NoError) {
        table.Path = root + "/" + beneath;
        return ReadBytes(table.Path, table.Bytes);
    }
    std::vector<Text> lines;
    const auto error = modFileSystem::ReadLines(fullName, modQuorin::DataType, modQuorin::DataCreator, lines);
    if (error != platform::NoError)
        return ToBytes(fullName + u" can't be read: " + platform::ErrorText(error) + u".");
    for (const Text& line : lines)
        table.Bytes += ToBytes(line) + "\n";
    return {};
}

std::string TakeDriver(const std::string& driver, Table& table) {
    const Text file = InfFileOf(FromBytes(driver));
    if (!file.empty())
        table.Source.Fields = companion::FieldsOfDriver(file);
    if (!table.Source.Fields.empty()) {
        table.Driver = driver;
        return {};
    }
    return "the driver " + driver + (file.empty() ? " is not installed" : " has no table that can be read");
}

std::string NoteOfTexts(const std::string& why) {
    return why + ": all columns are text";
}

std::vector<std::string> ReadLimits(const Table& table, const backends::LimitsFile& file,
                                    companion::ValueLimits& limits) {
    if (table.Driver.empty())
        return {};
    const std::string name = table.Driver + ".limits: ";
    const backends::LimitsFile::Content content = file.Read(FromBytes(table.Driver));
    if (!content.Why.empty())
        return {name + "can't be read: " + ToBytes(content.Why)};
    if (!content.Table)
        return {};
    std::vector<Text> columns;
    for (const values::FieldRow& field : table.Source.Fields)
        columns.push_back(FromBytes(field.Field));
    limits = companion::ValueLimits(*content.Table, columns);
    std::vector<std::string> problems;
    for (const Text& problem : limits.Problems())
        problems.push_back(name + ToBytes(problem));
    return problems;
}

} // namespace exporter
