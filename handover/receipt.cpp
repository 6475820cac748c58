// SPDX-License-Identifier: MIT
#include "handover/receipt.h"

#include "backends/files/plain_file.h"
#include "handover/content.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <sstream>

namespace handover {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* VersionKey = "hand-over";
constexpr std::size_t LargestReceipt = 256u << 20; // bytes

std::string LineOf(const Json& object) {
    return object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

Json ObjectOf(const HandedFile& file) {
    return {{"time", file.Time}, {"device", file.Device}, {"target", file.Target},   {"file", file.File},
            {"as", file.As},     {"bytes", file.Bytes},   {"records", file.Records}, {"sha256", file.Sha256}};
}

std::string TextIn(const Json& object, const char* name) {
    const auto found = object.find(name);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::uint64_t NumberIn(const Json& object, const char* name) {
    const auto found = object.find(name);
    return found != object.end() && found->is_number_unsigned() ? found->get<std::uint64_t>() : 0;
}

std::optional<HandedFile> FileFrom(const std::string& line) {
    const Json object = Json::parse(line, nullptr, false);
    if (!object.is_object())
        return std::nullopt;
    HandedFile file{TextIn(object, "time"),      TextIn(object, "device"), TextIn(object, "target"),
                    TextIn(object, "file"),      TextIn(object, "as"),     NumberIn(object, "bytes"),
                    NumberIn(object, "records"), TextIn(object, "sha256")};
    if (file.File.empty() || file.Sha256.empty())
        return std::nullopt;
    return file;
}

/// Returns why a file with this first line can't be read as a receipt, or an empty text.
std::string WhyNot(const std::string& firstLine) {
    const Json object = Json::parse(firstLine, nullptr, false);
    const std::uint64_t version = object.is_object() ? NumberIn(object, VersionKey) : 0;
    if (version == 0)
        return "it is no receipt: move it away, and all is handed over anew";
    if (version > static_cast<std::uint64_t>(ReceiptVersion))
        return "a newer program has written it: hand over with that one";
    return {};
}

} // namespace

std::string Receipt::Read(const std::string& path) {
    Files_.clear();
    Odd_.clear();
    const backends::PlainFile file = backends::ReadPlainFile(path, LargestReceipt, backends::Links::Refuse);
    if (file.Error == ENOENT)
        return {};
    if (!file.Why.empty())
        return file.Why;
    std::istringstream lines(file.Bytes);
    std::string line;
    std::getline(lines, line);
    if (std::string why = WhyNot(line); !why.empty())
        return why;
    while (std::getline(lines, line)) {
        if (const auto handed = FileFrom(line))
            Files_.push_back(*handed);
        else
            Odd_.push_back(line);
    }
    return {};
}

std::string Receipt::Write(const std::string& path) const {
    std::string bytes = LineOf({{VersionKey, ReceiptVersion}});
    for (const HandedFile& file : Files_)
        bytes += LineOf(ObjectOf(file));
    for (const std::string& line : Odd_)
        bytes += line + "\n";
    return WriteWhole(path, bytes);
}

void Receipt::Add(const HandedFile& file) {
    if (Find(file.File, file.Sha256) == nullptr)
        Files_.push_back(file);
}

void Receipt::DropReplacedBy(const HandedFile& file) {
    std::erase_if(Files_, [&](const HandedFile& each) { return each.As == file.As && each.Sha256 != file.Sha256; });
}

const HandedFile* Receipt::Find(const std::string& file, const std::string& sha256) const {
    const auto found = std::find_if(Files_.begin(), Files_.end(),
                                    [&](const HandedFile& each) { return each.File == file && each.Sha256 == sha256; });
    return found == Files_.end() ? nullptr : &*found;
}

} // namespace handover
