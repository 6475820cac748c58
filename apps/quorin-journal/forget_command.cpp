// SPDX-License-Identifier: MIT
#include "apps/quorin-journal/commands.h"
#include "backends/files/host_files.h"
#include "src/text/text.h"
#include "src/view/platform/errors.h"

namespace reader {

void ForgetDays(Job& job) {
    const std::string& day = job.Asked.Day;
    bool isEmpty = true;
    for (const JournalFile& file : job.Files) {
        if (day.empty() ? file.Name.Day >= job.Asked.Argument : file.Name.Day != day)
            continue;
        isEmpty = false;
        backends::FileEntry entry;
        auto error = backends::EntryAt(file.Path, entry);
        if (error == platform::NoError)
            error = backends::RemoveFrom(entry.Folder, entry.Name);
        if (error == platform::NoError)
            job.Told.WriteLine("removed " + file.Path);
        else
            job.Told.Failed("can't remove " + file.Path + ": " + modStringTools::ToBytes(platform::ErrorText(error)));
    }
    if (isEmpty)
        job.Told.WriteLine(day.empty() ? "no file of a day before " + job.Asked.Argument : "no file of " + day);
}

} // namespace reader
