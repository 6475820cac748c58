// SPDX-License-Identifier: MIT
#include "backends/files/settings_file.h"

#include "backends/files/byte_order_mark.h"
#include "backends/files/host_files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace backends {

namespace {

constexpr std::string_view Blanks = " \t";
constexpr std::string_view BlanksAndReturn = " \t\r";
constexpr std::size_t ReadBlock = 4096;
constexpr std::size_t LargestFile = 1024 * 1024; // a thousand times the size that the application needs

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(BlanksAndReturn);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(BlanksAndReturn) - first + 1);
}

char LowerLetter(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool SameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return LowerLetter(x) == LowerLetter(y); });
}

int HexDigit(char digit) {
    const char lower = LowerLetter(digit);
    if (lower >= '0' && lower <= '9')
        return lower - '0';
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// Returns the byte of an escape at this place; -1 if there is none.
int EscapedByte(std::string_view text, std::size_t place) {
    if (place + 2 >= text.size() || text[place] != '%')
        return -1;
    const int high = HexDigit(text[place + 1]);
    const int low = HexDigit(text[place + 2]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

std::string Unescaped(std::string_view written) {
    std::string value;
    for (std::size_t i = 0; i < written.size(); ++i) {
        const int byte = EscapedByte(written, i);
        value += byte < 0 ? written[i] : static_cast<char>(byte);
        i += byte < 0 ? 0 : 2;
    }
    return value;
}

std::string Escaped(std::string_view value) {
    constexpr std::string_view hex = "0123456789ABCDEF";
    constexpr std::string_view never("\r\n\0", 3);
    const std::size_t firstSolid = value.find_first_not_of(Blanks);
    const std::size_t lastSolid = value.find_last_not_of(Blanks);
    std::string written;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const bool outerBlank = firstSolid == std::string_view::npos || i < firstSolid || i > lastSolid;
        if (!outerBlank && never.find(value[i]) == std::string_view::npos && EscapedByte(value, i) < 0) {
            written += value[i];
            continue;
        }
        const auto byte = static_cast<unsigned char>(value[i]);
        written += {'%', hex[byte >> 4U], hex[byte & 15U]};
    }
    return written;
}

/// Returns the name of the section that a line begins.
std::optional<std::string_view> SectionBegun(std::string_view line) {
    const std::string_view trimmed = Trimmed(line);
    if (trimmed.size() < 2 || trimmed.front() != '[' || trimmed.back() != ']')
        return std::nullopt;
    return Trimmed(trimmed.substr(1, trimmed.size() - 2));
}

/// Returns the position of the `=` in a line that sets a key.
std::optional<std::size_t> EqualSign(std::string_view line) {
    const std::string_view trimmed = Trimmed(line);
    const std::size_t equal = line.find('=');
    if (trimmed.empty() || equal == std::string_view::npos || std::string_view("[;#").find(trimmed.front()) < 3)
        return std::nullopt;
    return equal;
}

bool IsName(std::string_view name) {
    constexpr std::string_view never("\r\n\0", 3);
    return !name.empty() && Trimmed(name) == name && name.find_first_of(never) == std::string_view::npos;
}

bool IsKey(std::string_view key) {
    return IsName(key) && key.find('=') == std::string_view::npos && std::string_view("[;#").find(key.front()) >= 3;
}

bool IsSection(std::string_view section) {
    return IsName(section) && section.back() != ']';
}

ErrorNumber ReadWhole(const FileEntry& entry, std::string& bytes) {
    Descriptor file;
    if (const ErrorNumber error = OpenRegular(entry, O_RDONLY, file); error != NoError)
        return error;
    std::array<char, ReadBlock> block;
    for (;;) {
        const ssize_t count = Repeated([&] { return ::read(file.Number(), block.data(), block.size()); });
        if (count <= 0)
            return count < 0 ? FromErrno(errno) : NoError;
        bytes.append(block.data(), static_cast<std::size_t>(count));
        if (bytes.size() > LargestFile)
            return TooLong;
    }
}

} // namespace

/// Where a key is, or where its line is to be inserted.
struct SettingsFile::Place {
    std::optional<std::size_t> Line; ///< the line that sets it
    std::size_t ValueStart = 0;      ///< after its `=`
    std::optional<std::size_t>
        SectionEnd; ///< after the section's last key; comments there may belong to the next section
};

SettingsFile::SettingsFile(const std::string& hostPath)
    : SettingsFile([hostPath](FileEntry& entry) { return EntryAt(hostPath, entry); }) {
}

SettingsFile::SettingsFile(const PathMap& paths, const Text& devicePath)
    : SettingsFile([paths, devicePath](FileEntry& entry) { return paths.Entry(devicePath, LastLink::Follow, entry); }) {
}

SettingsFile::SettingsFile(FindEntry find) : Find_(std::move(find)) {
    Content content;
    ReadError_ = Read(content);
    Lines_ = std::move(content.Lines);
}

/// A missing file has no lines: saving the first setting creates it.
ErrorNumber SettingsFile::Read(Content& content) const {
    std::string bytes;
    const ErrorNumber error = FoundAnew([&] {
        FileEntry entry;
        bytes.clear();
        const ErrorNumber found = Find_(entry);
        return found == NoError ? ReadWhole(entry, bytes) : found;
    });
    if (error == FileNotFound)
        return NoError;
    if (error != NoError)
        return error == PathRefused ? PermissionDenied : error; // there is a link that must not be followed
    std::size_t start = bytes.size() - BehindMark(bytes).size();
    content.Mark = bytes.substr(0, start);
    while (start < bytes.size()) {
        const std::size_t end = std::min(bytes.find('\n', start), bytes.size());
        content.Lines.push_back(bytes.substr(start, end - start));
        start = end + 1;
    }
    return NoError;
}

SettingsFile::Place SettingsFile::Locate(const std::vector<std::string>& lines, const std::string& section,
                                         const std::string& key) {
    Place place;
    bool inside = false;
    bool ended = false; // a section may occur twice; new keys are added to its first occurrence
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string& line = lines[i];
        const auto name = SectionBegun(line);
        if (name) {
            ended = ended || place.SectionEnd;
            inside = SameName(*name, section);
        }
        if (!inside)
            continue;
        const auto equal = EqualSign(line);
        if (!ended && (name || equal))
            place.SectionEnd = i + 1;
        if (!equal || !SameName(Trimmed(std::string_view(line).substr(0, *equal)), key))
            continue;
        place.Line = i;
        place.ValueStart = *equal + 1;
        return place;
    }
    return place;
}

