// SPDX-License-Identifier: MIT
#include "apps/quorin-driver/input.h"

#include "apps/quorin-instrument/times.h"
#include "backends/files/plain_file.h"
#include "backends/port/serial_text.h"
#include "companion/file_lines.h"
#include "companion/packages.h"

#include <iostream>

namespace driver {

namespace {

constexpr std::size_t LargestRecording = 100'000'000;

std::optional<std::string> ReadFile(const std::string& path, std::size_t largest) {
    backends::PlainFile file = backends::ReadPlainFile(path, largest);
    if (file.Why.empty())
        return std::move(file.Bytes);
    Tell("can't read " + path + ": " + file.Why);
    return std::nullopt;
}

/// Returns the bytes of a recording with times as they came over the line; any other recording is these bytes.
std::string BytesOf(const std::string& file) {
    std::vector<instrument::TimedPiece> pieces;
    if (!instrument::ReadTimes(file, pieces).empty())
        return file;
    std::string bytes;
    for (const instrument::TimedPiece& piece : pieces)
        bytes += piece.Bytes;
    return bytes;
}

} // namespace

void Tell(const std::string& message) {
    std::cerr << "quorin-driver: " << message << "\n";
}

std::optional<std::vector<Text>> ReadLines(const std::string& path) {
    const auto bytes = ReadFile(path, companion::LargestPackage);
    if (!bytes)
        return std::nullopt;
    if (bytes->find('\0') != std::string::npos) {
        Tell("can't read " + path + ": it is no text file");
        return std::nullopt;
    }
    return companion::LinesOf(modStringTools::FromBytes(*bytes));
}

std::optional<std::vector<companion::RecordedResult>> ReadResults(const std::string& path) {
    const auto file = ReadFile(path, LargestRecording);
    if (!file)
        return std::nullopt;
    return companion::ResultsOf(backends::SerialText().Decode(BytesOf(*file)));
}

} // namespace driver
