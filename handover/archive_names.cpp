// SPDX-License-Identifier: MIT
#include "handover/archive_names.h"

#include "src/text/utf8.h"

#include <algorithm>
#include <string_view>

namespace handover {

namespace {

constexpr std::string_view Databases = "Databases/";
constexpr std::string_view Journal = "journal/";
constexpr std::size_t LongestLeaf = 200; // bytes; most systems have 255, and a copy may get "-2"

/// True if a character means something to one system or another, beyond itself.
bool IsSpecial(char each) {
    return static_cast<unsigned char>(each) < ' ' ||
           std::string_view("/\\:*?\"<>|\x7f").find(each) != std::string::npos;
}

bool IsPlainLeaf(const std::string& leaf) {
    return !leaf.empty() && leaf.size() <= LongestLeaf && leaf.front() != '.' && leaf.back() != '.' &&
           leaf.back() != ' ' && std::none_of(leaf.begin(), leaf.end(), IsSpecial) && modStringTools::IsUtf8(leaf);
}

bool HasEnding(const std::string& leaf, std::u16string_view ending) {
    const Text folded = modStringTools::LowerCase(modStringTools::FromBytes(leaf));
    return folded.size() > ending.size() && folded.ends_with(ending);
}

} // namespace

Area AreaOf(const std::string& name) {
    if (name.starts_with(Databases))
        return Area::Databases;
    return name.starts_with(Journal) ? Area::Journal : Area::Data;
}

std::string LeafOf(const std::string& name) {
    switch (AreaOf(name)) {
    case Area::Databases:
        return name.substr(Databases.size());
    case Area::Journal:
        return name.substr(Journal.size());
    case Area::Data:
        break;
    }
    return name;
}

std::string ArchiveNames::Add(const std::string& name) {
    const std::string leaf = LeafOf(name);
    if (!IsPlainLeaf(leaf))
        return "it is no name of a file that every system can have beneath the data";
    const Area area = AreaOf(name);
    const bool isOurs = area == Area::Databases ? HasEnding(leaf, u".sqlite")
                        : area == Area::Journal
                            ? HasEnding(leaf, u".jsonl")
                            : HasEnding(leaf, u".txt") || HasEnding(leaf, u".qvd") || Registered_.count(leaf) > 0;
    if (!isOurs)
        return "no such file belongs to the data of a device";
    if (!Folded_.insert(modStringTools::LowerCase(modStringTools::FromBytes(name))).second)
        return "the name is there twice, or differs only in its capitals from another one";
    return {};
}

} // namespace handover
