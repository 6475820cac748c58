// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/commands.h"
#include "backends/files/host_files.h"
#include "src/text/text.h"
#include "src/view/platform/errors.h"

namespace reader {

void ForgetDays(Job& job) {
    for (const JournalFile& file : job.Files) {
        if (file.Name.Day >= job.Asked.Argument)
            continue;
        backends::FileEntry entry;
        auto error = backends::EntryAt(file.Path, entry);
        if (error == platform::NoError)
            error = backends::RemoveFrom(entry.Folder, entry.Name);
        if (error == platform::NoError)
            job.Told.WriteLine("removed " + file.Path);
        else
            job.Told.Failed("can't remove " + file.Path + ": " + modStringTools::ToBytes(platform::ErrorText(error)));
    }
}

} // namespace reader
