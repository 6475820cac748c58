// SPDX-License-Identifier: MIT
#include "src/storage/scratch_file.h"

#include "src/storage/line_files.h"
#include "src/storage/volumes.h"
#include "src/view/platform/platform.h"

#include <cmath>

namespace modFileSystem {

using platform::Device;

namespace {

constexpr std::int32_t ScratchDigits = 8;

Text ScratchName(const Text& folder) {
    Text name = folder;
    for (std::int32_t i = 0; i < ScratchDigits; ++i)
        name += static_cast<char16_t>(u'0' + static_cast<std::int32_t>(Device().random.Next() * 10));
    return name + u".txt";
}

} // namespace

void OpenTempFile(const FileHandle& rewritten) {
    Slots.RewrittenFile = FullNameOf(rewritten);
    FileHandle& scratch = Slots.TempFile;
    Device().random.Seed(static_cast<std::int32_t>(std::nearbyint(Device().clock.TimeOfDay())));
    CloseFile(scratch);
    Text folder;
    scratch.error = FindDataPath(u"", folder);
    if (scratch.error != platform::NoError)
        return;
    Text name;
    do {
        CloseFile(scratch);
        name = ScratchName(folder);
        OpenFile(scratch, name, u"r", ScratchCode, ScratchCode);
    } while (scratch.valid); // the name is taken
    if (!scratch.kept)       // otherwise it is unknown whether the name is free
        OpenFile(scratch, name, u"w", ScratchCode, ScratchCode);
}

Text KeepLine(const FileHandle& handle, const Text& text) {
    OpenTempFile(handle);
    FileHandle& scratch = Slots.TempFile;
    if (!scratch.valid)
        return {};
    const Text name = scratch.name;
    WriteFileLine(scratch, text);
    CloseFile(scratch);
    return name;
}

} // namespace modFileSystem
