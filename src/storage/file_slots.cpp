// SPDX-License-Identifier: MIT
#include "src/storage/file_slots.h"

#include "src/view/platform/platform.h"

namespace modFileSystem {

void FailOnFile(const char16_t* what, const FileHandle& handle, platform::ErrorNumber error) {
    // For the scratch file the message names the file being rewritten: the lost data belongs to it.
    const Text name = handle.slot == 0 ? Slots.RewrittenFile : FullNameOf(handle);
    platform::RuntimeFailure(Text(u"Can't ") + what + u" " + name + u": " + platform::ErrorText(error));
}

} // namespace modFileSystem
