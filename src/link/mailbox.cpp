// SPDX-License-Identifier: MIT
#include "link/mailbox.h"

#include "link/ports.h"
#include "link/receive.h"
#include "storage/line_files.h"
#include "storage/settings.h"
#include "view/platform/platform.h"

namespace modBluetooth {

using modFileSystem::FileHandle;

namespace {

bool FileExists(const Text& fullName) {
    FileHandle file;
    modFileSystem::OpenFile(file, fullName, u"r", u"", u"");
    const bool exists = file.valid;
    modFileSystem::CloseFile(file);
    return exists;
}

void AppendLines(FileHandle& file) {
    const std::int32_t count = modFileSystem::FileLineCount(file);
    if (modFileSystem::SeekFileLine(file, 1) != 1)
        return;
    for (std::int32_t i = 0; i < count; ++i) {
        std::int32_t next = -1;
        Receive.RxText += modFileSystem::ReadFileLine(file, next) + u"\r\n";
    }
}

} // namespace

void SetMailboxPath() {
    switch (platform::Device().myCsys.DeviceType()) {
    case 3:
    case 7:
        Ports.MailboxPath = modQuorin::GetSetting(u"RFCOMM_Path", u"\\Application Data\\Volatile\\RFCOMM\\");
        break;
    case 9:
        Ports.MailboxPath = u"d:\\";
        break;
    default:
        Ports.MailboxPath = u"c:\\";
    }
}

bool MailboxServerRunning() {
    return FileExists(Ports.MailboxPath + u"rfcomm.run");
}

void PollMailbox(const Text& fullName) {
    if (FileExists(Ports.MailboxPath + u"ipcout.lock"))
        return; // the server is writing
    FileHandle file;
    modFileSystem::OpenFile(file, fullName, u"r", u"", u"");
    if (!file.valid)
        return;
    AppendLines(file);
    modFileSystem::CloseFile(file);
    modFileSystem::DeleteFile(fullName);
    // Each file counts as complete: a BLob that goes on in the next one waits in the decoder's buffer.
    if (TakeCompleteLines())
        Receive.BlobEndSeen = true;
}

} // namespace modBluetooth