Text SettingsFile::Get(const Text&, const Text& section, const Text& key, const Text& byDefault) const {
    const Place place = Locate(Lines_, modStringTools::ToBytes(section), modStringTools::ToBytes(key));
    if (!place.Line)
        return byDefault;
    const std::string_view line = Lines_[*place.Line];
    return modStringTools::FromBytes(Unescaped(Trimmed(line.substr(place.ValueStart))));
}

ErrorNumber SettingsFile::Save(const Text&, const Text& section, const Text& key, const Text& value) {
    const std::string sectionBytes = modStringTools::ToBytes(section);
    const std::string keyBytes = modStringTools::ToBytes(key);
    if (!IsKey(keyBytes) || !IsSection(sectionBytes))
        return PathRefused;
    if (ReadError_ != NoError)
        return ReadError_;
    // Another program may have written other keys meanwhile. They are kept, and are used from the next start on.
    Content content;
    if (const ErrorNumber error = Read(content); error != NoError)
        return error;
    const std::string written = Escaped(modStringTools::ToBytes(value));
    Put(content.Lines, sectionBytes, keyBytes, written);
    const ErrorNumber error = Write(content);
    if (error == NoError)
        Put(Lines_, sectionBytes, keyBytes, written);
    return error;
}

void SettingsFile::Put(std::vector<std::string>& lines, const std::string& section, const std::string& key,
                       const std::string& written) {
    const Place place = Locate(lines, section, key);
    if (place.Line) {
        std::string& line = lines[*place.Line];
        const bool hadReturn = line.back() == '\r';
        line = line.substr(0, place.ValueStart) + written + (hadReturn ? "\r" : "");
    } else if (place.SectionEnd) {
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(*place.SectionEnd), key + '=' + written);
    } else {
        if (!lines.empty() && !Trimmed(lines.back()).empty())
            lines.emplace_back();
        lines.push_back('[' + section + ']');
        lines.push_back(key + '=' + written);
    }
}

ErrorNumber SettingsFile::Write(const Content& content) const {
    std::string bytes = content.Mark;
    for (const std::string& line : content.Lines)
        bytes += line + '\n';
    return FoundAnew([&] {
        FileEntry entry;
        if (const ErrorNumber error = Find_(entry); error != NoError)
            return error;
        Replacement file(std::move(entry));
        if (const ErrorNumber error = file.Begin(); error != NoError)
            return error;
        if (const ErrorNumber error = WriteAll(file.File(), bytes, 0); error != NoError)
            return error;
        return file.Commit();
    });
}

} // namespace backends
