// SPDX-License-Identifier: MIT
#include "apps/quorin-driver/commands.h"
#include "apps/quorin-driver/input.h"
#include "backends/files/host_files.h"
#include "companion/first_package.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <iostream>

namespace driver {

using start::ExitStatus;

namespace {

/// Writes a file that does not exist yet.
ExitStatus WriteNewFile(const std::string& path, const std::string& bytes) {
    std::FILE* const file = std::fopen(path.c_str(), "wx");
    if (file == nullptr) {
        Tell("can't create " + path + ": " + backends::ReasonOf(errno));
        return ExitStatus::NotStarted;
    }
    const bool isWritten = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    const bool isWhole = std::fclose(file) == 0 && isWritten;
    if (isWhole)
        return ExitStatus::Ended;
    Tell("can't write " + path + ": " + backends::ReasonOf(errno));
    std::remove(path.c_str());
    return ExitStatus::Failure;
}

} // namespace

ExitStatus NewDriver(const Options& options) {
    const auto results = ReadResults(options.Recording);
    if (!results)
        return ExitStatus::NotStarted;
    if (std::all_of(results->begin(), results->end(), [](const auto& result) { return result.Lost.has_value(); })) {
        Tell(options.Recording + " has no result that comes to a record");
        return ExitStatus::NotStarted;
    }
    std::string bytes;
    for (const Text& line : companion::FirstPackage(*results))
        bytes += modStringTools::ToBytes(line) + "\n";
    if (!options.Output.empty())
        return WriteNewFile(options.Output, bytes);
    std::cout << bytes;
    return ExitStatus::Ended;
}

} // namespace driver
