// SPDX-License-Identifier: MIT
// The bytes are a zip file that a person imports: it is refused, or each of its files is one of a device's data.
#include "fuzz/technician.h"
#include "handover/archive_in.h"
#include "handover/archive_names.h"

#include <fcntl.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static const fuzz::Place place;
    place.Put("a.zip", fuzz::AsString(bytes, count));
    const backends::Descriptor file(::open((place.Root() / "a.zip").c_str(), O_RDONLY | O_CLOEXEC));
    handover::ArchiveIn zip;
    if (!zip.Open(file.Number()).empty())
        return 0;
    for (const handover::ArchiveEntry& each : zip.Entries()) {
        const std::string leaf = handover::LeafOf(each.Name);
        fuzz::Must(!leaf.empty() && leaf.front() != '.' && leaf.find_first_of("/\\:") == std::string::npos,
                   "a name leads elsewhere");
        std::string content;
        fuzz::Must(zip.Read(each, content).empty() && content.size() == each.Bytes, "what was checked can't be read");
    }
    return 0;
}
