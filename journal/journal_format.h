// SPDX-License-Identifier: MIT
// The names in the files of the journal; docs/formats.md has their meaning.
#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace journal {

/// An object of a journal keeps the order of its names: people read the files too.
using Line = nlohmann::ordered_json;

inline constexpr int Version = 1; ///< changed only if older readers would misread the lines

/// A file of the journal has the lines of one day and one root folder.
struct FileName {
    std::string Day;  ///< "2026-11-22"
    std::string Root; ///< 16 hexadecimal digits, from RootKey
    bool operator==(const FileName&) const = default;
};

/// Returns 16 hexadecimal digits that stand for a root folder in the names of files: the 64-bit FNV-1a hash of its
/// path without links.
std::string RootKey(std::string_view path);

/// "2026-11-22-89abcdef01234567.jsonl".
std::string TextOf(const FileName& name);
/// Reads such a name. Returns nothing for any other.
std::optional<FileName> FileNameFrom(std::string_view text);

/// Returns a UTF-8 text with a character for each byte, U+0000 to U+00FF, and the bytes of such a text; nothing if it
/// has other characters.
std::string TextOfBytes(std::string_view bytes);
std::optional<std::string> BytesOfText(std::string_view text);

} // namespace journal
