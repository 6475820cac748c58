// SPDX-License-Identifier: MIT
#include "apps/quorin/host_file.h"

#include "backends/files/host_files.h"
#include "src/text/text.h"

#include <fcntl.h>

namespace quorin {

using backends::Descriptor;
using backends::FileEntry;

std::string FileName(const std::string& path) {
    const std::size_t end = path.find_last_not_of('/');
    const std::string trimmed = path.substr(0, end == std::string::npos ? 0 : end + 1);
    return trimmed.substr(trimmed.rfind('/') + 1); // npos + 1 is 0
}

std::string ReadHostFile(const std::string& path, std::size_t most, std::string& bytes) {
    bytes.clear();
    if (backends::IsFolder(path))
        return "it is a folder";
    std::string place;
    FileEntry entry;
    Descriptor file;
    auto error = backends::Canonical(path, place);
    if (error == platform::NoError)
        error = backends::EntryAt(place, entry);
    if (error == platform::NoError)
        error = backends::OpenRegular(entry, O_RDONLY, file);
    if (error == platform::PathRefused)
        return "it is no file";
    if (error != platform::NoError)
        return modStringTools::ToBytes(platform::ErrorText(error));
    bytes.resize(most + 1);
    std::size_t length = 0;
    while (length < bytes.size()) {
        const std::int64_t read =
            backends::ReadAt(file.Number(), &bytes[length], bytes.size() - length, static_cast<std::int64_t>(length));
        if (read < 0)
            return backends::ReasonOf(errno);
        if (read == 0)
            break;
        length += static_cast<std::size_t>(read);
    }
    bytes.resize(length);
    return {};
}

} // namespace quorin
