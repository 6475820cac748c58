// SPDX-License-Identifier: MIT
#include "apps/quorin-console/arguments.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <sstream>

namespace console {

std::vector<std::string> WordsOf(const std::string& rest) {
    std::istringstream in(rest);
    std::vector<std::string> words;
    for (std::string word; in >> word;)
        words.push_back(word);
    return words;
}

std::optional<std::int64_t> NumberFrom(const std::string& word) {
    std::int64_t number = 0;
    const auto read = std::from_chars(word.data(), word.data() + word.size(), number);
    const bool whole = read.ec == std::errc() && read.ptr == word.data() + word.size();
    return whole ? std::optional<std::int64_t>(number) : std::nullopt;
}

std::optional<Text> TextFrom(const std::string& rest) {
    if (rest.empty() || rest[0] != '"')
        return modStringTools::FromBytes(rest);
    const auto parsed = nlohmann::json::parse(rest, nullptr, false);
    if (!parsed.is_string())
        return std::nullopt;
    return modStringTools::FromBytes(parsed.get<std::string>());
}

} // namespace console
