// SPDX-License-Identifier: MIT
#include "backends/loop/form_onlooker.h"

#include "companion/form_state.h"
#include "companion/words.h"
#include "src/link/ports.h"

namespace backends {

/// Warnings alone are passed on: NotSaved reports losses, with the name of the file.
FormOnlooker::FormOnlooker(const Clock& clock, Watcher& watcher) : Time_(clock), Watcher_(watcher) {
    notices.Told = [&watcher](const companion::Notice& notice) {
        if (notice.Weight == companion::Severity::Warning)
            watcher.Warned(notice.About, notice.Words);
    };
}

void FormOnlooker::NotSaved(const Text& file, const Text& why) {
    ++FailedSaves;
    notices.Raise(companion::NotSaved(Time_.Now(), file, why));
    Watcher_.NotSaved(file, why);
}

/// A failure to create the file or to add the record has been reported by the code where it happened.
void FormOnlooker::RecordOpened(const OpenedRecord& record) {
    notices.RecordLeft();
    if (record.Place != RecordPlace::Stored) {
        notices.Raise(companion::NoPlace(record));
        losses.NoPlace(companion::NoPlaceText(record));
    }
    if (!record.Listed)
        notices.Raise(companion::OtherDriver(record));
    TakeLimits(record.Driver);
}

void FormOnlooker::TakeLimits(const Text& driver) {
    limits = {};
    Text why;
    const auto table = FindLimits ? FindLimits(driver, why) : std::nullopt;
    if (table)
        limits = {*table, companion::FieldNames()};
    if (!why.empty())
        notices.Raise(companion::LimitsNotRead(driver, why));
    else if (!limits.Problems().empty())
        notices.Raise(companion::LimitsNotUsed(driver, limits.Problems()));
}

void FormOnlooker::ReadingLost(const LostReading& reading) {
    const Text words = companion::LossText(reading);
    NotSaved(reading.File, words);
    losses.Reading(reading.File + u": " + words + u".");
}

void FormOnlooker::ReadingWithoutValue(const Text& field) {
    notices.Raise(companion::ReadingWithoutValue(Time_.Now(), field));
}

void FormOnlooker::ReadingWaits(const DateTime& since) {
    notices.Raise(companion::ReadingWaits(Time_.Now(), since));
}

void FormOnlooker::FolderReplaced(const Text& folder, const Text& instead, ErrorNumber why) {
    if (ReplacedFolders_.insert(folder).second)
        notices.Raise(companion::FolderReplaced(folder, instead, why));
}

void FormOnlooker::ListIncomplete(const std::vector<Unlisted>& unlisted) {
    notices.Raise(companion::ListIncomplete(unlisted));
}

void FormOnlooker::DeliveryStays(const Text& fullName, ErrorNumber why) {
    notices.Raise(companion::DeliveryStays(fullName, why));
}

void FormOnlooker::DeliveryKept(const Text& fullName, ErrorNumber why) {
    notices.Raise(companion::DeliveryKept(fullName, why));
}

void FormOnlooker::MailboxClear() {
    notices.Withdraw(companion::AboutMailbox);
}

bool FormOnlooker::RaiseWhatIsPending() {
    if (!companion::RecordIsOpen())
        notices.RecordLeft();
    if (companion::LinkWasTakenDown())
        notices.Raise(companion::LinkIsOff());
    else
        notices.Withdraw(companion::AboutLinkOff);
    if (companion::LinkIsUpInTheEditor())
        notices.Raise(companion::LinkIsOn());
    else
        notices.Withdraw(companion::AboutLinkOn);
    if (const Text why = modBluetooth::PortFailure(); !why.empty())
        notices.Raise(companion::PortEndsProgram(why));
    else
        notices.Withdraw(companion::AboutPort);
    return false;
}

} // namespace backends
