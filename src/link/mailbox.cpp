// SPDX-License-Identifier: MIT
#include "src/link/mailbox.h"

#include "src/storage/line_files.h"
#include "src/storage/settings.h"
#include "src/text/windows_1252.h"
#include "src/view/platform/device_traits.h"
#include "src/view/platform/platform.h"

namespace modBluetooth {

using modFileSystem::FileHandle;
using platform::Device;

namespace {

bool FileExists(const Text& fullName) {
    FileHandle file;
    modFileSystem::OpenFileByName(file, fullName, u"r");
    const bool exists = file.valid;
    modFileSystem::CloseFile(file);
    return exists;
}

Text LinesOf(FileHandle& file) {
    Text lines;
    const std::int32_t count = modFileSystem::FileLineCount(file);
    if (modFileSystem::SeekFileLine(file, 1) != 1)
        return lines;
    for (std::int32_t i = 0; i < count; ++i) {
        std::int32_t next = -1;
        lines += modFileSystem::ReadFileLine(file, next) + u"\r\n";
    }
    return lines;
}

/// Reports that no file of the mailbox has a problem.
void Clear() {
    Mailbox.Left.reset();
    Device().onlooker.MailboxClear();
}

/// Returns the next delivery. Returns none if there is no file, if it can't be read because of an error, a lock or a
/// permission, or if it is the one that was taken already and could not be deleted.
std::optional<Delivery> NextDelivery(const Text& fullName) {
    FileHandle file;
    modFileSystem::OpenFileByName(file, fullName, u"r");
    // A name is also refused if it belongs to a folder or a pipe.
    const bool isNoFile = file.error == platform::PathRefused;
    if (file.kept || isNoFile) {
        Device().onlooker.DeliveryKept(fullName, isNoFile ? platform::Damaged : file.error);
        return std::nullopt;
    }
    if (!file.valid) {
        Clear();
        return std::nullopt;
    }
    Delivery found{modFileSystem::FileStampOf(file), LinesOf(file)};
    modFileSystem::CloseFile(file);
    return found == Mailbox.Left ? std::nullopt : std::optional(found);
}

/// Deletes what was taken. On failure it is remembered: otherwise each poll would take the file again.
void Discard(const Text& fullName, const Delivery& taken) {
    const platform::ErrorNumber error = modFileSystem::RemoveFile(fullName);
    if (error == platform::NoError || !FileExists(fullName)) {
        Clear();
    } else {
        Mailbox.Left = taken;
        Device().onlooker.DeliveryStays(fullName, error);
    }
}

} // namespace

void SetMailboxPath() {
    const platform::DeviceTraits& traits = platform::Traits();
    const Text folder(traits.MailboxFolder);
    Mailbox.MailboxPath = traits.MailboxFolderCanBeSet ? modQuorin::GetSetting(u"RFCOMM_Path", folder) : folder;
}

bool MailboxServerRunning() {
    return FileExists(Mailbox.MailboxPath + u"rfcomm.run");
}

std::optional<Text> TakeDelivery(const Text& fullName) {
    if (FileExists(Mailbox.MailboxPath + u"ipcout.lock"))
        return std::nullopt; // the server is writing
    const auto delivery = NextDelivery(fullName);
    if (!delivery)
        return std::nullopt;
    Text lines = delivery->Lines;
    modStringTools::ReadRawBytesAsWindows1252(lines);
    Device().readingLog.TextReceived(platform::TextSource::Mailbox, lines);
    Discard(fullName, *delivery);
    return lines;
}

} // namespace modBluetooth
