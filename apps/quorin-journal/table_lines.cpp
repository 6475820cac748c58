// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/table_lines.h"

#include "backends/files/host_file_system.h"
#include "backends/files/line_database.h"
#include "src/text/text.h"

#include <algorithm>
#include <filesystem>

namespace reader {

namespace {

namespace fs = std::filesystem;
using modStringTools::FromBytes;
using modStringTools::ToBytes;

constexpr int Deepest = 6; // folders of the root folder's tree; the programs make three

TableLines Trouble(platform::ErrorNumber error) {
    return {std::nullopt, ToBytes(platform::ErrorText(error))};
}

TableLines ReadText(const std::string& root, const fs::path& path) {
    Text devicePath = u".";
    for (const fs::path& part : path.lexically_relative(root))
        devicePath += u"\\" + FromBytes(part.string());
    backends::HostFileSystem files{backends::PathMap(root)};
    std::unique_ptr<platform::TextStream> stream;
    auto error = files.OpenStream(devicePath, platform::StreamMode::Existing, stream);
    if (error != platform::NoError)
        return Trouble(error);
    std::vector<std::string> lines;
    Text line;
    for (error = stream->ReadLine(line); error == platform::NoError; error = stream->ReadLine(line))
        lines.push_back(ToBytes(line));
    return error == platform::FileNotFound ? TableLines{std::move(lines), {}} : Trouble(error);
}

TableLines ReadDatabase(const std::string& root, const std::string& name) {
    backends::LineDatabase databases{backends::PathMap(root)};
    const auto opened = databases.Open(FromBytes(name), platform::DatabaseMode::Read);
    if (opened.Error != platform::NoError)
        return Trouble(opened.Error);
    std::vector<std::string> lines;
    platform::LineRecord record;
    const std::int32_t count = databases.RecordCount(opened.Id);
    for (std::int32_t number = 1; number <= count; ++number) {
        if (databases.FindRecord(opened.Id, number) != platform::NoError || !databases.ReadRecord(opened.Id, record))
            return {std::nullopt, "line " + std::to_string(number) + " of the line database can't be read"};
        lines.push_back(ToBytes(record.LineData));
    }
    return count < 0 ? Trouble(platform::ErrorNumber{-count}) : TableLines{std::move(lines), {}};
}

std::vector<fs::path> PathsOf(const std::string& root, const std::string& name, const std::string& database) {
    std::vector<fs::path> paths;
    std::error_code error;
    const auto options = fs::directory_options::skip_permission_denied;
    for (fs::recursive_directory_iterator entry(root, options, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry.depth() >= Deepest)
            entry.disable_recursion_pending();
        const fs::path& path = entry->path();
        const bool isDatabase = path.filename() == database && path.parent_path().filename() == "Databases";
        if ((path.filename() == name || isDatabase) && !entry->is_directory(error))
            paths.push_back(path);
    }
    return paths;
}

} // namespace

TableLines ReadTable(const std::string& root, const std::string& name) {
    constexpr std::string_view Ending = ".txt";
    const std::string bare = name.ends_with(Ending) ? name.substr(0, name.size() - Ending.size()) : name;
    const std::vector<fs::path> paths = PathsOf(root, bare + std::string(Ending), bare + ".sqlite");
    if (paths.empty())
        return {};
    if (paths.size() > 1)
        return {std::nullopt, "there are two of that name, " + paths[0].string() + " and " + paths[1].string()};
    return paths[0].extension() == Ending ? ReadText(root, paths[0]) : ReadDatabase(root, bare);
}

} // namespace reader
